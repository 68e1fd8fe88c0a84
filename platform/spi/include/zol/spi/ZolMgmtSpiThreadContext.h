/** @file
 * The channel over which a component tells the operator why it refused: "ZolMgmtSpiThreadContext",
 * version "2". */
#pragma once

#include <stdint.h>
#include <zol/spi/ZolMgmtSpiInterface_1.h>
#include <zol/spi/ZolReturnT.h>

#ifdef __cplusplus
extern "C" {
#endif

/** The table is the host's and outlives the component's library. The component asks for it in each join, by
 * the three texts below. Where it finds none, the transaction works, its texts are lost and the log says
 * so. */
typedef struct ZolMgmtSpiThreadContext
{
    const char* componentName; /**< "ZolMgmtSpiThreadContextService" */
    const char* interfaceName; /**< "ZolMgmtSpiThreadContext" */
    const char* version;       /**< "2" */
    /** Adds a text to what the operator of the calling thread's request gets to see. Called from within a
     * component's operation, on its thread and with its lock held: the host must not wait for another thread
     * that may call the component. The text ends in a null byte, is the caller's and gone after the call: the
     * host copies it. This component's category is always 1.
     *
     * @retval 0 done
     * @retval other the text is lost and the component logs it; the operation goes on as before */
    ZolReturnT (*addMessage)(uint32_t category, const char* text);
} ZolMgmtSpiThreadContext;

ZOL_SPI_ASSERT_WORD(ZolMgmtSpiThreadContext, componentName, 0);
ZOL_SPI_ASSERT_WORD(ZolMgmtSpiThreadContext, interfaceName, 1);
ZOL_SPI_ASSERT_WORD(ZolMgmtSpiThreadContext, version, 2);
ZOL_SPI_ASSERT_WORD(ZolMgmtSpiThreadContext, addMessage, 3);
ZOL_SPI_ASSERT_SIZE(ZolMgmtSpiThreadContext, 4 * sizeof(void*));

#ifdef __cplusplus
}
#endif
