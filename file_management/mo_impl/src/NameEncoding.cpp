#include "NameEncoding.h"

#include "FileMTransaction.h"

#include <boost/algorithm/string/classification.hpp>
#include <boost/algorithm/string/replace.hpp>
#include <boost/algorithm/string/trim.hpp>
#include <boost/assign/list_of.hpp>

namespace ZolFileManagement
{

namespace
{

using Replacements = std::map<std::string, std::string>;

// stands in for a plus sign while the other characters are replaced
const std::string plusPlaceholder("\xD6\xD6\xD6\xF1");

} // namespace

void replaceAll(std::string& text, const Replacements& table)
{
    for (const auto& [key, value] : table)
    {
        boost::algorithm::replace_all(text, key, value);
    }
}

void stripQuotes(std::string& text)
{
    const auto size = text.size();
    if (size < 2 || text.front() != '"' || text.back() != '"')
    {
        return;
    }
    const bool isClosingEscaped = text[size - 2] == '\\' && (size < 4 || text[size - 3] != '\\');
    if (isClosingEscaped)
    {
        return;
    }
    text.erase(0, 1);
    text.pop_back();
}

void FileMTransaction::reAlignWith3gppRdn(std::string& value)
{
    if (value.find('\\') == std::string::npos)
    {
        return;
    }
    const Replacements escapes = boost::assign::map_list_of("\\2B", "+")("\\2b", "+");
    replaceAll(value, escapes);
}

void FileMTransaction::alignNameWithQuestionMark(std::string& name)
{
    if (name.find_first_of("\"#*+,;<=>\\") == std::string::npos)
    {
        return;
    }
    // the sequences go first, so that each becomes one pair of question marks and leaves no letter behind
    const Replacements sequences = boost::assign::map_list_of("\\n", "??")("\\r", "??");
    const Replacements characters = boost::assign::map_list_of("\"", "??")("#", "??")("*", "??")("+", "??")(
        ",", "??")(";", "??")("<", "??")("=", "??")(">", "??")("\\", "??");
    replaceAll(name, sequences);
    replaceAll(name, characters);
}

void FileMTransaction::alignFileGroupWith3gppRdn(std::string& name)
{
    stripQuotes(name);
    boost::algorithm::trim_if(name, boost::algorithm::is_space());
    if (name.find_first_of("\"#*+,;<=>\\\xD6") == std::string::npos)
    {
        return;
    }
    boost::algorithm::replace_all(name, "+", plusPlaceholder);
    alignNameWithQuestionMark(name);
    boost::algorithm::replace_all(name, plusPlaceholder, "\\2B");
}

bool FileMTransaction::illegalNaming(const char* name, std::string& error)
{
    const std::string text = name;
    if (const auto illegal = text.find_first_of("/|"); illegal != std::string::npos)
    {
        error = std::string("FileGroup contains illegal character(") + text[illegal] + ")";
        return true;
    }
    if (text.find_first_not_of('.') == std::string::npos)
    {
        error = "FileGroup name not allowed (" + text + ")";
        return true;
    }
    return false;
}

} // namespace ZolFileManagement
