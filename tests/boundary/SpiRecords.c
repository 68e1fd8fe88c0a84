/* Takes every record of the host's headers, so that a description of this library holds their layouts. */
#include <zol/spi/ZolFileManagement.h>
#include <zol/spi/ZolMgmtSpiThreadContext.h>
#include <zol/spi/ZolOamSpiManagedObject_3.h>
#include <zol/spi/ZolOamSpiTransaction_1.h>

#define TAKE(RECORD)                                                                                         \
    void take##RECORD(const RECORD* record);                                                                 \
    void take##RECORD(const RECORD* record)                                                                  \
    {                                                                                                        \
        (void)record;                                                                                        \
    }

TAKE(ZolMgmtSpiComponentRecord)
TAKE(ZolMgmtSpiInterfacePortal_1)
TAKE(ZolMgmtSpiInterfacePortal_3)
TAKE(ZolMgmtSpiInterface_1)
TAKE(ZolMgmtSpiInterface_1T)
TAKE(QenMgmtSpiInterface_1)
TAKE(ZolMgmtSpiPortalAccessor)
TAKE(ZolMgmtSpiThreadContext)
TAKE(ZolMoAttributeValue_3)
TAKE(ZolMoAttributeValueContainer_3)
TAKE(ZolMoAttributeStructMember)
TAKE(ZolMoNamedAttributeValueContainer_3)
TAKE(ZolMoAttributeValueResult_3)
TAKE(ZolMoAttributeValuesResult_3)
TAKE(QenMoAttributeValue_3)
TAKE(QenMoAttributeValueContainer_3)
TAKE(QenMoAttributeStructMember)
TAKE(QenMoNamedAttributeValueContainer_3)
TAKE(QenMoAttributeValueResult_3)
TAKE(QenMoAttributeValuesResult_3)
TAKE(ZolOamSpiManagedObject_3)
TAKE(ZolOamSpiTransaction_1)
TAKE(ZolOamSpiTransactionalResource_1)
TAKE(ZolStateChangeReason)
TAKE(ZolOamSpiMoAttributeType_3)
TAKE(QenOamSpiMoAttributeType_3)
TAKE(ZolReturnT)
TAKE(zolLCMinitT)
TAKE(zolLCMterminateT)

void takeZolReturnCode(enum ZolReturnCode code);
void takeZolReturnCode(enum ZolReturnCode code)
{
    (void)code;
}
