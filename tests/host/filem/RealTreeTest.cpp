#include "Filem.h"

#include "filem/output/Quoting.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <sstream>
#include <string>
#include <vector>

namespace
{

namespace fs = std::filesystem;
using zolhost::filem::shellQuoted;

using Texts = std::vector<std::string>;

constexpr std::uintmax_t ENOUGH_BYTES = 20'000'000;
constexpr std::size_t FEW_DIRECTORIES = 20;

std::uintmax_t bytesBelow(const fs::path& directory)
{
    std::uintmax_t bytes = 0;
    for (const auto& entry : fs::recursive_directory_iterator(directory))
    {
        bytes += entry.is_symlink() || !entry.is_regular_file() ? 0 : entry.file_size();
    }
    return bytes;
}

/// What a name becomes in an RDN value; of names with a backslash or such ends there are none here.
std::string encoded(const std::string& name, const std::string& plus)
{
    std::string value;
    for (const char character : name)
    {
        value += character == '+'                                                ? plus
                 : std::string("\"#*,;<=>").find(character) != std::string::npos ? "?\?"
                                                                                 : std::string(1, character);
    }
    return value;
}

std::string asDirectory(const std::string& name)
{
    return encoded(name, "\\2B");
}

std::string asFile(const std::string& name)
{
    return encoded(name, "?\?");
}

/// A link counts as what it leads to when it is looked up from the working directory, `/nowhere` for all.
bool leadsToADirectory(const fs::path& link)
{
    const fs::path target = fs::read_symlink(link);
    return target.is_absolute() && fs::is_directory(target);
}

Texts lines(const std::string& text)
{
    Texts result;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
    {
        result.push_back(line);
    }
    return result;
}

std::string inQuotes(const std::string& text)
{
    std::string quoted = "'";
    for (const char character : text)
    {
        quoted += character == '\'' ? "'\\''" : std::string(1, character);
    }
    return quoted + "'";
}

// A copy of a real tree, as far as it is small, with directories of the odd kinds beside it.
class RealTreeTest : public Filem
{
protected:
    RealTreeTest()
    {
        copySample("/usr/share/doc");
        if (directoriesBelow(tree.path()).size() < FEW_DIRECTORIES)
        {
            for (int i = 0; i < 100; ++i)
            {
                tree.file("made" + std::to_string(i % 10) + "/of+" + std::to_string(i) +
                              "/it's a, name=" + std::to_string(i),
                          std::string(static_cast<std::size_t>(i), 'x'));
            }
        }
        tree.file("odd/a+b/c,d;e", "1");
        tree.directory("odd/a,b");
        tree.link("odd/to-directory", tree.path("odd/a+b"));
        tree.link("odd/relative", "a+b");
        tree.link("odd/a+b/to-file", tree.path("odd/a+b/c,d;e"));
    }

    void copySample(const fs::path& source) const
    {
        if (!fs::is_directory(source))
        {
            return;
        }
        Texts names;
        for (const auto& entry : fs::directory_iterator(source))
        {
            names.push_back(entry.path().filename());
        }
        std::ranges::sort(names);
        std::uintmax_t bytes = 0;
        for (const auto& name : names)
        {
            const bool isDirectory = fs::symlink_status(source / name).type() == fs::file_type::directory;
            const std::uintmax_t more = isDirectory ? bytesBelow(source / name) : 0;
            if (bytes + more <= ENOUGH_BYTES)
            {
                bytes += more;
                fs::copy(source / name, tree.path(name),
                         fs::copy_options::recursive | fs::copy_options::copy_symlinks);
            }
        }
    }

    /// Relative to the tree.
    static Texts directoriesBelow(const fs::path& where)
    {
        Texts names;
        for (const auto& entry : fs::recursive_directory_iterator(where))
        {
            if (!entry.is_symlink() && entry.is_directory())
            {
                names.push_back(entry.path().lexically_relative(where));
            }
        }
        return names;
    }

    static std::string dnOf(const std::string& directory)
    {
        std::string dn;
        for (const auto& name : fs::path(directory))
        {
            dn += (dn.empty() ? "FileGroup=" : ",FileGroup=") + asDirectory(name);
        }
        return dn;
    }

