#include "ZolInterfaceBinders.h"

#include "FileMMoImpl.h"
#include "support/FailedAssertion.h"
#include "support/RecordedLog.h"

#include <functional>
#include <gtest/gtest.h>
#include <optional>
#include <ostream>
#include <stdexcept>
#include <string>
#include <vector>

using zoltest::FailedAssertion;
using zoltest::RecordedLog;
using zoltest::runInChild;

namespace
{

constexpr ZolMgmtSpiInterface_1 identity = {"component", "interface", "7"};

// No std::exception.
struct Foreign
{};

// What the host handed over, addresses and all.
char dn, secondText, thirdText, fourthText;
const char* names = nullptr;
ZolMoAttributeValueContainer_3 value;
ZolMoAttributeValueResult_3 result;
ZolMoAttributeValuesResult_3 results;
ZolMoNamedAttributeValueContainer_3* parameters = nullptr;
unsigned long long number;
char* name = nullptr;
bool flag;

constexpr unsigned long handle = 0xFEDCBA9876543210UL;
constexpr unsigned long long iterator = 0x123456789ABCDEF0ULL;

// Answers every operation of both interfaces alike. The tables give the types of the parameters.
// NOLINTBEGIN(readability-non-const-parameter)
class Implementation
{
public:
    ZolReturnT answer = 0;
    std::function<void()> failure;
    std::vector<std::string> calls;

    ZolReturnT join(unsigned long tx) { return note("join", tx == handle); }
    ZolReturnT prepare(unsigned long tx) { return note("prepare", tx == handle); }
    ZolReturnT commit(unsigned long tx) { return note("commit", tx == handle); }
    ZolReturnT abort(unsigned long tx) { return note("abort", tx == handle); }
    ZolReturnT finish(unsigned long tx) { return note("finish", tx == handle); }

