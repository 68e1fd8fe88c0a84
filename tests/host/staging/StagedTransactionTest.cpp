#include "staging/StagedTransaction.h"

#include "StagedChanges.h"

#include "engine/ConfigurationText.h"
#include "engine/Refusal.h"
#include "support/LoadedLibrary.h"
#include "support/RecordedLog.h"
#include "support/TemporaryTree.h"

#include <array>
#include <filesystem>
#include <gtest/gtest.h>
#include <random>
#include <string>
#include <vector>

using namespace zolhost;
using zoltest::LoadedLibrary;
using zoltest::TemporaryTree;
using Kind = Request::Kind;

namespace
{

class StagedTransactionTest : public testing::Test
{
protected:
    std::string whyRefused(const Request& request, const Safeguards& safeguards = {})
    {
        try
        {
            transaction.stage(request, safeguards);
            return "staged";
        }
        catch (const Refusal& refusal)
        {
            EXPECT_EQ(refusal.dn(), request.place.dn());
            return refusal.what();
        }
    }

    TemporaryTree tree;
    Host host{{LoadedLibrary::path(), configurationFor(tree.path()), {}}};
    Holdings holdings;
    StagedTransaction transaction{host, holdings};
    const Place root{tree.path()};
};

/// All characters that a name in a DN can't hold or that mean something in it, and what they are shown as.
constexpr std::array ODD_NAMES = {"a",    "b=",      "b;",    "b?\?",  "c,d",        "c",
                                  "e+f",  "e\\2Bf",  "\"q\"", "q",     " g ",        "g",
                                  "h\\n", "h\nline", "i*",    "i\xff", "FileGroup+", "FileGroup\\2B",
                                  "?\?",  "..?\?x",  ",b",    "a,b",   "a?\?b"};

/// A directory of odd names, and requests for them. The same seed gives the same.
class OddDirectory
{
public:
    OddDirectory(const TemporaryTree& tree, std::string name, unsigned seed)
        : _tree(tree)
        , _name(std::move(name))
        , _random(seed)
    {
        for (const char* const directory : ODD_NAMES)
        {
            if (once(2))
            {
                fill(_name + "/" + directory);
            }
        }
    }

    Request request()
    {
        const Place directory = Place(_tree.path()).directory(_name).directory(anyName());
        switch (number(6))
        {
        case 0:
            return {Kind::MakeDirectory, once(2) ? directory : directory.directory(anyName())};
        case 1:
            return {Kind::RemoveDirectory, once(2) ? directory : directory.directory(anyName())};
        case 2:
            return {Kind::RemoveTree, directory};
        case 3:
            return {Kind::RemoveMatching, directory, once(2) ? "[a-c].*" : ".*[;=]"};
        default:
            return {Kind::RemoveFile, directory.file(anyName())};
        }
    }

    std::size_t number(std::size_t below) { return _random() % below; }

private:
    bool once(std::size_t inSo) { return number(inSo) == 0; }
    std::string anyName() { return ODD_NAMES.at(number(ODD_NAMES.size())); }

    void fill(const std::string& directory)
    {
        _tree.directory(directory);
        for (const char* const name : ODD_NAMES)
        {
            const std::string path = directory + "/" + name;
            switch (number(6))
            {
            case 0:
                _tree.file(path);
                break;
            case 1:
                _tree.directory(path);
                break;
            default:
                break;
            }
        }
    }

    const TemporaryTree& _tree;
    std::string _name;
    std::mt19937 _random;
};

} // namespace

TEST_F(StagedTransactionTest, KnowsWhatAnExpressionTakes)
{
    for (const std::string name : {"a.log", "b.log", "c.txt", ".filemnohousekeeping"})
    {
        tree.file("d/" + name);
    }
    tree.link("d/l.log", tree.path("d/a.log"));
    const Place directory = root.directory("d");
    auto staged = transaction.stage({Kind::RemoveMatching, directory, ".*\\.log"});
    EXPECT_EQ(staged.matched, 2U);
    EXPECT_FALSE(staged.matchedAll);
    EXPECT_EQ(transaction.plan().removedFiles(), (Plan::Paths{tree.path("d/a.log"), tree.path("d/b.log")}));
    staged = transaction.stage({Kind::RemoveMatching, directory, ".*"});
    EXPECT_EQ(staged.matched, 1U) << "the others are taken already";
    EXPECT_TRUE(staged.matchedAll);
}