    Texts listed(const std::string& directory) const
    {
        Texts directories;
        Texts files;
        for (const auto& entry : fs::directory_iterator(tree.path(directory)))
        {
            const std::string name = entry.path().filename();
            if (entry.is_symlink() ? leadsToADirectory(entry.path()) : entry.is_directory())
            {
                directories.push_back(asDirectory(name) + (entry.is_symlink() ? "@" : ""));
            }
            else if (!entry.is_symlink() && entry.is_regular_file())
            {
                files.push_back(asFile(name));
            }
        }
        std::ranges::sort(directories);
        for (auto& value : directories)
        {
            const bool isLink = value.ends_with('@');
            value = isLink ? shellQuoted(value.substr(0, value.size() - 1) + "/") + "  @"
                           : shellQuoted(value + "/");
        }
        std::ranges::sort(files);
        std::ranges::transform(files, files.begin(), [](const auto& value) { return shellQuoted(value); });
        directories.insert(directories.end(), files.begin(), files.end());
        return directories;
    }

    bool hasALinkToNowhere(const std::string& directory) const
    {
        const fs::directory_iterator entries(tree.path(directory));
        return std::any_of(begin(entries), end(entries), [](const auto& entry) { return !entry.exists(); });
    }

    /// The files, links to files included, as the attribute shows them.
    Texts fileList(const std::string& directory) const
    {
        std::map<std::string, std::string> rows;
        for (const auto& entry : fs::directory_iterator(tree.path(directory)))
        {
            if (entry.is_regular_file())
            {
                const std::string name = entry.path().filename();
                const auto dot = name.rfind('.');
                rows[name] = "files: {fileName: " + name +
                             ", modificationTime: " + timeOf((fs::path(directory) / name).string()) +
                             ", fileType: " + (dot == std::string::npos ? "" : name.substr(dot + 1)) +
                             ", size: " + std::to_string(entry.file_size()) + "}";
            }
        }
        if (rows.empty())
        {
            return {"files:"};
        }
        Texts list;
        for (const auto& [name, row] : rows)
        {
            list.push_back(row);
        }
        return list;
    }
};

} // namespace

TEST_F(RealTreeTest, IsShownAsTheDiskHasIt)
{
    std::string commands = "ls\n";
    Texts expected = listed("");
    expected.insert(expected.begin(), "FileMConfigData=1");
    std::size_t shown = 0;
    for (const auto& directory : directoriesBelow(tree.path()))
    {
        const std::string dn = dnOf(directory);
        if (directory.find(',') != std::string::npos)
        {
            continue; // such a name is listed, but nothing below it
        }
        ++shown;
        commands += "ls " + inQuotes(dn) + "\n";
        std::ranges::copy(listed(directory), std::back_inserter(expected));
        if (!hasALinkToNowhere(directory))
        {
            commands += "get " + inQuotes(dn) + " files\n";
            std::ranges::copy(fileList(directory), std::back_inserter(expected));
        }
    }
    EXPECT_GE(shown, FEW_DIRECTORIES);

    const Outcome outcome = script(commands);
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_EQ(outcome.err, "");
    const Texts actual = lines(outcome.out);
    const auto [expectedLine, actualLine] = std::ranges::mismatch(expected, actual);
    EXPECT_EQ(expectedLine == expected.end() ? "the end" : *expectedLine,
              actualLine == actual.end() ? "the end" : *actualLine);
}

TEST_F(RealTreeTest, HasNoListOfFilesWhereALinkLeadsNowhere)
{
    tree.link("odd/nowhere/link", "missing");
    Texts dangling;
    for (const auto& directory : directoriesBelow(tree.path()))
    {
        if (hasALinkToNowhere(directory) && dangling.size() < 5)
        {
            dangling.push_back(directory);
        }
    }
    ASSERT_FALSE(dangling.empty());
    for (const auto& directory : dangling)
    {
        EXPECT_EQ(filem({"get", dnOf(directory), "files"}),
                  (Outcome{1, "",
                           failure("get", root + "," + dnOf(directory),
                                   "the directory can't be read, or a link in it leads nowhere")}));
    }
}
