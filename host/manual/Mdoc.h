#pragma once

#include <iosfwd>
#include <string>
#include <string_view>

namespace zolhost::manual
{

/// Writes a manual page in the language of mdoc(7).
class Mdoc
{
public:
    /// `title` is what the page is called, in the section of the manual of that number.
    Mdoc(std::ostream& out, std::string_view title, int section);

    void section(std::string_view name) { macro("Sh " + std::string(name)); }
    void subsection(std::string_view name) { macro("Ss " + argument(name)); }
    void paragraph() { macro("Pp"); }

    /// A line that mdoc obeys. What is put into it from elsewhere must have gone through `argument`.
    void macro(std::string_view line);
    /// Prose. Each sentence begins a line, as mdoc wants it, and no line is too long.
    void text(std::string_view prose);
    /// To another page of this manual. Not by the macro for it, which is found fault with where that page
    /// isn't installed.
    void reference(std::string_view page, int section, std::string_view punctuation = {});
    /// Lines that are shown as they are.
    void verbatim(std::string_view lines);

    /// A text as one argument of a macro, whatever it holds.
    static std::string argument(std::string_view text);

private:
    std::ostream& _out;
};

} // namespace zolhost::manual
