#include "CaseRun.h"

#include "Expectation.h"
#include "support/ChildProcess.h"
#include "support/DistinguishedNames.h"

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <exception>
#include <filesystem>
#include <functional>
#include <iterator>
#include <sstream>
#include <thread>
#include <unistd.h>

namespace faults
{

using faultshim::Failure;
using faultshim::Function;
using zoltest::ChildOutcome;
using zoltest::fileGroup;
using zoltest::fileM;

namespace
{

constexpr unsigned long HANDLE = 42;
constexpr unsigned long OTHER_HANDLE = 43;

/// So that no other end of a process passes for that by an exception that nobody may catch.
constexpr int ENDED_BY_EXCEPTION = 86;

/// An exception of the test must not pass for one of the component.
std::string sayWithin(const std::function<std::string()>& function) noexcept
{
    try
    {
        return function();
    }
    catch (const std::exception& failure)
    {
        return std::string("  ") + failure.what() + "\n";
    }
}

/// A child that says something and ends. It is ended itself if a lock that stays taken makes it wait.
ChildOutcome inChild(const std::function<std::string()>& function)
{
    return zoltest::runInChild([&] {
        alarm(20);
        std::set_terminate([] { _exit(ENDED_BY_EXCEPTION); });
        std::fputs(sayWithin(function).c_str(), stderr);
        return 0;
    });
}

std::ptrdiff_t openFiles()
{
    using std::filesystem::directory_iterator;
    return std::distance(directory_iterator("/proc/self/fd"), directory_iterator());
}

std::string nameOf(const std::string& line)
{
    // the name is the last word, or the last but one before the mode or the size
    return line.substr(line.rfind(' ') + 1);
}

/// Those of a tree's names that are the uppermost of what the other snapshot doesn't have.
Texts uppermost(const Texts& lines, const Texts& others)
{
    Texts result;
    std::string above = "/";
    for (const std::string& line : lines)
    {
        const std::string name = nameOf(line);
        const auto has = [&](const std::string& other) { return nameOf(other) == name; };
        if (std::none_of(others.begin(), others.end(), has) && !name.starts_with(above + "/"))
        {
            result.push_back(name);
            above = name;
        }
    }
    return result;
}

void setDiskChanges(Outcome& outcome, Texts before, const Texts& after)
{
    outcome.made.clear();
    std::set_difference(after.begin(), after.end(), before.begin(), before.end(),
                        std::back_inserter(outcome.made));
    const auto byName = [](const std::string& left, const std::string& right) {
        return nameOf(left) < nameOf(right);
    };
    std::sort(before.begin(), before.end(), byName);
    outcome.gone = uppermost(before, after);
}

Fault faultThatCame(const Failure& failure, const std::string& root)
{
    const auto belowRoot = [&root](const char* text) {
        std::string path = text;
        const std::size_t doubled = path.find("//");
        if (doubled != std::string::npos)
        {
            path.erase(doubled, 1);
        }
        if (path.size() > 1 && path.ends_with('/'))
        {
            path.pop_back();
        }
        return path == root                   ? std::string()
               : path.starts_with(root + "/") ? path.substr(root.size() + 1)
                                              : path;
    };
    const std::size_t index = faultshim::failed();
    const faultshim::Call& failed = faultshim::call(index);
    Fault fault{
        failure.function, faultshim::callerOf(failed), belowRoot(failed.path.data()), 0, failure.error, {}};
    for (std::size_t i = 0; i <= index; ++i)
    {
        const faultshim::Call& call = faultshim::call(i);
        const std::string path = belowRoot(call.path.data());
        if (call.function == fault.function && faultshim::callerOf(call) == fault.caller &&
            path == fault.path)
        {
            ++fault.occurrence;
        }
        if (call.function == Function::Opendir || call.function == Function::Open)
        {
            fault.read[path].clear();
        }
        std::istringstream entries(call.entries.data());
        for (std::string entry; std::getline(entries, entry, '/');)
        {
            if (entry != "." && entry != "..")
            {
                fault.read[path].push_back(entry);
            }
        }
    }
    return fault;
}

/// One run of a scenario with whatever was planned, and what it leaves behind.
class Run
{
public:
    Run(Surroundings& surroundings, const Scenario& scenario, bool mayPocoLose = false)
        : _surroundings(surroundings)
        , _scenario(scenario)
        , _mayPocoLose(mayPocoLose)
    {}

    Outcome play()
    {
        _surroundings.build();
        _surroundings.statements.take();
        _surroundings.host.clear();
        _files = openFiles();
        const Texts before = _surroundings.snapshot();
        Stage stage(_surroundings, HANDLE);
        if (_scenario.joins)
        {
            stage.transaction->join();
        }
        if (_scenario.prepare)
        {
            _scenario.prepare(stage);
        }
        _surroundings.statements.take();
        _surroundings.host.clear();

        Outcome outcome;
        outcome.answer = _scenario.operation(stage);
        outcome.log = _surroundings.statements.take();
        outcome.messages = _surroundings.host.messages();
        checkThatOthersWork();
        if (_scenario.commits && stage.transaction->commit() != 0)
        {
            problem("the commit fails");
        }
        setDiskChanges(outcome, before, _surroundings.snapshot());
        const ZolReturnT finished = stage.transaction->finish();
        if (finished != 0 && _scenario.joins && !_scenario.finishes)
        {
            problem("the transaction can't be finished");
        }
        if (openFiles() > _files + (_mayPocoLose ? 1 : 0))
        {
            problem("files stay open");
        }
        return outcome;
    }