TEST_F(StagedTransactionTest, TakesBackToWhereItWas)
{
    tree.file("d/f");
    transaction.stage({Kind::MakeDirectory, root.directory("new")});
    transaction.stage({Kind::RemoveFile, root.directory("d").file("f")});
    transaction.stage({Kind::MakeDirectory, root.directory("other")});
    transaction.takeBackTo(1);
    EXPECT_EQ(transaction.requests().size(), 1U);
    EXPECT_EQ(transaction.plan().madeDirectories(), Plan::Paths{tree.path("new/")});
    EXPECT_TRUE(transaction.plan().removedFiles().empty());
    EXPECT_TRUE(transaction.commit().receipt.isComplete());
    EXPECT_EQ(tree.listing(), (std::vector<std::string>{"d d", "d new", "f d/f 1"}));
}

TEST_F(StagedTransactionTest, TellsWhichOthersHoldTheSame)
{
    tree.file("d/f");
    StagedTransaction other(host, holdings);
    other.stage({Kind::RemoveTree, root.directory("d")});
    transaction.stage({Kind::RemoveFile, root.directory("d").file("f")});
    transaction.stage({Kind::MakeDirectory, root.directory("new")});
    const auto held = transaction.heldElsewhere();
    ASSERT_EQ(held.size(), 1U);
    EXPECT_EQ(held[0].path, tree.path("d/f"));
    EXPECT_EQ(held[0].txHandles, std::vector<unsigned long>{other.handle()});
    EXPECT_TRUE(other.commit().failure.empty());
    EXPECT_TRUE(transaction.heldElsewhere().empty());
}

TEST_F(StagedTransactionTest, RefusesWhatWouldDoMoreThanTheNameSays)
{
    const TemporaryTree elsewhere;
    elsewhere.file("f");
    tree.file("d/sub/f");
    tree.file("d/g");
    tree.file("top");
    tree.file("d/.filemnodirectorycreate");
    tree.link("out", elsewhere.path());
    tree.link("d/in", tree.path("d/sub"));
    const Place directory = root.directory("d");
    const std::string links = " is a symbolic link; --through-links goes through links";
    const std::string out =
        "out is a symbolic link that leads out of the tree; --through-links goes through links";
    struct Case
    {
        Request request;
        std::string why;
    };
    const Case cases[] = {
        {{Kind::RemoveFile, directory.file("sub")},
         "it is a directory, which would go with all that is in it, whatever markers say"},
        {{Kind::RemoveFile, directory.file(".filemnodirectorycreate")}, "no such object: it is a marker"},
        {{Kind::RemoveFile, root.file("top")},
         "a file that lies directly in the root is no object: its name would stand for the root with all "
         "that is "
         "in it"},
        {{Kind::RemoveFile, root.file("none")}, "no such object"},
        {{Kind::RemoveFile, root.directory("out").file("f")}, out},
        {{Kind::MakeDirectory, root.directory("out").directory("new")}, out},
        {{Kind::RemoveMatching, root.directory("out"), "f"}, out},
        {{Kind::RemoveFile, directory.directory("in").file("f")}, "d/in" + links},
        {{Kind::RemoveDirectory, directory.directory("in")},
         "it is a symbolic link to " + tree.path("d/sub")},
        {{Kind::RemoveTree, root},
         "it is the root: all of the tree would go, the root directory too; "
         "--force-root does it"},
        {{Kind::RemoveDirectory, directory.directory("g")}, "it is no directory"},
        {{Kind::RemoveTree, directory.directory("none")}, "no such object"},
        {{Kind::MakeDirectory, directory}, "it is there already"},
        {{Kind::MakeDirectory, directory.directory("g")}, "something else of this name is there"},
        {{Kind::MakeDirectory, root.directory("x").directory("y")},
         "the directory above it isn't there; -p makes it too"},
        {{Kind::MakeDirectory, directory.directory("new")},
         "FileGroup does not allow child FileGroup to be created"},
        {{Kind::RemoveDirectory, directory}, "FileGroup is not allowed to be deleted"},
        {{Kind::RemoveDirectory, directory.directory("sub")}, "it isn't empty: d/sub/f would remain"},
        {{Kind::RemoveMatching, directory, "("}, "Invalid regular expression"},
        {{Kind::MakeDirectory, root.directory("a|b")}, "FileGroup contains illegal character(|)"},
        {{Kind::MakeDirectory, root.directory("...")}, "FileGroup name not allowed (...)"},
    };
    for (const auto& [request, why] : cases)
    {
        EXPECT_EQ(whyRefused(request), why) << request.place.dn();
        EXPECT_TRUE(transaction.plan().isEmpty());
    }
}

