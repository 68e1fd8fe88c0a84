#include "engine/ConfigurationText.h"
#include "engine/Host.h"
#include "engine/PolicyModel.h"
#include "engine/PolicyRepository.h"
#include "support/AttributeText.h"
#include "support/LoadedLibrary.h"
#include "support/TemporaryTree.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <list>
#include <string>
#include <vector>
#include <zol/common/ZolException.h>

using namespace zolhost;
using testing::StartsWith;
using zoltest::LoadedLibrary;
using zoltest::TemporaryTree;

namespace
{

using Policies = std::vector<FileGroupPolicy>;
using Names = std::list<std::string>;

const std::string root = "ManagedElement=1,SystemFunctions=1,FileM=1";

Policies policiesOf(const std::string& document)
{
    const TemporaryTree tree;
    return readPolicies(tree.file("model.json", document));
}

std::string whyRefused(const std::string& document)
{
    try
    {
        policiesOf(document);
        return "accepted";
    }
    catch (const BadModel& bad)
    {
        return bad.what();
    }
}

std::string attributeOf(PolicyRepository& repository, const std::string& dn, const std::string& name)
{
    ZolMoAttributeValueResult_3 result = {nullptr, nullptr};
    try
    {
        repository.getAttribute(1, dn, name, result);
    }
    catch (const Zol::ZolException& exception)
    {
        EXPECT_EQ(result.releaseCallback, nullptr);
        return "code " + std::to_string(exception.code());
    }
    std::string text = zoltest::toText(result.container);
    result.releaseCallback(result.container);
    return text;
}

} // namespace

TEST(PolicyModel, IsReadFromJson)
{
    EXPECT_EQ(policiesOf(R"({"FileGroupPolicy": [
                                 {"id": "1", "fileGroup": ["FileGroup=logs", "FileGroup=a,FileGroup=b"]},
                                 {"id": "two", "fileGroup": []}]})"),
              (Policies{{"1", {root + ",FileGroup=logs", root + ",FileGroup=a,FileGroup=b"}}, {"two", {}}}));
    EXPECT_EQ(
        policiesOf(R"({"FileGroupPolicy": [{"fileGroup": [")" + root + R"(,FileGroup=x"], "id": "1"}]})"),
        (Policies{{"1", {root + ",FileGroup=x"}}}));
    EXPECT_EQ(policiesOf(R"({"FileGroupPolicy": []})"), Policies{});
}

TEST(PolicyModel, SaysWhatIsWrongWithAFile)
{
    struct BadFile
    {
        std::string document;
        std::string why;
    };
    const BadFile cases[] = {
        {"[]", "the document must be an object"},
        {"{}", "the document must have a list \"FileGroupPolicy\""},
        {R"({"FileGroupPolicy": {}})", "the document must have a list \"FileGroupPolicy\""},
        {R"({"FileGroupPolicy": [], "Other": 1})", "the document has an unknown key \"Other\""},
        {R"({"FileGroupPolicy": [1]})", "FileGroupPolicy[0] must be an object"},
        {R"({"FileGroupPolicy": [{"id": "1"}]})", "FileGroupPolicy[0] must have a list \"fileGroup\""},
        {R"({"FileGroupPolicy": [{"fileGroup": []}]})", "FileGroupPolicy[0].id must be a text"},
        {R"({"FileGroupPolicy": [{"id": 1, "fileGroup": []}]})", "FileGroupPolicy[0].id must be a text"},
        {R"({"FileGroupPolicy": [{"id": "", "fileGroup": []}]})",
         "FileGroupPolicy[0].id must be a text that isn't empty and has no comma"},
        {R"({"FileGroupPolicy": [{"id": "a,b", "fileGroup": []}]})",
         "FileGroupPolicy[0].id must be a text that isn't empty and has no comma"},
        {R"({"FileGroupPolicy": [{"id": "1", "fileGroup": [], "x": 1}]})",
         "FileGroupPolicy[0] has an unknown key \"x\""},
        {R"({"FileGroupPolicy": [{"id": "1", "fileGroup": ["FileGroup=a", 2]}]})",
         "FileGroupPolicy[0].fileGroup[1] must be a text"},
        {R"({"FileGroupPolicy": [{"id": "1", "fileGroup": ["FileGroup=.."]}]})",
         "FileGroupPolicy[0].fileGroup[0] is no name: the value \"..\" would leave the tree"},
        {R"({"FileGroupPolicy": [{"id": "1", "fileGroup": ["FileGroup=a,FileInformation=f"]}]})",
         "FileGroupPolicy[0].fileGroup[0] must be the name of a FileGroup"},
        {R"({"FileGroupPolicy": [{"id": "1", "fileGroup": []}, {"id": "1", "fileGroup": []}]})",
         "FileGroupPolicy[1].id is that of another policy too"},
    };
    for (const auto& [document, why] : cases)
    {
        EXPECT_EQ(whyRefused(document), why) << document;
    }
    for (const std::string document : {"", "{", "{\"FileGroupPolicy\": []} x", "\xff"})
    {
        EXPECT_THAT(whyRefused(document), StartsWith("it is no JSON: ")) << document;
    }
}

