#include "support/AttributeText.h"
#include "support/DistinguishedNames.h"
#include "support/LoadedComponent.h"
#include "support/TemporaryTree.h"
#include "support/Transaction.h"

#include <array>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

using zoltest::fileGroup;
using zoltest::fileInformation;
using zoltest::fileM;
using zoltest::LoadedComponent;
using zoltest::TemporaryTree;

namespace
{

using Texts = std::vector<std::string>;

void releaseNothing(ZolMoAttributeValueContainer_3*) {}
void releaseNothing(ZolMoAttributeValueContainer_3**) {}

constexpr unsigned long long UNTOUCHED = 4711;

class Misuse : public testing::Test
{
protected:
    /// Handles that stand for no open transaction, with what they are.
    std::vector<std::pair<unsigned long, std::string>> unknownHandles()
    {
        component.join(50)->finish();
        {
            const auto committed = component.join(51);
            committed->commit();
        }
        {
            const auto aborted = component.join(52);
            aborted->abort();
        }
        return {{0, "zero"},
                {1, "one that was never joined"},
                {~0UL, "the greatest"},
                {50, "one that has finished"},
                {51, "one that was committed and has finished"},
                {52, "one that was aborted and has finished"}};
    }

    /// A call of each operation on a directory with a file, and its code for an unknown handle. What such a
    /// call writes through its pointers is looked at in it.
    struct Call
    {
        std::string operation;
        std::function<ZolReturnT(unsigned long)> call;
        ZolReturnT code;
    };

    std::vector<Call> calls()
    {
        return {
            {"prepare", [&](unsigned long handle) { return resource.prepare(handle); }, 0},
            {"commit", [&](unsigned long handle) { return resource.commit(handle); }, -2},
            {"abort", [&](unsigned long handle) { return resource.abort(handle); }, -2},
            {"finish", [&](unsigned long handle) { return resource.finish(handle); }, -2},
            {"setMoAttribute",
             [&](unsigned long handle) {
                 return objects.setMoAttribute(handle, logs.c_str(), "fileGroupId", nullptr);
             },
             -1},
            {"getMoAttribute",
             [&](unsigned long handle) {
                 ZolMoAttributeValueResult_3 result = {releaseNothing, nullptr};
                 const ZolReturnT code = objects.getMoAttribute(handle, logs.c_str(), "fileGroupId", &result);
                 EXPECT_EQ(result.releaseCallback, nullptr);
                 return code;
             },
             -2},
            {"getMoAttributes",
             [&](unsigned long handle) {
                 std::array<const char*, 2> names = {"fileGroupId", nullptr};
                 ZolMoAttributeValuesResult_3 result = {releaseNothing, nullptr};
                 const ZolReturnT code = objects.getMoAttributes(handle, logs.c_str(), names.data(), &result);
                 EXPECT_EQ(result.releaseCallback, nullptr);
                 return code;
             },
             -2},
            {"getMoAttributes of no list",
             [&](unsigned long handle) {
                 ZolMoAttributeValuesResult_3 result = {releaseNothing, nullptr};
                 const ZolReturnT code = objects.getMoAttributes(handle, logs.c_str(), nullptr, &result);
                 EXPECT_EQ(result.releaseCallback, nullptr);
                 return code;
             },
             -2},
            {"newMoIterator",
             [&](unsigned long handle) {
                 unsigned long long id = UNTOUCHED;
                 const ZolReturnT code = objects.newMoIterator(handle, fileM.c_str(), "FileGroup", &id);
                 EXPECT_EQ(id, UNTOUCHED);
                 return code;
             },
             -2},
            {"createMo",
             [&](unsigned long handle) {
                 return objects.createMo(handle, fileM.c_str(), "FileGroup", "fileGroupId", "new", nullptr);
             },
             -1},
            {"deleteMo", [&](unsigned long handle) { return objects.deleteMo(handle, file.c_str()); }, -1},
            {"action",
             [&](unsigned long handle) {
                 ZolMoAttributeValueContainer_3 container{};
                 ZolMoAttributeValueResult_3 result = {releaseNothing, &container};
                 const ZolReturnT code = objects.action(handle, logs.c_str(), "remove", nullptr, &result);
                 EXPECT_EQ(result.container, &container);
                 return code;
             },
             -1},
            {"action without a result",
             [&](unsigned long handle) {
                 return objects.action(handle, logs.c_str(), "remove", nullptr, nullptr);
             },
             -1},
            {"existsMo",
             [&](unsigned long handle) {
                 bool exists = true;
                 const ZolReturnT code = objects.existsMo(handle, "nonsense", &exists);
                 EXPECT_TRUE(exists);
                 return code;
             },
             -2},
            {"countMoChildren",
             [&](unsigned long handle) {
                 unsigned long long count = UNTOUCHED;
                 const ZolReturnT code = objects.countMoChildren(handle, logs.c_str(), "FileGroup", &count);
                 EXPECT_EQ(count, UNTOUCHED);
                 return code;
             },
             -2},
        };
    }

