#pragma once

#include <Poco/Path.h>
#include <cstddef>
#include <iterator>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace ZolFileManagement
{

/// Paths in the order of PathCompare, each the one that literalPath makes of its text. Only the texts are
/// kept and compared: a set of the paths themselves would build two texts for every comparison.
class PathSet
{
public:
    using Texts = std::set<std::string, std::less<>>;

    class Iterator
    {
    public:
        using difference_type = std::ptrdiff_t;
        using value_type = Poco::Path;
        using reference = Poco::Path;
        using pointer = void;
        using iterator_category = std::input_iterator_tag;

        Iterator() = default;
        explicit Iterator(Texts::const_iterator text)
            : _text(text)
        {}

        Poco::Path operator*() const;
        Iterator& operator++()
        {
            ++_text;
            return *this;
        }
        // NOLINTNEXTLINE(cert-dcl21-cpp): what is returned is a copy of the caller's own
        Iterator operator++(int) { return Iterator(_text++); }
        bool operator==(const Iterator&) const = default;

    private:
        Texts::const_iterator _text;
    };

    bool empty() const { return _texts.empty(); }
    std::size_t size() const { return _texts.size(); }
    Iterator begin() const { return Iterator(_texts.begin()); }
    Iterator end() const { return Iterator(_texts.end()); }
    const Texts& texts() const { return _texts; }

    bool contains(const Poco::Path& path) const { return containsText(path.toString()); }
    bool containsText(std::string_view text) const { return _texts.contains(text); }
    void insert(const Poco::Path& path) { insertText(path.toString()); }
    void insertText(const std::string& text) { _texts.insert(text); }
    /// How many there were of it.
    std::size_t erase(const Poco::Path& path) { return eraseText(path.toString()); }
    std::size_t eraseText(const std::string& text) { return _texts.erase(text); }
    void clear() { _texts.clear(); }

    /// Those that lie directly in the directory, at the cost of a search for each child that has others below
    /// it: what lies deeper, or elsewhere, is passed over.
    PathSet childrenOf(const Poco::Path& directory) const { return childrenOfText(directory.toString()); }
    PathSet childrenOfText(std::string_view directory) const;

    /// The lowest one, which is no longer in the set then. There must be one.
    Poco::Path takeFirst();
    /// Those whose texts begin so, which are no longer in the set then. They stand next to each other.
    std::vector<std::string> takeStartingWith(std::string_view prefix);

private:
    Texts _texts;
};

} // namespace ZolFileManagement
