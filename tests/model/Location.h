#pragma once

#include <string>
#include <vector>

namespace zolmodel
{

/// An absolute place by its text, in directory form (the text ends in a slash) or in file form. Dots are
/// resolved in the text alone, all but those of the last name of the file form.
class Location
{
public:
    Location() = default; ///< no place at all
    explicit Location(const std::string& text);

    std::string text() const;
    /// Without the closing slash: what the system is asked for.
    std::string textWithoutSlash() const;
    const std::string& fileName() const { return _fileName; } ///< empty in directory form
    std::string extension() const;
    bool isEmpty() const { return !_absolute; }

    Location asFile() const;
    Location asDirectory() const;
    Location parent() const;
    /// A directory below the location.
    Location directoryBelow(const std::string& name) const;
    Location entry(const std::string& name) const; ///< in file form

    bool operator<(const Location& other) const { return text() < other.text(); }
    bool operator==(const Location& other) const { return text() == other.text(); }

private:
    void enter(const std::string& name);

    bool _absolute = false;
    std::vector<std::string> _directories;
    std::string _fileName;
};

} // namespace zolmodel
