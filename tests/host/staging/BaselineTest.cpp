#include "staging/Baseline.h"

#include "support/TemporaryTree.h"

#include <chrono>
#include <filesystem>
#include <gtest/gtest.h>
#include <stdexcept>
#include <string>
#include <unistd.h>
#include <vector>

using zolhost::Baseline;
using zoltest::TemporaryTree;
using Texts = std::vector<std::string>;

namespace
{

namespace fs = std::filesystem;

class BaselineTest : public testing::Test
{
protected:
    void remember(const std::string& name) { baseline.remember(tree.path(name)); }

    /// "staged: path what", names relative to the tree.
    Texts drift() const
    {
        const std::vector<std::string> words = {"appeared", "vanished", "changed", "replaced"};
        const std::size_t prefix = tree.path().size() + 1;
        Texts texts;
        for (const auto& drift : baseline.drift())
        {
            const std::string name = drift.path.size() < prefix ? "." : drift.path.substr(prefix);
            texts.push_back(drift.staged.substr(prefix) + ": " + name + " " +
                            words[static_cast<std::size_t>(drift.what)]);
        }
        return texts;
    }

    /// Another file of the same name, with the same content.
    void replace(const std::string& name) const
    {
        fs::copy_file(tree.path(name), tree.path("other"));
        fs::rename(tree.path("other"), tree.path(name));
    }

    TemporaryTree tree;
    Baseline baseline;
};

} // namespace

TEST_F(BaselineTest, HasNoDriftWhileNothingChanges)
{
    tree.file("d/e/f");
    tree.link("d/l", "nowhere");
    tree.file("g");
    remember("d/");
    remember("g");
    remember("new/");
    EXPECT_EQ(drift(), Texts{});
}

TEST_F(BaselineTest, OfAFileSeesItsContentModeAndOwner)
{
    for (const char* const name : {"content", "mode", "gone", "replaced", "kind", "same"})
    {
        tree.file(name, "123");
        remember(name);
    }
    tree.file("content", "12");
    tree.chmod("mode", 0600);
    fs::remove(tree.path("gone"));
    replace("replaced");
    fs::remove(tree.path("kind"));
    tree.directory("kind");
    EXPECT_EQ(drift(), (Texts{"content: content changed", "gone: gone vanished", "kind: kind replaced",
                              "mode: mode changed", "replaced: replaced replaced"}));
}

TEST_F(BaselineTest, OfAFileSeesNewContentOfTheSameSize)
{
    tree.file("f", "123");
    remember("f");
    const auto before = fs::last_write_time(tree.path("f"));
    tree.file("f", "321");
    fs::last_write_time(tree.path("f"), before + std::chrono::nanoseconds(1));
    EXPECT_EQ(drift(), Texts{"f: f changed"});
}

TEST_F(BaselineTest, SeesANewOwner)
{
    if (geteuid() != 0)
    {
        GTEST_SKIP() << "only root can give files away";
    }
    tree.file("f");
    remember("f");
    EXPECT_EQ(chown(tree.path("f").c_str(), 1, 1), 0);
    EXPECT_EQ(drift(), Texts{"f: f changed"});
}

TEST_F(BaselineTest, OfATreeSeesAllThatIsInIt)
{
    for (const char* const name : {"a/changed", "a/gone", "b/replaced", "c/same", "d/mode/x", "z"})
    {
        tree.file(std::string("t/") + name);
    }
    tree.directory("t/empty");
    tree.file("t/going/1");
    tree.file("t/going/2");
    remember("t/");
    tree.file("t/a/0");
    tree.file("t/a/changed", "changed");
    fs::remove(tree.path("t/a/gone"));
    replace("t/b/replaced");
    tree.chmod("t/d/mode", 0700);
    tree.file("t/empty/1");
    tree.file("t/new/1");
    tree.link("t/zz", "nowhere");
    fs::remove_all(tree.path("t/going"));
    EXPECT_EQ(drift(), (Texts{"t/: t/a/0 appeared", "t/: t/a/changed changed", "t/: t/a/gone vanished",
                              "t/: t/b/replaced replaced", "t/: t/d/mode changed", "t/: t/empty/1 appeared",
                              "t/: t/going vanished", "t/: t/new appeared", "t/: t/zz appeared"}));
}

