"""Runs programs that may do anything: what a mutant removes or fills must not be the machine's."""
import ctypes
import os
import resource
import signal
import subprocess

MEMORY = 2 << 30
PROCESSES = 256
LIBC = ctypes.CDLL(None)
PR_SET_PDEATHSIG = 1
# Nobody in particular, in a world with no other processes and with a folder for temporary files that is gone
# with it. Where the machine's files are can't be changed, since they belong to others.
UNSHARE = ["unshare", "--mount", "--pid", "--ipc", "--net", "--fork", "--kill-child"]
# The folder with the programs is there even if it lies where others can't enter or among temporary files.
ENTER = (
    'folder="$1"; closed="$2"; shift 2; mount --make-rprivate / && mount --bind "$folder" /mnt && '
    'if [ -n "$closed" ]; then mount -t tmpfs -o mode=755 tmpfs "$closed"; fi && '
    "mount -t tmpfs -o size=256m,mode=1777 tmpfs /tmp && mount -t tmpfs -o size=16m,mode=1777 tmpfs /var/tmp && "
    "mount -t tmpfs -o size=16m,mode=1777 tmpfs /dev/shm && mount -t proc proc /proc && "
    'mkdir -p "$folder" && mount --move /mnt "$folder" && cd /tmp && '
    'exec setpriv --reuid=65534 --regid=65534 --clear-groups --no-new-privs --bounding-set=-all -- "$@"'
)


def limit():
    LIBC.prctl(PR_SET_PDEATHSIG, signal.SIGKILL)  # it ends with whoever waits for it
    resource.setrlimit(resource.RLIMIT_CORE, (0, 0))
    resource.setrlimit(resource.RLIMIT_DATA, (MEMORY, MEMORY))


class Outcome:
    def __init__(self, code, output, hung):
        self.code = code
        self.output = output
        self.hung = hung
        self.passed = code == 0 and not hung


class World:
    """Where programs of a folder run."""

    def __init__(self, folder):
        self.folder = folder
        self.closed = next((path for path in reversed(folder.parents) if not path.stat().st_mode & 1), "")

    def run(self, command, seconds, environment, descriptors=()):
        """Runs a program until its end, but no longer than that. It gets these descriptors."""
        process = subprocess.Popen(
            [*UNSHARE, "sh", "-ec", ENTER, "sh", self.folder, self.closed, "prlimit", f"--nproc={PROCESSES}", *command],
            env={**os.environ, **environment}, preexec_fn=limit, start_new_session=True,
            pass_fds=descriptors,
            stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
        try:
            output, _ = process.communicate(timeout=seconds)
            return Outcome(process.returncode, output.decode(errors="replace"), False)
        except subprocess.TimeoutExpired:
            os.killpg(process.pid, signal.SIGKILL)
            output, _ = process.communicate()
            return Outcome(-1, output.decode(errors="replace"), True)

    def why_not(self):
        """What keeps programs from running there, or nothing."""
        if os.geteuid() != 0:
            return "only root can make a world for mutants"
        outcome = self.run(["test", "-x", self.folder], 20, {})
        return "" if outcome.passed else f"no world for mutants in which {self.folder} can be read: {outcome.output}"
