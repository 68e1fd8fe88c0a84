#pragma once

#include "model/Changes.h"
#include "model/Outcome.h"
#include "model/Walk.h"
#include "model/World.h"

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace zolmodel
{

/// How the parameters of an action are given.
enum class Parameters
{
    Right,
    None,      ///< an empty list
    TwoValues, ///< of the right type
    WrongType,
    Surplus, ///< a second parameter
    NoList,  ///< a null pointer in the place of the list
    LAST = NoList
};

/// One transaction. The operations write into the outcome what the host gets to see.
class Worker
{
public:
    Worker(World& world, bool canTellOperator);

    // WorkerChanges.cpp
    void create(const std::string& parentDn, const std::string& className, const std::string& keyAttribute,
                const std::string& keyValue, Outcome& outcome);
    void remove(const std::string& dn, Outcome& outcome);
    void action(const std::string& dn, const std::string& name, const std::string& expression,
                Parameters parameters, Outcome& outcome);

    // WorkerCommit.cpp
    ZolReturnT commit();
    void abort();

    // WorkerQueries.cpp
    std::optional<unsigned long long> newIterator(const std::string& parentDn, const std::string& className);
    void next(unsigned long long iterator, Outcome& outcome);
    unsigned long long count(const std::string& dn, const std::string& className);
    bool exists(const std::string& dn);

    // WorkerAttributes.cpp
    void attribute(const std::string& dn, const std::string& name, Outcome& outcome);
    void attributes(const std::string& dn, const std::vector<std::string>& names, Outcome& outcome);

private:
    /// One attribute: its value, or a code.
    struct Read
    {
        ZolReturnT code;
        std::string value;
    };

    void tell(const std::string& message, Outcome& outcome) const;
    void removeFiles(const Location& directory, const std::string& expression, Outcome& outcome);
    bool containsFiles(const Location& directory, unsigned& visitsLeft) const;
    /// The DN of what is on disk, with one candidate for all question marks.
    std::optional<std::string> searched(const std::string& dn) const;
    Location locationOf(const std::string& dn) const;
    Walk walk(const Location& directory, Wanted wanted) const;
    ZolReturnT apply(const Changes& changes);
    void makeModed(const Location& directory);
    bool makeDirectories(const Location& directory);

    Read readAttribute(const std::string& dn, const std::string& name) const;
    Read readOfGroup(const std::string& dn, const std::string& name, const Location& location) const;
    Read readOfFile(const std::string& dn, const std::string& name, const Location& location) const;
    Read readOfConfiguration(const std::string& dn, const std::string& name) const;
    Read readFiles(const std::string& dn) const;
    std::string timeOf(const Location& location) const;

    World& _world;
    bool _canTellOperator;
    Changes _changes;
    std::map<unsigned long long, std::unique_ptr<Walk>> _walks;
    std::map<unsigned long long, bool> _configurations; ///< whether the one instance was given
};

} // namespace zolmodel
