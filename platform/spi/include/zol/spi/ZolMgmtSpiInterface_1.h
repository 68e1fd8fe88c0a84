/** @file
 * Identity of an interface. Every table of an interface begins with these three fields, so that a pointer to
 * a table can stand where a pointer to an identity is asked for. */
#pragma once

#include <zol/spi/SpiLayout.h>

#ifdef __cplusplus
extern "C" {
#endif

/** Texts end in a null byte and live as long as the library that offers the record. A required interface may
 * leave out what it does not care for: the field is then a null pointer. */
typedef struct ZolMgmtSpiInterface_1
{
    const char* componentName; /**< who offers the interface */
    const char* interfaceName; /**< what it is called */
    const char* version;       /**< decimal number as text */
} ZolMgmtSpiInterface_1;

typedef ZolMgmtSpiInterface_1 QenMgmtSpiInterface_1;  /**< another name of the same */
typedef ZolMgmtSpiInterface_1 ZolMgmtSpiInterface_1T; /**< another name of the same */

ZOL_SPI_ASSERT_WORD(ZolMgmtSpiInterface_1, componentName, 0);
ZOL_SPI_ASSERT_WORD(ZolMgmtSpiInterface_1, interfaceName, 1);
ZOL_SPI_ASSERT_WORD(ZolMgmtSpiInterface_1, version, 2);
ZOL_SPI_ASSERT_SIZE(ZolMgmtSpiInterface_1, 3 * sizeof(void*));

#ifdef __cplusplus
}
#endif
