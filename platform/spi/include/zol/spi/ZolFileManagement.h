/* The two functions that libzol_file_management exports. A host finds them by name with dlsym. */
#pragma once

#include <zol/spi/ZolMgmtSpiPortalAccessor.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Called once after loading, neither argument being null. Registers the component with the host's portal and
 * reads its configuration: `config` is the text of an XML document if it begins with '<' after white space,
 * otherwise the path of one. -1: no portal of version "1", or the configuration can't be read (the component
 * is registered all the same). Otherwise the host's code for a refused registration. */
ZolReturnT zolLCMinit(ZolMgmtSpiPortalAccessor* accessor, const char* config);

/* Called once before unloading, after the last transaction has finished. */
void zolLCMterminate(void);

typedef ZolReturnT (*zolLCMinitT)(ZolMgmtSpiPortalAccessor* accessor, const char* config);
typedef void (*zolLCMterminateT)(void);

#ifdef __cplusplus
}
#endif
