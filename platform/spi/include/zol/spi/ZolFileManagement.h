/** @file
 * The two functions that libzol_file_management exports. A host finds them by name with dlsym. */
#pragma once

#include <zol/spi/ZolMgmtSpiPortalAccessor.h>

#ifdef __cplusplus
extern "C" {
#endif

/** Called once after loading. Registers the component with the host's portal and reads its configuration. The
 * entry points and the callbacks of the component record are called one at a time.
 *
 * After a failure too, the host calls zolLCMterminate before it unloads the library, and drops the record if
 * it has no portal of version "3": the component may be registered, and its record goes with the library.
 *
 * The configuration is an XML document of at most 256 KiB. It has the element `ZolFileManagementComponent`
 * exactly once, at any depth, and anywhere below that the element `internal_root` exactly once: its text is
 * the path of the root directory, white space included. It must be absolute, which nobody checks: one without
 * a slash, such as `tree`, is looked for as it is by start but used as `tree/tree`, and any other relative
 * one changes with the working directory. Where that element is missing, empty or there more than once, start
 * takes what the command `zolea file-system internalRoot` prints.
 *
 * @param accessor where the host's portals are; not null, and in place until the library is unloaded
 * @param config the text of an XML document if it begins with '<' after white space, otherwise the path of
 * one; not null, the caller's
 * @retval 0 the component can be started
 * @retval -1 there is no portal of version "1", or the configuration can't be read; in the second case the
 *     component is registered all the same
 * @return otherwise the host's code for a refused registration */
ZolReturnT zolLCMinit(ZolMgmtSpiPortalAccessor* accessor, const char* config);

/** Called once before unloading, after the last transaction has finished. Unregisters the component at the
 * portal of version "3", if there is one, and does no more. */
void zolLCMterminate(void);

/** What dlsym finds as "zolLCMinit". */
typedef ZolReturnT (*zolLCMinitT)(ZolMgmtSpiPortalAccessor* accessor, const char* config);
/** What dlsym finds as "zolLCMterminate". */
typedef void (*zolLCMterminateT)(void);

#ifdef __cplusplus
}
#endif
