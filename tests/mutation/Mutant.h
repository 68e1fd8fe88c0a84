#pragma once

// Included before everything else by each C++ source of a mutated build. Which mutant is alive is the
// process's own choice, so that one build serves all of them.

#include <cerrno>
#include <cstdlib>
#include <sys/syscall.h>
#include <unistd.h>

// Straight to the kernel: tests put their own functions in the place of the C library's. To a file that is open:
// tests go where no path leads to it.
static inline void zolRecordMutant(int id)
{
    static bool recorded[1 << 14];
    const char* const file = std::getenv("ZOL_MUTANT_RECORD");
    if (file == nullptr || recorded[id])
    {
        return;
    }
    recorded[id] = true;
    const int callersErrno = errno;
    char line[] = "0000000\n";
    for (int digit = 6; digit >= 0; --digit, id /= 10)
    {
        line[digit] = static_cast<char>('0' + id % 10);
    }
    syscall(SYS_write, std::atoi(file), line, sizeof line - 1);
    errno = callersErrno;
}

/// True if this mutant is the one of the process. Each file of a program has its own copy, so that no symbol
/// of it shows.
static inline bool zolMutant(int id)
{
    static int alive = -1;
    if (alive < 0)
    {
        const char* const text = std::getenv("ZOL_MUTANT");
        alive = text != nullptr ? std::atoi(text) : 0;
    }
    if (alive == 0)
    {
        zolRecordMutant(id);
    }
    return alive == id;
}
