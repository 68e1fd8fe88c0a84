#include "engine/Host.h"

#include "engine/ThreadContext.h"

namespace zolhost
{

namespace
{

/// Every table begins with its identity.
template<class Table>
ZolMgmtSpiInterface_1* identity(Table* table)
{
    return reinterpret_cast<ZolMgmtSpiInterface_1*>(table);
}

} // namespace

std::filesystem::path Host::defaultLibrary()
{
    const auto program = std::filesystem::read_symlink("/proc/self/exe");
    return (program.parent_path() / ZOL_LIBRARY_FROM_PROGRAM).lexically_normal();
}

Host::Host(const Setup& setup)
    : _portal({identity(TransactionService::table()), identity(ThreadContext::table())})
    , _repository(setup.policies)
    , _component(setup.library, _portal, setup.configuration)
{}

std::unique_ptr<Transaction> Host::begin()
{
    return std::make_unique<Transaction>(_transactions, _component.resource());
}

ManagedObjects Host::objects(const Transaction& transaction) const
{
    return {_component.objects(), transaction.handle()};
}

} // namespace zolhost
