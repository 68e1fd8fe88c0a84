#include "races/RandomTree.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace zoltest
{

namespace
{

namespace fs = std::filesystem;

using Random = std::mt19937;

constexpr int maxDepth = 5;

int below(Random& random, int limit)
{
    return static_cast<int>(random() % static_cast<unsigned int>(limit));
}

std::string anyName(Random& random, int number)
{
    static const std::array<std::string, 14> odd = {"~",
                                                    "a:",
                                                    ":",
                                                    "...",
                                                    " ",
                                                    "-rf",
                                                    "line\nfeed",
                                                    "back\\slash",
                                                    "\xff\xfe",
                                                    "k\xc3\xa4se",
                                                    ".filemnodirectorydelete",
                                                    ".filemnohousekeeping",
                                                    "*?[",
                                                    std::string(200, 'n')};
    const std::string unique = std::to_string(number);
    return below(random, 3) == 0 ? odd[random() % odd.size()] + unique : unique;
}

mode_t anyMode(Random& random)
{
    static constexpr std::array<mode_t, 7> modes = {0000, 0100, 0300, 0400, 0500, 0600, 0700};
    return below(random, 12) == 0 ? modes[random() % modes.size()] : 0700;
}

void makeAny(Random& random, const std::string& path, const std::string& outside, int depth);

void makeDirectory(Random& random, const std::string& path, const std::string& outside, int depth)
{
    fs::create_directory(path);
    const int count = depth < maxDepth ? below(random, 6) : 0;
    for (int i = 0; i < count; ++i)
    {
        makeAny(random, path + "/" + anyName(random, i), outside, depth + 1);
    }
    ::chmod(path.c_str(), anyMode(random));
}

void makeAny(Random& random, const std::string& path, const std::string& outside, int depth)
{
    switch (below(random, 12))
    {
    case 0:
        return fs::create_symlink(outside, path);
    case 1:
        return fs::create_symlink(outside + "/keep", path);
    case 2:
        return fs::create_symlink("..", path);
    case 3:
        return fs::create_symlink("nothing", path);
    case 4:
        ::mkfifo(path.c_str(), 0600);
        return;
    case 5:
        return fs::create_hard_link(outside + "/keep", path);
    case 6:
    case 7:
        std::ofstream(path) << "content";
        ::chmod(path.c_str(), below(random, 2) == 0 ? 0000 : 0600);
        return;
    default:
        return makeDirectory(random, path, outside, depth);
    }
}

void describe(const fs::path& directory, std::vector<std::string>& lines, std::size_t prefix)
{
    ::chmod(directory.c_str(), 0700);
    for (const auto& entry : fs::directory_iterator(directory))
    {
        struct stat status
        {};
        ::lstat(entry.path().c_str(), &status);
        std::string line =
            entry.path().string().substr(prefix) + " " + std::to_string(status.st_mode & S_IFMT);
        if (S_ISREG(status.st_mode))
        {
            line += " " + std::to_string(status.st_size);
        }
        lines.push_back(line + (S_ISLNK(status.st_mode) ? " -> " + fs::read_symlink(entry).string() : ""));
        if (S_ISDIR(status.st_mode))
        {
            describe(entry.path(), lines, prefix);
        }
    }
}

} // namespace

RandomTree::RandomTree(unsigned int seed)
    : _seed(seed)
{}

void RandomTree::make(const std::string& path, const std::string& outside) const
{
    Random random(_seed);
    const int kind = below(random, 10);
    if (kind == 0)
    {
        return; // nothing there
    }
    if (kind <= 2)
    {
        return makeAny(random, path, outside, 0);
    }
    makeDirectory(random, path, outside, 0);
}

std::vector<std::string> contentOf(const std::string& directory)
{
    std::vector<std::string> lines;
    describe(directory, lines, directory.size());
    std::sort(lines.begin(), lines.end());
    return lines;
}

} // namespace zoltest
