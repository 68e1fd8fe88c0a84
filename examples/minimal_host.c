/* A complete host in C: loads the library, lists a directory with the sizes of its files, creates a directory
 * in it and commits.
 *
 *     minimal_host LIBRARY ROOT DIRECTORY NEWDIRECTORY
 *
 * ROOT is an absolute path.
 */
#include <dlfcn.h>
#include <inttypes.h>
#include <stdbool.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <zol/spi/ZolFileManagement.h>
#include <zol/spi/ZolMgmtSpiThreadContext.h>
#include <zol/spi/ZolOamSpiManagedObject_3.h>
#include <zol/spi/ZolOamSpiTransaction_1.h>

/* What the host offers. The component finds the tables through the portal, each by its identity. */

static ZolMgmtSpiComponentRecord* component;
static ZolOamSpiTransactionalResource_1* participant;

static ZolReturnT registerParticipant(unsigned long txHandle, ZolOamSpiTransactionalResource_1* resource)
{
    (void)txHandle; /* there is one transaction */
    participant = resource;
    return ZolReturnOk;
}

static ZolReturnT addMessage(uint32_t category, const char* text)
{
    (void)category;
    fprintf(stderr, "the component says: %s\n", text);
    return ZolReturnOk;
}

static ZolOamSpiTransaction_1 transactionTable = {"ZolOamSpiTransactionService", "ZolOamSpiTransaction", "1",
                                                  registerParticipant};
static ZolMgmtSpiThreadContext threadContextTable = {"ZolMgmtSpiThreadContextService",
                                                     "ZolMgmtSpiThreadContext", "2", addMessage};

static ZolReturnT getInterface(ZolMgmtSpiInterface_1 id, ZolMgmtSpiInterface_1** result)
{
    ZolMgmtSpiInterface_1* const offers[] = {(ZolMgmtSpiInterface_1*)&transactionTable,
                                             (ZolMgmtSpiInterface_1*)&threadContextTable};
    for (size_t i = 0; i < sizeof offers / sizeof *offers; ++i)
    {
        if (id.interfaceName != NULL && strcmp(id.interfaceName, offers[i]->interfaceName) == 0)
        {
            *result = offers[i];
            return ZolReturnOk;
        }
    }
    return ZolReturnNoSuch;
}

static ZolReturnT registerComponent(ZolMgmtSpiComponentRecord* record)
{
    component = record;
    return ZolReturnOk;
}

/* A component unregisters at the portal of version "3" only, which this host doesn't have. */
static ZolMgmtSpiInterfacePortal_1 portal = {.componentName = "MinimalHost",
                                             .interfaceName = "ZolMgmtSpiInterfacePortal",
                                             .version = "1",
                                             .getInterface = getInterface,
                                             .registerComponent = registerComponent};

static ZolMgmtSpiInterfacePortal_1* getPortal(const char* version)
{
    return strcmp(version, portal.version) == 0 ? &portal : NULL;
}

static void require(bool holds, const char* what, const char* problem)
{
    if (!holds)
    {
        fprintf(stderr, "minimal_host: %s: %s\n", what, problem);
        exit(EXIT_FAILURE);
    }
}

static void requireOk(ZolReturnT code, const char* what)
{
    require(code == ZolReturnOk, what, "the component refuses it");
}

/* What the component provides: the tables in its record, each beginning with its identity. */
static const void* provided(const char* interfaceName)
{
    for (ZolMgmtSpiInterface_1** entry = component->interfaces; *entry != NULL; ++entry)
    {
        if (strcmp((*entry)->interfaceName, interfaceName) == 0)
        {
            return *entry;
        }
    }
    require(false, interfaceName, "the component doesn't provide it");
    return NULL;
}

/* The component takes its host at its word: these names would lead elsewhere, and the path of the root stands
 * in a document. */
static void vet(const char* root, const char* name)
{
    const bool isPlain = *name != '\0' && strpbrk(name, "/,?") == NULL && strspn(name, ".") < strlen(name);
    require(isPlain && strpbrk(root, "<&") == NULL, name, "this name or that of the root can't be used here");
}

/* C has no conversion from the address of an object to that of a function. */
static void find(void* library, const char* name, void* function)
{
    void* const address = dlsym(library, name);
    require(address != NULL, name, "the library has no such function");
    memcpy(function, &address, sizeof address);
}

static const unsigned long TRANSACTION = 1;

static const ZolMoAttributeStructMember* member(const ZolMoAttributeValue_3* file, const char* name)
{
    const ZolMoAttributeStructMember* found = file->structValue;
    while (strcmp(found->memberName, name) != 0)
    {
        found = found->nextMember;
    }
    return found;
}

static void listFiles(const ZolOamSpiManagedObject_3* objects, const char* directory)
{
    ZolMoAttributeValueResult_3 files = {NULL, NULL};
    requireOk(objects->getMoAttribute(TRANSACTION, directory, "files", &files), "getMoAttribute");
    for (uint32_t i = 0; i < files.container->nrOfValues; ++i)
    {
        const ZolMoAttributeValue_3* const file = &files.container->values[i];
        printf("%s %" PRIu64 "\n", member(file, "fileName")->memberValue->values[0].stringValue,
               member(file, "size")->memberValue->values[0].uintValue);
    }
    files.releaseCallback(files.container);
}

static void compose(char* result, size_t size, const char* before, const char* text, const char* behind)
{
    require(snprintf(result, size, "%s%s%s", before, text, behind) < (int)size, text, "too long");
}

int main(int argc, char** argv)
{
    require(argc == 5, "usage", "minimal_host LIBRARY ROOT DIRECTORY NEWDIRECTORY");
    vet(argv[2], argv[3]);
    vet(argv[2], argv[4]);

    void* const library = dlopen(argv[1], RTLD_NOW | RTLD_LOCAL);
    require(library != NULL, "the library can't be used", library == NULL ? dlerror() : "");
    zolLCMinitT init = NULL;
    zolLCMterminateT terminate = NULL;
    find(library, "zolLCMinit", &init);
    find(library, "zolLCMterminate", &terminate);

    char config[4096];
    char directory[4096];
    compose(config, sizeof config,
            "<Configuration><ZolFileManagementComponent><ZolFileSystem><internal_root>", argv[2],
            "</internal_root></ZolFileSystem></ZolFileManagementComponent></Configuration>");
    compose(directory, sizeof directory, "ManagedElement=1,SystemFunctions=1,FileM=1,FileGroup=", argv[3],
            "");

    static ZolMgmtSpiPortalAccessor accessor = {getPortal};
    requireOk(init(&accessor, config), "zolLCMinit");
    requireOk(component->start(ZolStateChangeReasonNormal), "start");
    const ZolOamSpiTransactionalResource_1* const resource = provided("ZolOamSpiTransactionalResource");
    const ZolOamSpiManagedObject_3* const objects = provided("ZolOamSpiManagedObject");

    requireOk(resource->join(TRANSACTION), "join");
    listFiles(objects, directory);
    ZolReturnT code = objects->createMo(TRANSACTION, directory, "FileGroup", "fileGroupId", argv[4], NULL);
    code = code == ZolReturnOk ? participant->prepare(TRANSACTION) : code;
    const ZolReturnT end =
        code == ZolReturnOk ? participant->commit(TRANSACTION) : participant->abort(TRANSACTION);
    participant->finish(TRANSACTION);

    component->stop(ZolStateChangeReasonNormal);
    terminate();
    dlclose(library);
    requireOk(code, "creating the directory");
    requireOk(end, "the commit");
    return EXIT_SUCCESS;
}