TEST(PolicyModel, CanNotBeReadFromWhatIsNoFile)
{
    const TemporaryTree tree;
    EXPECT_THROW(readPolicies(tree.path("missing")), BadModel);
    EXPECT_THROW(readPolicies(tree.path()), BadModel);
}

TEST(PolicyRepository, KnowsTheRootAndThePoliciesBelowIt)
{
    PolicyRepository repository({{"1", {root + ",FileGroup=a"}}, {"2", {}}});
    EXPECT_EQ(Zol::MoRepository::installed(), &repository);
    EXPECT_EQ(repository.getFirstMoInstance(1, "ManagedElement,SystemFunctions,FileM"), root);
    EXPECT_THROW(repository.getFirstMoInstance(1, "ManagedElement"), Zol::ZolException);
    EXPECT_EQ(repository.getChildren(1, root, "FileGroupPolicy"),
              (Names{root + ",FileGroupPolicy=1", root + ",FileGroupPolicy=2"}));
    EXPECT_EQ(repository.getChildren(1, root, "FileGroup"), Names{});
    EXPECT_EQ(repository.getChildren(1, root + ",FileGroup=a", "FileGroupPolicy"), Names{});
}

TEST(PolicyRepository, ReadsTheAttributesOfPolicies)
{
    PolicyRepository repository({{"1", {root + ",FileGroup=a", root + ",FileGroup=b"}}, {"2", {}}});
    const std::string policy = root + ",FileGroupPolicy=";
    EXPECT_EQ(attributeOf(repository, policy + "1", "fileGroup"),
              "reference[\"" + root + ",FileGroup=a\", \"" + root + ",FileGroup=b\"]");
    EXPECT_EQ(attributeOf(repository, policy + "1", "fileGroupPolicyId"), "string[\"1\"]");
    EXPECT_EQ(attributeOf(repository, policy + "2", "fileGroup"), "reference[]");
    EXPECT_EQ(attributeOf(repository, policy + "3", "fileGroup"), "code -2");
    EXPECT_EQ(attributeOf(repository, policy + "1", "size"), "code -2");
}

TEST(PolicyRepository, IsGoneAtItsEnd)
{
    {
        const PolicyRepository repository({});
    }
    EXPECT_EQ(Zol::MoRepository::installed(), nullptr);
}

TEST(PolicyRepository, TellsTheComponentWhoReservesADirectory)
{
    const TemporaryTree tree;
    tree.directory("a");
    const std::string dn = root + ",FileGroup=a";
    const Host::Setup setup = {
        LoadedLibrary::path(), configurationFor(tree.path()), {{"1", {dn}}, {"2", {}}, {"3", {dn}}}};
    Host host(setup);
    const auto transaction = host.begin();
    const auto value = host.objects(*transaction).attribute(dn, "reservedByPolicy");
    ASSERT_EQ(value.values.size(), 2U);
    EXPECT_EQ(std::get<std::string>(value.values[0]), root + ",FileGroupPolicy=1");
    EXPECT_EQ(std::get<std::string>(value.values[1]), root + ",FileGroupPolicy=3");
}
