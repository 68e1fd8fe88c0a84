#include "threads/DiskChanger.h"

#include "threads/Names.h"

#include <cerrno>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <random>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>

namespace threadtest
{

namespace
{

namespace fs = std::filesystem;

std::string anyPath(std::mt19937& random, const std::string& root)
{
    std::string path = root;
    for (unsigned long depth = 1 + random() % 3; depth > 0; --depth)
    {
        path += "/" + anyOf(random, directoryNames);
    }
    return path;
}

void changeOnce(std::mt19937& random, const std::string& root, const std::string& outside)
{
    std::error_code ignored;
    const std::string path = anyPath(random, root);
    const std::string file = path + "/" + anyOf(random, fileNames);
    switch (random() % 8)
    {
    case 0:
    case 1:
        fs::create_directories(path, ignored);
        break;
    case 2:
    case 3:
        std::ofstream(file) << "content";
        break;
    case 4:
        fs::remove(file, ignored);
        break;
    case 5:
        fs::rename(path, anyPath(random, root), ignored);
        break;
    case 6:
        fs::create_symlink(outside, path, ignored);
        break;
    default:
        // a link goes at once, a directory only when it is empty
        fs::remove(path, ignored);
    }
}

} // namespace

DiskChanger::DiskChanger(const std::string& root, const std::string& outside, unsigned long seed)
    : _process(::fork())
{
    if (_process < 0)
    {
        throw std::system_error(errno, std::generic_category(), "fork");
    }
    if (_process > 0)
    {
        return;
    }
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    std::mt19937 random(seed);
    for (;;)
    {
        changeOnce(random, root, outside);
    }
}

DiskChanger::~DiskChanger()
{
    ::kill(_process, SIGKILL);
    ::waitpid(_process, nullptr, 0);
}

} // namespace threadtest
