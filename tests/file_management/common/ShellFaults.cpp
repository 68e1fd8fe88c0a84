#include "ShellFaults.h"

#include <cerrno>
#include <cstdio>

namespace zoltest
{

namespace
{

ShellFaults* live = nullptr;

void setError(int callersErrno, int error)
{
    errno = error != 0 ? error : callersErrno;
}

} // namespace

ShellFaults::ShellFaults()
{
    live = this;
}

ShellFaults::~ShellFaults()
{
    live = nullptr;
}

} // namespace zoltest

using zoltest::live;
using zoltest::setError;

// The linker sends this program's calls of popen and pclose here.
extern "C" {

FILE* __real_popen(const char* command, const char* mode);
FILE* __wrap_popen(const char* command, const char* mode)
{
    const int callersErrno = errno;
    if (live != nullptr && live->onPopen)
    {
        live->onPopen(command);
    }
    if (live != nullptr && live->popenError)
    {
        setError(callersErrno, *live->popenError);
        return nullptr;
    }
    FILE* const stream = __real_popen(command, mode);
    if (stream != nullptr)
    {
        errno = ENOTTY; // success may leave any value
    }
    return stream;
}

int __real_pclose(FILE* stream);
int __wrap_pclose(FILE* stream)
{
    const int callersErrno = errno;
    if (live != nullptr && live->onPclose)
    {
        live->onPclose();
    }
    const int status = __real_pclose(stream);
    if (live != nullptr && live->pcloseError)
    {
        setError(callersErrno, *live->pcloseError);
        return -1;
    }
    return status;
}
}
