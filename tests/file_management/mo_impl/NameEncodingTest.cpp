#include "NameEncoding.h"
#include "FileMTransaction.h"

#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

namespace
{

using ZolFileManagement::FileMTransaction;
using ZolFileManagement::replaceAll;
using ZolFileManagement::stripQuotes;

std::string asFileGroup(std::string name)
{
    FileMTransaction::alignFileGroupWith3gppRdn(name);
    return name;
}

std::string asFileInformation(std::string name)
{
    FileMTransaction::alignNameWithQuestionMark(name);
    return name;
}

std::string decoded(std::string value)
{
    FileMTransaction::reAlignWith3gppRdn(value);
    return value;
}

std::string withoutQuotes(std::string text)
{
    stripQuotes(text);
    return text;
}

std::string replaced(std::string text, const std::map<std::string, std::string>& table)
{
    replaceAll(text, table);
    return text;
}

TEST(NameEncoding, NameOnDiskHasItsValueForEachClass)
{
    struct Row
    {
        std::string name;
        std::string fileGroup;
        std::string fileInformation;
    };
    const std::string qq = "?\?"; // never in a longer literal, where it may begin a trigraph
    const Row rows[] = {
        {"plain", "plain", "plain"},
        {"a+b", "a\\2Bb", "a" + qq + "b"},
        {"c++;", R"(c\2B\2B)" + qq, "c" + qq + qq + qq},
        {"a+b,c", "a\\2Bb" + qq + "c", "a" + qq + "b" + qq + "c"},
        {"a,b", "a" + qq + "b", "a" + qq + "b"},
        {"a=b", "a" + qq + "b", "a" + qq + "b"},
        {"a*b", "a" + qq + "b", "a" + qq + "b"},
        {"<t>", qq + "t" + qq, qq + "t" + qq},
        {"a\\b", "a" + qq + "b", "a" + qq + "b"},
        {"a\\nb", "a" + qq + "b", "a" + qq + "b"},
        {"a\\rb", "a" + qq + "b", "a" + qq + "b"},
        {R"(\\n)", qq + qq, qq + qq},
        {"x\\2By", "x" + qq + "2By", "x" + qq + "2By"},
        {"a?b", "a?b", "a?b"},
        {"a" + qq + "b", "a" + qq + "b", "a" + qq + "b"},
        {R"("quoted")", "quoted", qq + "quoted" + qq},
        {R"("")", "", qq + qq},
        {R"(")", qq, qq},
        {R"("esc\")", qq + "esc" + qq + qq, qq + "esc" + qq + qq},
        {R"("esc\\")", "esc" + qq + qq, qq + "esc" + qq + qq + qq},
        {"  padded  ", "padded", "  padded  "},
        {R"( "q" )", qq + "q" + qq, " " + qq + "q" + qq + " "},
    };
    for (const auto& row : rows)
    {
        EXPECT_EQ(asFileGroup(row.name), row.fileGroup) << row.name;
        EXPECT_EQ(asFileInformation(row.name), row.fileInformation) << row.name;
    }
}

TEST(NameEncoding, ExactlyTheIllegalCharactersBecomeTwoQuestionMarks)
{
    const std::string illegal = "\"#*+,;<=>\\";
    for (int byte = 1; byte < 256; ++byte)
    {
        const std::string name = {'a', static_cast<char>(byte), 'b'};
        const bool isIllegal = illegal.find(name[1]) != std::string::npos;
        EXPECT_EQ(asFileInformation(name), isIllegal ? "a?\?b" : name) << byte;
        EXPECT_EQ(asFileGroup(name), name[1] == '+' ? "a\\2Bb" : isIllegal ? "a?\?b" : name) << byte;
    }
}

TEST(NameEncoding, LineFeedAndCarriageReturnStay)
{
    EXPECT_EQ(asFileInformation("a\nb\rc\n"), "a\nb\rc\n");
    EXPECT_EQ(asFileGroup("a\nb\rc"), "a\nb\rc");
}

TEST(NameEncoding, WhiteSpaceAtTheEndsOfADirectoryNameIsTrimmed)
{
    EXPECT_EQ(asFileGroup("\t\n\v\f\r a b \t\n\v\f\r"), "a b");
    EXPECT_EQ(asFileGroup("  "), "");
}

TEST(NameEncoding, WhiteSpaceInsideTheQuotesOfADirectoryNameIsTrimmedToo)
{
    EXPECT_EQ(asFileGroup("\" a \""), "a");
}

TEST(NameEncoding, BytesThatStandInForAPlusSignComeOutAsOne)
{
    EXPECT_EQ(asFileGroup("a\xD6\xD6\xD6\xF1z"), "a\\2Bz");
    EXPECT_EQ(asFileGroup("a\xD6\xD6\xF1z"), "a\xD6\xD6\xF1z");
}

TEST(NameEncoding, ValueIsDecodedToPlusSignsAlone)
{
    EXPECT_EQ(decoded("a\\2Bb"), "a+b");
    EXPECT_EQ(decoded("a\\2bb"), "a+b");
    EXPECT_EQ(decoded("\\2B\\2b"), "++");
    EXPECT_EQ(decoded("a\\2Cb"), "a\\2Cb");
    EXPECT_EQ(decoded("\\\\2B"), "\\+");
    EXPECT_EQ(decoded("a?\?b"), "a?\?b");
    EXPECT_EQ(decoded(""), "");
}

TEST(NameEncoding, DirectoryNameWithAPlusSignComesBackFromItsValue)
{
    EXPECT_EQ(decoded(asFileGroup("a+b")), "a+b");
    EXPECT_NE(decoded(asFileGroup("a=b")), "a=b");
}

TEST(ReplaceAll, KeysAreAppliedInTheirOrder)
{
    EXPECT_EQ(replaced("b a", {{"b", "c"}, {"a", "b"}}), "c c");
    EXPECT_EQ(replaced("a b", {{"b", "a"}, {"a", "c"}}), "c a");
}

TEST(ReplaceAll, MatchesDoNotOverlapAndInsertedTextIsNotSearched)
{
    EXPECT_EQ(replaced("aaa", {{"aa", "b"}}), "ba");
    EXPECT_EQ(replaced("aaaa", {{"aa", "a"}}), "aa");
    EXPECT_EQ(replaced("x", {{"x", "xx"}}), "xx");
}

TEST(ReplaceAll, WithoutKeysChangesNothing)
{
    EXPECT_EQ(replaced("abc", {}), "abc");
}

TEST(StripQuotes, TakesOffQuotationMarksAtBothEnds)
{
    EXPECT_EQ(withoutQuotes("\"a\""), "a");
    EXPECT_EQ(withoutQuotes("\"\""), "");
    EXPECT_EQ(withoutQuotes("\"\"a\"\""), "\"a\"");
}

TEST(StripQuotes, LeavesATextWithoutQuotationMarksAtBothEnds)
{
    for (const char* text : {"", "\"", "a", "ab", "\"a", "a\"", " \"a\"", "\"a\" "})
    {
        EXPECT_EQ(withoutQuotes(text), text);
    }
}

TEST(StripQuotes, LeavesATextWhoseClosingQuotationMarkIsEscaped)
{
    for (const char* text : {R"("\")", R"("a\")", R"("esc\")"})
    {
        EXPECT_EQ(withoutQuotes(text), text);
    }
}

TEST(StripQuotes, DoubledBackslashLetsTheQuotationMarksGo)
{
    EXPECT_EQ(withoutQuotes("\"\\\\\""), "\\\\");
    EXPECT_EQ(withoutQuotes("\"a\\\\\""), "a\\\\");
    EXPECT_EQ(withoutQuotes("\"\\\\\\\""), "\\\\\\") << "only the two characters before it count";
}

} // namespace