TEST_F(StagedTransactionTest, RemovesNothingByANameThatReachesSomethingElse)
{
    tree.file("d/a,b/f");
    tree.file("d/a/f");
    tree.file("d/c/x");
    tree.file("d/c?\?b/?\?");
    tree.directory("d/c?\?b/?\?c");
    tree.file("top");
    const auto before = tree.listing();
    const Place directory = root.directory("d");
    EXPECT_THROW(transaction.stage({Kind::RemoveFile, directory.directory("a,b").file("f")}), Refusal);
    EXPECT_THROW(transaction.stage({Kind::RemoveTree, directory.directory("a,b")}), Refusal);
    EXPECT_THROW(transaction.stage({Kind::RemoveDirectory, directory.directory("c?\?b").directory("?\?c")}),
                 Refusal);
    EXPECT_THROW(transaction.stage({Kind::RemoveMatching, directory.directory("c"), "x\\"}), Refusal);
    EXPECT_EQ(tree.listing(), before);
    transaction.stage({Kind::RemoveFile, directory.directory("c?\?b").file("?\?")});
    EXPECT_TRUE(transaction.commit().receipt.isComplete());
    EXPECT_TRUE(tree.exists("d/c/x"));
    EXPECT_FALSE(tree.exists("d/c?\?b/?\?"));
}

TEST_F(StagedTransactionTest, KnowsBeforehandWhatTheComponentRefuses)
{
    tree.file("d/.filemnodirectorycreate");
    tree.file("e/sub/f");
    tree.file("e/sub/g");
    tree.file("e/h");
    tree.link("l", tree.path("e"));
    tree.link("e/m", "nowhere");
    const Place e = root.directory("e");
    for (const Request& request :
         {Request{Kind::MakeDirectory, root.directory("d").directory("x")}, Request{Kind::RemoveDirectory, e},
          Request{Kind::RemoveDirectory, root.directory("d")}, Request{Kind::RemoveFile, e.file("m")},
          Request{Kind::RemoveTree, root.directory("l")}, Request{Kind::RemoveMatching, e, "["},
          Request{Kind::MakeDirectory, root.directory("a|b")},
          Request{Kind::MakeDirectory, root.directory("....")}, Request{Kind::RemoveTree, e},
          Request{Kind::RemoveFile, e.file("h")}, Request{Kind::MakeDirectory, e.directory("new")}})
    {
        const std::string reason = reasonAgainst(request, transaction.plan());
        EXPECT_EQ(whyRefused(request), reason.empty() ? "staged" : reason) << request.place.dn();
    }
}

TEST_F(StagedTransactionTest, ShowsBeforehandWhatItDoesToNamesOfAnyKind)
{
    const zoltest::RecordedLog unread(0);
    constexpr unsigned CASES = 100;
    std::size_t changes = 0;
    std::size_t refusals = 0;
    for (unsigned seed = 0; seed < CASES && !HasFailure(); ++seed)
    {
        SCOPED_TRACE("seed " + std::to_string(seed));
        OddDirectory random(tree, "tree" + std::to_string(seed), seed);
        StagedTransaction odd(host, holdings);
        for (std::size_t i = 1 + random.number(12); i > 0; --i)
        {
            try
            {
                odd.stage(random.request());
            }
            catch (const Refusal&)
            {
                ++refusals;
            }
        }
        const Preview preview = odd.preview();
        const zoltest::Expectation expectation(preview, tree.path());
        EXPECT_TRUE(odd.commit().receipt.isComplete());
        EXPECT_EQ(zoltest::snapshotOf(tree.path()), expectation.after());
        changes += preview.made.size() + preview.removed.size();
        std::filesystem::remove_all(tree.path("tree" + std::to_string(seed)));
    }
    EXPECT_GE(changes, CASES);
    EXPECT_GE(refusals, CASES);
}
