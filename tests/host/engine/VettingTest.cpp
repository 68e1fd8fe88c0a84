#include "engine/Vetting.h"

#include "engine/Place.h"
#include "engine/Refusal.h"
#include "support/TemporaryTree.h"

#include <functional>
#include <gtest/gtest.h>
#include <string>

using namespace zolhost;
using zoltest::TemporaryTree;

namespace
{

std::string outcomeOf(const std::function<void()>& check)
{
    try
    {
        check();
        return "fine";
    }
    catch (const Refusal& refusal)
    {
        const char* const kinds[] = {"bad name: ", "missing: ", "refused: "};
        return kinds[static_cast<int>(refusal.kind())] + std::string(refusal.what());
    }
}

} // namespace

TEST(Vetting, AsksForNothingThatTheModelDoesNotOffer)
{
    const Place root("/tree");
    const Place config = root.configuration();
    const Place group = root.directory("d");
    const Place file = group.file("f");
    const Place fileInRoot = root.file("f");
    struct Case
    {
        std::string outcome;
        std::string expected;
    };
    using namespace vetting;
    const Case cases[] = {
        {outcomeOf([&] { requireCreatable(group); }), "fine"},
        {outcomeOf([&] { requireCreatable(root); }), "bad name: a FileM can't be created"},
        {outcomeOf([&] { requireCreatable(config); }), "bad name: a FileMConfigData can't be created"},
        {outcomeOf([&] { requireCreatable(file); }), "bad name: a FileInformation can't be created"},
        {outcomeOf([&] { requireDeletable(group); }), "fine"},
        {outcomeOf([&] { requireDeletable(file); }), "fine"},
        {outcomeOf([&] { requireDeletable(root); }), "refused: the root of the tree can't be removed"},
        {outcomeOf([&] { requireDeletable(fileInRoot); }),
         "refused: a file that lies directly in the root is no object: its name would stand for the root "
         "with "
         "all that is in it"},
        {outcomeOf([&] { requireDeletable(config); }), "bad name: a FileMConfigData can't be removed"},
        {outcomeOf([&] { requireAction(group, "removeFile"); }), "fine"},
        {outcomeOf([&] { requireAction(group, "remove"); }), "fine"},
        {outcomeOf([&] { requireAction(file, "remove"); }), "fine"},
        {outcomeOf([&] { requireAction(file, "removeFile"); }),
         "bad name: a FileInformation has no action removeFile"},
        {outcomeOf([&] { requireAction(root, "remove"); }), "bad name: a FileM has no action remove"},
        {outcomeOf([&] { requireAttribute(group, "files"); }), "fine"},
        {outcomeOf([&] { requireAttribute(file, "files"); }),
         "bad name: a FileInformation has no attribute files"},
        {outcomeOf([&] { requireChildClass(root, "FileGroup"); }), "fine"},
        {outcomeOf([&] { requireChildClass(root, "FileInformation"); }),
         "bad name: there is no FileInformation below a FileM"},
        {outcomeOf([&] { requireChildClass(group, "Nonsense"); }),
         "bad name: there is no Nonsense below a FileGroup"},
    };
    for (const auto& [outcome, expected] : cases)
    {
        EXPECT_EQ(outcome, expected);
    }
}

TEST(Vetting, AsksForNothingByANameThatTheComponentTakesForAnother)
{
    const TemporaryTree tree;
    tree.directory("d");
    tree.file("d/a?\?b");
    tree.file("d/c?\?d");
    tree.file("d/c;d");
    const Place group = Place(tree.path()).directory("d");
    using namespace vetting;
    const std::string comma =
        "refused: no name reaches it: a comma in a name ends the value, and \"\\2B\" stands for a plus";
    EXPECT_EQ(outcomeOf([&] { requireReachable(group); }), "fine");
    EXPECT_EQ(outcomeOf([&] { requireReachable(group.directory("a+b")); }), "fine");
    EXPECT_EQ(outcomeOf([&] { requireReachable(group.directory("a,b")); }), comma);
    EXPECT_EQ(outcomeOf([&] { requireReachable(group.directory("a\\2Bb")); }), comma);
    EXPECT_EQ(outcomeOf([&] { requireReachableToDelete(group.file("a?\?b")); }), "fine");
    EXPECT_EQ(outcomeOf([&] { requireReachableToDelete(group.file("c?\?d")); }),
              "refused: \"?\?\" in its name stands for another character first, and " + tree.path("d/c;d") +
                  " would be removed");
}

TEST(Vetting, DeletesNothingOutsideOfTheTreeForAnEqualsSignBehindQuestionMarks)
{
    const TemporaryTree tree;
    tree.file("proc/self?\?Other=status");
    const Place file = Place(tree.path()).directory("proc").file("self?\?Other=status");
    EXPECT_EQ(outcomeOf([&] { vetting::requireReachableToDelete(file); }),
              "refused: \"?\?\" in its name stands for another character first, and /proc/self/status "
              "would be removed");
    tree.directory("?\?x=..");
    const Place directory = Place(tree.path()).directory("?\?x=..");
    EXPECT_EQ(outcomeOf([&] { vetting::requireReachableToDelete(directory); }),
              "refused: \"?\?\" in its name stands for another character first, and / would be removed");
}