    /// Code and name of the next child, "none" for a null pointer.
    std::pair<ZolReturnT, std::string> next(unsigned long long iterator) const
    {
        std::array<char, 2> untouched = {'x', '\0'};
        char* name = untouched.data();
        const ZolReturnT code = objects.nextMo(iterator, &name);
        return {code, name == nullptr ? "none" : name};
    }

    TemporaryTree tree;
    const std::string path = tree.file("logs/a.txt");
    LoadedComponent component{tree.path()};
    const ZolOamSpiManagedObject_3& objects = component.objects();
    const ZolOamSpiTransactionalResource_1& resource = component.resource();
    const std::string logs = fileGroup("logs");
    const std::string file = fileInformation("a.txt", logs);
};

using Code = std::pair<ZolReturnT, std::string>;

} // namespace

TEST_F(Misuse, UnknownHandleHasItsCodeInEachOperationAndNothingHappens)
{
    for (const auto& [handle, kind] : unknownHandles())
    {
        for (const auto& [operation, call, code] : calls())
        {
            EXPECT_EQ(call(handle), code) << operation << " of " << kind;
        }
    }
    EXPECT_EQ(tree.listing(), (Texts{"d logs", "f logs/a.txt 1"}));
    EXPECT_EQ(component.host.messages(), Texts{});
}

TEST_F(Misuse, UnknownHandleLeavesTheOpenTransactionsAlone)
{
    const auto open = component.join(7);
    ASSERT_EQ(open->create(fileM, "mine"), 0);
    const auto iterator = open->newIterator(fileM, "FileGroup");
    for (const auto& [handle, kind] : unknownHandles())
    {
        for (const auto& operation : calls())
        {
            operation.call(handle);
        }
    }
    EXPECT_EQ(next(iterator), Code(0, "logs"));
    EXPECT_EQ(next(iterator), Code(0, "mine"));
    EXPECT_EQ(open->commit(), 0);
    EXPECT_EQ(tree.listing(), (Texts{"d logs", "d mine", "f logs/a.txt 1"}));
}

TEST_F(Misuse, OtherTransactionIsOutOfReachByItsHandle)
{
    const auto mine = component.join(7);
    const auto other = component.join(8);
    ASSERT_EQ(mine->create(fileM, "mine"), 0);
    ASSERT_EQ(other->deleteMo(file), 0);
    EXPECT_EQ(mine->count(logs, "FileInformation"), 1U);
    EXPECT_EQ(other->exists(fileGroup("mine")), "no");
    EXPECT_EQ(other->abort(), 0);
    EXPECT_EQ(other->finish(), 0);
    EXPECT_EQ(mine->commit(), 0);
    EXPECT_EQ(tree.listing(), (Texts{"d logs", "d mine", "f logs/a.txt 1"}));
}

