// The layouts in numbers, for the widths of words that hosts have. C that is C++ too.
#include <stdint.h>
#include <zol/spi/ZolFileManagement.h>
#include <zol/spi/ZolMgmtSpiThreadContext.h>
#include <zol/spi/ZolOamSpiManagedObject_3.h>
#include <zol/spi/ZolOamSpiTransaction_1.h>

#if UINTPTR_MAX == 0xffffffff
#define WIDE(ILP32, LP64) (ILP32)
#else
#define WIDE(ILP32, LP64) (LP64)
#endif

#define SIZE(TYPE, ILP32, LP64) ZOL_SPI_ASSERT(sizeof(TYPE) == WIDE(ILP32, LP64), #TYPE)
#define AT(RECORD, FIELD, ILP32, LP64)                                                                       \
    ZOL_SPI_ASSERT(offsetof(RECORD, FIELD) == WIDE(ILP32, LP64), #RECORD "::" #FIELD)

SIZE(void*, 4, 8);
SIZE(unsigned long, 4, 8);
SIZE(unsigned long long, 8, 8);
SIZE(ZolReturnT, 4, 4);
SIZE(ZolStateChangeReason, 4, 4);
SIZE(ZolOamSpiMoAttributeType_3, 4, 4);
SIZE(bool, 1, 1);

SIZE(ZolMgmtSpiInterface_1, 12, 24);
AT(ZolMgmtSpiInterface_1, componentName, 0, 0);
AT(ZolMgmtSpiInterface_1, interfaceName, 4, 8);
AT(ZolMgmtSpiInterface_1, version, 8, 16);

SIZE(ZolMgmtSpiPortalAccessor, 4, 8);
AT(ZolMgmtSpiPortalAccessor, getPortal, 0, 0);

SIZE(ZolMgmtSpiInterfacePortal_1, 28, 56);
AT(ZolMgmtSpiInterfacePortal_1, componentName, 0, 0);
AT(ZolMgmtSpiInterfacePortal_1, interfaceName, 4, 8);
AT(ZolMgmtSpiInterfacePortal_1, version, 8, 16);
AT(ZolMgmtSpiInterfacePortal_1, getInterface, 12, 24);
AT(ZolMgmtSpiInterfacePortal_1, reserved, 16, 32);
AT(ZolMgmtSpiInterfacePortal_1, registerComponent, 20, 40);
AT(ZolMgmtSpiInterfacePortal_1, unregisterComponent, 24, 48);

SIZE(ZolMgmtSpiComponentRecord, 36, 72);
AT(ZolMgmtSpiComponentRecord, componentName, 0, 0);
AT(ZolMgmtSpiComponentRecord, interfaceName, 4, 8);
AT(ZolMgmtSpiComponentRecord, version, 8, 16);
AT(ZolMgmtSpiComponentRecord, interfaces, 12, 24);
AT(ZolMgmtSpiComponentRecord, dependencies, 16, 32);
AT(ZolMgmtSpiComponentRecord, start, 20, 40);
AT(ZolMgmtSpiComponentRecord, stop, 24, 48);
AT(ZolMgmtSpiComponentRecord, extraInterfaces, 28, 56);
AT(ZolMgmtSpiComponentRecord, flag, 32, 64);

SIZE(ZolMgmtSpiThreadContext, 16, 32);
AT(ZolMgmtSpiThreadContext, componentName, 0, 0);
AT(ZolMgmtSpiThreadContext, interfaceName, 4, 8);
AT(ZolMgmtSpiThreadContext, version, 8, 16);
AT(ZolMgmtSpiThreadContext, addMessage, 12, 24);

SIZE(ZolOamSpiTransaction_1, 16, 32);
AT(ZolOamSpiTransaction_1, componentName, 0, 0);
AT(ZolOamSpiTransaction_1, interfaceName, 4, 8);
AT(ZolOamSpiTransaction_1, version, 8, 16);
AT(ZolOamSpiTransaction_1, registerParticipant, 12, 24);

SIZE(ZolOamSpiTransactionalResource_1, 32, 64);
AT(ZolOamSpiTransactionalResource_1, componentName, 0, 0);
AT(ZolOamSpiTransactionalResource_1, interfaceName, 4, 8);
AT(ZolOamSpiTransactionalResource_1, version, 8, 16);
AT(ZolOamSpiTransactionalResource_1, join, 12, 24);
AT(ZolOamSpiTransactionalResource_1, prepare, 16, 32);
AT(ZolOamSpiTransactionalResource_1, commit, 20, 40);
AT(ZolOamSpiTransactionalResource_1, abort, 24, 48);
AT(ZolOamSpiTransactionalResource_1, finish, 28, 56);

SIZE(ZolOamSpiManagedObject_3, 56, 112);
AT(ZolOamSpiManagedObject_3, componentName, 0, 0);
AT(ZolOamSpiManagedObject_3, interfaceName, 4, 8);
AT(ZolOamSpiManagedObject_3, version, 8, 16);
AT(ZolOamSpiManagedObject_3, setMoAttribute, 12, 24);
AT(ZolOamSpiManagedObject_3, getMoAttribute, 16, 32);
AT(ZolOamSpiManagedObject_3, getMoAttributes, 20, 40);
AT(ZolOamSpiManagedObject_3, newMoIterator, 24, 48);
AT(ZolOamSpiManagedObject_3, nextMo, 28, 56);
AT(ZolOamSpiManagedObject_3, createMo, 32, 64);
AT(ZolOamSpiManagedObject_3, deleteMo, 36, 72);
AT(ZolOamSpiManagedObject_3, action, 40, 80);
AT(ZolOamSpiManagedObject_3, finalizeMoIterator, 44, 88);
AT(ZolOamSpiManagedObject_3, existsMo, 48, 96);
AT(ZolOamSpiManagedObject_3, countMoChildren, 52, 104);

SIZE(ZolMoAttributeValue_3, 8, 8);
AT(ZolMoAttributeValue_3, intValue, 0, 0);
AT(ZolMoAttributeValue_3, uintValue, 0, 0);
AT(ZolMoAttributeValue_3, stringValue, 0, 0);
AT(ZolMoAttributeValue_3, boolValue, 0, 0);
AT(ZolMoAttributeValue_3, referenceValue, 0, 0);
AT(ZolMoAttributeValue_3, structValue, 0, 0);

SIZE(ZolMoAttributeValueContainer_3, 12, 16);
AT(ZolMoAttributeValueContainer_3, valueType, 0, 0);
AT(ZolMoAttributeValueContainer_3, nrOfValues, 4, 4);
AT(ZolMoAttributeValueContainer_3, values, 8, 8);

SIZE(ZolMoAttributeStructMember, 12, 24);
AT(ZolMoAttributeStructMember, memberName, 0, 0);
AT(ZolMoAttributeStructMember, memberValue, 4, 8);
AT(ZolMoAttributeStructMember, nextMember, 8, 16);

SIZE(ZolMoNamedAttributeValueContainer_3, 16, 24);
AT(ZolMoNamedAttributeValueContainer_3, name, 0, 0);
AT(ZolMoNamedAttributeValueContainer_3, valueType, 4, 8);
AT(ZolMoNamedAttributeValueContainer_3, nrOfValues, 8, 12);
AT(ZolMoNamedAttributeValueContainer_3, values, 12, 16);

SIZE(ZolMoAttributeValueResult_3, 8, 16);
AT(ZolMoAttributeValueResult_3, releaseCallback, 0, 0);
AT(ZolMoAttributeValueResult_3, container, 4, 8);

SIZE(ZolMoAttributeValuesResult_3, 8, 16);
AT(ZolMoAttributeValuesResult_3, releaseCallback, 0, 0);
AT(ZolMoAttributeValuesResult_3, containers, 4, 8);
