#include "model/Model.h"

#include "model/Values.h"

namespace zolmodel
{

namespace
{

const unsigned long long NO_ITERATOR = 999999999999;

ZolReturnT codeOfUnknownHandle(Does does)
{
    const bool writes = does == Does::Create || does == Does::Delete || does == Does::Action;
    return writes ? ZolReturnFailure : ZolReturnNoSuch;
}

} // namespace

Model::Model(World& world, unsigned long firstHandle)
    : _world(world)
    , _firstHandle(firstHandle)
{}

Outcome Model::expect(const Operation& operation)
{
    Outcome outcome;
    switch (operation.does)
    {
    case Does::Prepare:
    case Does::FinalizeIterator:
        break;
    case Does::SetAttribute:
        outcome.code = ZolReturnFailure;
        break;
    case Does::Next:
        next(operation, outcome);
        break;
    case Does::Join:
    case Does::Commit:
    case Does::Abort:
    case Does::Finish:
        expectOfTransaction(operation, outcome);
        break;
    default:
        expectOfObjects(operation, worker(operation.transaction), outcome);
    }
    return outcome;
}

unsigned long long Model::iteratorId(unsigned label) const
{
    const auto found = _labels.find(label);
    return found == _labels.end() ? NO_ITERATOR : found->second;
}

Worker* Model::worker(unsigned transaction) const
{
    const auto found = _workers.find(transaction);
    return found == _workers.end() ? nullptr : found->second.get();
}

void Model::expectOfTransaction(const Operation& operation, Outcome& outcome)
{
    Worker* found = worker(operation.transaction);
    if (operation.does == Does::Join)
    {
        join(operation, outcome);
        return;
    }
    outcome.code = found == nullptr ? ZolReturnNoSuch : ZolReturnOk;
    if (operation.does == Does::Finish)
    {
        _workers.erase(operation.transaction);
        return;
    }
    if (found != nullptr && operation.does == Does::Commit)
    {
        outcome.code = found->commit();
    }
    if (found != nullptr && operation.does == Does::Abort)
    {
        found->abort();
    }
    forgetIterators(operation.transaction);
}

void Model::expectOfObjects(const Operation& operation, Worker* found, Outcome& outcome)
{
    if (found == nullptr || (operation.does == Does::Action && operation.odd))
    {
        outcome.code = codeOfUnknownHandle(operation.does);
        outcome.value = operation.does == Does::GetAttribute || operation.does == Does::GetAttributes
                            ? "nothing"
                            : "untouched";
        if (operation.does == Does::Create || operation.does == Does::Delete)
        {
            outcome.value.clear();
        }
        return;
    }
    switch (operation.does)
    {
    case Does::GetAttribute:
        found->attribute(operation.dn, operation.name, outcome);
        break;
    case Does::GetAttributes:
        found->attributes(operation.dn, operation.odd ? std::vector<std::string>() : operation.names,
                          outcome);
        break;
    case Does::NewIterator: {
        const auto id = found->newIterator(operation.dn, operation.name);
        outcome.code = id ? ZolReturnOk : ZolReturnFailure;
        outcome.value = id ? "id " + std::to_string(*id) : "untouched";
        if (id)
        {
            _iterators[*id] = operation.transaction;
            _labels[operation.iterator] = *id;
        }
        break;
    }
    case Does::Create:
        found->create(operation.dn, operation.name, operation.text, operation.value, outcome);
        break;
    case Does::Delete:
        found->remove(operation.dn, outcome);
        break;
    case Does::Action:
        found->action(operation.dn, operation.name, operation.text, static_cast<Parameters>(operation.number),
                      outcome);
        break;
    case Does::Exists:
        outcome.value = found->exists(operation.dn) ? "yes" : "no";
        break;
    case Does::Count:
        outcome.value = "count " + std::to_string(found->count(operation.dn, operation.name));
        break;
    default:
        break;
    }
}

void Model::join(const Operation& operation, Outcome& outcome)
{
    outcome.hostCalls.push_back("registerParticipant " + std::to_string(handle(operation.transaction)));
    outcome.code = operation.number;
    if (outcome.code == ZolReturnOk)
    {
        outcome.hostCalls.emplace_back(
            "getInterface ZolMgmtSpiThreadContextService/ZolMgmtSpiThreadContext/2");
        _workers.try_emplace(operation.transaction, std::make_unique<Worker>(_world, !operation.odd));
    }
}

void Model::next(const Operation& operation, Outcome& outcome)
{
    const unsigned long long id = iteratorId(operation.iterator);
    const auto found = _iterators.find(id);
    outcome.value = "null";
    if (found == _iterators.end())
    {
        outcome.code = ZolReturnNoSuch;
    }
    else if (Worker* owner = worker(found->second))
    {
        owner->next(id, outcome);
    }
    else
    {
        outcome.code = ZolReturnFailure;
    }
}

void Model::forgetIterators(unsigned transaction)
{
    std::erase_if(_iterators, [transaction](const auto& entry) { return entry.second == transaction; });
}

bool Model::change(const Operation& operation)
{
    Disk& disk = _world.disk;
    const Node* entry = disk.unfollowed(operation.name);
    if (operation.does == Does::RemoveEntry)
    {
        if (entry == nullptr)
        {
            return false;
        }
        disk.remove(operation.name);
        return true;
    }
    if (operation.does == Does::ChangeMode)
    {
        return entry != nullptr && entry->kind == Kind::Directory &&
               disk.changeMode(operation.name, static_cast<mode_t>(operation.number));
    }
    const Node* parent = disk.unfollowed(operation.name.substr(0, operation.name.rfind('/')));
    if (entry != nullptr || parent == nullptr || parent->kind != Kind::Directory)
    {
        return false;
    }
    switch (operation.does)
    {
    case Does::PutFile:
        disk.putFile(operation.name, static_cast<std::uint64_t>(operation.number));
        break;
    case Does::PutDirectory:
        disk.putDirectory(operation.name, static_cast<mode_t>(operation.number));
        break;
    case Does::PutLink:
        disk.putLink(operation.name, operation.text);
        break;
    default:
        disk.putPipe(operation.name);
    }
    return true;
}

} // namespace zolmodel
