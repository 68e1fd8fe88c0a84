/* How the host's transactions drive a component: "ZolOamSpiTransactionalResource", version "1". */
#pragma once

#include <zol/spi/ZolMgmtSpiInterface_1.h>
#include <zol/spi/ZolReturnT.h>

#ifdef __cplusplus
extern "C" {
#endif

/* The table is the component's and stays valid until its library is unloaded. From a start that
 * returned 0 on any thread may call: the component serialises by itself. A transaction goes join, calls on
 * its objects, prepare, then commit or abort, then finish; the component does not enforce that order. Any
 * operation may give -1 for want of memory. */
typedef struct ZolOamSpiTransactionalResource_1
{
    const char* componentName; /* identity of the table, a ZolMgmtSpiInterface_1 */
    const char* interfaceName;
    const char* version;
    /* Opens the transaction in the component, which registers as participant from within the call, so the
     * host must offer the interface "ZolOamSpiTransaction". 0: open. Otherwise the host's code for the
     * refused registration. Not to be called again before finish: what is opened then is lost. */
    ZolReturnT (*join)(unsigned long txHandle);
    /* Always 0: there is nothing to prepare. */
    ZolReturnT (*prepare)(unsigned long txHandle);
    /* Does on disk what the transaction holds; blocks for as long as that takes. 0: done, but what could not
     * be removed is still there, and a mode that could not be set is in the log. -1: a directory could not be
     * created; what was done stays, the rest is forgotten. -2: unknown handle. The transaction remains until
     * finish. */
    ZolReturnT (*commit)(unsigned long txHandle);
    /* Forgets what the transaction holds. -2: unknown handle. The transaction remains until finish. */
    ZolReturnT (*abort)(unsigned long txHandle);
    /* Ends the transaction; names handed out in it are no longer valid. -2: unknown handle. */
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
