/** @file
 * Attribute values of managed objects and results of actions, as they cross between host and component. */
#pragma once

#include <stdbool.h>
#include <stdint.h>
#include <zol/spi/SpiLayout.h>

#ifdef __cplusplus
extern "C" {
#endif

/** Type of all values of a container; the host knows more than these. */
typedef enum ZolOamSpiMoAttributeType_3 ZOL_SPI_OPEN_ENUM
{
    attrTypeInt = 4,        /**< intValue */
    attrTypeUint = 8,       /**< uintValue */
    attrTypeString = 9,     /**< stringValue */
    attrTypeBool = 10,      /**< boolValue */
    attrTypeReference = 11, /**< referenceValue */
    attrTypeStruct = 14,    /**< structValue */
} ZolOamSpiMoAttributeType_3;

struct ZolMoAttributeStructMember;

/** One value. The texts of a value that is handed to the host come from strdup. Only the field that belongs
 * to the container's type is set, the other bytes are anything. */
typedef union ZolMoAttributeValue_3
{
    int64_t intValue;                               /**< signed */
    uint64_t uintValue;                             /**< unsigned */
    char* stringValue;                              /**< ends in a null byte */
    bool boolValue;                                 /**< the first byte */
    char* referenceValue;                           /**< a DN, ends in a null byte */
    struct ZolMoAttributeStructMember* structValue; /**< first member of a struct value */
} ZolMoAttributeValue_3;

/** The values of one attribute or parameter. */
typedef struct ZolMoAttributeValueContainer_3
{
    ZolOamSpiMoAttributeType_3 valueType; /**< type of all values */
    uint32_t nrOfValues;                  /**< number of elements of values */
    ZolMoAttributeValue_3* values;        /**< null when there are none */
} ZolMoAttributeValueContainer_3;

/** One member of a struct value, linked in the order of the struct. */
typedef struct ZolMoAttributeStructMember
{
    char* memberName;                              /**< from strdup */
    ZolMoAttributeValueContainer_3* memberValue;   /**< owned by the member */
    struct ZolMoAttributeStructMember* nextMember; /**< null at the last one */
} ZolMoAttributeStructMember;

/** A parameter of an action or an attribute of a new object; all of it is the caller's. */
typedef struct ZolMoNamedAttributeValueContainer_3
{
    const char* name;                     /**< parameter name; parameters are taken by position */
    ZolOamSpiMoAttributeType_3 valueType; /**< type of all values */
    uint32_t nrOfValues;                  /**< number of elements of values */
    ZolMoAttributeValue_3* values;        /**< null when there are none */
} ZolMoNamedAttributeValueContainer_3;

/** A value that is handed to the host. It is the host's until it calls the release function, which it must do
 * exactly once: from any thread, also after the transaction has finished, but before the library that the
 * function lies in is unloaded. */
typedef struct ZolMoAttributeValueResult_3
{
    void (*releaseCallback)(ZolMoAttributeValueContainer_3* container); /**< null: nothing to release */
    ZolMoAttributeValueContainer_3* container;                          /**< the value, or null */
} ZolMoAttributeValueResult_3;

/** The values of several attributes, released as a whole like a single one. */
typedef struct ZolMoAttributeValuesResult_3
{
    void (*releaseCallback)(ZolMoAttributeValueContainer_3** containers); /**< null: nothing to release */
    ZolMoAttributeValueContainer_3**
        containers; /**< one for each attribute asked for, in that order, then null */
} ZolMoAttributeValuesResult_3;

typedef ZolOamSpiMoAttributeType_3 QenOamSpiMoAttributeType_3;         /**< another name of the same */
typedef ZolMoAttributeValue_3 QenMoAttributeValue_3;                   /**< another name of the same */
typedef ZolMoAttributeValueContainer_3 QenMoAttributeValueContainer_3; /**< another name of the same */
typedef ZolMoAttributeStructMember QenMoAttributeStructMember;         /**< another name of the same */
typedef ZolMoNamedAttributeValueContainer_3
    QenMoNamedAttributeValueContainer_3;                           /**< another name of the same */
typedef ZolMoAttributeValueResult_3 QenMoAttributeValueResult_3;   /**< another name of the same */
typedef ZolMoAttributeValuesResult_3 QenMoAttributeValuesResult_3; /**< another name of the same */

ZOL_SPI_ASSERT(sizeof(ZolOamSpiMoAttributeType_3) == 4, "the width of a type code binds with the host");
ZOL_SPI_ASSERT_SIZE(ZolMoAttributeValue_3, sizeof(int64_t));
ZOL_SPI_ASSERT(sizeof(bool) == 1, "a boolean is the first byte of a value");
ZOL_SPI_ASSERT(offsetof(ZolMoAttributeValueContainer_3, nrOfValues) == 4, "nrOfValues binds with the host");
ZOL_SPI_ASSERT_WORD(ZolMoAttributeValueContainer_3, valueType, 0);
ZOL_SPI_ASSERT(offsetof(ZolMoAttributeValueContainer_3, values) == 8, "values binds with the host");
ZOL_SPI_ASSERT_SIZE(ZolMoAttributeValueContainer_3, 8 + sizeof(void*));
ZOL_SPI_ASSERT_WORD(ZolMoAttributeStructMember, memberName, 0);
ZOL_SPI_ASSERT_WORD(ZolMoAttributeStructMember, memberValue, 1);
ZOL_SPI_ASSERT_WORD(ZolMoAttributeStructMember, nextMember, 2);
ZOL_SPI_ASSERT_SIZE(ZolMoAttributeStructMember, 3 * sizeof(void*));
ZOL_SPI_ASSERT_WORD(ZolMoNamedAttributeValueContainer_3, name, 0);
ZOL_SPI_ASSERT_WORD(ZolMoNamedAttributeValueContainer_3, valueType, 1);
ZOL_SPI_ASSERT(offsetof(ZolMoNamedAttributeValueContainer_3, nrOfValues) == sizeof(void*) + 4,
               "nrOfValues binds with the host");
ZOL_SPI_ASSERT(offsetof(ZolMoNamedAttributeValueContainer_3, values) == sizeof(void*) + 8,
               "values binds with the host");
ZOL_SPI_ASSERT_SIZE(ZolMoNamedAttributeValueContainer_3, 2 * sizeof(void*) + 8);
ZOL_SPI_ASSERT_WORD(ZolMoAttributeValueResult_3, releaseCallback, 0);
ZOL_SPI_ASSERT_WORD(ZolMoAttributeValueResult_3, container, 1);
ZOL_SPI_ASSERT_SIZE(ZolMoAttributeValueResult_3, 2 * sizeof(void*));
ZOL_SPI_ASSERT_WORD(ZolMoAttributeValuesResult_3, releaseCallback, 0);
ZOL_SPI_ASSERT_WORD(ZolMoAttributeValuesResult_3, containers, 1);
ZOL_SPI_ASSERT_SIZE(ZolMoAttributeValuesResult_3, 2 * sizeof(void*));

#ifdef __cplusplus
}
#endif
