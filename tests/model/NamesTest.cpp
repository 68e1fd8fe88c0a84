#include "model/Names.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

using zolmodel::fileValue;
using zolmodel::groupName;
using zolmodel::groupValue;
using zolmodel::namingRefusal;

TEST(ModelOfNames, EncodesEachNameForBothClasses)
{
    struct Row
    {
        const char* name;
        const char* group;
        const char* file;
    };
    const std::vector<Row> rows = {
        {"plain", "plain", "plain"},
        {"a+b", "a\\2Bb", "a?\?b"},
        {"c++;", "c\\2B\\2B?\?", "c?\?????"},
        {"a+b,c", "a\\2Bb?\?c", "a?\?b?\?c"},
        {"a,b", "a?\?b", "a?\?b"},
        {"a=b", "a?\?b", "a?\?b"},
        {"a*b", "a?\?b", "a?\?b"},
        {"<t>", "?\?t?\?", "?\?t?\?"},
        {"a\\b", "a?\?b", "a?\?b"},
        {"a\\nb", "a?\?b", "a?\?b"},
        {"a\\rb", "a?\?b", "a?\?b"},
        {"\\\\n", "?\???", "?\???"},
        {"x\\2By", "x?\?2By", "x?\?2By"},
        {"a?b", "a?b", "a?b"},
        {"a?\?b", "a?\?b", "a?\?b"},
        {"\"quoted\"", "quoted", "?\?quoted?\?"},
        {"\"\"", "", "?\???"},
        {"\"", "?\?", "?\?"},
        {"\"esc\\\"", "?\?esc?\???", "?\?esc?\???"},
        {"\"esc\\\\\"", "esc?\???", "?\?esc?\?????"},
        {"  padded  ", "padded", "  padded  "},
        {" \"q\" ", "?\?q?\?",
         " ?\?q?\?"
         " "},
        {"a\nb", "a\nb", "a\nb"},
        {"\xD6\xD6\xD6\xF1", "\\2B", "\xD6\xD6\xD6\xF1"},
    };
    for (const auto& row : rows)
    {
        EXPECT_EQ(groupValue(row.name), row.group) << row.name;
        EXPECT_EQ(fileValue(row.name), row.file) << row.name;
    }
}

TEST(ModelOfNames, DecodesNothingButThePlusSign)
{
    EXPECT_EQ(groupName("a\\2Bb\\2b"), "a+b+");
    EXPECT_EQ(groupName("a\\2Cb"), "a\\2Cb");
    EXPECT_EQ(groupName("\\\\2B"), "\\+");
}

TEST(ModelOfNames, RefusesSlashesBarsAndDotsAlone)
{
    EXPECT_EQ(namingRefusal("a|b/c"), "FileGroup contains illegal character(|)");
    EXPECT_EQ(namingRefusal("a/b"), "FileGroup contains illegal character(/)");
    EXPECT_EQ(namingRefusal("...."), "FileGroup name not allowed (....)");
    EXPECT_EQ(namingRefusal(""), "FileGroup name not allowed ()");
    EXPECT_EQ(namingRefusal("a."), std::nullopt);
}
