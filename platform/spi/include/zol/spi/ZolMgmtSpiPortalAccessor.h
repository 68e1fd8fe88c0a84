/** @file
 * The record that a host passes to a library's entry point. */
#pragma once

#include <zol/spi/ZolMgmtSpiInterfacePortal_1.h>

#ifdef __cplusplus
extern "C" {
#endif

/** The accessor is the host's and outlives the component's library. */
typedef struct ZolMgmtSpiPortalAccessor
{
    /** Gives the portal of that version, a text in decimals, or null if the host has none. This component
     * asks for "1", which it needs, and for "3", each once from within zolLCMinit. */
    ZolMgmtSpiInterfacePortal_1* (*getPortal)(const char* version);
} ZolMgmtSpiPortalAccessor;

ZOL_SPI_ASSERT_WORD(ZolMgmtSpiPortalAccessor, getPortal, 0);

#ifdef __cplusplus
}
#endif
