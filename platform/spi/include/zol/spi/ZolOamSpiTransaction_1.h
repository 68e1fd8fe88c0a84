/** @file
 * The host's transaction service as a component sees it: "ZolOamSpiTransaction", version "1". */
#pragma once

#include <zol/spi/ZolOamSpiTransactionalResource_1.h>

#ifdef __cplusplus
extern "C" {
#endif

/** The table is the host's and outlives the component's library. The component asks for it in each start, by
 * the three texts below. Where it finds none, start gives 0 all the same and the first join ends the
 * process. */
typedef struct ZolOamSpiTransaction_1
{
    const char* componentName; /**< "ZolOamSpiTransactionService" */
    const char* interfaceName; /**< "ZolOamSpiTransaction" */
    const char* version;       /**< "1" */
    /** The component takes part in the transaction and wants to be driven through `resource`, which stays in
     * place until its library is unloaded. Called on the thread that called join and from within it, with the
     * component's lock held: the host must not wait for another thread that may call the component.
     *
     * @retval 0 accepted
     * @retval other refused, and join gives that code */
    ZolReturnT (*registerParticipant)(unsigned long txHandle, ZolOamSpiTransactionalResource_1* resource);
} ZolOamSpiTransaction_1;

ZOL_SPI_ASSERT_WORD(ZolOamSpiTransaction_1, componentName, 0);
ZOL_SPI_ASSERT_WORD(ZolOamSpiTransaction_1, interfaceName, 1);
ZOL_SPI_ASSERT_WORD(ZolOamSpiTransaction_1, version, 2);
ZOL_SPI_ASSERT_WORD(ZolOamSpiTransaction_1, registerParticipant, 3);
ZOL_SPI_ASSERT_SIZE(ZolOamSpiTransaction_1, 4 * sizeof(void*));

#ifdef __cplusplus
}
#endif
