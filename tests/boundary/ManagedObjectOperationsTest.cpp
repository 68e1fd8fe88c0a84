#include "support/AttributeText.h"
#include "support/DistinguishedNames.h"
#include "support/LoadedComponent.h"
#include "support/RecordedLog.h"
#include "support/TemporaryTree.h"
#include "support/Transaction.h"

#include <algorithm>
#include <functional>
#include <gtest/gtest.h>
#include <ostream>
#include <string>
#include <utility>
#include <vector>
#include <zol/common/ZolReturn.h>

using zoltest::fileGroup;
using zoltest::fileInformation;
using zoltest::fileM;
using zoltest::LoadedComponent;
using zoltest::RecordedLog;
using zoltest::TemporaryTree;
using zoltest::Transaction;

namespace
{

using Texts = std::vector<std::string>;

constexpr unsigned long unknown = 4711;

void neverReleased(ZolMoAttributeValueContainer_3*) {}
void neverReleasedEither(ZolMoAttributeValueContainer_3**) {}

class ManagedObjects : public testing::Test
{
protected:
    ManagedObjects()
    {
        tree.file("logs/a.txt");
        tree.directory("empty");
    }

    // The name that nextMo gives, or "none".
    std::pair<ZolReturnT, std::string> next(unsigned long long iterator) const
    {
        char untouched = 'x';
        char* name = &untouched;
        const ZolReturnT code = objects.nextMo(iterator, &name);
        return {code, name == nullptr ? "none" : name == &untouched ? "untouched" : name};
    }

    // What `call` logs.
    static Texts traces(const std::function<void()>& call)
    {
        const RecordedLog log;
        call();
        return log.statements();
    }

    const std::string logs = fileGroup("logs");
    const std::string file = fileInformation("a.txt", logs);

    TemporaryTree tree;
    LoadedComponent component{tree.path()};
    const ZolOamSpiManagedObject_3& objects = component.objects();
    const ZolOamSpiTransactionalResource_1& resource = component.resource();
};

using GetMoAttribute = ManagedObjects;
using GetMoAttributes = ManagedObjects;
using SetMoAttribute = ManagedObjects;
using NewMoIterator = ManagedObjects;
using NextMo = ManagedObjects;
using CreateMo = ManagedObjects;
using DeleteMo = ManagedObjects;
using Action = ManagedObjects;
using FinalizeMoIterator = ManagedObjects;
using ExistsMo = ManagedObjects;
using CountMoChildren = ManagedObjects;
using Operations = ManagedObjects;

std::string retval(ZolReturnT code)
{
    return std::string("exit  << Retval: ") + Zol::ZolReturn::strerror(code);
}

// Front and back of what a call logs belong to the front; what stands between is the worker's.
void expectFrame(const Texts& statements, const std::string& first, const std::string& last)
{
    ASSERT_GE(statements.size(), 2U);
    EXPECT_EQ(statements.front(), first);
    EXPECT_EQ(statements.back(), last);
}

} // namespace

TEST_F(SetMoAttribute, IsRefusedForAnyArgumentsWithoutATrace)
{
    const auto tx = component.join(7);
    ZolMoAttributeValue_3 number{};
    const ZolMoAttributeValueContainer_3 value = {attrTypeInt, 1, &number};
    const RecordedLog log;
    EXPECT_EQ(objects.setMoAttribute(7, file.c_str(), "size", &value), -1);
    EXPECT_EQ(objects.setMoAttribute(7, logs.c_str(), "noSuchAttribute", &value), -1);
    EXPECT_EQ(objects.setMoAttribute(7, "noDn", "", nullptr), -1);
    EXPECT_EQ(objects.setMoAttribute(unknown, file.c_str(), "size", &value), -1);
    EXPECT_EQ(log.statements(), Texts{});
}

TEST_F(FinalizeMoIterator, GivesZeroForAnyIteratorWithoutATrace)
{
    const auto tx = component.join(7);
    const auto iterator = tx->newIterator(fileM, "FileGroup");
    const RecordedLog log;
    EXPECT_EQ(objects.finalizeMoIterator(iterator), 0);
    EXPECT_EQ(objects.finalizeMoIterator(4711), 0);
    EXPECT_EQ(log.statements(), Texts{});
}

