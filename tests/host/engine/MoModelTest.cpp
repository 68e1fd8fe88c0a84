#include "engine/MoModel.h"

#include "engine/ConfigurationText.h"
#include "engine/DistinguishedName.h"
#include "engine/Host.h"
#include "support/FakeZolea.h"
#include "support/LoadedLibrary.h"
#include "support/TemporaryTree.h"

#include <gtest/gtest.h>
#include <string>

using namespace zolhost;
using zoltest::FakeZolea;
using zoltest::LoadedLibrary;
using zoltest::TemporaryTree;

TEST(MoModel, BeginsWithTheRootAndNamesNoUnknownClass)
{
    EXPECT_EQ(moClasses().front().name, "FileM");
    for (const auto& moClass : moClasses())
    {
        EXPECT_EQ(findMoClass(moClass.name), &moClass);
        for (const auto child : moClass.children)
        {
            EXPECT_NE(findMoClass(child), nullptr) << child;
            EXPECT_TRUE(moClass.canHold(child));
        }
    }
    EXPECT_EQ(findMoClass("FileGroupPolicy"), nullptr);
}

TEST(MoModel, GivesEveryAttributeTheTypeInWhichItComes)
{
    const TemporaryTree tree;
    tree.file("d/a.log", "12345");
    const FakeZolea zolea("echo " + tree.path());
    const Host::Setup setup = {LoadedLibrary::path(), configurationFor(tree.path()), {}};
    Host host(setup);
    const auto transaction = host.begin();
    const auto objects = host.objects(*transaction);

    for (const auto* const text : {"FileMConfigData=1", "FileGroup=d", "FileGroup=d,FileInformation=a.log"})
    {
        const auto dn = DistinguishedName::parse(text);
        EXPECT_FALSE(dn.moClass().attributes.empty()) << text;
        for (const auto& attribute : dn.moClass().attributes)
        {
            const auto value = objects.attribute(dn.text(), std::string(attribute.name));
            EXPECT_EQ(value.type, attribute.type) << attribute.name;
            EXPECT_TRUE(attribute.isList || value.values.size() == 1) << attribute.name;
        }
    }
}

TEST(MoModel, NamesTheMembersOfAStructInTheirOrder)
{
    const TemporaryTree tree;
    tree.file("d/a.log", "12345");
    const Host::Setup setup = {LoadedLibrary::path(), configurationFor(tree.path()), {}};
    Host host(setup);
    const auto transaction = host.begin();

    const auto dn = DistinguishedName::parse("FileGroup=d");
    const auto files = host.objects(*transaction).attribute(dn.text(), "files");
    ASSERT_EQ(files.values.size(), 1U);
    const auto& members = std::get<StructValue>(files.values.front());
    const auto described = dn.moClass().attribute("files")->members;
    ASSERT_EQ(members.size(), described.size());
    for (std::size_t i = 0; i < members.size(); ++i)
    {
        EXPECT_EQ(members[i].name, described[i].name);
        EXPECT_EQ(members[i].value.type, described[i].type) << members[i].name;
    }
}
