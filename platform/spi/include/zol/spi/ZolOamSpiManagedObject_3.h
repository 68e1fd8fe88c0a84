/* How the host works on a component's managed objects: "ZolOamSpiManagedObject", version "3". */
#pragma once

#include <zol/spi/ZolMgmtSpiInterface_1.h>
#include <zol/spi/ZolMoAttributeValue_3.h>
#include <zol/spi/ZolReturnT.h>

#ifdef __cplusplus
extern "C" {
#endif

/* The table is the component's and stays valid until its library is unloaded. From a start that
 * returned 0 on any thread may call: the component serialises by itself. Texts are byte strings that end in a
 * null byte and are the caller's; none may be null. Every change waits in its transaction until commit.
 * Reasons of a refusal go through ZolMgmtSpiThreadContext, but many have none. Any operation may give -1 for
 * want of memory. */
typedef struct ZolOamSpiManagedObject_3
{
    const char* componentName; /* identity of the table, a ZolMgmtSpiInterface_1 */
    const char* interfaceName;
    const char* version;
    /* Always -1: no attribute can be written. */
    ZolReturnT (*setMoAttribute)(unsigned long txHandle, const char* dn, const char* attributeName,
                                 const ZolMoAttributeValueContainer_3* value);
    /* Reads one attribute; the host releases the result if its release function is not null. An object that
     * is not there is no failure: its attributes are answered from the DN, `files` excepted. -1: not readable
     * or no object of this component. -2: no such attribute, hidden file or unknown handle. Other codes are
     * those of the host's own objects that were asked. */
    ZolReturnT (*getMoAttribute)(unsigned long txHandle, const char* dn, const char* attributeName,
                                 ZolMoAttributeValueResult_3* result);
    /* Reads several, all or nothing; the names end with a null pointer. Codes as getMoAttribute. */
    ZolReturnT (*getMoAttributes)(unsigned long txHandle, const char* dn, const char** attributeNames,
                                  ZolMoAttributeValuesResult_3* result);
    /* Starts to iterate over the children of a class. -1: unknown class. -2: unknown handle. */
    ZolReturnT (*newMoIterator)(unsigned long txHandle, const char* parentDn, const char* className,
                                unsigned long long* iteratorId);
    /* Gives the RDN value of the next child, or null at the end or after a failed step, with 0 in all cases.
     * The text is the component's and lasts until finish. -1: the transaction has finished. -2: unknown
     * iterator, also one of a transaction that has been committed or aborted. */
    ZolReturnT (*nextMo)(unsigned long long iteratorId, char** name);
    /* Asks for a new object; `attributes` is ignored. -1: refused, or unknown handle. */
    ZolReturnT (*createMo)(unsigned long txHandle, const char* parentDn, const char* className,
                           const char* keyAttribute, const char* keyValue,
                           ZolMoNamedAttributeValueContainer_3** attributes);
    /* Asks for an object to go. -1: refused, or unknown handle. -2: there is none. */
    ZolReturnT (*deleteMo)(unsigned long txHandle, const char* dn);
    /* Runs an action; the parameters end with a null pointer and are themselves not null. With a known handle
     * there is a result to be released, whatever the code, and its value counts with 0 only; with an unknown
     * one the result stays as it was, so the host sets its release function to null before the call. -1:
     * refused, or unknown handle, or `result` is null. -2: no such action. -8: wrong parameters. */
    ZolReturnT (*action)(unsigned long txHandle, const char* dn, const char* actionName,
                         ZolMoNamedAttributeValueContainer_3** parameters,
                         ZolMoAttributeValueResult_3* result);
    /* Always 0, and changes nothing: iterators last until commit or abort. */
    ZolReturnT (*finalizeMoIterator)(unsigned long long iteratorId);
    /* Tells whether there is such a FileGroup or FileInformation. What the transaction has created exists,
     * and what it has deleted still exists until commit. -2: unknown handle, `*exists` as it was. */
    ZolReturnT (*existsMo)(unsigned long txHandle, const char* dn, bool* exists);
    /* Counts the children of the class FileGroup or FileInformation; 0 for any other class, FileMConfigData
     * included. -2: unknown handle. */
    ZolReturnT (*countMoChildren)(unsigned long txHandle, const char* dn, const char* className,
                                  unsigned long long* count);
} ZolOamSpiManagedObject_3;

ZOL_SPI_ASSERT_WORD(ZolOamSpiManagedObject_3, componentName, 0);
ZOL_SPI_ASSERT_WORD(ZolOamSpiManagedObject_3, interfaceName, 1);
ZOL_SPI_ASSERT_WORD(ZolOamSpiManagedObject_3, version, 2);
ZOL_SPI_ASSERT_WORD(ZolOamSpiManagedObject_3, setMoAttribute, 3);
ZOL_SPI_ASSERT_WORD(ZolOamSpiManagedObject_3, getMoAttribute, 4);
ZOL_SPI_ASSERT_WORD(ZolOamSpiManagedObject_3, getMoAttributes, 5);
ZOL_SPI_ASSERT_WORD(ZolOamSpiManagedObject_3, newMoIterator, 6);
ZOL_SPI_ASSERT_WORD(ZolOamSpiManagedObject_3, nextMo, 7);
ZOL_SPI_ASSERT_WORD(ZolOamSpiManagedObject_3, createMo, 8);
ZOL_SPI_ASSERT_WORD(ZolOamSpiManagedObject_3, deleteMo, 9);
ZOL_SPI_ASSERT_WORD(ZolOamSpiManagedObject_3, action, 10);
ZOL_SPI_ASSERT_WORD(ZolOamSpiManagedObject_3, finalizeMoIterator, 11);
ZOL_SPI_ASSERT_WORD(ZolOamSpiManagedObject_3, existsMo, 12);
ZOL_SPI_ASSERT_WORD(ZolOamSpiManagedObject_3, countMoChildren, 13);
ZOL_SPI_ASSERT_SIZE(ZolOamSpiManagedObject_3, 14 * sizeof(void*));

#ifdef __cplusplus
}
#endif