TEST_F(FinalizeMoIterator, ChangesNothing)
{
    const auto tx = component.join(7);
    const auto iterator = tx->newIterator(logs, "FileInformation");
    EXPECT_EQ(objects.finalizeMoIterator(iterator), 0);
    EXPECT_EQ(next(iterator), std::pair(0, std::string("a.txt")));
    EXPECT_EQ(objects.finalizeMoIterator(iterator), 0);
    EXPECT_EQ(next(iterator), std::pair(0, std::string("none")));
}

TEST_F(GetMoAttribute, GivesAValueThatTheHostReleases)
{
    const auto tx = component.join(7);
    ZolMoAttributeValueResult_3 result{};
    ASSERT_EQ(objects.getMoAttribute(7, file.c_str(), "fileInformationId", &result), 0);
    EXPECT_EQ(zoltest::toText(result.container), "string[\"a.txt\"]");
    ASSERT_NE(result.releaseCallback, nullptr);
    EXPECT_EQ(tx->finish(), 0);
    result.releaseCallback(result.container);
}

TEST_F(GetMoAttribute, PassesOnTheWorkersCodeWithNothingToRelease)
{
    const auto tx = component.join(7);
    for (const auto& [dn, code] : {std::pair(file, -2), std::pair(fileM, -1)})
    {
        ZolMoAttributeValueResult_3 result = {neverReleased, nullptr};
        EXPECT_EQ(objects.getMoAttribute(7, dn.c_str(), "noSuchAttribute", &result), code);
        EXPECT_EQ(result.releaseCallback, nullptr);
    }
}

TEST_F(GetMoAttribute, OfAnUnknownTransactionGivesMinusTwoAndNothingToRelease)
{
    ZolMoAttributeValueResult_3 result = {neverReleased, nullptr};
    EXPECT_EQ(objects.getMoAttribute(unknown, file.c_str(), "size", &result), -2);
    EXPECT_EQ(result.releaseCallback, nullptr);
}

TEST_F(GetMoAttribute, Traces)
{
    const auto tx = component.join(7);
    EXPECT_EQ(traces([&] { tx->attribute(file, "size"); }),
              (Texts{"enter  >> '7', '" + file + "', 'size'", "enter  >>  dn :" + file + ", attr :size",
                     retval(0)}));
    EXPECT_EQ(traces([&] { tx->attribute(file, "x"); }).back(), retval(-2));
    ZolMoAttributeValueResult_3 result{};
    EXPECT_EQ(traces([&] { objects.getMoAttribute(unknown, "a", "b", &result); }),
              (Texts{"enter  >> '4711', 'a', 'b'", retval(-2)}));
}

TEST_F(GetMoAttributes, GivesTheValuesInTheOrderOfTheirNames)
{
    const auto tx = component.join(7);
    EXPECT_EQ(tx->attributes(file, {"size", "fileInformationId", "type"}),
              (Texts{"int[1]", "string[\"a.txt\"]", "string[\"txt\"]"}));
}

TEST_F(GetMoAttributes, PassesOnTheWorkersCodeWithNothingToRelease)
{
    const auto tx = component.join(7);
    const char* names[] = {"size", "noSuchAttribute", nullptr};
    ZolMoAttributeValuesResult_3 result = {neverReleasedEither, nullptr};
    EXPECT_EQ(objects.getMoAttributes(7, file.c_str(), names, &result), -2);
    EXPECT_EQ(result.releaseCallback, nullptr);
    EXPECT_EQ(result.containers, nullptr);
}

TEST_F(GetMoAttributes, OfAnUnknownTransactionGivesMinusTwoAndNothingToRelease)
{
    const char* names[] = {"size", nullptr};
    ZolMoAttributeValuesResult_3 result = {neverReleasedEither, nullptr};
    EXPECT_EQ(objects.getMoAttributes(unknown, file.c_str(), names, &result), -2);
    EXPECT_EQ(result.releaseCallback, nullptr);
}

TEST_F(GetMoAttributes, Traces)
{
    const auto tx = component.join(7);
    expectFrame(traces([&] {
                    tx->attributes(file, {"size", "open"});
                }),
                "enter  >> '7', '" + file + "',", retval(0));
    const char* names[] = {"size", nullptr};
    ZolMoAttributeValuesResult_3 result{};
    EXPECT_EQ(traces([&] { objects.getMoAttributes(unknown, "a", names, &result); }),
              (Texts{"enter  >> '4711', 'a',", retval(-2)}));
}