    ZolReturnT setMoAttribute(unsigned long tx, const char* a, const char* b,
                              const ZolMoAttributeValueContainer_3* c)
    {
        return note("setMoAttribute", tx == handle && a == &dn && b == &secondText && c == &value);
    }
    ZolReturnT getMoAttribute(unsigned long tx, const char* a, const char* b, ZolMoAttributeValueResult_3* c)
    {
        return note("getMoAttribute", tx == handle && a == &dn && b == &secondText && c == &result);
    }
    ZolReturnT getMoAttributes(unsigned long tx, const char* a, const char** b,
                               ZolMoAttributeValuesResult_3* c)
    {
        return note("getMoAttributes", tx == handle && a == &dn && b == &names && c == &results);
    }
    ZolReturnT newMoIterator(unsigned long tx, const char* a, const char* b, unsigned long long* c)
    {
        return note("newMoIterator", tx == handle && a == &dn && b == &secondText && c == &number);
    }
    ZolReturnT nextMo(unsigned long long id, char** a)
    {
        return note("nextMo", id == iterator && a == &name);
    }
    ZolReturnT createMo(unsigned long tx, const char* a, const char* b, const char* c, const char* d,
                        ZolMoNamedAttributeValueContainer_3** e)
    {
        return note("createMo", tx == handle && a == &dn && b == &secondText && c == &thirdText &&
                                    d == &fourthText && e == &parameters);
    }
    ZolReturnT deleteMo(unsigned long tx, const char* a)
    {
        return note("deleteMo", tx == handle && a == &dn);
    }
    ZolReturnT action(unsigned long tx, const char* a, const char* b, ZolMoNamedAttributeValueContainer_3** c,
                      ZolMoAttributeValueResult_3* d)
    {
        return note("action",
                    tx == handle && a == &dn && b == &secondText && c == &parameters && d == &result);
    }
    ZolReturnT finalizeMoIterator(unsigned long long id)
    {
        return note("finalizeMoIterator", id == iterator);
    }
    ZolReturnT existsMo(unsigned long tx, const char* a, bool* b)
    {
        return note("existsMo", tx == handle && a == &dn && b == &flag);
    }
    ZolReturnT countMoChildren(unsigned long tx, const char* a, const char* b, unsigned long long* c)
    {
        return note("countMoChildren", tx == handle && a == &dn && b == &secondText && c == &number);
    }

private:
    ZolReturnT note(const char* operation, bool sameArguments)
    {
        calls.emplace_back(sameArguments ? operation : std::string(operation) + " with other arguments");
        if (failure)
        {
            failure();
        }
        return answer;
    }
};

// NOLINTEND(readability-non-const-parameter)

using ResourceBinder = Zol::TransactionalResource1Binder<Implementation>;
using ObjectBinder = Zol::ManagedObject3Binder<Implementation>;

// One entry of a table, called with the arguments that the implementation expects.
struct Entry
{
    const char* operation;
    std::function<ZolReturnT()> call;
};

std::ostream& operator<<(std::ostream& stream, const Entry& entry)
{
    return stream << entry.operation;
}

std::vector<Entry> entriesOf(const ZolOamSpiTransactionalResource_1& table)
{
    return {
        {"join", [&table] { return table.join(handle); }},
        {"prepare", [&table] { return table.prepare(handle); }},
        {"commit", [&table] { return table.commit(handle); }},
        {"abort", [&table] { return table.abort(handle); }},
        {"finish", [&table] { return table.finish(handle); }},
    };
}

std::vector<Entry> entriesOf(const ZolOamSpiManagedObject_3& table)
{
    return {
        {"setMoAttribute", [&table] { return table.setMoAttribute(handle, &dn, &secondText, &value); }},
        {"getMoAttribute", [&table] { return table.getMoAttribute(handle, &dn, &secondText, &result); }},
        {"getMoAttributes", [&table] { return table.getMoAttributes(handle, &dn, &names, &results); }},
        {"newMoIterator", [&table] { return table.newMoIterator(handle, &dn, &secondText, &number); }},
        {"nextMo", [&table] { return table.nextMo(iterator, &name); }},
        {"createMo",
         [&table] { return table.createMo(handle, &dn, &secondText, &thirdText, &fourthText, &parameters); }},
        {"deleteMo", [&table] { return table.deleteMo(handle, &dn); }},
        {"action", [&table] { return table.action(handle, &dn, &secondText, &parameters, &result); }},
        {"finalizeMoIterator", [&table] { return table.finalizeMoIterator(iterator); }},
        {"existsMo", [&table] { return table.existsMo(handle, &dn, &flag); }},
        {"countMoChildren", [&table] { return table.countMoChildren(handle, &dn, &secondText, &number); }},
    };
}

// The same rules for both binders.
template<class Binder>
class InterfaceBinder : public testing::Test
{
protected:
    Implementation implementation;
    std::optional<Binder> binder{std::in_place, identity, implementation};
};

using Binders = testing::Types<ResourceBinder, ObjectBinder>;
TYPED_TEST_SUITE(InterfaceBinder, Binders);

} // namespace

TYPED_TEST(InterfaceBinder, TableBeginsWithTheIdentityThatWasGiven)
{
    const auto& table = *this->binder->table();
    EXPECT_EQ(table.componentName, identity.componentName);
    EXPECT_EQ(table.interfaceName, identity.interfaceName);
    EXPECT_EQ(table.version, identity.version);
}

TYPED_TEST(InterfaceBinder, ForwardsEachEntryToItsOperationWithTheArgumentsUnchanged)
{
    for (const auto& entry : entriesOf(*this->binder->table()))
    {
        this->implementation.calls.clear();
        entry.call();
        EXPECT_EQ(this->implementation.calls, std::vector<std::string>{entry.operation});
    }
}

TYPED_TEST(InterfaceBinder, ReturnsTheResultUnchanged)
{
    for (const auto& entry : entriesOf(*this->binder->table()))
    {
        for (const ZolReturnT answer : {0, -1, -2, -8, 4711})
        {
            this->implementation.answer = answer;
            EXPECT_EQ(entry.call(), answer) << entry;
        }
    }
}

