#include "plain/WalkTree.h"

#include "file_management/mo_impl/SpecialFiles.h"

#include <array>
#include <filesystem>
#include <fstream>
#include <sys/stat.h>

namespace zoltest
{

namespace
{

namespace fs = std::filesystem;

constexpr int maxDepth = 4;

template<class Choices>
auto any(Random& random, const Choices& choices)
{
    return choices[static_cast<std::size_t>(below(random, static_cast<int>(choices.size())))];
}

std::string anyName(Random& random)
{
    static const std::array<std::string, 24> odd = {".filemnohousekeeping",
                                                    ".filemnodirectorycreate",
                                                    ".filemnodirectorydelete",
                                                    ".filemnohousekeeping2",
                                                    ".hidden",
                                                    "...",
                                                    "~",
                                                    "c:",
                                                    "a+b",
                                                    "a=b",
                                                    "a,b",
                                                    "a\\nb",
                                                    "\"q\"",
                                                    " padded ",
                                                    "a.tar.gz",
                                                    "line\nfeed",
                                                    "\xD6\xD6\xD6\xF1",
                                                    "k\xc3\xa4se",
                                                    "-rf",
                                                    "x\\2By",
                                                    "d",
                                                    "f",
                                                    "*?[",
                                                    "a?\?b"};
    switch (below(random, 6))
    {
    case 0:
        return any(random, odd);
    case 1: {
        std::string name;
        for (int length = 1 + below(random, 12); length > 0; --length)
        {
            const char byte = static_cast<char>(1 + below(random, 255));
            name += byte == '/' ? 'x' : byte;
        }
        return name;
    }
    case 2:
        return std::string(static_cast<std::size_t>(16 + below(random, 240)), 'n');
    default:
        return "e" + std::to_string(below(random, 100)) + (below(random, 2) == 0 ? ".log" : "");
    }
}

mode_t anyMode(Random& random)
{
    static constexpr std::array<mode_t, 10> modes = {0000, 0100, 0111, 0300, 0333,
                                                     0400, 0444, 0500, 0555, 0600};
    return below(random, 4) == 0 ? any(random, modes) : 0700;
}

class Maker
{
public:
    Maker(Random& random, WalkTree& tree, const std::string& folder, Loops loops)
        : _random(random)
        , _tree(tree)
        , _outside(folder + "/outside")
        , _loopsLeft(loops == Loops::Any ? 1000 : 1)
    {}

    void makeDirectory(const std::string& path, int depth)
    {
        fs::create_directory(path);
        const int count = depth < maxDepth ? below(_random, 9) : 0;
        for (int i = 0; i < count; ++i)
        {
            const std::string name = anyName(_random);
            const std::string entry = path + "/" + name;
            if (name != "." && name != ".." && !fs::exists(fs::symlink_status(entry)))
            {
                makeAny(entry, path, depth + 1);
            }
        }
        _tree.directories.push_back(path);
        _modes.emplace_back(path, anyMode(_random));
    }

    /// The deepest ones first, as long as they can be reached.
    void setModes()
    {
        for (const auto& [path, mode] : _modes)
        {
            ::chmod(path.c_str(), mode);
        }
    }

private:
    void makeAny(const std::string& path, const std::string& parent, int depth)
    {
        const int kind = below(_random, 14);
        if (kind < 4)
        {
            return makeDirectory(path, depth);
        }
        _tree.others.push_back(path);
        if (kind < 8)
        {
            std::ofstream(path) << std::string(static_cast<std::size_t>(below(_random, 4)), 'x');
            ::chmod(path.c_str(), below(_random, 4) == 0 ? 0000 : 0600);
        }
        else if (kind == 8)
        {
            makePipe(path);
        }
        else if (kind == 9 && fs::path(path).filename().string().size() < 100)
        {
            makeSocket(path);
        }
        else
        {
            fs::create_symlink(anyTarget(path, parent), path);
        }
    }

    std::string anyTarget(const std::string& path, const std::string& parent)
    {
        std::vector<std::string> targets = {_outside + "/file",
                                            _outside + "/dir",
                                            _outside + "/dir/",
                                            _outside + "/empty",
                                            _outside + "/pipe",
                                            _outside + "/nothing",
                                            _outside + "/toFile",
                                            _outside + "/toDirectory",
                                            _outside + "/toNothing",
                                            _outside + "/file/below",
                                            path, // itself
                                            "none",
                                            "f",
                                            "d",
                                            "p",
                                            "l",
                                            "./d/",
                                            std::string(4000, 't')};
        if (!_tree.directories.empty())
        {
            targets.push_back(any(_random, _tree.directories)); // a whole one, which leads not here
        }
        const std::vector<std::string> loops = {".", "..", "../d/..", parent, _tree.root};
        if (_loopsLeft > 0 && below(_random, 4) == 0)
        {
            --_loopsLeft;
            return any(_random, loops);
        }
        return any(_random, targets);
    }

    Random& _random;
    WalkTree& _tree;
    std::string _outside;
    int _loopsLeft;
    std::vector<std::pair<std::string, mode_t>> _modes;
};

} // namespace

int below(Random& random, int limit)
{
    return static_cast<int>(random() % static_cast<unsigned int>(limit));
}

WalkTree::WalkTree(Random& random, const std::string& folder, Loops loops)
    : root(folder + "/root")
{
    for (const char* directory : {"/outside/dir/sub", "/outside/empty", "/here/d"})
    {
        fs::create_directories(folder + directory);
    }
    for (const char* file : {"/outside/file", "/outside/dir/f", "/here/f"})
    {
        std::ofstream(folder + file) << "content";
    }
    makePipe(folder + "/outside/pipe");
    makePipe(folder + "/here/p");
    fs::create_symlink(folder + "/outside/file", folder + "/outside/toFile");
    fs::create_symlink(folder + "/outside/dir", folder + "/outside/toDirectory");
    fs::create_symlink(folder + "/outside/nothing", folder + "/outside/toNothing");
    fs::create_symlink("d", folder + "/here/l");

    Maker maker(random, *this, folder, loops);
    maker.makeDirectory(root, 0);
    maker.setModes();
    ::chmod(root.c_str(), 0700);
}

void removeWalkTree(const std::string& folder)
{
    struct stat status
    {};
    if (::lstat(folder.c_str(), &status) == 0 && S_ISDIR(status.st_mode))
    {
        ::chmod(folder.c_str(), 0700);
        for (const auto& entry : fs::directory_iterator(folder))
        {
            removeWalkTree(entry.path().string());
        }
    }
    fs::remove(folder);
}

} // namespace zoltest
