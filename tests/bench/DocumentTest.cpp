#include "report/Document.h"
#include "support/TemporaryTree.h"

#include <fstream>
#include <gtest/gtest.h>
#include <sstream>

namespace
{

class Document : public ::testing::Test
{
protected:
    std::string content() const
    {
        std::ostringstream text;
        text << std::ifstream(path).rdbuf();
        return text.str();
    }

    const zoltest::TemporaryTree folder;
    const std::string path =
        folder.file("document.md", "before\n<!-- table one -->\nold\n<!-- end one -->\nafter\n");
};

TEST_F(Document, GetsATableBetweenItsMarksAndNothingElse)
{
    const std::string expected = "before\n<!-- table one -->\n\nnew\n\n<!-- end one -->\nafter\n";
    zolbench::writeTables(path, {{"one", "new\n"}});
    EXPECT_EQ(content(), expected);
    zolbench::writeTables(path, {{"one", "new\n"}});
    EXPECT_EQ(content(), expected);
}

TEST_F(Document, StaysAsItIsWithoutAPlaceForATable)
{
    const std::string before = content();
    EXPECT_THROW(zolbench::writeTables(path, {{"one", "new\n"}, {"two", "more\n"}}), std::runtime_error);
    EXPECT_EQ(content(), before);
}

} // namespace
