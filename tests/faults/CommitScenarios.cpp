#include "Scenario.h"
#include "support/DistinguishedNames.h"

#include <algorithm>

namespace faults
{

using faultshim::Caller;
using faultshim::Function;
using zoltest::fileGroup;
using zoltest::fileInformation;

namespace
{

const std::string FAILURE = "plain FileMTransaction::commit, unexpected exception : *";

/// The new directories in the order in which they are made.
const Texts NEW = {"d/new", "d/new/in", "s/low", "s/low/er"};
const Texts GONE = {"d/b", "e"};

Texts modes(const std::string& d, const std::string& in, const std::string& low, const std::string& lower)
{
    return {"d " + d + " d/new", "d " + in + " d/new/in", "d " + low + " s/low", "d " + lower + " s/low/er"};
}

Texts sorted(Texts texts)
{
    std::sort(texts.begin(), texts.end());
    return texts;
}

const Texts MADE = sorted(modes("0770", "0770", "2770", "2770"));

/// The first new directories are made, the next one couldn't be, and what comes behind is left out.
Change stopped(std::size_t count)
{
    Texts made = modes("0770", "0770", "2770", "2770");
    made.resize(count);
    return {.answer = "code -1", .log = Texts{FAILURE}, .gone = Texts{"d/b"}, .made = sorted(made)};
}

/// The same, but the last one hasn't got its mode yet.
Change stoppedBeforeTheMode(std::size_t count)
{
    const Texts defaults = modes("0755", "0755", "2755", "2755");
    Texts made = modes("0770", "0770", "2770", "2770");
    made.resize(count);
    made.back() = defaults[count - 1];
    return {.answer = "code -1", .log = Texts{FAILURE}, .gone = Texts{"d/b"}, .made = sorted(made)};
}

std::size_t indexOf(const std::string& name)
{
    return static_cast<std::size_t>(std::find(NEW.begin(), NEW.end(), name) - NEW.begin());
}

/// The mode that the system gives: without what the mask of the process takes away.
Changes withoutMode(const Fault& fault, const std::string& root)
{
    Texts each = {"0770", "0770", "2770", "2770"};
    const std::size_t index = indexOf(fault.path);
    each[index] = index < 2 ? "0755" : "2755";
    return {{.moreLog = {"severity-4 Unable to modify the permissions of " + root + "/" + fault.path + "/"},
             .made = sorted(modes(each[0], each[1], each[2], each[3]))}};
}

/// Parts of what a commit removes may stay when the way to it can't be looked at. The rest is done.
Changes someStay(const Fault& fault)
{
    // a removal begins at the directory that holds what is to go
    const std::string top = fault.path.empty() || fault.path.starts_with("e") ? "e" : "d/b";
    Changes changes = {Change{}};
    Texts rest = GONE;
    std::erase(rest, top);
    changes.push_back({.gone = rest});
    if (top == "e")
    {
        changes.push_back({.gone = Texts{"d/b", "e/x"}});
        changes.push_back({.gone = Texts{"d/b", "e/x/y"}});
    }
    return changes;
}

Changes staysAtLeast(const Fault& fault)
{
    Changes changes = someStay(fault);
    // what can't be removed is still there
    changes.erase(changes.begin());
    return changes;
}

} // namespace

std::vector<Scenario> commitScenarios(const std::string& root)
{
    const auto createdOrStopped = [](const Fault&) {
        Changes changes = {Change{}};
        for (std::size_t made = 0; made < NEW.size(); ++made)
        {
            changes.push_back(stopped(made));
        }
        return changes;
    };
    const auto stage = [](Stage& on) {
        on.transaction->deleteMo(fileInformation("b", fileGroup("d")));
        on.transaction->create(fileGroup("d"), "new");
        on.transaction->create(fileGroup("new", fileGroup("d")), "in");
        on.transaction->create(fileGroup("s"), "low");
        on.transaction->create(fileGroup("low", fileGroup("s")), "er");
        on.transaction->deleteMo(fileGroup("e"));
    };
    const std::vector<Function> looks = {Function::Stat,    Function::Lstat,    Function::Fstat,
                                         Function::Fstatat, Function::Opendir,  Function::Fdopendir,
                                         Function::Readdir, Function::Open,     Function::Openat,
                                         Function::Close,   Function::Closedir, Function::Fcntl};
    const std::vector<Function> opening = {Function::Open, Function::Fstat, Function::Close};
    const std::vector<Function> removals = {Function::Unlink, Function::Unlinkat, Function::Rmdir,
                                            Function::Remove};

    Scenario commit{
        .name = "commit",
        .operation = [](Stage& on) { return on.commit(); },
        .expected = {.answer = "ok", .gone = GONE, .made = MADE},
        .rules =
            {
                on(removals, "d/b", staysAtLeast),
                on(removals, "e*", staysAtLeast),
                on(looks, "d/b", someStay),
                on(looks, "e*", someStay),
                on(opening, "d", someStay),
                on(opening, "", someStay),
                on({Function::Mkdir}, "*",
                   [](const Fault& fault) { return Changes{stopped(indexOf(fault.path))}; }),
                on({Function::Chmod}, "*", [root](const Fault& fault) { return withoutMode(fault, root); }),
                // a parent that can't be looked at has no bit to pass on
                of(Caller::Component,
                   on({Function::Stat}, "s", {.made = sorted(modes("0770", "0770", "0770", "0770"))})),
                of(Caller::Component,
                   on({Function::Stat}, "s/low", {.made = sorted(modes("0770", "0770", "2770", "0770"))})),
                of(Caller::Component, on({Function::Stat}, "d*", Change{})),
                // whether a way down is there already: what POCO makes of it
                of(Caller::Poco, on({Function::Stat}, "*", createdOrStopped)),
            },
        .prepare = stage,
    };
    commit.memory = createdOrStopped({});
    for (std::size_t made = 1; made <= NEW.size(); ++made)
    {
        commit.memory.push_back(stoppedBeforeTheMode(made));
    }
    for (const std::string path : {"e", "d/b"})
    {
        append(commit.memory, someStay({{}, {}, path, 0, 0, {}}));
    }
    commit.memory.push_back({.answer = "code -1", .log = Texts{FAILURE}, .gone = Texts{}, .made = Texts{}});
    commit.memory.push_back({.answer = "code -1", .log = Texts{FAILURE}, .gone = Texts{"d/b"}});
    commit.pocoLosesMemory = true;
    return {commit,
            {
                .name = "abort",
                .operation = [](Stage& on) { return on.abort(); },
                .expected = {.answer = "ok"},
                .prepare = stage,
                .commits = true,
            }};
}

} // namespace faults
