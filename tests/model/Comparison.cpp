#include "model/Comparison.h"

#include "model/Vocabulary.h"

#include <algorithm>
#include <csignal>

namespace zolmodel
{

namespace
{

const unsigned long HANDLES_OF_ONE = 16;

} // namespace

void Tally::note(Does does, ZolReturnT code)
{
    const auto* const found = std::find(CODES.begin(), CODES.end(), code);
    ++counts.at(static_cast<std::size_t>(does)).at(static_cast<std::size_t>(found - CODES.begin()));
}

Surroundings surroundingsOfComparison()
{
    const std::string group = ROOT_DN + ",FileGroup=";
    Surroundings result;
    result.diskOrder = Sandbox::namesInDiskOrder;
    result.status = Sandbox::status;
    result.commandOutput = " \t/data/fs a \n\n";
    result.policies = {{ROOT_DN + ",FileGroupPolicy=1", {group + "a", group + "b", group + "a"}},
                       {ROOT_DN + ",FileGroupPolicy=2", {}},
                       {ROOT_DN + ",FileGroupPolicy=3", {group + "a.txt", group + "a"}}};
    return result;
}

Comparison::Comparison(Subject& subject, const Sandbox& sandbox, unsigned long number,
                       unsigned long long lastIteratorId, Mistake mistake)
    : _subject(subject)
    , _sandbox(sandbox)
    , _world(sandbox.path(), sandbox.internalRoot(), surroundingsOfComparison())
    , _model(_world, number * HANDLES_OF_ONE)
{
    _world.lastIteratorId = lastIteratorId;
    _world.mistake = mistake;
    sandbox.empty(_world);
}

std::optional<std::string> Comparison::step(const Operation& operation)
{
    if (!isByHost(operation))
    {
        if (_model.change(operation))
        {
            _sandbox.change(operation);
        }
        return std::nullopt;
    }
    try
    {
        return stepOfHost(operation);
    }
    catch (const OutOfReach&)
    {
        ++_skipped;
        return std::nullopt;
    }
}

std::optional<std::string> Comparison::stepOfHost(const Operation& operation)
{
    const unsigned long long id = _model.iteratorId(operation.iterator);
    const Outcome expected = _model.expect(operation);
    const bool ends = operation.does == Does::Delete && _world.mistake == Mistake::KillsItself;
    if (ends && expected.code == ZolReturnOk)
    {
        raise(SIGKILL);
    }
    if (operation.does == Does::Join)
    {
        _joined.insert(operation.transaction);
    }
    if (_tally != nullptr)
    {
        _tally->note(operation.does, expected.code);
    }
    const Outcome actual = _subject.observe(operation, _model.handle(operation.transaction), id);
    if (_world.disk.isUncertain())
    {
        _sandbox.adopt(_world.disk);
        return std::nullopt;
    }
    if (!agree(expected, actual))
    {
        return "expected " + toText(expected) + "\nactual   " + toText(actual);
    }
    return operation.does == Does::Commit ? _sandbox.difference(_world.disk) : std::nullopt;
}

std::optional<std::string> Comparison::finish()
{
    Operation operation;
    operation.does = Does::Finish;
    for (const unsigned transaction : _joined)
    {
        operation.transaction = transaction;
        if (auto difference = step(operation))
        {
            return "at the end of " + toText(operation) + "\n" + *difference;
        }
    }
    return _sandbox.difference(_world.disk);
}

} // namespace zolmodel