TEST_F(BaselineTest, OfATreeThatIsGoneOrNewTellsNothingInIt)
{
    tree.file("t/a/b");
    tree.file("u/a/b");
    remember("t/");
    remember("u/");
    fs::remove_all(tree.path("t"));
    fs::rename(tree.path("u"), tree.path("v"));
    tree.file("u/a/c");
    EXPECT_EQ(drift(), (Texts{"t/: t vanished", "u/: u replaced"}));
}

TEST_F(BaselineTest, OfANewDirectorySeesThatItAppeared)
{
    remember("a/");
    remember("b/");
    remember("c/d/");
    tree.directory("a");
    tree.file("b");
    tree.directory("c/d");
    EXPECT_EQ(drift(), (Texts{"a/: a appeared", "b/: b appeared", "c/d/: c/d appeared"}));
}

TEST_F(BaselineTest, OfANewDirectorySeesTheNearestOneAboveIt)
{
    for (const char* const name : {"gone", "mode", "replaced", "same"})
    {
        tree.directory(name);
        remember(std::string(name) + "/x/y/");
    }
    fs::remove(tree.path("gone"));
    tree.chmod("mode", 0700);
    fs::rename(tree.path("replaced"), tree.path("moved"));
    tree.directory("replaced");
    tree.file("same/unrelated");
    EXPECT_EQ(drift(), (Texts{"gone/x/y/: gone vanished", "mode/x/y/: mode changed",
                              "replaced/x/y/: replaced replaced"}));
}

TEST_F(BaselineTest, OfANewDirectorySeesTheMarkerThatForbidsIt)
{
    tree.directory("a");
    tree.file("b/.filemnodirectorycreate");
    remember("a/x/");
    remember("b/x/");
    tree.file("a/.filemnodirectorycreate");
    tree.file("a/.filemnodirectorydelete");
    fs::remove(tree.path("b/.filemnodirectorycreate"));
    EXPECT_EQ(drift(), (Texts{"a/x/: a/.filemnodirectorycreate appeared",
                              "b/x/: b/.filemnodirectorycreate vanished"}));
}

TEST_F(BaselineTest, OfANewDirectoryBehindALinkSeesWhereTheLinkLeads)
{
    tree.directory("d");
    tree.directory("e");
    tree.link("l", "d");
    remember("l/x/");
    EXPECT_EQ(drift(), Texts{});
    fs::remove(tree.path("l"));
    tree.link("l", "e");
    EXPECT_EQ(drift(), Texts{"l/x/: l replaced"});
}

TEST_F(BaselineTest, KeepsWhatWasSeenFirst)
{
    tree.file("f");
    remember("f");
    remember("new/");
    tree.file("f", "changed");
    tree.directory("new");
    remember("f");
    remember("new/");
    EXPECT_EQ(drift(), (Texts{"f: f changed", "new/: new appeared"}));
}

TEST_F(BaselineTest, ForgetsOneOrAll)
{
    for (const char* const name : {"a", "b"})
    {
        tree.file(name);
        remember(name);
        remember(std::string(name) + "-new/");
    }
    fs::remove(tree.path("a"));
    fs::remove(tree.path("b"));
    tree.directory("a-new");
    tree.directory("b-new");
    baseline.forget(tree.path("a"));
    baseline.forget(tree.path("a-new/"));
    EXPECT_EQ(drift(), (Texts{"b: b vanished", "b-new/: b-new appeared"}));
    baseline.clear();
    EXPECT_EQ(drift(), Texts{});
    remember("b");
    EXPECT_EQ(drift(), Texts{}) << "it isn't there, which is how it is remembered now";
}

TEST_F(BaselineTest, TellsItsProgressAndCanBeEndedByIt)
{
    for (int i = 0; i < 600; ++i)
    {
        tree.file("d/" + std::to_string(i));
    }
    std::vector<std::size_t> calls;
    const auto note = [&](std::size_t done) { calls.push_back(done); };
    const auto end = [](std::size_t) { throw std::runtime_error("enough"); };
    EXPECT_THROW(baseline.remember(tree.path("d/"), end), std::runtime_error);
    baseline.remember(tree.path("d/"), note);
    EXPECT_EQ(calls, (std::vector<std::size_t>{256, 512}));
    calls.clear();
    EXPECT_EQ(baseline.drift(note), std::vector<Baseline::Drift>{});
    EXPECT_EQ(calls, (std::vector<std::size_t>{256, 512}));
    EXPECT_THROW(baseline.drift(end), std::runtime_error);
}