TYPED_TEST(InterfaceBinder, TurnsAStdExceptionIntoMinusOneWithoutALog)
{
    this->implementation.answer = 5;
    this->implementation.failure = [] { throw std::runtime_error("no use"); };
    const RecordedLog log;
    for (const auto& entry : entriesOf(*this->binder->table()))
    {
        EXPECT_EQ(entry.call(), -1) << entry;
    }
    EXPECT_EQ(log.statements(), std::vector<std::string>{});
}

TYPED_TEST(InterfaceBinder, LetsAnyOtherExceptionThroughToTheHost)
{
    this->implementation.failure = [] { throw Foreign(); };
    for (const auto& entry : entriesOf(*this->binder->table()))
    {
        EXPECT_THROW(entry.call(), Foreign) << entry;
    }
}

TYPED_TEST(InterfaceBinder, LogsNothingOfItsOwn)
{
    const RecordedLog log;
    for (const auto& entry : entriesOf(*this->binder->table()))
    {
        entry.call();
    }
    EXPECT_EQ(log.statements(), std::vector<std::string>{});
}

TYPED_TEST(InterfaceBinder, CanBeConstructedAnewForAnotherObjectAfterItsEnd)
{
    this->binder.reset();
    Implementation other;
    this->binder.emplace(identity, other);
    const auto entries = entriesOf(*this->binder->table());
    entries.front().call();
    EXPECT_EQ(other.calls, std::vector<std::string>{entries.front().operation});
    EXPECT_EQ(this->implementation.calls, std::vector<std::string>{});
}

TYPED_TEST(InterfaceBinder, StopsTheProcessIfOneLivesAlready)
{
    const auto outcome = runInChild([this] {
        const TypeParam second(identity, this->implementation);
        return 0;
    });
    EXPECT_EQ(failedAssertion(outcome).expression, "!_instance") << outcome.standardError;
}

TEST(TransactionalResource1Binder, AssertsInWordsThatNameTheFront)
{
    ZolFileManagement::FileMMoImpl front;
    const Zol::TransactionalResource1Binder<ZolFileManagement::FileMMoImpl> first(identity, front);
    const auto outcome = runInChild([&front] {
        const Zol::TransactionalResource1Binder<ZolFileManagement::FileMMoImpl> second(identity, front);
        return 0;
    });
    const FailedAssertion expected = {
        "common/inc/ZolInterfaceBinders",
        "Zol::TransactionalResource1Binder<T>::TransactionalResource1Binder(const ZolMgmtSpiInterface_1T&, "
        "T&) "
        "[with T = ZolFileManagement::FileMMoImpl; ZolMgmtSpiInterface_1T = ZolMgmtSpiInterface_1]",
        "!_instance"};
    EXPECT_EQ(failedAssertion(outcome), expected) << outcome.standardError;
}

TEST(ManagedObject3Binder, AssertsInWordsThatNameTheFront)
{
    ZolFileManagement::FileMMoImpl front;
    const Zol::ManagedObject3Binder<ZolFileManagement::FileMMoImpl> first(identity, front);
    const auto outcome = runInChild([&front] {
        const Zol::ManagedObject3Binder<ZolFileManagement::FileMMoImpl> second(identity, front);
        return 0;
    });
    const FailedAssertion expected = {
        "common/inc/ZolInterfaceBinders",
        "Zol::ManagedObject3Binder<T>::ManagedObject3Binder(const ZolMgmtSpiInterface_1T&, T&) "
        "[with T = ZolFileManagement::FileMMoImpl; ZolMgmtSpiInterface_1T = ZolMgmtSpiInterface_1]",
        "!_instance"};
    EXPECT_EQ(failedAssertion(outcome), expected) << outcome.standardError;
}
