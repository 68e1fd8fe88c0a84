#include "filem/output/ReceiptJson.h"

#include "filem/output/Sizes.h"

namespace zolhost::filem
{

namespace
{

using Item = Receipt::Item;

} // namespace

std::string textOf(Receipt::Item::Result result)
{
    switch (result)
    {
    case Item::Result::Done:
        return "done";
    case Item::Result::WasSo:
        return "was so";
    case Item::Result::Remains:
        break;
    }
    return "REMAINS";
}

Json jsonOf(const Receipt::Item& item)
{
    Json object;
    object["operation"] = item.kind == Preview::Item::Kind::MakeDirectory ? "make directory"
                          : item.kind == Preview::Item::Kind::RemoveFile  ? "remove file"
                                                                          : "remove tree";
    setText(object, "path", item.path);
    object["result"] = item.result == Item::Result::Remains ? "remains" : textOf(item.result);
    setText(object, "why", item.why);
    if (item.kind == Preview::Item::Kind::MakeDirectory)
    {
        object["mode"] = modeText(item.mode);
    }
    return object;
}

} // namespace zolhost::filem
