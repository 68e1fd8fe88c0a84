#include "filem/output/Table.h"

#include <gtest/gtest.h>
#include <sstream>

using zolhost::filem::Table;

TEST(Table, AlignsItsColumnsAndEndsNoLineInBlanks)
{
    Table table({{"NAME"}, {"SIZE", true}, {"TYPE"}});
    table.add({"a rather long one", "5", "log"});
    table.add({"\xc3\xa9", "12345", ""});
    table.add({"\x1b[1;34mblue\x1b[0m", "", "d"});
    std::ostringstream out;
    table.print(out);
    EXPECT_EQ(out.str(), "NAME                SIZE  TYPE\n"
                         "a rather long one      5  log\n"
                         "\xc3\xa9                  12345\n"
                         "\x1b[1;34mblue\x1b[0m                      d\n");
}
