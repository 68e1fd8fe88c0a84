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

namespace
{

const std::string D = fileGroup("d");

std::vector<Scenario> createScenarios(const std::string& root)
{
    const std::string k = fileGroup("k");
    return {
        {
            .name = "createMo",
            .operation = [](Stage& stage) { return stage.create(D, "new"); },
            .expected = {.answer = "ok", .made = {"d 0770 d/new"}},
            .rules = {on({Function::Stat}, "d/.filemnodirectorycreate", Change{})},
            .diesWithoutMemory = true,
            .commits = true,
        },
        {
            .name = "createMo below a directory that refuses it",
            .operation = [k](Stage& stage) { return stage.create(k, "new"); },
            .expected = {.answer = "code -1",
                         .log = {"plain Not allowed to create directory, path " + root + "/k/, dn :" + k},
                         .messages = {"FileGroup does not allow child FileGroup to be created"}},
            // a marker that can't be looked for isn't there
            .rules = {on(
                {Function::Stat}, "k/.filemnodirectorycreate",
                {.answer = "ok", .log = Texts{}, .messages = Texts{}, .made = Texts{"d 0770 k/new"}})},
            .diesWithoutMemory = true,
            .commits = true,
        },
        {
            .name = "createMo with a name that is not allowed",
            .operation = [](Stage& stage) { return stage.create(D, "a/b"); },
            .expected = {.answer = "code -1",
                         .log = {"plain FileGroup contains illegal character(/): a/b, dn :" + D},
                         .messages = {"FileGroup contains illegal character(/)"}},
            .diesWithoutMemory = true,
            .commits = true,
        },
    };
}

/// Those that every deletion has for what it deletes: the search, which finds the name by any of its looks,
/// the test for a link and the look whether it is there.
std::vector<Rule> lookRules(const std::string& root, const std::string& path, const Change& notThere)
{
    return {
        of(Caller::Poco, on({Function::Stat}, path, Change{}, 1)),
        of(Caller::Poco, on({Function::Stat}, path, notThere, 2)),
        of(Caller::Component, on({Function::Lstat}, path, {.moreLog = {linkWarning(root + "/" + path)}}, 1)),
    };
}

std::vector<Scenario> fileDeletionScenarios(const std::string& root)
{
    const Change notThere = {.answer = "code -2", .gone = Texts{}};
    Scenario searched{
        .name = "deleteMo of a file whose name is searched",
        .operation = [](Stage& stage) { return stage.deleteMo(fileInformation("a??b", fileGroup("q"))); },
        .expected = {.answer = "ok", .gone = {"q/a=b"}},
        .rules =
            {
                // the search goes on and finds nothing
                on({Function::Stat}, "q/a=b",
                   {.answer = "code -2",
                    .log = Texts{"plain Warning: could not stat " + root + "/q/a??b, reason :2"},
                    .gone = Texts{}},
                   1),
                on({Function::Stat}, "q/a=b", notThere, 2),
                on({Function::Lstat}, "q/a=b", {.moreLog = {linkWarning(root + "/q/a=b")}}),
                on({Function::Stat}, "q/a*", Change{}), // the other candidates, which aren't there anyway
            },
        .diesWithoutMemory = true,
        .commits = true,
    };
    return {
        {
            .name = "deleteMo of a file",
            .operation = [](Stage& stage) { return stage.deleteMo(fileInformation("b", D)); },
            .expected = {.answer = "ok", .gone = {"d/b"}},
            .rules = lookRules(root, "d/b", notThere),
            .diesWithoutMemory = true,
            .commits = true,
        },
        searched,
        {
            .name = "deleteMo of a link",
            .operation = [](Stage& stage) { return stage.deleteMo(fileInformation("file", fileGroup("l"))); },
            .expected = {.answer = "code -1"},
            .rules =
                {
                    on({Function::Stat}, "l/file", Change{}, 1),
                    // what can't be looked at counts as no link
                    on({Function::Lstat}, "l/file",
                       {.answer = "ok", .moreLog = {linkWarning(root + "/l/file")}, .gone = Texts{"l/file"}}),
                },
            .diesWithoutMemory = true,
            .commits = true,
        },
    };
}

std::vector<Scenario> directoryDeletionScenarios(const std::string& root)
{
    const Change notThere = {.answer = "code -2", .gone = Texts{}};
    const Change traced = {.moreLog = {UNEXPECTED}};
    const Change warned = {.moreLog = {"plain Warning: could not stat *"}};

    Scenario empty{
        .name = "deleteMo of directories without files",
        .operation = [](Stage& stage) { return stage.deleteMo(fileGroup("e")); },
        .expected = {.answer = "ok", .gone = {"e"}},
        .rules = lookRules(root, "e", notThere),
        .memory = {traced},
        .diesWithoutMemory = true,
        .commits = true,
    };
    append(empty.rules, std::vector<Rule>{
                            on({Function::Stat}, "e/.filemno*", Change{}),
                            // a walk that ends early has seen no file either
                            on({Function::Open}, "e*", traced),
                            on({Function::Getdents, Function::Close}, "e*", Change{}),
                            of(Caller::Component, on({Function::Lstat}, "e/*", warned)),
                        });

    // The first file found ends the walk. One that can't be found lets the deletion pass, and all goes.
    const auto ifFilesSeen = [](const Texts& seen) {
        return std::any_of(seen.begin(), seen.end(), isFileOfD) ? Change{}
                                                                : Change{.answer = "ok", .gone = Texts{"d"}};
    };
    Scenario full{
        .name = "deleteMo of a directory with files",
        .operation = [](Stage& stage) { return stage.deleteMo(D); },
        .expected = {.answer = "code -1"},
        .rules = lookRules(root, "d", notThere),
        .memory = {{.answer = "ok", .moreLog = {UNEXPECTED}, .gone = Texts{"d"}}},
        .diesWithoutMemory = true,
        .commits = true,
    };
    full.rules.push_back(on({Function::Stat}, "d/.filemno*", Change{}));
    append(full.rules, walkOfD(root, ifFilesSeen));

    Scenario marked{
        .name = "deleteMo of a directory that refuses it",
        .operation = [](Stage& stage) { return stage.deleteMo(fileGroup("k")); },
        .expected = {.answer = "code -1", .messages = {"FileGroup is not allowed to be deleted"}},
        .rules = lookRules(root, "k", {.answer = "code -2", .messages = Texts{}}),
        .diesWithoutMemory = true,
        .commits = true,
    };
    append(marked.rules, std::vector<Rule>{
                             on({Function::Stat}, "k/.filemnodirectorycreate",
                                {.answer = "ok", .messages = Texts{}, .gone = Texts{"k"}}),
                             on({Function::Stat}, "k/.filemno*", Change{}),
                         });
    return {empty, full, marked};
}

std::vector<Scenario> actionScenarios(const std::string& root)
{
    const auto filesSeen = [](const Texts& seen) {
        Texts gone;
        for (const std::string& name : seen)
        {
            if (isFileOfD(name))
            {
                gone.push_back("d/" + name);
            }
        }
        std::sort(gone.begin(), gone.end());
        return Change{.answer = gone.empty() ? "bool[false]" : "bool[true]", .gone = gone};
    };
    Scenario files{
        .name = "action removeFile",
        .operation = [](Stage& stage) { return stage.action(D, "removeFile", ".*"); },
        .expected = {.answer = "bool[true]", .gone = {"d/a.txt", "d/b"}},
        .rules = walkOfD(root, filesSeen),
        .diesWithoutMemory = true,
        .commits = true,
    };
    for (const Texts& seen : {Texts{}, Texts{"a.txt"}, Texts{"b"}, Texts{"a.txt", "b"}})
    {
        Change shortened = filesSeen(seen);
        shortened.moreLog.push_back(UNEXPECTED);
        files.memory.push_back(shortened);
    }
    const Change notCompiled = {.answer = "code -1",
                                .log = Texts{"plain Failed to compile file name pattern (^.*$)"},
                                .messages = Texts{"Invalid regular expression"},
                                .gone = Texts{}};
    files.rules.push_back(on({Function::Regcomp}, "^.*$", notCompiled));
    // a name that can't be matched is one that doesn't match
    files.rules.push_back(on({Function::Regexec}, "a.txt", {.gone = Texts{"d/b"}}));
    files.rules.push_back(on({Function::Regexec}, "b", {.gone = Texts{"d/a.txt"}}));

    return {
        files,
        {
            .name = "action removeFile with an expression that is none",
            .operation = [](Stage& stage) { return stage.action(D, "removeFile", "("); },
            .expected = {.answer = "code -1",
                         .log = {"plain Failed to compile file name pattern (^($)"},
                         .messages = {"Invalid regular expression"}},
            .rules = {on({Function::Regcomp}, "^($", Change{})},
            .diesWithoutMemory = true,
            .commits = true,
        },
        {
            .name = "action remove",
            .operation = [](Stage& stage) { return stage.action(fileGroup("e"), "remove", ""); },
            .expected = {.answer = "bool[true]", .gone = {"e"}},
            .rules = {on({Function::Lstat}, "e", {.moreLog = {linkWarning(root + "/e")}})},
            .diesWithoutMemory = true,
            .commits = true,
        },
        {
            .name = "action remove of a link",
            .operation =
                [](Stage& stage) { return stage.action(fileGroup("dir", fileGroup("l")), "remove", ""); },
            .expected = {.answer = "code -1"},
            .rules = {on(
                {Function::Lstat}, "l/dir",
                {.answer = "bool[true]", .moreLog = {linkWarning(root + "/l/dir")}, .gone = Texts{"l/dir"}})},
            .diesWithoutMemory = true,
            .commits = true,
        },
        {
            .name = "action that is none",
            .operation = [](Stage& stage) { return stage.action(D, "shred", ""); },
            .expected = {.answer = "code -2",
                         .log = {"plain Action call failed: FileM MO has no action called shred"}},
            .diesWithoutMemory = true,
            .commits = true,
        },
    };
}

} // namespace

std::vector<Scenario> changingScenarios(const std::string& root)
{
    std::vector<Scenario> all = createScenarios(root);
    append(all, fileDeletionScenarios(root));
    append(all, directoryDeletionScenarios(root));
    append(all, actionScenarios(root));
    return all;
}

} // namespace faults
