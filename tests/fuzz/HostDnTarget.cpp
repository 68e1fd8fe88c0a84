#include "Expect.h"
#include "Input.h"
#include "Rules.h"
#include "engine/DistinguishedName.h"
#include "engine/NameForms.h"
#include "engine/Refusal.h"

#include <algorithm>
#include <optional>
#include <sys/stat.h>
#include <vector>

using namespace zolfuzz;
using zolhost::DistinguishedName;

namespace
{

/// In a root that has nothing in it, so that whatever is there is elsewhere.
constexpr const char* ROOT_DIRECTORY = "/nowhere/at/all";

struct ClassRule
{
    std::string_view name;
    std::vector<std::string_view> children;
    std::string_view onlyValue;
};

const ClassRule CLASSES[] = {
    {"FileM", {"FileMConfigData", "FileGroup"}, "1"},
    {"FileMConfigData", {}, "1"},
    {"FileGroup", {"FileGroup", "FileInformation"}, ""},
    {"FileInformation", {}, ""},
};

const ClassRule& classNamed(std::string_view name)
{
    return *std::find_if(std::begin(CLASSES), std::end(CLASSES),
                         [&](const ClassRule& rule) { return rule.name == name; });
}

bool isGoodValue(const ClassRule& rule, std::string_view value)
{
    return !value.empty() && value.find_first_of(std::string_view("/\0", 2)) == std::string_view::npos &&
           value != "." && value != ".." && (rule.onlyValue.empty() || value == rule.onlyValue);
}

/// The whole name that an operator means, if it is one.
std::optional<std::string> wholeName(std::string text)
{
    const std::string root(DistinguishedName::ROOT);
    if (text == root)
    {
        return root;
    }
    if (text.starts_with(root + ","))
    {
        text.erase(0, root.size() + 1);
    }
    std::string whole = root;
    std::string_view className = "FileM";
    for (std::size_t begin = 0; begin <= text.size();)
    {
        const auto end = std::min(text.find(',', begin), text.size());
        const std::string part = text.substr(begin, end - begin);
        const auto equals = part.find('=');
        if (equals == std::string::npos)
        {
            return std::nullopt;
        }
        const auto& children = classNamed(className).children;
        const auto child = std::find(children.begin(), children.end(), part.substr(0, equals));
        if (child == children.end() || !isGoodValue(classNamed(*child), part.substr(equals + 1)))
        {
            return std::nullopt;
        }
        className = *child;
        whole += "," + part;
        begin = end + 1;
    }
    return whole;
}

bool isThere(const std::string& path)
{
    struct stat status = {};
    return stat(path.c_str(), &status) == 0;
}

std::string resolved(const std::string& path)
{
    const std::string resolved = rules::location(path, true).onDisk();
    return resolved == "/" ? "" : resolved;
}

bool endsInDots(const std::string& path)
{
    return path.ends_with("/.") || path.ends_with("/..");
}

void expectDeletion(const std::string& dn)
{
    const std::string own = resolved(rules::locationOfDn(dn, ROOT_DIRECTORY).onDisk());
    std::string expected = own;
    bool mayDiffer = false; // the host asks for a directory by its shortest path
    for (const auto& candidate : rules::candidatesOfDn(dn))
    {
        const std::string path = rules::locationOfDn(candidate, ROOT_DIRECTORY).onDisk();
        mayDiffer = mayDiffer || endsInDots(path);
        if (isThere(path))
        {
            expected = resolved(path);
            break;
        }
    }
    const std::string found = zolhost::pathToDelete(dn, ROOT_DIRECTORY);
    expect(found != own || expected == own, "is taken for what it isn't", dn);
    expectSame(found, mayDiffer ? found : expected, "what goes", dn);
}

} // namespace

// A DN as an operator types it: whether the host takes it, and what the component would make of it.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string text = Input(data, size).rest();
    std::optional<std::string> parsed;
    try
    {
        parsed = DistinguishedName::parse(text).text();
    }
    catch (const zolhost::Refusal&)
    {}
    const auto whole = wholeName(text);
    expectSame(parsed.value_or("refused"), whole.value_or("refused"), "the name", text);
    if (parsed)
    {
        const std::string path = rules::locationOfDn(*parsed, ROOT_DIRECTORY).onDisk();
        expect(path == ROOT_DIRECTORY || path.starts_with(std::string(ROOT_DIRECTORY) + "/"),
               "leads out of the tree", text);
        expectSame(zolhost::pathOfDn(*parsed, ROOT_DIRECTORY), path, "the path", text);
        expectDeletion(*parsed);
    }
    return 0;
}
