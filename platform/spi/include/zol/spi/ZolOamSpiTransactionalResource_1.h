/** @file
 * How the host's transactions drive a component: "ZolOamSpiTransactionalResource", version "1". */
#pragma once

#include <zol/spi/ZolMgmtSpiInterface_1.h>
#include <zol/spi/ZolReturnT.h>

#ifdef __cplusplus
extern "C" {
#endif

/** The table is the component's and stays valid until its library is unloaded. From a start that returned 0
 * on any thread may call: the component lets one operation through at a time. A transaction goes join, calls
 * on its objects, prepare, then commit or abort, then finish; the component does not enforce that order. The
 * host chooses the handles. Any operation may give -1 for want of memory. */
typedef struct ZolOamSpiTransactionalResource_1
{
    const char* componentName; /**< "ZolFileManagementComponent" */
    const char* interfaceName; /**< "ZolOamSpiTransactionalResource" */
    const char* version;       /**< "1" */
    /** Opens the transaction in the component, which registers as participant from within the call, so the
     * host must have offered the interface "ZolOamSpiTransaction" when it called start: without it this call
     * ends the process. Not to be called again before finish: what is opened then is lost.
     *
     * @retval 0 open
     * @retval other the host's code for the refused registration; nothing is open */
    ZolReturnT (*join)(unsigned long txHandle);
    /** There is nothing to prepare, whatever the handle.
     *
     * @retval 0 always */
    ZolReturnT (*prepare)(unsigned long txHandle);
    /** Does on disk what the transaction holds: removes files, creates directories, removes directories, in
     * that order. Blocks for as long as that takes. The transaction remains until finish, its iterators
     * don't.
     *
     * @retval 0 done, but what could not be removed is still there, and a mode that could not be set is in
     * the log
     * @retval -1 a directory could not be created; what was done stays, the rest is forgotten
     * @retval -2 unknown handle */
    ZolReturnT (*commit)(unsigned long txHandle);
    /** Forgets what the transaction holds. The transaction remains until finish, its iterators don't.
     *
     * @retval 0 done
     * @retval -2 unknown handle */
    ZolReturnT (*abort)(unsigned long txHandle);
    /** Ends the transaction; what was not committed is forgotten. Names handed out in it are no longer valid,
     * results are.
     *
     * @retval 0 the handle is free
     * @retval -2 unknown handle */
    ZolReturnT (*finish)(unsigned long txHandle);
} ZolOamSpiTransactionalResource_1;

ZOL_SPI_ASSERT_WORD(ZolOamSpiTransactionalResource_1, componentName, 0);
ZOL_SPI_ASSERT_WORD(ZolOamSpiTransactionalResource_1, interfaceName, 1);
ZOL_SPI_ASSERT_WORD(ZolOamSpiTransactionalResource_1, version, 2);
ZOL_SPI_ASSERT_WORD(ZolOamSpiTransactionalResource_1, join, 3);
ZOL_SPI_ASSERT_WORD(ZolOamSpiTransactionalResource_1, prepare, 4);
ZOL_SPI_ASSERT_WORD(ZolOamSpiTransactionalResource_1, commit, 5);
ZOL_SPI_ASSERT_WORD(ZolOamSpiTransactionalResource_1, abort, 6);
ZOL_SPI_ASSERT_WORD(ZolOamSpiTransactionalResource_1, finish, 7);
ZOL_SPI_ASSERT_SIZE(ZolOamSpiTransactionalResource_1, 8 * sizeof(void*));

#ifdef __cplusplus
}
#endif
