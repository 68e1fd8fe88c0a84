#include "FileManagementComponent.h"

#include <zol/spi/ZolFileManagement.h>

using ZolFileManagement::FileManagementComponent;

extern "C" __attribute__((visibility("default"))) ZolReturnT zolLCMinit(ZolMgmtSpiPortalAccessor* accessor,
                                                                        const char* config)
{
    return FileManagementComponent::instance().init(accessor, config);
}

extern "C" __attribute__((visibility("default"))) void zolLCMterminate(void)
{
    FileManagementComponent::instance().exit();
}
