#include "Scenario.h"
#include "support/DistinguishedNames.h"
#include "support/LoadedComponent.h"

namespace faults
{

using faultshim::Function;

namespace
{

const std::string COMMAND = "zolea file-system internalRoot";
const std::string EXECUTING = "plain Executing '" + COMMAND + "'";
const std::string EXECUTED = "plain Executed '" + COMMAND + "'";
const std::string NOT_INVOKED =
    "plain Failed to invoke zolea : execution of '" + COMMAND + "' failed - error={text}";
const std::string NOT_READ =
    "severity-3 ZOLEA readConfiguration failed: Failed to invoke: zolea " + COMMAND + ", error={text}";
const std::string NOT_READ_AT_ALL = "severity-3 ZOLEA readConfiguration failed: *";

std::string rootMissing(const std::string& root)
{
    return "severity-3 The File Management internal root path (" + root + ") does not exist.";
}

const Texts CONFIGURATION_FAILED = {
    "plain [libzol_file_management.so] -- zolLCMinit ...  \n", "severity-4 Caught exception: *",
    "severity-4 Failed to load components configuration! (-1)",
    "severity-4 Could not load the configuration for FileManagementComponent Component."};

Texts configurationRead(const std::string& root)
{
    return {"plain [libzol_file_management.so] -- zolLCMinit ...  \n",
            "plain ZolFileManagementComponent/ZolFileSystem/internal_root tag found: " + root + ".",
            "plain FileManagementComponent configuration read"};
}

/// The parser's hashes are then easier to guess.
const Rule RANDOM = on({Function::Open, Function::Close}, "/dev/urandom", Change{});

const Changes NOT_CONFIGURED = {
    {.answer = "exception",
     .log = Texts{"?plain *", "?plain *", "?plain *", "?severity-4 *", "?severity-4 *"}},
    {.answer = "code -1", .log = CONFIGURATION_FAILED},
    // the document had been read when the way back failed
    {.answer = "code -1",
     .log =
         Texts{"plain [libzol_file_management.so] -- zolLCMinit ...  \n", "plain ZolFile*",
               "severity-4 Caught exception: *", "severity-4 Failed to load components configuration! (-1)",
               "severity-4 Could not load the configuration for FileManagementComponent Component."}}};

} // namespace

std::vector<Scenario> startingScenarios(const std::string& root)
{
    const std::string text = zoltest::configurationFor(root);
    const std::string none = zoltest::configurationFor("");
    const Texts commandLog = {EXECUTING, EXECUTED};
    return {
        {
            .name = "zolLCMinit with a document's text",
            .operation = [text](Stage& stage) { return stage.init(text); },
            .expected = {.answer = "ok", .log = configurationRead(root)},
            .rules = {RANDOM},
            .memory = NOT_CONFIGURED,
            .pocoLosesMemory = true,
            .joins = false,
        },
        {
            .name = "zolLCMinit with a document's path",
            .operation = [](Stage& stage) { return stage.init(stage.surroundings.root("configuration")); },
            .expected = {.answer = "ok",
                         .log = configurationRead(root),
                         .made = {"f " + std::to_string(text.size()) + " configuration"}},
            .rules = {RANDOM,
                      on({Function::Open, Function::Fdopen}, "configuration",
                         {.answer = "code -1", .log = CONFIGURATION_FAILED}),
                      // what can't be looked at is read all the same
                      on({Function::Fstat}, "configuration", Change{})},
            .memory = NOT_CONFIGURED,
            .pocoLosesMemory = true,
            .prepare = [text](Stage& stage) { stage.surroundings.tree.file("configuration", text); },
            .joins = false,
        },
        {
            .name = "start with the configuration's root",
            .operation = [](Stage& stage) { return stage.start(); },
            .expected = {.answer = "ok"},
            .rules = {on({Function::Access}, "", {.answer = "code -1", .log = Texts{rootMissing(root)}})},
            .memory = {{.answer = "code -1"}},
            .joins = false,
        },
        {
            .name = "start with the command's root",
            .operation = [](Stage& stage) { return stage.start(); },
            .expected = {.answer = "ok", .log = commandLog},
            .rules =
                {
                    on({Function::Popen}, COMMAND,
                       {.answer = "code -1", .log = Texts{NOT_INVOKED, NOT_READ}}),
                    on({Function::Pclose}, "",
                       {.answer = "code -1", .log = Texts{EXECUTING, NOT_INVOKED, NOT_READ}}),
                    // what is read before counts; nothing, here
                    on({Function::Fgets}, "",
                       {.answer = "code -1", .log = Texts{EXECUTING, EXECUTED, rootMissing("")}}, 1),
                    on({Function::Fgets}, "", Change{}, 2),
                    on({Function::Access}, "", {.answer = "code -1", .moreLog = {rootMissing(root)}}),
                },
            .memory = {{.answer = "code -1", .log = Texts{"?" + EXECUTING, "?" + EXECUTED}},
                       {.answer = "code -1", .log = Texts{"?plain *", "?" + EXECUTED, NOT_READ_AT_ALL}},
                       {.answer = "code -1", .log = Texts{NOT_INVOKED, NOT_READ}}},
            .prepare = [none](Stage& stage) { stage.surroundings.init(none); },
            .joins = false,
        },
        {
            .name = "join",
            .operation = [](Stage& stage) { return stage.join(); },
            .expected = {.answer = "ok"},
            .memory = {{.answer = "code -1"}},
            .joins = false,
        },
        {
            .name = "prepare",
            .operation = [](Stage& stage) { return stage.prepare(); },
            .expected = {.answer = "ok"},
        },
        {
            .name = "finish",
            .operation = [](Stage& stage) { return stage.finish(); },
            .expected = {.answer = "ok"},
            .prepare = [](Stage& stage) { stage.transaction->children(zoltest::fileM, "FileGroup"); },
            .finishes = true,
        },
    };
}

} // namespace faults
