#pragma once

#include "model/Comparison.h"
#include "model/Operation.h"
#include "model/Sandbox.h"
#include "model/Subject.h"
#include "model/Unprivileged.h"
#include "model/World.h"
#include "support/FakeRepository.h"
#include "support/FakeZolea.h"
#include "support/RecordedLog.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace zolmodel
{

struct Settings
{
    std::uint64_t seed = 1;
    unsigned long operations = 10000;
    Mistake mistake = Mistake::None;
    std::string library; ///< empty: the one of this build
};

/// A list of operations on which model and component differ, as short as it was found.
struct Finding
{
    std::vector<Operation> operations;
    std::string difference;
};

struct Result
{
    unsigned long operations = 0;
    unsigned long skipped = 0;
    Tally tally = {};
    std::optional<Finding> finding;
};

/// Compares in processes of its own, so that a component that ends its process is a finding like any other.
class Runner
{
public:
    explicit Runner(Settings settings);

    Result run();
    const Sandbox& sandbox() const { return _sandbox; }

private:
    struct Progress;

    /// How a process ended in which `body` was run; nothing if it said that all agrees.
    std::optional<std::string> apart(const std::function<std::optional<std::string>()>& body) const;
    std::optional<std::string> runRounds(Progress& progress);
    std::optional<std::string> record(unsigned long round);
    std::optional<std::string> replay(const std::vector<Operation>& operations);
    std::vector<Operation> recorded() const;
    std::string recordPath() const { return _sandbox.path() + "-record"; }

    Settings _settings;
    Subject _subject;
    Unprivileged _unprivileged; ///< after the library was read, before the first thing on disk is made
    Sandbox _sandbox;
    zoltest::FakeZolea _command;
    zoltest::FakeRepository _policies;
    zoltest::RecordedLog _log{0}; ///< so that nothing is written
};

} // namespace zolmodel
