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
const std::string B = fileInformation("b", D);
const std::string COMMAND = "zolea file-system internalRoot";
const std::string TIME = "string[\"TIME\"]"; // see Stage

const Change FAILED = {.answer = "code -1", .moreLog = {UNEXPECTED}};
const Changes FAILED_WITHOUT_MEMORY = {{.answer = "code -1", .moreLog = {NO_MEMORY}}};

/// What is the same for all: a first look whether the MO is there finds it another way if it fails, and a
/// lack of memory makes the read fail.
Scenario read(const std::string& dn, const std::string& attribute, const std::string& value,
              const std::string& path)
{
    Scenario scenario{
        .name = "getMoAttribute " + attribute,
        .operation = [dn, attribute](Stage& stage) { return stage.attribute(dn, attribute); },
        .expected = {.answer = value},
        .memory = FAILED_WITHOUT_MEMORY,
    };
    if (!path.empty())
    {
        scenario.rules.push_back(on({Function::Stat}, path, Change{}, 1));
    }
    return scenario;
}

Scenario with(Scenario scenario, const std::vector<Rule>& rules)
{
    append(scenario.rules, rules);
    return scenario;
}

Scenario listing()
{
    const auto entry = [](const std::string& name) {
        const bool isText = name == "a.txt";
        return "{fileName: string[\"" + name + "\"], modificationTime: " + TIME + ", fileType: string[\"" +
               (isText ? "txt" : "") + "\"], size: uint[" + (isText ? "5" : "1") + "]}";
    };
    const auto all = [entry](const Texts& seen) {
        std::string text;
        for (const std::string name : {"a.txt", "b"})
        {
            if (std::find(seen.begin(), seen.end(), name) != seen.end())
            {
                text += (text.empty() ? "" : ", ") + entry(name);
            }
        }
        return "struct[" + text + "]";
    };
    Scenario scenario = read(D, "files", all({"a.txt", "b"}), "d");
    // also where the directory can't be opened without memory
    scenario.memory = {FAILED};
    return with(scenario,
                {
                    on({Function::Open}, "d", FAILED),
                    on({Function::Getdents}, "d",
                       [all](const Fault& fault) { return Changes{{.answer = all(fault.before())}}; }),
                    on({Function::Close}, "d", Change{}),
                    // one entry that can't be told makes the listing fail
                    on({Function::Stat}, "d/*", FAILED),
                });
}

Scenario commandRead(const std::string& root)
{
    const std::string failure =
        "plain Failed to invoke zolea : execution of '" + COMMAND + "' failed - error={text}";
    const std::string executing = "plain Executing '" + COMMAND + "'";
    const std::string executed = "plain Executed '" + COMMAND + "'";
    Scenario scenario = read(fileMConfigData, "internalRoot", "string[\"" + root + "\"]", "");
    scenario.expected.log = {executing, executed};
    scenario.rules = {
        on({Function::Popen}, COMMAND, Change{.answer = "code -1", .log = Texts{failure}}),
        on({Function::Pclose}, "", Change{.answer = "code -1", .log = Texts{executing, failure}}),
        on({Function::Fgets}, "", Change{.answer = "string[\"\"]"}, 1),
        on({Function::Fgets}, "", Change{}, 2),
    };
    scenario.memory = {{.answer = "code -1", .log = Texts{"?" + executing, "?" + executed, NO_MEMORY}},
                       {.answer = "code -1", .log = Texts{failure}},
                       {.answer = "string[\"\"]"}};
    return scenario;
}

std::vector<Scenario> groupReads()
{
    Scenario reserved = read(D, "reservedByPolicy", "reference[\"p1\", \"p2\"]", "d");
    reserved.expected.log = {"plain MoAccessor::getAttr<> dName :p1 attrName :fileGroup",
                             "plain MoAccessor::getAttr<> dName :p2 attrName :fileGroup"};
    reserved.prepare = [](Stage& stage) {
        auto& repository = stage.surroundings.repository;
        repository.setChildren(fileM, "FileGroupPolicy", {"p1", "p2"});
        repository.setReferences("p1", "fileGroup", {D});
        repository.setReferences("p2", "fileGroup", {fileGroup("e"), D});
    };
    reserved.keptBlocks = 1; // the DN of the root
    reserved.memory = {
        {.answer = "code -1",
         .log = Texts{"?plain MoAccessor::getAttr<> *", "?plain MoAccessor::getAttr<> *", NO_MEMORY}},
        // the root's DN is then the usual one
        {.moreLog = {"severity-4 Could not find first instance of ManagedElement,SystemFunctions,FileM"}}};
    return {
        read(D, "fileGroupId", "string[\"d\"]", "d"),
        with(read(fileGroup("h"), "internalHousekeeping", "bool[true]", "h"),
             {on({Function::Stat}, "h/.filemnohousekeeping", Change{.answer = "bool[false]"})}),
        reserved,
        listing(),
    };
}

std::vector<Scenario> fileReads(const std::string& root)
{
    const std::string searched = fileInformation("a??b", fileGroup("q"));
    Scenario found = read(searched, "size", "int[2]", "");
    found.name += " of a file that is searched";
    const Change notFound = {
        .answer = "int[0]", .moreLog = {"plain File not exists, path :" + root + "/q/a??b, dn :" + searched}};
    found.rules = {
        of(Caller::Poco, on({Function::Stat}, "q/a=b", notFound)),
        of(Caller::Component, on({Function::Stat}, "q/a=b", Change{.answer = "int[0]"})),
        on({Function::Stat}, "q/a*", Change{}),
    };
    return {
        read(B, "fileInformationId", "string[\"b\"]", "d/b"),
        with(read(B, "modificationTime", TIME, "d/b"),
             {on({Function::Stat}, "d/b", Change{.answer = "string[\"\"]"})}),
        read(B, "size", "int[1]", "d/b"),
        found,
        read(fileInformation("a.txt", D), "type", "string[\"txt\"]", "d/a.txt"),
        read(B, "open", "bool[false]", "d/b"),
    };
}

Scenario severalReads()
{
    const std::string id = "string[\"b\"] ";
    return {
        .name = "getMoAttributes",
        .operation =
            [](Stage& stage) {
                return stage.attributes(B, {"fileInformationId", "size", "modificationTime"});
            },
        .expected = {.answer = id + "int[1] " + TIME},
        .rules =
            {
                on({Function::Stat}, "d/b", Change{.answer = id + "int[1] string[\"\"]"}, 4),
                on({Function::Stat}, "d/b", Change{}),
            },
        .memory = {{.answer = "code -1"}, FAILED_WITHOUT_MEMORY.front()},
    };
}

} // namespace

std::vector<Scenario> readingScenarios(const std::string& root)
{
    std::vector<Scenario> all = groupReads();
    append(all, fileReads(root));
    all.push_back(severalReads());
    all.push_back(read(fileMConfigData, "fileMConfigDataId", "string[\"1\"]", ""));
    all.push_back(commandRead(root));
    Scenario unknown = read(B, "dateTime", "code -2", "d/b");
    unknown.name = "getMoAttribute of a name that is none";
    all.push_back(unknown);
    all.push_back({
        .name = "setMoAttribute",
        .operation = [](Stage& stage) { return stage.setMoAttribute(D); },
        .expected = {.answer = "code -1"},
    });
    return all;
}

} // namespace faults
