#include "staging/Children.h"

#include "engine/NameForms.h"

#include <dirent.h>
#include <memory>
#include <optional>
#include <sys/stat.h>
#include <vector>

namespace zolhost
{

namespace
{

/// Names of a directory in the disk's order, which is the component's too.
class Names
{
public:
    /// Without those that the plan removes.
    Names(const std::string& directory, const Plan& plan)
        : _directory(directory)
        , _plan(plan)
        , _stream(opendir(directory.c_str()))
    {}

    struct Name
    {
        std::string text;
        bool isLink;
    };

    /// The next one that is shown as this value and is of this kind. If there is none, the place stays.
    std::optional<Name> nextShownAs(std::string_view value, bool isDirectory)
    {
        if (_stream == nullptr)
        {
            return std::nullopt;
        }
        const long place = telldir(_stream.get());
        while (const dirent* const entry = readdir(_stream.get()))
        {
            const std::string_view name = &entry->d_name[0];
            const bool isShown =
                name != "." && name != ".." &&
                (isDirectory ? fileGroupValueOf(name) : fileInformationValueOf(name)) == value;
            if (isShown && isOfKind(*entry, isDirectory) && !isRemoved(_directory + std::string(name)))
            {
                return Name{std::string(name), isLink(*entry)};
            }
        }
        seekdir(_stream.get(), place);
        return std::nullopt;
    }

private:
    struct Close
    {
        void operator()(DIR* stream) const { closedir(stream); }
    };

    bool isRemoved(const std::string& path) const
    {
        return _plan.removedTrees().contains(path + '/') || _plan.removedTrees().contains(path) ||
               _plan.removedFiles().contains(path);
    }

    static std::optional<mode_t> statusOf(const std::string& path, bool follow)
    {
        struct stat status = {};
        const int result = follow ? stat(path.c_str(), &status) : lstat(path.c_str(), &status);
        return result == 0 ? std::optional(status.st_mode) : std::nullopt;
    }

    bool isLink(const dirent& entry) const
    {
        if (entry.d_type != DT_UNKNOWN)
        {
            return entry.d_type == DT_LNK;
        }
        const auto mode = statusOf(_directory + &entry.d_name[0], false);
        return mode && S_ISLNK(*mode);
    }

    bool isOfKind(const dirent& entry, bool isDirectory) const
    {
        if (entry.d_type == DT_DIR || entry.d_type == DT_REG)
        {
            return (entry.d_type == DT_DIR) == isDirectory;
        }
        const auto mode = statusOf(_directory + &entry.d_name[0], true);
        const bool leadsToDirectory = mode && S_ISDIR(*mode);
        return mode && leadsToDirectory == isDirectory;
    }

    std::string _directory;
    const Plan& _plan;
    std::unique_ptr<DIR, Close> _stream;
};

/// Directories that the transaction makes right below, in the component's order.
std::vector<std::string> madeBelow(const Plan& plan, const Place& place)
{
    std::vector<std::string> names;
    const std::string directory = place.path();
    const auto& made = plan.madeDirectories();
    for (auto path = made.lower_bound(directory); path != made.end() && path->starts_with(directory); ++path)
    {
        const std::string name = path->substr(directory.size(), path->size() - directory.size() - 1);
        if (!name.empty() && name.find('/') == std::string::npos)
        {
            names.push_back(name);
        }
    }
    return names;
}

} // namespace

void eachDirectory(const ManagedObjects& objects, const Plan& plan, const Place& place,
                   const std::function<bool(const Child& child)>& visit)
{
    Names names(place.path(), plan);
    const auto made = madeBelow(plan, place);
    auto nextMade = made.begin();
    const auto childOf = [&](const char* value) -> Child {
        // those that are made come after all that are there
        if (const auto name = nextMade == made.begin() ? names.nextShownAs(value, true) : std::nullopt)
        {
            return {place.directory(name->text), value, name->isLink, false, true};
        }
        // a component shows some of them as it shows files
        if (nextMade != made.end() &&
            (fileGroupValueOf(*nextMade) == value || fileInformationValueOf(*nextMade) == value))
        {
            return {place.directory(*nextMade++), value, false, true, false};
        }
        return {place.directory(directoryNameOf(value)), value, false, false, false};
    };
    objects.eachChild(place.dn(), "FileGroup", [&](const char* value) { return visit(childOf(value)); });
}

void eachFile(const ManagedObjects& objects, const Plan& plan, const Place& place,
              const std::function<bool(const Child& child)>& visit)
{
    Names names(place.path(), plan);
    objects.eachChild(place.dn(), "FileInformation", [&](const char* value) {
        const auto name = names.nextShownAs(value, false);
        return visit(
            {place.file(name ? name->text : value), value, name && name->isLink, false, name.has_value()});
    });
}

void eachChild(const ManagedObjects& objects, const Plan& plan, const Place& place,
               const std::function<bool(const Child& child)>& visit)
{
    bool goesOn = true;
    eachDirectory(objects, plan, place, [&](const Child& child) { return goesOn = visit(child); });
    if (goesOn && !place.isRoot())
    {
        eachFile(objects, plan, place, visit);
    }
}

} // namespace zolhost
