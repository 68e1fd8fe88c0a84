#include "ChangesFixture.h"

using testing::ElementsAre;
using testing::IsEmpty;
using zoltest::fileGroup;
using zoltest::RecordedLog;
using zoltest::Texts;

namespace
{

const std::string d = fileGroup("d");
const std::string yes = "0 bool[true]";

class Action : public zoltest::Changes
{};

// The parameters of an action, as a host passes them.
class Parameters
{
public:
    Parameters& add(ZolOamSpiMoAttributeType_3 type, const Texts& texts, const char* name = "fileName")
    {
        _parameters.push_back({name, type, texts, {}, {}});
        return *this;
    }

    /// Good until something is added.
    QenMoNamedAttributeValueContainer_3** array()
    {
        _array.clear();
        for (Parameter& parameter : _parameters)
        {
            parameter.values.clear();
            for (std::string& text : parameter.texts)
            {
                parameter.values.emplace_back().stringValue = text.data();
            }
            parameter.record = {parameter.name, parameter.type,
                                static_cast<uint32_t>(parameter.values.size()), parameter.values.data()};
            _array.push_back(&parameter.record);
        }
        _array.push_back(nullptr);
        return _array.data();
    }

private:
    struct Parameter
    {
        const char* name;
        ZolOamSpiMoAttributeType_3 type;
        Texts texts;
        std::vector<QenMoAttributeValue_3> values;
        QenMoNamedAttributeValueContainer_3 record;
    };

    std::vector<Parameter> _parameters;
    std::vector<QenMoNamedAttributeValueContainer_3*> _array;
};

} // namespace

TEST_F(Action, RemoveFileWithAnythingButOneStringFirstIsRefused)
{
    tree.file("d/f");
    struct
    {
        const char* what;
        Parameters parameters;
    } cases[] = {
        {"no parameter", Parameters()},
        {"no value", Parameters().add(attrTypeString, {})},
        {"two values", Parameters().add(attrTypeString, {"f", "f"})},
        {"a value of type int", Parameters().add(attrTypeInt, {"f"})},
        {"a value of type uint", Parameters().add(attrTypeUint, {"f"})},
        {"a value of type bool", Parameters().add(attrTypeBool, {"f"})},
        {"a value of type reference", Parameters().add(attrTypeReference, {"f"})},
        {"a value of type struct", Parameters().add(attrTypeStruct, {"f"})},
        {"a right one second", Parameters().add(attrTypeInt, {"f"}).add(attrTypeString, {"f"})},
    };
    for (auto& [what, parameters] : cases)
    {
        SCOPED_TRACE(what);
        const RecordedLog log;
        EXPECT_EQ(action(d, "removeFile", parameters.array()), "-8 bool[false]");
        EXPECT_THAT(log.statements(),
                    ElementsAre("plain Action call failed: Wrong type or wrong number parameters for action "
                                "removeFile"));
    }
    EXPECT_THAT(host.messages(), IsEmpty());
    expectNothingWaits();
}

TEST_F(Action, RemoveFileLooksAtTheFirstParameterAlone)
{
    tree.file("d/f");
    tree.file("d/g");
    Parameters parameters;
    parameters.add(attrTypeString, {"f"}).add(attrTypeInt, {"g", "g"}).add(attrTypeString, {"g"});
    EXPECT_EQ(action(d, "removeFile", parameters.array()), yes);
    EXPECT_EQ(worker.commit(), 0);
    EXPECT_THAT(tree.listing(), ElementsAre("d d", "f d/g 1"));
}

TEST_F(Action, RemoveFileTakesItsParameterWhateverItsName)
{
    for (const char* name : {"fileName", "other", "", static_cast<const char*>(nullptr)})
    {
        tree.file("d/f");
        Parameters parameters;
        parameters.add(attrTypeString, {"f"}, name);
        EXPECT_EQ(action(d, "removeFile", parameters.array()), yes);
        EXPECT_EQ(worker.commit(), 0);
        EXPECT_THAT(tree.listing(), ElementsAre("d d"));
    }
}

TEST_F(Action, OfAnyOtherNameIsUnknown)
{
    tree.file("d/f");
    for (const char* name :
         {"Remove", "REMOVE", "removefile", "RemoveFile", "removeFiles", "remov", " remove", ""})
    {
        SCOPED_TRACE(name);
        Parameters parameters;
        parameters.add(attrTypeString, {"f"});
        const RecordedLog log;
        EXPECT_EQ(action(d, name, parameters.array()), "-2 bool[false]");
        EXPECT_THAT(
            log.statements(),
            ElementsAre(std::string("plain Action call failed: FileM MO has no action called ") + name));
        EXPECT_EQ(action(d, name, nullptr), "-2 bool[false]");
    }
    EXPECT_THAT(host.messages(), IsEmpty());
    expectNothingWaits();
}

TEST_F(Action, ResultStaysGoodAfterTheTransaction)
{
    QenMoAttributeValueResult_3 result = {nullptr, nullptr};
    {
        ZolFileManagement::FileMTransaction transaction(8, *host.portal1());
        ASSERT_EQ(transaction.action(d.c_str(), "remove", nullptr, result), 0);
        ASSERT_EQ(transaction.finish(), 0);
    }
    ASSERT_NE(result.container, nullptr);
    EXPECT_TRUE(result.container->values[0].boolValue);
    result.releaseCallback(result.container);
}