TEST_F(NewMoIterator, DrawsItsIdsFromOneSequenceForAllTransactions)
{
    const auto first = component.join(7);
    const auto second = component.join(8);
    EXPECT_EQ(first->newIterator(fileM, "FileGroup"), 1U);
    EXPECT_EQ(second->newIterator(fileM, "FileInformation"), 2U);
    EXPECT_EQ(first->newIterator(fileM, "FileMConfigData"), 3U);
    EXPECT_EQ(second->newIterator(fileM, "FileGroup"), 4U);
}

TEST_F(NewMoIterator, PassesOnTheWorkersCodeAndDrawsNoId)
{
    const auto tx = component.join(7);
    unsigned long long iterator = 4711;
    EXPECT_EQ(objects.newMoIterator(7, fileM.c_str(), "FileGroupPolicy", &iterator), -1);
    EXPECT_EQ(iterator, 4711U);
    EXPECT_EQ(next(4711), std::pair(-2, std::string("none"))) << "the refused iterator is not entered";
    EXPECT_EQ(tx->newIterator(fileM, "FileGroup"), 1U);
}

TEST_F(NewMoIterator, OfAnUnknownTransactionGivesMinusTwoAndDrawsNoId)
{
    unsigned long long iterator = 4711;
    EXPECT_EQ(objects.newMoIterator(unknown, fileM.c_str(), "FileGroup", &iterator), -2);
    EXPECT_EQ(iterator, 4711U);
    EXPECT_EQ(next(4711), std::pair(-2, std::string("none")));
    EXPECT_EQ(component.join(7)->newIterator(fileM, "FileGroup"), 1U);
}

TEST_F(NewMoIterator, Traces)
{
    const auto tx = component.join(7);
    EXPECT_EQ(traces([&] { tx->newIterator(logs, "FileInformation"); }),
              (Texts{"enter  >> '7', '" + logs + "', 'FileInformation'", "exit  << "}));
    unsigned long long iterator = 0;
    EXPECT_EQ(traces([&] { objects.newMoIterator(unknown, "a", "b", &iterator); }),
              (Texts{"enter  >> '4711', 'a', 'b'", "exit  << "}));
}

TEST_F(NextMo, GivesZeroWithoutANameAtTheEndAndFromThenOn)
{
    const auto tx = component.join(7);
    const auto iterator = tx->newIterator(logs, "FileInformation");
    EXPECT_EQ(next(iterator), std::pair(0, std::string("a.txt")));
    EXPECT_EQ(next(iterator), std::pair(0, std::string("none")));
    EXPECT_EQ(next(iterator), std::pair(0, std::string("none")));
}

TEST_F(NextMo, GivesNamesThatLastUntilFinish)
{
    tree.file("logs/b.txt");
    const auto tx = component.join(7);
    const auto iterator = tx->newIterator(logs, "FileInformation");
    char* first = nullptr;
    char* second = nullptr;
    EXPECT_EQ(objects.nextMo(iterator, &first), 0);
    EXPECT_EQ(objects.nextMo(iterator, &second), 0);
    EXPECT_EQ(tx->commit(), 0);
    Texts names = {first, second};
    std::sort(names.begin(), names.end());
    EXPECT_EQ(names, (Texts{"a.txt", "b.txt"}));
}

TEST_F(NextMo, GivesMinusTwoForAnUnknownIterator)
{
    EXPECT_EQ(next(4711), std::pair(-2, std::string("none")));
}

TEST_F(NextMo, GivesMinusTwoAfterACommitOrAnAbort)
{
    const auto tx = component.join(7);
    for (const auto end : {&Transaction::commit, &Transaction::abort})
    {
        const auto iterator = tx->newIterator(fileM, "FileGroup");
        const auto configIterator = tx->newIterator(fileM, "FileMConfigData");
        EXPECT_EQ(((*tx).*end)(), 0);
        EXPECT_EQ(next(iterator), std::pair(-2, std::string("none")));
        EXPECT_EQ(next(configIterator), std::pair(-2, std::string("none")));
    }
}

TEST_F(NextMo, GivesMinusOneAfterAFinishWithoutACommit)
{
    const auto tx = component.join(7);
    const auto iterator = tx->newIterator(fileM, "FileGroup");
    EXPECT_EQ(tx->finish(), 0);
    const RecordedLog log;
    EXPECT_EQ(next(iterator), std::pair(-1, std::string("none")));
    EXPECT_EQ(log.statements(),
              (Texts{"enter  >> ", "enter  >> '" + std::to_string(iterator) + "'",
                     "plain Call failed: Iterator has no matching transaction", "exit  << "}));
}

