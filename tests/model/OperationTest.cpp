#include "model/Operation.h"

#include <gtest/gtest.h>

using zolmodel::Does;
using zolmodel::Operation;
using zolmodel::packed;
using zolmodel::toText;
using zolmodel::unpacked;

TEST(OperationOfARun, ComesOutOfItsPackageAsItWentIn)
{
    Operation operation;
    operation.does = Does::GetAttributes;
    operation.transaction = 3;
    operation.iterator = 4;
    operation.dn = "a b\n,=";
    operation.names = {"", " x ", "\xFF"};
    operation.number = -8;
    operation.odd = true;
    const Operation again = unpacked(packed(operation));
    EXPECT_EQ(packed(again), packed(operation));
    EXPECT_EQ(again.dn, operation.dn);
    EXPECT_EQ(again.names, operation.names);
    EXPECT_EQ(again.number, -8);
    EXPECT_TRUE(again.odd);
}

TEST(OperationOfARun, IsOneLineForPeople)
{
    Operation operation;
    operation.does = Does::Delete;
    operation.transaction = 1;
    operation.dn = "FileGroup=\n\"\xFF";
    EXPECT_EQ(toText(operation), "tx1 deleteMo \"FileGroup=\\x0a\"\\xff\"");
}
