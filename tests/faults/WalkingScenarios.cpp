#include "Scenario.h"
#include "support/DistinguishedNames.h"

#include <algorithm>

namespace faults
{

using faultshim::Caller;
using faultshim::Function;
using zoltest::fileGroup;
using zoltest::fileInformation;
using zoltest::fileM;
using zoltest::fileMConfigData;

namespace
{

const std::string D = fileGroup("d");
const std::string L = fileGroup("l");

std::vector<Scenario> existenceScenarios()
{
    const Changes failure = {{.answer = "code -1"}};
    const auto scenario = [&](const std::string& name, const std::string& dn, const std::string& path) {
        return Scenario{
            .name = name,
            .operation = [dn](Stage& stage) { return stage.exists(dn); },
            .expected = {.answer = "yes"},
            .rules = {on({Function::Stat}, path, Change{.answer = "no"})},
            .memory = failure,
        };
    };
    return {scenario("existsMo of a file", fileInformation("b", D), "d/b"),
            scenario("existsMo of a directory", D, "d")};
}

std::vector<Scenario> countScenarios(const std::string& root)
{
    const auto files = [](const Texts& seen) {
        return Change{.answer = std::to_string(std::count_if(seen.begin(), seen.end(), isFileOfD))};
    };
    const auto directories = [](const Texts& seen) {
        return Change{.answer = std::to_string(std::count(seen.begin(), seen.end(), "sub"))};
    };
    const auto scenario = [&](const std::string& className, const std::string& answer, auto shortened) {
        Scenario result{
            .name = "countMoChildren of " + className,
            .operation = [className](Stage& stage) { return stage.count(D, className); },
            .expected = {.answer = answer},
            .rules = walkOfD(root, shortened),
            .memory = {{.answer = "code -1"}},
            // the walk throws nothing
            .diesWithoutMemory = true,
        };
        for (const std::string fewer : {"0", "1", "2"})
        {
            if (fewer <= answer)
            {
                result.memory.push_back({.answer = fewer, .moreLog = {UNEXPECTED}});
            }
        }
        return result;
    };
    return {scenario("FileInformation", "2", files), scenario("FileGroup", "1", directories)};
}

Change names(const Texts& seen, const Texts& wanted)
{
    Texts found;
    for (const std::string& name : seen)
    {
        if (std::find(wanted.begin(), wanted.end(), name) != wanted.end())
        {
            found.push_back(name);
        }
    }
    std::sort(found.begin(), found.end());
    std::string answer;
    for (const std::string& name : found)
    {
        answer += (answer.empty() ? "" : " ") + name;
    }
    return {.answer = answer.empty() ? "no name" : answer};
}

Scenario fileIteration(const std::string& root)
{
    const auto files = [](const Texts& seen) { return names(seen, {"a.txt", "b"}); };
    Scenario scenario{
        .name = "newMoIterator and nextMo of FileInformation",
        .operation = [](Stage& stage) { return stage.children(D, "FileInformation"); },
        .expected = {.answer = "a.txt b"},
        .rules = walkOfD(root, files),
        .memory = {{.answer = "code -1"}, Change{.answer = "code -1", .moreLog = {NO_MEMORY}}},
        .diesWithoutMemory = true,
    };
    for (const Texts& seen : {Texts{}, Texts{"a.txt"}, Texts{"b"}, Texts{"a.txt", "b"}})
    {
        Change shortened = files(seen);
        shortened.moreLog.push_back(UNEXPECTED);
        scenario.memory.push_back(shortened);
    }
    return scenario;
}

Scenario linkIteration(const std::string& root)
{
    const auto dangling = [root](const std::string& link, const std::string& target) {
        return "severity-4 Link <" + root + "/l/" + link + "> refers to a non existing target <" + target +
               ">, treated as a file";
    };
    const std::string gone = dangling("gone", root + "/none");
    const auto unread = [root](const std::string& link) {
        return "severity-3 Linked target path does not exist, error {errno}, link path :" + root + "/l/" +
               link;
    };
    const auto isIn = [](const Texts& seen, const std::string& name) {
        return std::find(seen.begin(), seen.end(), name) != seen.end();
    };
    // what the walk has told before it ended at an entry
    const auto endedAfter = [=](const Texts& seen, const Texts& lines) {
        Change change = names(seen, {"dir"});
        change.log = lines;
        if (isIn(seen, "gone"))
        {
            change.log->push_back(gone);
        }
        return change;
    };
    const auto ended = [=](const Fault& fault) { return Changes{endedAfter(fault.before(), {UNEXPECTED})}; };
    // the target of a link can be told from the entry that is a link to it
    const auto endedAt = [=](const std::string& link) {
        return
            [=](const Fault& fault) { return Changes{endedAfter(fault.before("l/" + link), {UNEXPECTED})}; };
    };
    const auto warned = [root](const Fault& fault) {
        return Changes{{.moreLog = {linkWarning(root + "/" + fault.path)}}};
    };
    const auto unreadable = [=](const std::string& link) {
        return [=](const Fault& fault) {
            // an empty target isn't there, or can't even be asked for
            Change skipped = {.answer = link == "dir" ? "no name" : "dir",
                              .log = Texts{unread(link), dangling(link, "")}};
            if (link != "gone")
            {
                skipped.log->push_back(gone);
            }
            return Changes{skipped, endedAfter(fault.before(), {unread(link), UNEXPECTED})};
        };
    };

    Scenario scenario{
        .name = "newMoIterator and nextMo of FileGroup, with links",
        .operation = [](Stage& stage) { return stage.children(L, "FileGroup"); },
        .expected = {.answer = "dir", .log = {gone}},
        .rules =
            {
                on({Function::Open}, "l", Change{.answer = "no name", .log = Texts{UNEXPECTED}}),
                on({Function::Getdents}, "l",
                   [=](const Fault& fault) { return Changes{endedAfter(fault.before(), {})}; }),
                on({Function::Close}, "l", Change{}),
                // as no link, it is asked what it is, and nothing is there
                on({Function::Lstat}, "l/gone",
                   [=](const Fault& fault) {
                       return Changes{
                           endedAfter(fault.before(), {linkWarning(root + "/l/gone"), UNEXPECTED})};
                   }),
                on({Function::Lstat}, "l/*", warned),
                on({Function::Readlink}, "l/dir", unreadable("dir")),
                on({Function::Readlink}, "l/file", unreadable("file")),
                on({Function::Readlink}, "l/gone", unreadable("gone")),
                on({Function::Stat}, "l/*", ended),
                on({Function::Stat}, "d",
                   Change{.answer = "no name", .moreLog = {dangling("dir", root + "/d")}}, 1),
                on({Function::Stat}, "d", endedAt("dir"), 2),
                on({Function::Stat}, "d/b", {.moreLog = {dangling("file", root + "/d/b")}}, 1),
                on({Function::Stat}, "d/b", endedAt("file")),
                on({Function::Stat}, "none", Change{}),
            },
        .memory = {{.answer = "code -1", .log = Texts{"?" + NO_MEMORY, "?" + gone}},
                   {.answer = "no name", .log = Texts{UNEXPECTED, "?" + gone}},
                   {.answer = "dir", .log = Texts{UNEXPECTED, "?" + gone}}},
        .diesWithoutMemory = true,
    };
    return scenario;
}

} // namespace

std::vector<Scenario> walkingScenarios(const std::string& root)
{
    std::vector<Scenario> all = existenceScenarios();
    append(all, countScenarios(root));
    all.push_back(fileIteration(root));
    all.push_back(linkIteration(root));
    all.push_back({
        .name = "newMoIterator and nextMo of FileMConfigData",
        .operation = [](Stage& stage) { return stage.children(fileM, "FileMConfigData"); },
        .expected = {.answer = "1"},
        .memory = {{.answer = "code -1"},
                   {.answer = "code -1", .log = Texts{NO_MEMORY}},
                   {.answer = "no name", .log = Texts{NO_MEMORY}}},
    });
    all.push_back({
        .name = "finalizeMoIterator",
        .operation = [](Stage& stage) { return stage.finalizeIterator(); },
        .expected = {.answer = "ok"},
    });
    return all;
}

} // namespace faults
