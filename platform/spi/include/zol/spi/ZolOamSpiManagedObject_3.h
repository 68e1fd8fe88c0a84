/** @file
 * How the host works on a component's managed objects: "ZolOamSpiManagedObject", version "3". */
#pragma once

#include <zol/spi/ZolMgmtSpiInterface_1.h>
#include <zol/spi/ZolMoAttributeValue_3.h>
#include <zol/spi/ZolReturnT.h>

#ifdef __cplusplus
extern "C" {
#endif

/** The table is the component's and stays valid until its library is unloaded. From a start that returned 0
 * on any thread may call: the component lets one operation through at a time. Texts are byte strings that end
 * in a null byte and are the caller's; none may be null. Every change waits in its transaction until commit.
 * Reasons of a refusal go through ZolMgmtSpiThreadContext, but many have none. Any operation may give -1 for
 * want of memory.
 *
 * The classes are FileGroup, a directory; FileInformation, a file; and FileMConfigData, one object with the
 * configuration. A file is a marker if its name is `.filemnohousekeeping`, `.filemnodirectorycreate` or
 * `.filemnodirectorydelete`: each keeps its directory from deleteMo, the second one also from createMo below
 * it, and the first one sets an attribute. Markers are hidden: no iterator, count or attribute shows them,
 * and existsMo finds none. A directory of such a name works like a marker but is shown, as is any other name
 * that begins with a dot. */
typedef struct ZolOamSpiManagedObject_3
{
    const char* componentName; /**< "ZolFileManagementComponent" */
    const char* interfaceName; /**< "ZolOamSpiManagedObject" */
    const char* version;       /**< "3" */
    /** No attribute can be written.
     *
     * @retval -1 always */
    ZolReturnT (*setMoAttribute)(unsigned long txHandle, const char* dn, const char* attributeName,
                                 const ZolMoAttributeValueContainer_3* value);
    /** Reads one attribute, as it is at that moment. `result` is not null; the host releases it if its
     * release function is not null, whatever the code. An object that is not there is no failure: its
     * attributes are answered from the DN, `files` excepted.
     *
     * | Class           | Attribute           | Type       | Value                              |
     * |-----------------|---------------------|------------|------------------------------------|
     * | FileGroup       | fileGroupId         | string     | value of the last RDN of the DN    |
     * | FileGroup       | internalHousekeeping | bool      | if there is `.filemnohousekeeping` |
     * | FileGroup       | reservedByPolicy    | references | FileGroupPolicy objects, the host's |
     * | FileGroup       | files               | structs    | its files, ordered by name         |
     * | FileInformation | fileInformationId   | string     | value of the last RDN of the DN    |
     * | FileInformation | modificationTime    | string     | last change of status; or empty    |
     * | FileInformation | size                | int        | bytes; 0 for a missing file        |
     * | FileInformation | type                | string     | what follows the name's last dot   |
     * | FileInformation | open                | bool       | false                              |
     * | FileMConfigData | fileMConfigDataId   | string     | value of the last RDN of the DN    |
     * | FileMConfigData | internalRoot        | string     | what the external command gives    |
     *
     * The members of a struct in `files` are the strings fileName, modificationTime and fileType, and the
     * unsigned size in bytes. Times are local, in the form 2026-11-21T15:05:00.
     *
     * @retval 0 `result` holds the value
     * @retval -1 it can't be read, or the DN is of another class
     * @retval -2 no such attribute, a marker file, or unknown handle
     * @retval other from the host's own objects that were asked */
    ZolReturnT (*getMoAttribute)(unsigned long txHandle, const char* dn, const char* attributeName,
                                 ZolMoAttributeValueResult_3* result);
    /** Reads several attributes of one object, all or nothing: the first that fails ends it, with a result of
     * null pointers. The names end with a null pointer; a list that is null is one of no names, and gives a
     * result to be released like any other.
     *
     * @retval 0 `result` holds the values
     * @retval other as getMoAttribute gives it */
    ZolReturnT (*getMoAttributes)(unsigned long txHandle, const char* dn, const char** attributeNames,
                                  ZolMoAttributeValuesResult_3* result);
    /** Starts to iterate over children of a class. A missing parent has those that the transaction created.
     *
     * @retval 0 `*iteratorId` can be used until commit or abort
     * @retval -1 the component has no such class
     * @retval -2 unknown handle */
    ZolReturnT (*newMoIterator)(unsigned long txHandle, const char* parentDn, const char* className,
                                unsigned long long* iteratorId);
    /** Gives the RDN value of the next child: on the disk first, in no order, then what the transaction has
     * created. The text is the component's and lasts until finish.
     *
     * @retval 0 `*name` is the value, or null at the end and after a failed step
     * @retval -1 the transaction has finished; `*name` is null
     * @retval -2 unknown iterator, also one of a transaction that has been committed or aborted; `*name` is
     *     null */
    ZolReturnT (*nextMo)(unsigned long long iteratorId, char** name);
    /** Asks for a new FileGroup; its key attribute is fileGroupId. `attributes` is ignored and may be null.
     * Whether it is there already, or its parent, is not looked at.
     *
     * @retval 0 it waits for commit
     * @retval -1 another class or key attribute, a name that can't be one, a parent with
     *     `.filemnodirectorycreate`, or unknown handle */
    ZolReturnT (*createMo)(unsigned long txHandle, const char* parentDn, const char* className,
                           const char* keyAttribute, const char* keyValue,
                           ZolMoNamedAttributeValueContainer_3** attributes);
    /** Asks for a FileGroup or FileInformation to go.
     *
     * @retval 0 it waits for commit
     * @retval -1 a symbolic link, a directory with one of the markers or with files somewhere in it, another
     *     class, or unknown handle
     * @retval -2 there is none */
    ZolReturnT (*deleteMo)(unsigned long txHandle, const char* dn);
    /** Runs an action. The parameters are taken by position and end with a null pointer; the list is not
     * null. With a known handle there is a result to be released, whatever the code, and its value counts
     * with 0 only. With an unknown one the result stays as it was, so the host sets its release function to
     * null before the call.
     *
     * | Action     | Parameters | Value                     | What waits for commit           |
     * |------------|------------|---------------------------|---------------------------------|
     * | removeFile | one string | bool: whether any matches | files of the directory go       |
     * | remove     | none       | bool: true                | the directory goes with all in it |
     *
     * The string is a POSIX extended regular expression for the whole name of a file. Neither markers nor
     * files keep a directory from `remove`.
     *
     * @retval 0 done, as far as it can be before commit
     * @retval -1 no valid expression; remove on a symbolic link; unknown handle; or `result` is null
     * @retval -2 no such action
     * @retval -8 the first parameter is not one string */
    ZolReturnT (*action)(unsigned long txHandle, const char* dn, const char* actionName,
                         ZolMoNamedAttributeValueContainer_3** parameters,
                         ZolMoAttributeValueResult_3* result);
    /** Changes nothing: iterators last until commit or abort.
     *
     * @retval 0 always */
    ZolReturnT (*finalizeMoIterator)(unsigned long long iteratorId);
    /** Tells whether there is such a FileGroup or FileInformation. What the transaction has created exists,
     * and what it has deleted still exists until commit.
     *
     * @retval 0 `*exists` is set
     * @retval -2 unknown handle; `*exists` is as it was */
    ZolReturnT (*existsMo)(unsigned long txHandle, const char* dn, bool* exists);
    /** Counts the children of the class FileGroup or FileInformation; 0 for any other class, FileMConfigData
     * included. A walk that fails gives what was counted until then.
     *
     * @retval 0 `*count` is set
     * @retval -2 unknown handle */
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
