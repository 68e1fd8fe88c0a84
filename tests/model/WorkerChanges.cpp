#include "model/DnRules.h"
#include "model/Names.h"
#include "model/Values.h"
#include "model/Worker.h"

#include <regex.h>

namespace zolmodel
{

namespace
{

const unsigned MAXIMAL_VISITS = 3000;

class Expression
{
public:
    explicit Expression(const std::string& text)
        : _isValid(regcomp(&_compiled, text.c_str(), REG_EXTENDED | REG_NOSUB) == 0)
    {}
    Expression(const Expression&) = delete;
    Expression& operator=(const Expression&) = delete;
    ~Expression()
    {
        if (_isValid)
        {
            regfree(&_compiled);
        }
    }

    bool isValid() const { return _isValid; }
    bool matches(const std::string& text) const
    {
        return regexec(&_compiled, text.c_str(), 0, nullptr, 0) == 0;
    }

private:
    regex_t _compiled = {};
    bool _isValid;
};

} // namespace

Worker::Worker(World& world, bool canTellOperator)
    : _world(world)
    , _canTellOperator(canTellOperator)
{}

void Worker::create(const std::string& parentDn, const std::string& className,
                    const std::string& keyAttribute, const std::string& keyValue, Outcome& outcome)
{
    outcome.code = ZolReturnFailure;
    if (className != "FileGroup" || keyAttribute != "fileGroupId")
    {
        return;
    }
    if (const auto refusal = namingRefusal(keyValue))
    {
        tell(*refusal, outcome);
        return;
    }
    const Location parent = locationOf(parentDn);
    if (_world.hasMarker(parent, ".filemnodirectorycreate"))
    {
        tell("FileGroup does not allow child FileGroup to be created", outcome);
        return;
    }
    std::string name = groupName(keyValue);
    if (_world.mistake == Mistake::DecodesOneEscapeOnly)
    {
        name = replacedAll(keyValue, "\\2B", "+");
    }
    const Location location = parent.directoryBelow(name);
    _world.requireChangeable(location);
    _changes.create(location);
    outcome.code = ZolReturnOk;
}

void Worker::remove(const std::string& dn, Outcome& outcome)
{
    const Location location = locationOf(searched(dn).value_or(dn));
    const std::string className = classOf(dn);
    outcome.code = ZolReturnFailure;
    if (_world.isLink(location))
    {
        return;
    }
    if (!_world.exists(location) && !_changes.createdDirectories.contains(location))
    {
        outcome.code = ZolReturnNoSuch;
    }
    else if (className == "FileInformation")
    {
        _world.requireChangeable(location);
        _changes.deletedFiles.insert(location);
        outcome.code = ZolReturnOk;
    }
    else if (className == "FileGroup")
    {
        if (_world.hasMarker(location, ".filemnodirectorydelete") ||
            _world.hasMarker(location, ".filemnodirectorycreate") ||
            _world.hasMarker(location, ".filemnohousekeeping"))
        {
            tell("FileGroup is not allowed to be deleted", outcome);
            return;
        }
        unsigned visitsLeft = MAXIMAL_VISITS;
        if (containsFiles(location, visitsLeft))
        {
            return;
        }
        _world.requireChangeable(location);
        _changes.remove(location);
        std::erase_if(_changes.createdDirectories, [prefix = location.text()](const Location& created) {
            return created.text().starts_with(prefix);
        });
        outcome.code = ZolReturnOk;
    }
}

void Worker::action(const std::string& dn, const std::string& name, const std::string& expression,
                    Parameters parameters, Outcome& outcome)
{
    const Location location = locationOf(dn);
    outcome.value = boolValue(false);
    if (name == "removeFile")
    {
        if (parameters == Parameters::Right || parameters == Parameters::Surplus)
        {
            removeFiles(location, "^" + expression + "$", outcome);
        }
        else
        {
            outcome.code = ZolReturnWrongParameters;
        }
    }
    else if (name != "remove")
    {
        outcome.code = ZolReturnNoSuch;
    }
    else if (_world.isLink(location))
    {
        outcome.code = ZolReturnFailure;
    }
    else
    {
        _world.requireChangeable(location);
        _changes.remove(location);
        outcome.value = boolValue(true);
    }
}

void Worker::tell(const std::string& message, Outcome& outcome) const
{
    if (_canTellOperator)
    {
        outcome.messages.push_back(message);
    }
}

void Worker::removeFiles(const Location& directory, const std::string& expression, Outcome& outcome)
{
    const Expression compiled(expression);
    if (!compiled.isValid())
    {
        tell("Invalid regular expression", outcome);
        outcome.code = ZolReturnFailure;
        outcome.valueIsUncertain = true;
        return;
    }
    std::set<Location> found;
    Walk files = walk(directory, Wanted::Files);
    while (const auto file = files.next())
    {
        if (compiled.matches(file->fileName()) && !_world.isLink(*file))
        {
            _world.requireChangeable(*file);
            found.insert(*file);
        }
    }
    outcome.value = boolValue(!found.empty());
    _changes.deletedFiles.merge(found);
}

bool Worker::containsFiles(const Location& directory, unsigned& visitsLeft) const
{
    if (visitsLeft-- == 0)
    {
        throw OutOfReach("links make it too large");
    }
    if (walk(directory, Wanted::Files).next())
    {
        return true;
    }
    Walk directories = walk(directory, Wanted::Directories);
    while (const auto child = directories.next())
    {
        if (containsFiles(*child, visitsLeft))
        {
            return true;
        }
    }
    return false;
}

} // namespace zolmodel
