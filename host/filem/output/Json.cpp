#include "filem/output/Json.h"

#include "filem/output/Quoting.h"

namespace zolhost::filem
{

namespace
{

Json jsonOfSingle(const SingleValue& value);

struct ToJson
{
    template<class Simple>
    Json operator()(const Simple& value) const
    {
        return value;
    }
    Json operator()(const std::string& text) const { return zolhost::filem::jsonOf(text); }
    Json operator()(const StructValue& members) const
    {
        Json object = Json::object();
        for (const auto& [name, value] : members)
        {
            if (value.values.size() == 1 && std::holds_alternative<std::string>(value.values.front()))
            {
                setText(object, name, std::get<std::string>(value.values.front()));
            }
            else
            {
                object[name] = zolhost::filem::jsonOf(value, value.values.size() != 1);
            }
        }
        return object;
    }
};

Json jsonOfSingle(const SingleValue& value)
{
    return std::visit(ToJson{}, value);
}

} // namespace

void setText(Json& object, const std::string& key, std::string_view text)
{
    if (isUtf8(text))
    {
        object[key] = text;
        return;
    }
    object[key] = nullptr;
    object[key + "Hex"] = hex(text);
}

Json jsonOf(const std::string& text)
{
    return isUtf8(text) ? Json(text) : Json({{"hex", hex(text)}});
}

Json jsonOf(const AttributeValue& value, bool isList)
{
    if (!isList)
    {
        return value.values.empty() ? Json() : jsonOfSingle(value.values.front());
    }
    Json list = Json::array();
    for (const auto& single : value.values)
    {
        list.push_back(jsonOfSingle(single));
    }
    return list;
}

} // namespace zolhost::filem
