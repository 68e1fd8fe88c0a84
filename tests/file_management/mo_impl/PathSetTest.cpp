#include "PathSet.h"

#include "LiteralPath.h"
#include "PathCompare.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <iterator>
#include <random>
#include <set>
#include <string>
#include <string_view>
#include <vector>

using testing::ElementsAre;
using testing::IsEmpty;
using ZolFileManagement::literalPath;
using ZolFileManagement::PathSet;

static_assert(std::input_iterator<PathSet::Iterator>);

namespace
{

using PlainSet = std::set<Poco::Path, ZolFileManagement::PathCompare>;

/// All that one Poco::Path can be told from another by.
struct Parts
{
    explicit Parts(const Poco::Path& path)
        : isAbsolute(path.isAbsolute())
        , node(path.getNode())
        , device(path.getDevice())
        , version(path.version())
        , name(path.getFileName())
    {
        for (int i = 0; i < path.depth(); ++i)
        {
            directories.push_back(path.directory(i));
        }
    }
    bool operator==(const Parts&) const = default;

    bool isAbsolute;
    std::string node;
    std::string device;
    std::string version;
    std::string name;
    std::vector<std::string> directories;
};

template<class Paths>
std::vector<Parts> partsOf(const Paths& paths)
{
    std::vector<Parts> parts;
    for (const Poco::Path& path : paths)
    {
        parts.emplace_back(path);
    }
    return parts;
}

PlainSet plainChildrenOf(const Poco::Path& directory, const PlainSet& paths)
{
    PlainSet children;
    for (const Poco::Path& path : paths)
    {
        if (path.parent().toString() == directory.toString())
        {
            children.insert(path);
        }
    }
    return children;
}

std::vector<std::string> plainTakeStartingWith(std::string_view prefix, PlainSet& paths)
{
    std::vector<std::string> taken;
    for (auto path = paths.begin(); path != paths.end();)
    {
        const std::string text = path->toString();
        if (text.starts_with(prefix))
        {
            taken.push_back(text);
            path = paths.erase(path);
        }
        else
        {
            ++path;
        }
    }
    return taken;
}

/// Few names, so that paths meet, with the bytes that sort around a slash and those that POCO reads
/// otherwise in a text. Some are of any bytes.
class RandomPaths
{
public:
    explicit RandomPaths(unsigned int seed)
        : _random(seed)
    {}

    std::size_t below(std::size_t limit)
    {
        return std::uniform_int_distribution<std::size_t>(0, limit - 1)(_random);
    }

    std::string name()
    {
        static const std::vector<std::string> names = {"a",  "a-", "a.", "a0", "a!", "b",  "b,",   "~",
                                                       "a:", ";1", "..", ".",  "",   "\\", "\xff", "a\xff"};
        if (below(4) != 0)
        {
            return names[below(names.size())];
        }
        std::string bytes;
        for (std::size_t length = below(20); length > 0; --length)
        {
            const char byte = static_cast<char>(below(256));
            bytes += byte == '/' ? 'x' : byte;
        }
        return bytes;
    }

    /// As they come about: a root and names below it, and a created directory below that.
    Poco::Path path()
    {
        std::string text = below(4) == 0 ? "" : "/";
        for (std::size_t depth = below(5); depth > 0; --depth)
        {
            text += name() + "/";
        }
        Poco::Path path = literalPath(text + name());
        switch (below(3))
        {
        case 0:
            return path.makeFile();
        case 1:
            return path.makeDirectory();
        default:
            return path.makeDirectory().pushDirectory("n" + name());
        }
    }

private:
    std::mt19937 _random;
};

PathSet setOf(const std::vector<const char*>& texts)
{
    PathSet paths;
    for (const char* text : texts)
    {
        paths.insert(Poco::Path(text));
    }
    return paths;
}

} // namespace

