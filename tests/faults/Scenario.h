#pragma once

#include "FaultShim.h"
#include "Surroundings.h"

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace faults
{

/// What a caller, an operator and the disk see of an operation.
struct Outcome
{
    std::string answer = {}; ///< the code or the value
    Texts log = {};          ///< see Statements
    Texts messages = {};     ///< to the operator
    Texts gone = {};   ///< names below the root that the commit has removed, without what was below them
    Texts made = {};   ///< what it has made, as Surroundings::snapshot gives it
    bool dies = false; ///< an exception has ended the process
};

/// The call that failed.
struct Fault
{
    faultshim::Function function;
    faultshim::Caller caller;
    std::string path;         ///< below the root, without a slash at its end
    unsigned long occurrence; ///< among the calls of this function, by this caller, for this path
    int error;
    std::map<std::string, Texts> read; ///< what was read of each directory, the last time that it was opened

    /// The entries that a walk had done with when it failed at one.
    Texts before(const std::string& at) const;
    /// When it failed at the path of the call, or had to read on in it.
    Texts before() const;
};

/// How an outcome differs from the one without a failure. In the log, {errno} and {text} stand for the error,
/// a star at the end of a line for any rest, and a question mark before a line for one that may be missing.
struct Change
{
    std::optional<std::string> answer = std::nullopt;
    std::optional<Texts> log = std::nullopt;
    Texts moreLog = {};
    std::optional<Texts> messages = std::nullopt;
    std::optional<Texts> gone = std::nullopt;
    std::optional<Texts> made = std::nullopt;
};

using Changes = std::vector<Change>; ///< any of them

/// What is to come of a failing call. The first rule of a scenario that fits counts.
struct Rule
{
    std::vector<faultshim::Function> functions;
    std::optional<faultshim::Caller> caller;
    std::string path;         ///< with a star at its end for whatever follows, e.g. "d/*"
    unsigned long occurrence; ///< 0 for all
    std::function<Changes(const Fault&)> expected;

    bool fits(const Fault& fault) const;
};

/// The host's calls under test: counted, noted and failed as was planned.
class Stage
{
public:
    Stage(Surroundings& shared, unsigned long txHandle);

    Surroundings& surroundings;
    std::unique_ptr<zoltest::Transaction> transaction; ///< for what is not under test

    std::string join();
    std::string prepare();
    std::string commit();
    std::string abort();
    std::string finish();
    std::string create(const std::string& parentDn, const std::string& name);
    std::string deleteMo(const std::string& dn);
    std::string action(const std::string& dn, const std::string& name, const std::string& parameter);
    std::string attribute(const std::string& dn, const std::string& name);
    std::string attributes(const std::string& dn, const std::vector<const char*>& names);
    std::string setMoAttribute(const std::string& dn);
    std::string exists(const std::string& dn);
    std::string count(const std::string& dn, const std::string& className);
    std::string children(const std::string& parentDn, const std::string& className); ///< sorted
    std::string finalizeIterator();
    std::string init(const std::string& config);
    std::string start();

private:
    const ZolOamSpiTransactionalResource_1& _resource;
    const ZolOamSpiManagedObject_3& _objects;
    unsigned long _txHandle;
};

struct Scenario
{
    std::string name; ///< e.g. "deleteMo of a file"
    std::function<std::string(Stage&)> operation;
    Outcome expected = {}; ///< without a failure
    std::vector<Rule> rules = {};

    /// What may come of a lack of memory, beside an outcome that shows none of it but a line less in the log.
    Changes memory = {};
    bool diesWithoutMemory = false; ///< the operation is one that throws nothing
    /// POCO's parser loses parts of the document.
    bool pocoLosesMemory = false;
    std::size_t keptBlocks = 0; ///< that may stay for the rest of the process

    std::function<void(Stage&)> prepare = nullptr; ///< before the operation, undisturbed
    bool joins = true;                             ///< whether there is a transaction before the operation
    bool finishes = false;                         ///< whether the operation ends it
    bool commits = false;                          ///< whether what is staged is committed afterwards
};

std::vector<Scenario> startingScenarios(const std::string& root);
std::vector<Scenario> changingScenarios(const std::string& root);
std::vector<Scenario> commitScenarios(const std::string& root);
std::vector<Scenario> readingScenarios(const std::string& root);
std::vector<Scenario> walkingScenarios(const std::string& root);
/// Those of all operations of the boundary.
std::vector<Scenario> allScenarios(const std::string& root);

// For the rules of all of them.
Rule on(std::vector<faultshim::Function> functions, const std::string& path,
        std::function<Changes(const Fault&)> expected, unsigned long occurrence = 0);
Rule on(std::vector<faultshim::Function> functions, const std::string& path, const Change& expected,
        unsigned long occurrence = 0);
Rule of(faultshim::Caller caller, Rule rule);

inline const std::string UNEXPECTED = "plain Unexpected exception :*";
inline const std::string NO_MEMORY = "plain Unexpected exception :std::bad_alloc";
/// What comes of a link test that fails.
std::string linkWarning(const std::string& path);

/// The rules of a walk through the files of `d` or through its directories, of which the names of the
/// matching entries that were seen decide.
std::vector<Rule> walkOfD(const std::string& root, const std::function<Change(const Texts& seen)>& shortened);
bool isFileOfD(const std::string& name);

template<class Part>
void append(std::vector<Part>& all, const std::vector<Part>& more)
{
    all.insert(all.end(), more.begin(), more.end());
}

} // namespace faults
