#include "Scenario.h"

#include <algorithm>
#include <utility>

namespace faults
{

using faultshim::Caller;
using faultshim::Function;

namespace
{

bool matches(const std::string& pattern, const std::string& text)
{
    return pattern.ends_with('*') ? text.starts_with(pattern.substr(0, pattern.size() - 1)) : text == pattern;
}

} // namespace

Texts Fault::before(const std::string& at) const
{
    const std::size_t slash = at.rfind('/');
    const auto found = read.find(at.substr(0, slash));
    if (slash == std::string::npos || found == read.end())
    {
        return {};
    }
    return {found->second.begin(),
            std::find(found->second.begin(), found->second.end(), at.substr(slash + 1))};
}

Texts Fault::before() const
{
    return before(function == Function::Getdents ? path + "/" : path);
}

bool Rule::fits(const Fault& fault) const
{
    return std::find(functions.begin(), functions.end(), fault.function) != functions.end() &&
           (!caller || *caller == fault.caller) && matches(path, fault.path) &&
           (occurrence == 0 || occurrence == fault.occurrence);
}

Rule on(std::vector<Function> functions, const std::string& path,
        std::function<Changes(const Fault&)> expected, unsigned long occurrence)
{
    return {std::move(functions), std::nullopt, path, occurrence, std::move(expected)};
}

Rule on(std::vector<Function> functions, const std::string& path, const Change& expected,
        unsigned long occurrence)
{
    return on(
        std::move(functions), path, [expected](const Fault&) { return Changes{expected}; }, occurrence);
}

Rule of(Caller caller, Rule rule)
{
    rule.caller = caller;
    return rule;
}

std::string linkWarning(const std::string& path)
{
    return "plain Warning: could not stat " + path + ", reason :{errno}";
}

bool isFileOfD(const std::string& name)
{
    return name == "a.txt" || name == "b";
}

std::vector<Rule> walkOfD(const std::string& root, const std::function<Change(const Texts& seen)>& shortened)
{
    const auto traced = [shortened](const Texts& seen) {
        Change change = shortened(seen);
        change.moreLog.push_back(UNEXPECTED);
        return Changes{change};
    };
    return {
        on({Function::Open}, "d", [traced](const Fault&) { return traced({}); }),
        // the end of the directory and a failure to read on look alike
        on({Function::Getdents}, "d",
           [shortened](const Fault& fault) { return Changes{shortened(fault.before())}; }),
        on({Function::Close}, "d", Change{}),
        of(Caller::Component, on({Function::Lstat}, "d/*",
                                 [root](const Fault& fault) {
                                     return Changes{{.moreLog = {linkWarning(root + "/" + fault.path)}}};
                                 })),
    };
}

std::vector<Scenario> allScenarios(const std::string& root)
{
    std::vector<Scenario> all = startingScenarios(root);
    append(all, changingScenarios(root));
    append(all, commitScenarios(root));
    append(all, readingScenarios(root));
    append(all, walkingScenarios(root));
    return all;
}

} // namespace faults