TEST_F(NextMo, GivesMinusTwoAfterACommitAndAFinish)
{
    const auto tx = component.join(7);
    const auto iterator = tx->newIterator(fileM, "FileGroup");
    EXPECT_EQ(tx->commit(), 0);
    EXPECT_EQ(tx->finish(), 0);
    EXPECT_EQ(next(iterator), std::pair(-2, std::string("none")));
}

TEST_F(NextMo, ReachesTheNewTransactionOfAHandleWhichDropsItsCode)
{
    const auto first = component.join(7);
    const auto iterator = first->newIterator(fileM, "FileGroup");
    EXPECT_EQ(first->finish(), 0);
    const auto second = component.join(7);
    EXPECT_EQ(next(iterator), std::pair(0, std::string("none")));
    EXPECT_EQ(second->commit(), 0);
    EXPECT_EQ(next(iterator), std::pair(-2, std::string("none"))) << "the stale entry went with the commit";
}

TEST_F(NextMo, TracesItsEntryTwice)
{
    const auto tx = component.join(7);
    const auto iterator = tx->newIterator(logs, "FileInformation");
    const std::string entry = "enter  >> '" + std::to_string(iterator) + "'";
    EXPECT_EQ(traces([&] { next(iterator); }), (Texts{"enter  >> ", entry, "exit  << "}));
    EXPECT_EQ(traces([&] { next(iterator); }), (Texts{"enter  >> ", entry, "exit  << "}));
    EXPECT_EQ(traces([&] { next(18446744073709551615ULL); }),
              (Texts{"enter  >> ", "enter  >> '18446744073709551615'", "exit  << "}));
}

TEST_F(CreateMo, PassesOnTheWorkersCode)
{
    const auto tx = component.join(7);
    EXPECT_EQ(tx->createMo(fileM, "FileGroup", "fileGroupId", "new"), 0);
    EXPECT_EQ(tx->createMo(fileM, "FileInformation", "fileInformationId", "new"), -1);
    EXPECT_EQ(tx->commit(), 0);
    EXPECT_TRUE(tree.exists("new"));
}

TEST_F(CreateMo, IgnoresTheAttributes)
{
    const auto tx = component.join(7);
    ZolMoAttributeValue_3 number{};
    ZolMoNamedAttributeValueContainer_3 attribute = {"size", attrTypeInt, 1, &number};
    ZolMoNamedAttributeValueContainer_3* attributes[] = {&attribute, nullptr};
    EXPECT_EQ(objects.createMo(7, fileM.c_str(), "FileGroup", "fileGroupId", "with", attributes), 0);
    EXPECT_EQ(objects.createMo(7, fileM.c_str(), "FileGroup", "fileGroupId", "without", nullptr), 0);
    EXPECT_EQ(tx->commit(), 0);
    EXPECT_EQ(tree.listing(), (Texts{"d empty", "d logs", "d with", "d without", "f logs/a.txt 1"}));
}

TEST_F(CreateMo, OfAnUnknownTransactionGivesMinusOne)
{
    EXPECT_EQ(objects.createMo(unknown, fileM.c_str(), "FileGroup", "fileGroupId", "new", nullptr), -1);
    EXPECT_EQ(component.host.messages(), Texts{});
}

TEST_F(CreateMo, Traces)
{
    const auto tx = component.join(7);
    expectFrame(traces([&] { tx->create(fileM, "new"); }),
                "enter  >> '7', '" + fileM + "', 'FileGroup', 'fileGroupId', 'new'", retval(0));
    expectFrame(traces([&] { tx->createMo("a", "b", "c", "d"); }), "enter  >> '7', 'a', 'b', 'c', 'd'",
                retval(-1));
    EXPECT_EQ(traces([&] { objects.createMo(unknown, "a", "b", "c", "d", nullptr); }),
              (Texts{"enter  >> '4711', 'a', 'b', 'c', 'd'", retval(-1)}));
}

