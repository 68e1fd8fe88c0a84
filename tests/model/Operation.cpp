#include "model/Operation.h"

#include <cctype>
#include <sstream>

namespace zolmodel
{

namespace
{

std::string quoted(const std::string& text)
{
    std::ostringstream result;
    result << '"';
    for (const char character : text)
    {
        const auto byte = static_cast<unsigned char>(character);
        if (byte < 0x20 || byte >= 0x7F)
        {
            result << "\\x" << std::hex << (byte >> 4U) << (byte & 15U) << std::dec;
        }
        else
        {
            result << (character == '"' || character == '\\' ? "\\" : "") << character;
        }
    }
    return result.str() + '"';
}

std::string quoted(const std::vector<std::string>& texts)
{
    std::string result;
    for (const auto& text : texts)
    {
        result += (result.empty() ? "" : ", ") + quoted(text);
    }
    return "[" + result + "]";
}

std::string octal(int mode)
{
    std::ostringstream result;
    result << '0' << std::oct << mode;
    return result.str();
}

std::string shapeText(int shape)
{
    switch (static_cast<Parameters>(shape))
    {
    case Parameters::Right:
        return "";
    case Parameters::None:
        return ", no parameters";
    case Parameters::TwoValues:
        return ", two values";
    case Parameters::WrongType:
        return ", wrong type";
    case Parameters::Surplus:
        return ", a second parameter";
    case Parameters::NoList:
        return ", null parameters";
    }
    return ", ?";
}

void put(std::ostream& stream, const std::string& text)
{
    stream << text.size() << ' ' << text;
}

std::string takeText(std::istream& stream)
{
    std::size_t size = 0;
    stream >> size;
    stream.get();
    std::string text(size, '\0');
    stream.read(text.data(), static_cast<std::streamsize>(size));
    return text;
}

} // namespace

bool isByHost(const Operation& operation)
{
    return operation.does < Does::PutFile;
}

std::string toText(const Operation& o)
{
    const std::string tx = "tx" + std::to_string(o.transaction);
    const std::string iterator = "iterator" + std::to_string(o.iterator);
    switch (o.does)
    {
    case Does::Join:
        return tx + " join" + (o.number == 0 ? "" : ", the host answers " + std::to_string(o.number)) +
               (o.odd ? ", no thread context" : "");
    case Does::Prepare:
        return tx + " prepare";
    case Does::Commit:
        return tx + " commit";
    case Does::Abort:
        return tx + " abort";
    case Does::Finish:
        return tx + " finish";
    case Does::SetAttribute:
        return tx + " setMoAttribute " + quoted(o.dn) + " " + quoted(o.name);
    case Does::GetAttribute:
        return tx + " getMoAttribute " + quoted(o.dn) + " " + quoted(o.name);
    case Does::GetAttributes:
        return tx + " getMoAttributes " + quoted(o.dn) + " " + (o.odd ? "null" : quoted(o.names));
    case Does::NewIterator:
        return tx + " newMoIterator " + quoted(o.dn) + " " + quoted(o.name) + " as " + iterator;
    case Does::Next:
        return "nextMo " + iterator;
    case Does::Create:
        return tx + " createMo below " + quoted(o.dn) + " " + quoted(o.name) + " " + quoted(o.text) + " = " +
               quoted(o.value) + (o.odd ? ", with attributes" : "");
    case Does::Delete:
        return tx + " deleteMo " + quoted(o.dn);
    case Does::Action:
        return tx + " action " + quoted(o.dn) + " " + quoted(o.name) + " " + quoted(o.text) +
               shapeText(o.number) + (o.odd ? ", null result" : "");
    case Does::FinalizeIterator:
        return "finalizeMoIterator " + iterator;
    case Does::Exists:
        return tx + " existsMo " + quoted(o.dn);
    case Does::Count:
        return tx + " countMoChildren " + quoted(o.dn) + " " + quoted(o.name);
    case Does::PutFile:
        return "disk: file " + quoted(o.name) + " of " + std::to_string(o.number) + " bytes";
    case Does::PutDirectory:
        return "disk: directory " + quoted(o.name) + " with mode " + octal(o.number);
    case Does::PutLink:
        return "disk: link " + quoted(o.name) + " to " + quoted(o.text);
    case Does::PutPipe:
        return "disk: pipe " + quoted(o.name);
    case Does::RemoveEntry:
        return "disk: remove " + quoted(o.name);
    case Does::ChangeMode:
        return "disk: mode " + octal(o.number) + " for " + quoted(o.name);
    }
    return "?";
}

std::string packed(const Operation& o)
{
    std::ostringstream stream;
    stream << static_cast<int>(o.does) << ' ' << o.transaction << ' ' << o.iterator << ' ' << o.number << ' '
           << o.odd << ' ' << o.names.size() << ' ';
    for (const auto* text : {&o.dn, &o.name, &o.text, &o.value})
    {
        put(stream, *text);
    }
    for (const auto& name : o.names)
    {
        put(stream, name);
    }
    return stream.str();
}

Operation unpacked(const std::string& bytes)
{
    std::istringstream stream(bytes);
    Operation o;
    int does = 0;
    std::size_t names = 0;
    stream >> does >> o.transaction >> o.iterator >> o.number >> o.odd >> names;
    o.does = static_cast<Does>(does);
    for (auto* text : {&o.dn, &o.name, &o.text, &o.value})
    {
        *text = takeText(stream);
    }
    while (o.names.size() < names)
    {
        o.names.push_back(takeText(stream));
    }
    return o;
}

} // namespace zolmodel