TEST_F(Misuse, IteratorThatIsNotKnownGivesMinusTwoAndNoName)
{
    const auto tx = component.join(7);
    const auto known = tx->newIterator(logs, "FileInformation");
    for (const unsigned long long id : {0ULL, known + 1, ~0ULL})
    {
        EXPECT_EQ(next(id), Code(-2, "none")) << id;
        EXPECT_EQ(objects.finalizeMoIterator(id), 0) << id;
    }
    EXPECT_EQ(next(known), Code(0, "a.txt"));
}

TEST_F(Misuse, StaleIteratorHasTheCodeOfHowItsTransactionEnded)
{
    struct Case
    {
        std::string end;
        std::function<void(zoltest::Transaction&)> call;
        ZolReturnT code;
    };
    const std::vector<Case> cases = {
        {"commit", [](auto& tx) { tx.commit(); }, -2},
        {"abort", [](auto& tx) { tx.abort(); }, -2},
        {"finish", [](auto& tx) { tx.finish(); }, -1},
        {"commit and finish", [](auto& tx) { tx.commit(), tx.finish(); }, -2},
        {"abort and finish", [](auto& tx) { tx.abort(), tx.finish(); }, -2},
        {"prepare", [](auto& tx) { tx.prepare(); }, 0},
    };
    for (const auto& [end, call, code] : cases)
    {
        for (const std::string className : {"FileGroup", "FileInformation", "FileMConfigData"})
        {
            const auto tx = component.join();
            const auto iterator = tx->newIterator(fileM, className);
            call(*tx);
            EXPECT_EQ(next(iterator).first, code) << className << " after " << end;
            EXPECT_EQ(objects.finalizeMoIterator(iterator), 0);
            EXPECT_EQ(next(iterator).first, code) << className << " after " << end << " and the finalization";
        }
    }
}

TEST_F(Misuse, IteratorOfAnotherTransactionGoesOnWhenOneEnds)
{
    const auto mine = component.join(7);
    const auto other = component.join(8);
    const auto iterator = mine->newIterator(logs, "FileInformation");
    EXPECT_EQ(other->commit(), 0);
    EXPECT_EQ(other->finish(), 0);
    EXPECT_EQ(next(iterator), Code(0, "a.txt"));
}

TEST_F(Misuse, NullListOfAttributesIsAnEmptyOne)
{
    const auto tx = component.join(7);
    std::array<const char*, 1> empty = {nullptr};
    for (const char** const names : {static_cast<const char**>(nullptr), empty.data()})
    {
        for (const std::string& dn : {logs, file, fileM, std::string("nonsense"), std::string()})
        {
            ZolMoAttributeValuesResult_3 result{};
            ASSERT_EQ(objects.getMoAttributes(7, dn.c_str(), names, &result), 0) << dn;
            ASSERT_NE(result.containers, nullptr);
            EXPECT_EQ(result.containers[0], nullptr);
            ASSERT_NE(result.releaseCallback, nullptr);
            result.releaseCallback(result.containers);
        }
    }
}

TEST_F(Misuse, NullListOfAttributesOfANewObjectIsNoFailure)
{
    const auto tx = component.join(7);
    EXPECT_EQ(objects.createMo(7, fileM.c_str(), "FileGroup", "fileGroupId", "new", nullptr), 0);
    EXPECT_EQ(tx->exists(fileGroup("new")), "yes");
}

TEST_F(Misuse, ActionWithoutAPlaceForItsResultGivesMinusOneWhateverItIs)
{
    const auto tx = component.join(7);
    ZolMoNamedAttributeValueContainer_3* none = nullptr;
    for (const char* const name : {"remove", "removeFile", "noSuchAction", ""})
    {
        for (auto** const parameters : {&none, static_cast<ZolMoNamedAttributeValueContainer_3**>(nullptr)})
        {
            EXPECT_EQ(objects.action(7, logs.c_str(), name, parameters, nullptr), -1) << name;
        }
    }
    EXPECT_EQ(tx->commit(), 0);
    EXPECT_EQ(tree.listing(), (Texts{"d logs", "f logs/a.txt 1"}));
}

