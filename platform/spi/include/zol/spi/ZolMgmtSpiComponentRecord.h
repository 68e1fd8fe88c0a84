/** @file
 * What a component tells the host about itself when it registers. */
#pragma once

#include <zol/spi/ZolMgmtSpiInterface_1.h>
#include <zol/spi/ZolReturnT.h>

#ifdef __cplusplus
extern "C" {
#endif

/** Why the host starts or stops a component. The component only prints the number. */
typedef enum ZolStateChangeReason ZOL_SPI_OPEN_ENUM
{
    ZolStateChangeReasonNormal = 0,   /**< the host itself comes up or goes down */
    ZolStateChangeReasonOperator = 1, /**< an operator asked for it */
    ZolStateChangeReasonFailure = 2,  /**< something else failed */
} ZolStateChangeReason;

/** The record and all that it points to belong to the component and stay in place until its library is
 * unloaded. The host calls `start` and `stop` one at a time, never beside the entry points. */
typedef struct ZolMgmtSpiComponentRecord
{
    const char* componentName;            /**< name of the component */
    const char* interfaceName;            /**< "ZolMgmtSpiComponent" */
    const char* version;                  /**< "1" */
    QenMgmtSpiInterface_1** interfaces;   /**< tables that it provides, ended by a null pointer */
    QenMgmtSpiInterface_1** dependencies; /**< interfaces that it requires, ended by a null pointer */
    /** Lets the component serve. May be called again, also without a stop. Where the configuration names no
     * root directory, an external command is run and waited for.
     *
     * @retval 0 it serves from now on, but without the host's ZolOamSpiTransaction the first join ends the
     *     process
     * @retval -1 it can't: there is no root directory, see the log. What is left to do is to start it again,
     *     or zolLCMterminate and to unload it */
    ZolReturnT (*start)(ZolStateChangeReason reason);
    /** Tells the component that the host wants no more of it. Tears nothing down: open transactions can still
     * end.
     *
     * @retval 0 always, but for want of memory */
    ZolReturnT (*stop)(ZolStateChangeReason reason);
    QenMgmtSpiInterface_1** extraInterfaces; /**< ended by a null pointer; this component has none */
    unsigned char flag;                      /**< 0 */
} ZolMgmtSpiComponentRecord;

ZOL_SPI_ASSERT_WORD(ZolMgmtSpiComponentRecord, componentName, 0);
ZOL_SPI_ASSERT_WORD(ZolMgmtSpiComponentRecord, interfaceName, 1);
ZOL_SPI_ASSERT_WORD(ZolMgmtSpiComponentRecord, version, 2);
ZOL_SPI_ASSERT_WORD(ZolMgmtSpiComponentRecord, interfaces, 3);
ZOL_SPI_ASSERT_WORD(ZolMgmtSpiComponentRecord, dependencies, 4);
ZOL_SPI_ASSERT_WORD(ZolMgmtSpiComponentRecord, start, 5);
ZOL_SPI_ASSERT_WORD(ZolMgmtSpiComponentRecord, stop, 6);
ZOL_SPI_ASSERT_WORD(ZolMgmtSpiComponentRecord, extraInterfaces, 7);
ZOL_SPI_ASSERT_WORD(ZolMgmtSpiComponentRecord, flag, 8);
ZOL_SPI_ASSERT_SIZE(ZolMgmtSpiComponentRecord, 9 * sizeof(void*));
ZOL_SPI_ASSERT(sizeof(ZolStateChangeReason) == 4, "the width of ZolStateChangeReason binds with the host");

#ifdef __cplusplus
}
#endif