TEST_F(DeleteMo, PassesOnTheWorkersCode)
{
    const auto tx = component.join(7);
    EXPECT_EQ(tx->deleteMo(fileGroup("empty")), 0);
    EXPECT_EQ(tx->deleteMo(logs), -1);
    EXPECT_EQ(tx->deleteMo(fileGroup("missing")), -2);
    EXPECT_EQ(tx->commit(), 0);
    EXPECT_EQ(tree.listing(), (Texts{"d logs", "f logs/a.txt 1"}));
}

TEST_F(DeleteMo, OfAnUnknownTransactionGivesMinusOne)
{
    EXPECT_EQ(objects.deleteMo(unknown, fileGroup("empty").c_str()), -1);
    EXPECT_EQ(objects.deleteMo(unknown, fileGroup("missing").c_str()), -1);
}

TEST_F(DeleteMo, Traces)
{
    const auto tx = component.join(7);
    expectFrame(traces([&] { tx->deleteMo(fileGroup("empty")); }),
                "enter  >> '7', '" + fileGroup("empty") + "'", "exit  << ");
    EXPECT_EQ(traces([&] { objects.deleteMo(unknown, "a"); }), (Texts{"enter  >> '4711', 'a'", "exit  << "}));
}

TEST_F(Action, PassesOnCodeAndResult)
{
    const auto tx = component.join(7);
    EXPECT_EQ(tx->removeFile(logs, "b.*"), "bool[false]");
    EXPECT_EQ(tx->removeFile(logs, "a.*"), "bool[true]");
    EXPECT_EQ(tx->remove(fileGroup("empty")), "bool[true]");
    EXPECT_EQ(tx->removeFile(logs, "("), "code -1");
    EXPECT_EQ(component.host.messages(), Texts{"Invalid regular expression"});
    EXPECT_EQ(tx->commit(), 0);
    EXPECT_EQ(tree.listing(), Texts{"d logs"});
}

TEST_F(Action, GivesAResultToReleaseWhateverItsCode)
{
    const auto tx = component.join(7);
    ZolMoNamedAttributeValueContainer_3* none = nullptr;
    for (const auto& [name, code] : {std::pair("noSuchAction", -2), std::pair("removeFile", -8)})
    {
        ZolMoAttributeValueResult_3 result{};
        EXPECT_EQ(objects.action(7, logs.c_str(), name, &none, &result), code);
        EXPECT_EQ(zoltest::toText(result.container), "bool[false]");
        ASSERT_NE(result.releaseCallback, nullptr);
        result.releaseCallback(result.container);
    }
}

TEST_F(Action, WithoutAPlaceForTheResultGivesMinusOneAndIsNotRun)
{
    const auto tx = component.join(7);
    ZolMoNamedAttributeValueContainer_3* none = nullptr;
    EXPECT_EQ(objects.action(7, fileGroup("empty").c_str(), "remove", &none, nullptr), -1);
    EXPECT_EQ(objects.action(7, fileM.c_str(), "noSuchAction", &none, nullptr), -1);
    EXPECT_EQ(tx->commit(), 0);
    EXPECT_TRUE(tree.exists("empty"));
}

TEST_F(Action, OfAnUnknownTransactionGivesMinusOneAndLeavesTheResultAlone)
{
    ZolMoNamedAttributeValueContainer_3* none = nullptr;
    ZolMoAttributeValueContainer_3 untouched{};
    ZolMoAttributeValueResult_3 result = {neverReleased, &untouched};
    EXPECT_EQ(objects.action(unknown, logs.c_str(), "remove", &none, &result), -1);
    EXPECT_EQ(result.releaseCallback, &neverReleased);
    EXPECT_EQ(result.container, &untouched);
    EXPECT_EQ(objects.action(unknown, logs.c_str(), "remove", &none, nullptr), -1);
}

TEST_F(Action, Traces)
{
    const auto tx = component.join(7);
    expectFrame(traces([&] { tx->remove(logs); }), "enter  >> '7', '" + logs + "', 'remove'",
                "exit  << action retval 0");
    expectFrame(traces([&] { tx->action(logs, "x", nullptr); }), "enter  >> '7', '" + logs + "', 'x'",
                "exit  << action retval -2");
    EXPECT_EQ(traces([&] { objects.action(7, "a", "remove", nullptr, nullptr); }),
              (Texts{"enter  >> '7', 'a', 'remove'", "exit  << action retval -1"}));
    ZolMoAttributeValueResult_3 result{};
    EXPECT_EQ(traces([&] { objects.action(unknown, "a", "b", nullptr, &result); }),
              (Texts{"enter  >> '4711', 'a', 'b'", "exit  << action retval -1"}));
}