TEST_F(Misuse, ActionThatReadsNoParametersTakesANullList)
{
    const auto tx = component.join(7);
    EXPECT_EQ(tx->action(logs, "noSuchAction", nullptr), "code -2");
    EXPECT_EQ(tx->action(logs, "remove", nullptr), "bool[true]");
}

TEST_F(Misuse, ParameterThatIsNotOneTextGivesMinusEight)
{
    const auto tx = component.join(7);
    std::string text = "a.*";
    std::array<ZolMoAttributeValue_3, 2> values{};
    values[0].stringValue = text.data();
    values[1].stringValue = text.data();
    ZolMoNamedAttributeValueContainer_3 good = {nullptr, attrTypeString, 1, values.data()};
    const std::vector<ZolMoNamedAttributeValueContainer_3> cases = {
        {"name", attrTypeString, 0, nullptr},
        {"name", attrTypeString, 0, values.data()},
        {"name", attrTypeString, 2, values.data()},
        {"name", attrTypeString, ~0U, values.data()},
        {"name", attrTypeReference, 1, values.data()},
        {"name", attrTypeBool, 1, values.data()},
        {"name", static_cast<ZolOamSpiMoAttributeType_3>(0), 1, values.data()},
        {"name", static_cast<ZolOamSpiMoAttributeType_3>(-1), 1, values.data()},
    };
    for (auto parameter : cases)
    {
        std::array<ZolMoNamedAttributeValueContainer_3*, 3> parameters = {&parameter, &good, nullptr};
        EXPECT_EQ(tx->action(logs, "removeFile", parameters.data()), "code -8")
            << parameter.valueType << ", " << parameter.nrOfValues;
    }
    std::array<ZolMoNamedAttributeValueContainer_3*, 2> missing = {nullptr, &good};
    EXPECT_EQ(tx->action(logs, "removeFile", missing.data()), "code -8");
    std::array<ZolMoNamedAttributeValueContainer_3*, 2> nameless = {&good, nullptr};
    EXPECT_EQ(tx->action(logs, "removeFile", nameless.data()), "bool[true]") << "names are not looked at";
}

TEST_F(Misuse, NothingCanBeWrittenWhateverIsNull)
{
    EXPECT_EQ(objects.setMoAttribute(7, nullptr, nullptr, nullptr), -1);
    const auto tx = component.join(7);
    EXPECT_EQ(objects.setMoAttribute(7, nullptr, nullptr, nullptr), -1);
    EXPECT_EQ(objects.setMoAttribute(7, logs.c_str(), nullptr, nullptr), -1);
}

TEST_F(Misuse, NullValuesAreReleasedAsNothing)
{
    const auto tx = component.join(7);
    ZolMoAttributeValueResult_3 single{};
    ASSERT_EQ(objects.getMoAttribute(7, file.c_str(), "size", &single), 0);
    single.releaseCallback(nullptr);
    single.releaseCallback(single.container);
    ZolMoAttributeValuesResult_3 several{};
    ASSERT_EQ(objects.getMoAttributes(7, file.c_str(), nullptr, &several), 0);
    several.releaseCallback(nullptr);
    several.releaseCallback(several.containers);
}

TEST_F(Misuse, TransactionEndsOnce)
{
    const auto tx = component.join(7);
    ASSERT_EQ(tx->create(fileM, "new"), 0);
    EXPECT_EQ(resource.finish(7), 0);
    for (const auto step : {resource.commit, resource.abort, resource.finish})
    {
        EXPECT_EQ(step(7), -2);
    }
    EXPECT_EQ(resource.prepare(7), 0);
    EXPECT_FALSE(tree.exists("new"));
}