TEST(PathSet, DoesWhatASetOfPathsDoes)
{
    for (unsigned int seed = 1; seed <= 50; ++seed)
    {
        SCOPED_TRACE(seed);
        RandomPaths random(seed);
        PathSet ours;
        PlainSet plain;
        for (int step = 0; step < 100 && !HasFailure(); ++step)
        {
            const Poco::Path path = random.path();
            switch (random.below(8))
            {
            case 0:
                EXPECT_EQ(ours.erase(path), plain.erase(path));
                break;
            case 1:
                if (!plain.empty())
                {
                    EXPECT_EQ(Parts(ours.takeFirst()), Parts(*plain.begin()));
                    plain.erase(plain.begin());
                }
                break;
            case 2:
                EXPECT_EQ(ours.takeStartingWith(path.toString()),
                          plainTakeStartingWith(path.toString(), plain));
                break;
            default:
                ours.insert(path);
                plain.insert(path);
            }
            EXPECT_EQ(ours.contains(path), plain.contains(path));
            EXPECT_EQ(ours.containsText(path.toString()), plain.contains(path));
            EXPECT_EQ(partsOf(ours), partsOf(plain));
            EXPECT_EQ(ours.size(), plain.size());
            EXPECT_EQ(ours.empty(), plain.empty());
        }
    }
}

TEST(PathSet, GivesTheChildrenOfADirectoryAsALookAtEachParentDoes)
{
    std::size_t found = 0;
    for (unsigned int seed = 1; seed <= 40; ++seed)
    {
        SCOPED_TRACE(seed);
        RandomPaths random(seed);
        PathSet ours;
        PlainSet plain;
        for (int i = 0; i < 60; ++i)
        {
            // as createMo makes them: a name that isn't of dots alone, in a directory
            const Poco::Path path = random.path().makeDirectory().pushDirectory("n" + random.name());
            ours.insert(path);
            plain.insert(path);
        }
        std::vector<Poco::Path> directories = {Poco::Path("/")};
        for (const Poco::Path& path : plain)
        {
            directories.push_back(path);
            directories.push_back(path.parent());
            directories.push_back(Poco::Path(path).makeFile());
        }
        for (const Poco::Path& directory : directories)
        {
            if (!directory.toString().empty()) // no directory that could be opened
            {
                const PathSet children = ours.childrenOf(directory);
                EXPECT_EQ(partsOf(children), partsOf(plainChildrenOf(directory, plain)))
                    << directory.toString();
                found += children.size();
            }
        }
    }
    EXPECT_GT(found, 40 * 60);
}

TEST(PathSet, ChildrenAreAmongNamesThatSortAroundASlash)
{
    const PathSet paths = setOf({"/fs/a/", "/fs/a-/", "/fs/a/b/c/", "/fs/a/b-/d/", "/fs/a/b/", "/fs/a/b0/",
                                 "/fs/a0/b/", "/fs/b/", "/fs/a/e/f/"});
    EXPECT_THAT(paths.childrenOf(Poco::Path("/fs/a/")).texts(), ElementsAre("/fs/a/b/", "/fs/a/b0/"));
    EXPECT_THAT(paths.childrenOf(Poco::Path("/fs/")).texts(), ElementsAre("/fs/a-/", "/fs/a/", "/fs/b/"));
    EXPECT_THAT(paths.childrenOf(Poco::Path("/fs/a/e/")).texts(), ElementsAre("/fs/a/e/f/"));
}

TEST(PathSet, AFileHasNoChildren)
{
    const PathSet paths = setOf({"/fs/a/", "/fs/ab/"});
    EXPECT_THAT(paths.childrenOf(Poco::Path("/fs/a")).texts(), IsEmpty());
}

TEST(PathSet, IsReadStepByStep)
{
    PathSet paths;
    paths.insert(literalPath("/a/"));
    paths.insert(literalPath("/b"));
    PathSet::Iterator path = paths.begin();
    EXPECT_EQ((*path++).toString(), "/a/");
    EXPECT_EQ((*path).toString(), "/b");
    EXPECT_EQ(++path, paths.end());
}

TEST(PathSet, ChildrenAreACopy)
{
    PathSet paths = setOf({"/fs/a/"});
    PathSet children = paths.childrenOf(Poco::Path("/fs/"));
    paths.clear();
    EXPECT_EQ(children.takeFirst().toString(), "/fs/a/");
    EXPECT_TRUE(children.empty());
}
