/** @file
 * Where a component finds the host's interfaces and registers itself; version "1". */
#pragma once

#include <zol/spi/ZolMgmtSpiComponentRecord.h>

#ifdef __cplusplus
extern "C" {
#endif

/** The portal is the host's and outlives the component's library. */
typedef struct ZolMgmtSpiInterfacePortal_1
{
    const char* componentName; /**< who offers the portal */
    const char* interfaceName; /**< what it is called; not read by this component */
    const char* version;       /**< "1" or "3" */
    /** Finds the host's table of an interface. The table stays the host's. This component asks for
     * "ZolOamSpiTransactionService", "ZolOamSpiTransaction", "1" from within start, and for
     * "ZolMgmtSpiThreadContextService", "ZolMgmtSpiThreadContext", "2" from within join on its thread with
     * the component's lock held: the host must not wait for another thread that may call the component.
     *
     * @retval 0 `*result` is the table
     * @retval other there is none, and `*result` is as it was */
    ZolReturnT (*getInterface)(ZolMgmtSpiInterface_1 id, ZolMgmtSpiInterface_1** result);
    /** Not used by this component. */
    void (*reserved)(void);
    /** Takes note of a component. Called once from within zolLCMinit. The host keeps the pointer until
     * unregisterComponent, also if zolLCMinit then fails. A component that was registered here because the
     * host has no portal of version "3" is never unregistered: the host drops its record before it unloads
     * the library.
     *
     * @retval 0 the component is registered
     * @retval other it is not, and zolLCMinit gives that code */
    ZolReturnT (*registerComponent)(ZolMgmtSpiComponentRecord* record);
    /** Forgets a component. Called from within zolLCMterminate, also for one that was not registered.
     *
     * @retval any it counts for nothing */
    ZolReturnT (*unregisterComponent)(ZolMgmtSpiComponentRecord* record);
} ZolMgmtSpiInterfacePortal_1;

/** The portal of version "3" has registerComponent and unregisterComponent at the same positions. */
typedef ZolMgmtSpiInterfacePortal_1 ZolMgmtSpiInterfacePortal_3;

ZOL_SPI_ASSERT_WORD(ZolMgmtSpiInterfacePortal_1, componentName, 0);
ZOL_SPI_ASSERT_WORD(ZolMgmtSpiInterfacePortal_1, interfaceName, 1);
ZOL_SPI_ASSERT_WORD(ZolMgmtSpiInterfacePortal_1, version, 2);
ZOL_SPI_ASSERT_WORD(ZolMgmtSpiInterfacePortal_1, getInterface, 3);
ZOL_SPI_ASSERT_WORD(ZolMgmtSpiInterfacePortal_1, reserved, 4);
ZOL_SPI_ASSERT_WORD(ZolMgmtSpiInterfacePortal_1, registerComponent, 5);
ZOL_SPI_ASSERT_WORD(ZolMgmtSpiInterfacePortal_1, unregisterComponent, 6);
ZOL_SPI_ASSERT_SIZE(ZolMgmtSpiInterfacePortal_1, 7 * sizeof(void*));

#ifdef __cplusplus
}
#endif
