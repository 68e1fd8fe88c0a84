#include "ReadsFixture.h"
#include "support/AttributeText.h"

#include <cstdlib>

using namespace testing;
using ZolFileManagement::FileMTransaction;

namespace zoltest
{

namespace
{

using ResultRecords = Reads;

TEST_F(ResultRecords, HaveTypesWithTheNumbersOfTheHost)
{
    EXPECT_EQ(attrTypeInt, 4);
    EXPECT_EQ(attrTypeUint, 8);
    EXPECT_EQ(attrTypeString, 9);
    EXPECT_EQ(attrTypeBool, 10);
    EXPECT_EQ(attrTypeReference, 11);
    EXPECT_EQ(attrTypeStruct, 14);
}

TEST_F(ResultRecords, HaveNoArrayForNoValues)
{
    for (const auto type :
         {attrTypeInt, attrTypeUint, attrTypeString, attrTypeBool, attrTypeReference, attrTypeStruct})
    {
        QenMoAttributeValueContainer_3 garbage{};
        QenMoAttributeValueResult_3 result{nullptr, &garbage};
        worker.initAttrResult(type, 0, result);

        EXPECT_EQ(result.releaseCallback, &FileMTransaction::releaseAttrResultCB);
        EXPECT_EQ(result.container->valueType, type);
        EXPECT_EQ(result.container->nrOfValues, 0U);
        EXPECT_EQ(result.container->values, nullptr);
        result.releaseCallback(result.container);
    }
}

TEST_F(ResultRecords, HaveRoomForTheirValues)
{
    QenMoAttributeValueResult_3 result{};
    worker.initAttrResult(attrTypeInt, 3, result);

    ASSERT_EQ(result.releaseCallback, &FileMTransaction::releaseAttrResultCB);
    for (uint32_t i = 0; i < 3; ++i)
    {
        result.container->values[i].intValue = -1 - static_cast<int64_t>(i);
    }
    EXPECT_EQ(toText(result.container), "int[-1, -2, -3]");
    result.releaseCallback(result.container);
}

TEST_F(ResultRecords, HoldACopyOfAText)
{
    QenMoAttributeValueResult_3 result{};
    std::string text = "a text";
    worker.setAttrStringResult(text, result);
    text = "another";

    EXPECT_EQ(result.releaseCallback, &FileMTransaction::releaseAttrResultCB);
    EXPECT_EQ(toText(result.container), R"(string["a text"])");
    result.releaseCallback(result.container);

    worker.setAttrStringResult("", result);
    EXPECT_EQ(toText(result.container), R"(string[""])");
    result.releaseCallback(result.container);
}

TEST_F(ResultRecords, AreFreedWithAllBelowThem)
{
    tree.file("d/f");
    QenMoAttributeValueResult_3 result{};

    // the leak detector is the judge
    ASSERT_EQ(worker.getAttribute(groupDn("d").c_str(), "files", result), 0);
    FileMTransaction::releaseAttrResultCB(result.container);
}

QenMoAttributeValueContainer_3** newList(std::size_t count)
{
    return static_cast<QenMoAttributeValueContainer_3**>(
        std::calloc(count, sizeof(QenMoAttributeValueContainer_3*)));
}

TEST_F(ResultRecords, OfSeveralAttributesAreFreedUpToTheFirstNull)
{
    FileMTransaction::releaseAttributesResultCB(nullptr);
    FileMTransaction::releaseAttributesResultCB(newList(1));

    QenMoAttributeValueResult_3 first{};
    QenMoAttributeValueResult_3 second{};
    QenMoAttributeValueResult_3 behindTheEnd{};
    for (auto* result : {&first, &second, &behindTheEnd})
    {
        worker.setAttrStringResult("text", *result);
    }
    QenMoAttributeValueContainer_3** list = newList(4);
    list[0] = first.container;
    list[1] = second.container;
    list[3] = behindTheEnd.container;
    FileMTransaction::releaseAttributesResultCB(list);

    EXPECT_EQ(toText(behindTheEnd.container), R"(string["text"])");
    behindTheEnd.releaseCallback(behindTheEnd.container);
}

} // namespace

} // namespace zoltest
