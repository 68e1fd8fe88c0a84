#!/usr/bin/env python3
"""Types lines in a shell at a terminal, each with a Tab behind it, and prints what the lines are then.

Arguments: bash or zsh, the script with the completion, the lines. Runs in the current folder.
"""

import os
import sys

import pexpect

SET_UP = {
    "bash": """bind 'set enable-bracketed-paste off'; bind 'set bell-style none'
show() { printf 'LINE<%s>\\n' "$READLINE_LINE"; READLINE_LINE=; }
bind -x '"\\C-o": show'
source "$COMPLETION"
""",
    "zsh": """unset zle_bracketed_paste; setopt no_beep no_list_beep
fpath=(${COMPLETION:h} $fpath); autoload -Uz compinit; compinit -u -D
show() { zle -I; print -r -- "LINE<$BUFFER>"; BUFFER=''; }; zle -N show; bindkey '^O' show
""",
}
START = {"bash": ["--norc", "--noprofile", "-i"], "zsh": ["-f", "-i"]}


def main():
    shell, completion, *lines = sys.argv[1:]
    environment = dict(os.environ, TERM="dumb", PS1="> ", LC_ALL="C.UTF-8", COMPLETION=completion)
    terminal = pexpect.spawn(shell, START[shell], env=environment, encoding="utf-8", dimensions=(50, 300),
                             timeout=60)
    for line in (SET_UP[shell] + "echo REA''DY").split("\n"):
        terminal.sendline(line)
    terminal.expect("READY\r\n")
    for line in lines:
        terminal.send(line + "\t\x0f")
        terminal.expect("LINE<(.*?)>\r\n")
        print(terminal.match[1])
    terminal.close(force=True)


if __name__ == "__main__":
    main()
