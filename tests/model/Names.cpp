#include "model/Names.h"

namespace zolmodel
{

namespace
{

bool isQuotedWhole(const std::string& text)
{
    const std::size_t size = text.size();
    if (size < 2 || text.front() != '"' || text.back() != '"')
    {
        return false;
    }
    const bool closingIsEscaped = text[size - 2] == '\\';
    const bool escapeIsEscaped = size >= 4 && text[size - 3] == '\\';
    return !closingIsEscaped || escapeIsEscaped;
}

std::string trimmed(const std::string& text)
{
    const char* const white = " \t\n\v\f\r";
    const std::size_t first = text.find_first_not_of(white);
    return first == std::string::npos ? "" : text.substr(first, text.find_last_not_of(white) - first + 1);
}

// One pass does what two passes over tables do, as question marks are in neither of them.
std::string withQuestionMarks(const std::string& text, const std::string& forPlus)
{
    const std::string illegal = "\"#*,;<=>";
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i)
    {
        if (text[i] == '\\')
        {
            const bool isSequence = i + 1 < text.size() && (text[i + 1] == 'n' || text[i + 1] == 'r');
            i += isSequence ? 1 : 0;
            result += "?\?";
        }
        else if (text[i] == '+')
        {
            result += forPlus;
        }
        else if (illegal.find(text[i]) != std::string::npos)
        {
            result += "?\?";
        }
        else
        {
            result += text[i];
        }
    }
    return result;
}

} // namespace

std::string replacedAll(const std::string& text, const std::string& what, const std::string& by)
{
    std::string result;
    std::size_t from = 0;
    for (std::size_t at = text.find(what); at != std::string::npos; at = text.find(what, from))
    {
        result += text.substr(from, at - from) + by;
        from = at + what.size();
    }
    return result + text.substr(from);
}

std::string groupValue(const std::string& nameOnDisk)
{
    const std::string bare =
        isQuotedWhole(nameOnDisk) ? nameOnDisk.substr(1, nameOnDisk.size() - 2) : nameOnDisk;
    // These four bytes stand in for a plus on the way, so a name that holds them comes out with a plus.
    const std::string placeholder = "\xD6\xD6\xD6\xF1";
    return replacedAll(withQuestionMarks(trimmed(bare), placeholder), placeholder, "\\2B");
}

std::string fileValue(const std::string& nameOnDisk)
{
    return withQuestionMarks(nameOnDisk, "?\?");
}

std::string groupName(const std::string& value)
{
    return replacedAll(replacedAll(value, "\\2B", "+"), "\\2b", "+");
}

std::optional<std::string> namingRefusal(const std::string& name)
{
    const std::size_t illegal = name.find_first_of("/|");
    if (illegal != std::string::npos)
    {
        return std::string("FileGroup contains illegal character(") + name[illegal] + ")";
    }
    if (name.find_first_not_of('.') == std::string::npos)
    {
        return "FileGroup name not allowed (" + name + ")";
    }
    return std::nullopt;
}

const std::vector<std::string>& questionMarkCandidates()
{
    static const std::vector<std::string> candidates = {"\\n", "\\r", ",", "=",  "+",  "<",
                                                        ">",   "#",   ";", "\\", "\"", "*"};
    return candidates;
}

bool isMarker(const std::string& nameOnDisk)
{
    return nameOnDisk == ".filemnohousekeeping" || nameOnDisk == ".filemnodirectorycreate" ||
           nameOnDisk == ".filemnodirectorydelete";
}

} // namespace zolmodel
