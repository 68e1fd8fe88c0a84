#include "model/Operation.h"

#include "model/Printable.h"

#include <sstream>

namespace zolmodel
{

namespace
{

std::string quoted(const std::string& text)
{
    return '"' + printable(text) + '"';
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

const char* nameOf(Does does)
{
    switch (does)
    {
    case Does::Join:
        return "join";
    case Does::Prepare:
        return "prepare";
    case Does::Commit:
        return "commit";
    case Does::Abort:
        return "abort";
    case Does::Finish:
        return "finish";
    case Does::SetAttribute:
        return "setMoAttribute";
    case Does::GetAttribute:
        return "getMoAttribute";
    case Does::GetAttributes:
        return "getMoAttributes";
    case Does::NewIterator:
        return "newMoIterator";
    case Does::Next:
        return "nextMo";
    case Does::Create:
        return "createMo";
    case Does::Delete:
        return "deleteMo";
    case Does::Action:
        return "action";
    case Does::FinalizeIterator:
        return "finalizeMoIterator";
    case Does::Exists:
        return "existsMo";
    case Does::Count:
        return "countMoChildren";
    case Does::PutFile:
        return "file";
    case Does::PutDirectory:
        return "directory";
    case Does::PutLink:
        return "link";
    case Does::PutPipe:
        return "pipe";
    case Does::RemoveEntry:
        return "remove";
    case Does::ChangeMode:
        return "mode";
    }
    return "?";
}

bool isByHost(const Operation& operation)
{
    return operation.does < Does::PutFile;
}

std::string toText(const Operation& o)
{
    const std::string by = isByHost(o) ? "tx" + std::to_string(o.transaction) : "disk:";
    const std::string did = by + " " + nameOf(o.does);
    const std::string iterator = "iterator" + std::to_string(o.iterator);
    switch (o.does)
    {
    case Does::Join:
        return did + (o.number == 0 ? "" : ", which the host answers with " + std::to_string(o.number)) +
               (o.odd ? ", without a thread context" : "");
    case Does::Next:
    case Does::FinalizeIterator:
        return nameOf(o.does) + (" " + iterator);
    case Does::GetAttributes:
        return did + " " + quoted(o.dn) + " " + (o.odd ? "null" : quoted(o.names));
    case Does::NewIterator:
        return did + " " + quoted(o.dn) + " " + quoted(o.name) + " as " + iterator;
    case Does::Create:
        return did + " below " + quoted(o.dn) + " " + quoted(o.name) + " " + quoted(o.text) + " = " +
               quoted(o.value) + (o.odd ? ", with attributes" : "");
    case Does::Action:
        return did + " " + quoted(o.dn) + " " + quoted(o.name) + " " + quoted(o.text) + shapeText(o.number) +
               (o.odd ? ", null result" : "");
    case Does::SetAttribute:
    case Does::GetAttribute:
    case Does::Count:
        return did + " " + quoted(o.dn) + " " + quoted(o.name);
    case Does::Delete:
    case Does::Exists:
        return did + " " + quoted(o.dn);
    case Does::PutFile:
        return did + " " + quoted(o.name) + " of " + std::to_string(o.number) + " bytes";
    case Does::PutDirectory:
    case Does::ChangeMode:
        return did + " " + quoted(o.name) + " " + octal(o.number);
    case Does::PutLink:
        return did + " " + quoted(o.name) + " to " + quoted(o.text);
    case Does::PutPipe:
    case Does::RemoveEntry:
        return did + " " + quoted(o.name);
    default:
        return did;
    }
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
