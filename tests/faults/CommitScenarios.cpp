#include "Scenario.h"
#include "support/DistinguishedNames.h"

#include <algorithm>
#include <filesystem>

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
Changes someStay(const Fault&)
{
    return {Change{}, {.gone = Texts{"d/b"}}, {.gone = Texts{"d/b", "e/x"}}, {.gone = Texts{"d/b", "e/x/y"}}};
}

Changes staysAtLeast(const Fault& fault)
{
    Changes changes = someStay(fault);
    // what can't be removed is still there
    changes.erase(changes.begin());
    return changes;
}

/// New directories that take more than one step: one has no parent yet, one has been there before.
Scenario commitBesideOthers(const std::string& root)
{
    const Texts made = {"d 0755 d/none", "d 0770 d/none/in", "d 0770 s", "d 0770 s/low"};
    const auto stoppedWith = [](const Texts& before) {
        return Change{.answer = "code -1", .log = Texts{FAILURE}, .made = sorted(before)};
    };
    const auto withoutMode = [root](const std::string& path, const Texts& left) {
        return on({Function::Chmod}, path,
                  {.moreLog = {"severity-4 Unable to modify the permissions of " + root + "/" + path + "/"},
                   .made = sorted(left)});
    };
    Scenario commit{
        .name = "commit of directories without a parent or already there",
        .operation = [](Stage& on) { return on.commit(); },
        .expected = {.answer = "ok", .made = made},
        .rules =
            {
                of(Caller::Component, on({Function::Mkdir}, "*", Change{})),
                of(Caller::Poco, on({Function::Mkdir}, "d/none", stoppedWith({}))),
                of(Caller::Poco, on({Function::Mkdir}, "d/none/in", stoppedWith({made[0]}))),
                // what can't be looked at isn't there, and is then found to be when it is made
                on({Function::Stat, Function::Fstatat}, "*", Change{}),
                withoutMode("d/none/in", {"d 0755 d/none", "d 0755 d/none/in", made[2], made[3]}),
                withoutMode("s", {made[0], made[1], "d 2770 s/low"}),
                withoutMode("s/low", {made[0], made[1], made[2], "d 0755 s/low"}),
            },
        .prepare =
            [](Stage& on) {
                on.transaction->create(fileGroup("none", fileGroup("d")), "in");
                on.transaction->create(zoltest::fileM, "s");
                on.transaction->create(fileGroup("s"), "low");
            },
    };
    for (std::size_t count = 0; count <= made.size(); ++count)
    {
        commit.memory.push_back(
            stoppedWith({made.begin(), made.begin() + static_cast<std::ptrdiff_t>(count)}));
    }
    commit.memory.push_back(stoppedWith({made[0], "d 0755 d/none/in"}));
    commit.memory.push_back(stoppedWith({made[0], made[1], made[2], "d 0755 s/low"}));
    return commit;
}

/// A directory in the place of a deleted file, which takes more than one step too.
Scenario commitOfWhatHasChanged()
{
    const Change stays = {.gone = Texts{}, .made = Texts{"d 0755 d/b"}};
    const auto mayStay = [stays](const Fault&) { return Changes{Change{}, stays}; };
    return {
        .name = "commit that finds a directory in the place of a file",
        .operation = [](Stage& on) { return on.commit(); },
        .expected = {.answer = "ok", .gone = {"d/b"}},
        .rules =
            {
                on({Function::Unlink}, "d/b", Change{}),
                on({Function::Unlinkat}, "d/b", stays),
                on({Function::Open, Function::Openat, Function::Fstat, Function::Fstatat, Function::Fcntl,
                    Function::Fdopendir, Function::Readdir, Function::Closedir, Function::Close},
                   "d*", mayStay),
            },
        .memory = {stays},
        .prepare =
            [](Stage& on) {
                on.transaction->deleteMo(fileInformation("b", fileGroup("d")));
                std::filesystem::remove(on.surroundings.root("d/b"));
                on.surroundings.tree.directory("d/b");
            },
    };
}

} // namespace

std::vector<Scenario> commitScenarios(const std::string& root)
{
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
    const std::vector<Function> removals = {Function::Unlink, Function::Unlinkat, Function::Rmdir,
                                            Function::Remove};

    Scenario commit{
        .name = "commit",
        .operation = [](Stage& on) { return on.commit(); },
        .expected = {.answer = "ok", .gone = GONE, .made = MADE},
        .rules =
            {
                // what fails here is done again in more steps
                on({Function::Unlink}, "d/b", Change{}),
                on({Function::Mkdir}, "*", Change{}),
                on(removals, "e*", staysAtLeast),
                on(looks, "e*", someStay),
                on({Function::Open, Function::Fstat, Function::Close}, "", someStay),
                on({Function::Chmod}, "*", [root](const Fault& fault) { return withoutMode(fault, root); }),
                // a parent that can't be looked at has no bit to pass on
                on({Function::Fstatat}, "s", {.made = sorted(modes("0770", "0770", "0770", "0770"))}),
                on({Function::Fstatat}, "s/low", {.made = sorted(modes("0770", "0770", "2770", "0770"))}),
                on({Function::Fstatat}, "d*", Change{}),
            },
        .prepare = stage,
    };
    for (std::size_t made = 0; made < NEW.size(); ++made)
    {
        commit.memory.push_back(stopped(made));
        commit.memory.push_back(stoppedBeforeTheMode(made + 1));
    }
    append(commit.memory, someStay({{}, {}, "e", 0, 0, {}}));
    commit.memory.push_back({.answer = "code -1", .log = Texts{FAILURE}, .gone = Texts{}, .made = Texts{}});
    commit.memory.push_back({.answer = "code -1", .log = Texts{FAILURE}, .gone = Texts{"d/b"}});
    return {commit,
            commitBesideOthers(root),
            commitOfWhatHasChanged(),
            {
                .name = "abort",
                .operation = [](Stage& on) { return on.abort(); },
                .expected = {.answer = "ok"},
                .prepare = stage,
                .commits = true,
            }};
}

} // namespace faults
