#include "ways/Library.h"

#include "engine/ConfigurationText.h"
#include "engine/Host.h"

#include <zol/spi/ZolMgmtSpiThreadContext.h>
#include <zol/spi/ZolOamSpiTransaction_1.h>

namespace zolbench
{

namespace
{

ZolReturnT registerParticipant(unsigned long, ZolOamSpiTransactionalResource_1*)
{
    return ZolReturnOk;
}

ZolReturnT addMessage(std::uint32_t, const char*)
{
    return ZolReturnOk;
}

ZolOamSpiTransaction_1 transactionTable = {"ZolOamSpiTransactionService", "ZolOamSpiTransaction", "1",
                                           registerParticipant};
ZolMgmtSpiThreadContext threadContextTable = {"ZolMgmtSpiThreadContextService", "ZolMgmtSpiThreadContext",
                                              "2", addMessage};

} // namespace

Library::Library(const std::filesystem::path& file, const std::string& root)
    // every table begins with its identity
    : _portal({reinterpret_cast<ZolMgmtSpiInterface_1*>(&transactionTable),
               reinterpret_cast<ZolMgmtSpiInterface_1*>(&threadContextTable)})
    , _component(file, _portal, zolhost::configurationFor(root))
{}

std::filesystem::path Library::defaultFile()
{
    return zolhost::Host::defaultLibrary();
}

} // namespace zolbench