    const std::string& problems() const { return _problems; }

private:
    void problem(const std::string& text) { _problems += "  " + text + "\n"; }

    /// On a thread of its own: the lock lets the thread that holds it pass again.
    void checkThatOthersWork()
    {
        std::thread([this] {
            const auto other = _surroundings.transaction(OTHER_HANDLE);
            if (other->join() != 0 || other->exists(fileGroup("q")) != "yes" ||
                other->count(fileM, "FileGroup") == 0 || other->create(fileGroup("q"), "other") != 0 ||
                other->abort() != 0 || other->finish() != 0)
            {
                problem("another transaction doesn't work");
            }
        }).join();
    }

    Surroundings& _surroundings;
    const Scenario& _scenario;
    bool _mayPocoLose;
    std::ptrdiff_t _files = 0;
    std::string _problems;
};

std::string blockProblem(const Scenario& scenario, const Reference& reference, bool mayPocoLose)
{
    const faultshim::LiveBlocks live = faultshim::liveBlocks();
    if (live.others <= reference.blocks.others + scenario.keptBlocks &&
        (mayPocoLose ||
         (live.ofPoco <= reference.blocks.ofPoco && live.ofTheCLibrary <= reference.blocks.ofTheCLibrary)))
    {
        return {};
    }
    faultshim::printBlocks();
    return "  memory is not freed\n";
}

/// The failure is over: the same must come out as if it had never been.
std::string repeat(Surroundings& surroundings, const Scenario& scenario)
{
    faultshim::plan();
    Run again(surroundings, scenario);
    const Outcome outcome = again.play();
    const std::string wrong = difference(outcome, scenario.expected, 0);
    const std::string problems =
        (wrong.empty() ? "" : "  got\n" + describe(outcome) + wrong) + again.problems();
    return problems.empty() ? "" : "  afterwards:\n" + problems;
}

std::string describeEnd(const ChildOutcome& outcome)
{
    if (outcome.signal == 0)
    {
        return "  the process has ended\n";
    }
    return outcome.signal == SIGALRM
               ? "  it never ends: a lock stays taken\n"
               : "  signal " + std::string(strsignal(outcome.signal)) + "\n" + outcome.standardError;
}

} // namespace

Reference runUndisturbed(Surroundings& surroundings, const Scenario& scenario)
{
    const ChildOutcome end = inChild([&] {
        faultshim::forgetBlocks();
        faultshim::plan();
        Run run(surroundings, scenario);
        const Outcome outcome = run.play();
        std::ostringstream text;
        for (std::size_t i = 0; i < faultshim::FUNCTIONS; ++i)
        {
            text << faultshim::countOf(static_cast<Function>(i)) << ' ';
        }
        const std::string wrong = difference(outcome, scenario.expected, 0);
        const faultshim::LiveBlocks live = faultshim::liveBlocks();
        text << live.ofPoco << ' ' << live.ofTheCLibrary << ' ' << live.others << '\n'
             << (wrong.empty() ? "" : "  got\n" + describe(outcome) + wrong) << run.problems();
        return text.str();
    });
    Reference reference;
    if (end.exitStatus != 0)
    {
        reference.problems = describeEnd(end);
        return reference;
    }
    std::istringstream text(end.standardError);
    for (auto& calls : reference.calls)
    {
        text >> calls;
    }
    text >> reference.blocks.ofPoco >> reference.blocks.ofTheCLibrary >> reference.blocks.others;
    text.ignore();
    reference.problems.assign(std::istreambuf_iterator<char>(text), {});
    return reference;
}

CaseResult runWith(const Failure& failure, Surroundings& surroundings, const Scenario& scenario,
                   const Reference& reference)
{
    const bool isAllocation = faultshim::isAllocator(failure.function);
    const bool mayPocoLose = isAllocation && scenario.pocoLosesMemory;
    const ChildOutcome end = inChild([&]() -> std::string {
        faultshim::forgetBlocks();
        faultshim::plan(failure);
        Run run(surroundings, scenario, mayPocoLose);
        const Outcome outcome = run.play();
        if (!faultshim::hasFailed())
        {
            return "  the call was not reached\n";
        }
        std::string problems;
        std::string where;
        if (isAllocation)
        {
            problems = judgeAllocation(outcome, scenario);
        }
        else
        {
            const Fault fault = faultThatCame(failure, surroundings.root());
            problems = judgeCall(outcome, scenario, fault);
            where = "  " + describe(fault) + "\n";
        }
        problems += run.problems();
        problems += blockProblem(scenario, reference, mayPocoLose);
        problems += repeat(surroundings, scenario);
        if (!problems.empty())
        {
            return where + problems;
        }
        const bool isSame = outcome.answer == scenario.expected.answer &&
                            outcome.messages == scenario.expected.messages &&
                            outcome.gone == scenario.expected.gone && outcome.made == scenario.expected.made;
        return isSame ? "=" : "~";
    });
    CaseResult result;
    if (end.exitStatus != 0)
    {
        Outcome died;
        died.dies = end.exitStatus == ENDED_BY_EXCEPTION;
        result.problems = isAllocation && died.dies ? judgeAllocation(died, scenario) : describeEnd(end);
        result.effect = result.problems.empty() ? Effect::Died : Effect::Wrong;
        return result;
    }
    result.effect = end.standardError == "="   ? Effect::None
                    : end.standardError == "~" ? Effect::Stated
                                               : Effect::Wrong;
    result.problems = result.effect == Effect::Wrong ? end.standardError : "";
    return result;
}

} // namespace faults