TEST_F(ExistsMo, TellsWhetherThereIsSuchAnObject)
{
    const auto tx = component.join(7);
    EXPECT_EQ(tx->exists(logs), "yes");
    EXPECT_EQ(tx->exists(file), "yes");
    EXPECT_EQ(tx->exists(fileGroup("missing")), "no");
}

TEST_F(ExistsMo, GivesZeroAndFalseForAnObjectThatIsNotThere)
{
    const auto tx = component.join(7);
    bool exists = true;
    EXPECT_EQ(objects.existsMo(7, fileGroup("missing").c_str(), &exists), 0);
    EXPECT_FALSE(exists);
}

TEST_F(ExistsMo, OfAnUnknownTransactionGivesMinusTwoAndWritesNothing)
{
    for (const bool before : {true, false})
    {
        bool exists = before;
        EXPECT_EQ(objects.existsMo(unknown, logs.c_str(), &exists), -2);
        EXPECT_EQ(exists, before);
    }
}

TEST_F(ExistsMo, TracesItsEntryOnly)
{
    const auto tx = component.join(7);
    EXPECT_EQ(traces([&] { tx->exists(logs); }), Texts{"enter  >> txHandle='7'"});
    bool exists = false;
    EXPECT_EQ(traces([&] { objects.existsMo(unknown, "a", &exists); }), Texts{"enter  >> txHandle='4711'"});
}

TEST_F(CountMoChildren, CountsTheChildrenOfAClass)
{
    const auto tx = component.join(7);
    EXPECT_EQ(tx->count(fileM, "FileGroup"), 2U);
    EXPECT_EQ(tx->count(logs, "FileInformation"), 1U);
    EXPECT_EQ(tx->count(fileM, "FileMConfigData"), 0U);
    EXPECT_EQ(tx->count(fileM, "noSuchClass"), 0U);
}

TEST_F(CountMoChildren, OfAnUnknownTransactionGivesMinusTwoAndWritesNothing)
{
    unsigned long long count = 4711;
    EXPECT_EQ(objects.countMoChildren(unknown, fileM.c_str(), "FileGroup", &count), -2);
    EXPECT_EQ(count, 4711U);
}

TEST_F(CountMoChildren, TracesItsEntryOnly)
{
    const auto tx = component.join(7);
    EXPECT_EQ(traces([&] { tx->count(fileM, "FileGroup"); }), Texts{"enter  >> txHandle='7'"});
    unsigned long long count = 0;
    EXPECT_EQ(traces([&] { objects.countMoChildren(unknown, "a", "b", &count); }),
              Texts{"enter  >> txHandle='4711'"});
}

TEST_F(Operations, OfAFinishedTransactionAreThoseOfAnUnknownOne)
{
    component.join(7)->finish();
    ZolMoAttributeValueResult_3 result{};
    unsigned long long number = 0;
    bool exists = false;
    EXPECT_EQ(objects.getMoAttribute(7, file.c_str(), "size", &result), -2);
    EXPECT_EQ(objects.newMoIterator(7, fileM.c_str(), "FileGroup", &number), -2);
    EXPECT_EQ(objects.createMo(7, fileM.c_str(), "FileGroup", "fileGroupId", "new", nullptr), -1);
    EXPECT_EQ(objects.deleteMo(7, fileGroup("empty").c_str()), -1);
    EXPECT_EQ(objects.action(7, logs.c_str(), "remove", nullptr, &result), -1);
    EXPECT_EQ(objects.existsMo(7, logs.c_str(), &exists), -2);
    EXPECT_EQ(objects.countMoChildren(7, fileM.c_str(), "FileGroup", &number), -2);
}

TEST_F(Operations, LogNothingBelowTheLevelOfTraces)
{
    const RecordedLog log(7);
    const auto tx = component.join(7);
    tx->attribute(file, "size");
    tx->attributes(file, {"size"});
    tx->children(fileM, "FileGroup");
    tx->create(fileM, "new");
    tx->deleteMo(fileGroup("empty"));
    tx->removeFile(logs, "a.*");
    tx->exists(logs);
    tx->count(fileM, "FileGroup");
    tx->prepare();
    tx->commit();
    tx->finish();
    EXPECT_EQ(log.statements(), Texts{});
}
