#pragma once

#include "filem/output/Json.h"
#include "staging/Children.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace zolhost::filem
{

class Session;

/// The place is an object, or will be. Throws Refusal.
void requireObject(Session& session, const Place& place);

/// Whether the directory on disk holds more entries than so many.
bool hasMoreEntriesThan(std::size_t many, const std::string& directory);

/// Visits the children of a directory in the order of their values, directories first. If there are very many
/// they come as the component gives them, files first, so that the first comes at once and memory doesn't
/// grow with their number. Can be interrupted.
void eachChildInOrder(Session& session, const Place& place,
                      const std::function<void(const Child& child)>& visit);

/// Whether a walk goes down to it: a directory, no link, and one whose name the component takes for nothing
/// else. Warns of the last.
bool isGoneDownTo(const Session& session, const Child& child);

/// Its directories that are gone down to.
std::vector<Place> directoriesIn(Session& session, const Place& place);

/// Why an entry of a directory on disk isn't listed as an object.
struct Unlisted
{
    std::string name;
    std::string why;
};
/// Sorted: markers, links, what the transaction removes, files in the root and the like.
std::vector<Unlisted> unlistedIn(Session& session, const Place& place);

/// "+" new, "@" link, "m" holds markers, "p" reserved by a policy.
std::string marksOf(Session& session, const Child& child);

/// The local time of the last change of an entry, as components give it; empty if it isn't there.
std::string changeTimeOf(const std::string& path);
/// In bytes; nothing for what isn't a file.
std::optional<std::uint64_t> sizeOnDisk(const std::string& path);

/// How the name of an object is shown; a directory with a slash behind it.
std::string shownName(const Place& place, const std::string& value);
/// The same with the bytes on disk and the name as a shell takes it, where they differ.
std::string shownInAllForms(const Place& place, const std::string& value);

/// Keys: class, dn, value, name, nameHex, quoted.
Json jsonOf(const Place& place, const std::string& value);

} // namespace zolhost::filem
