#pragma once

#include <Poco/DOM/Element.h>
#include <Poco/DOM/NodeList.h>
#include <functional>
#include <string>
#include <vector>
#include <zol/common/ZolConfiguration.h>
#include <zol/common/ZolException.h>

namespace zoltest
{

inline Poco::XML::Element* elementAt(const Poco::XML::NodeList& list, unsigned long index)
{
    return static_cast<Poco::XML::Element*>(list.item(index));
}

/// The texts of all elements of that name.
inline std::vector<std::string> textsOf(Zol::ZolConfiguration& configuration, const std::string& tag)
{
    Poco::XML::NodeList* const list = configuration.getElementsByTagName(tag);
    std::vector<std::string> texts;
    for (unsigned long i = 0; i < list->length(); ++i)
    {
        texts.push_back(configuration.get_text(elementAt(*list, i)));
    }
    list->release();
    return texts;
}

/// What the ZolException says that the function throws; "nothing thrown" if there is none.
inline std::string failureOf(const std::function<void()>& function)
{
    try
    {
        function();
    }
    catch (const Zol::ZolException& failure)
    {
        return failure.what();
    }
    return "nothing thrown";
}

inline std::string failureOfLoading(Zol::ZolConfiguration& configuration, const std::string& config)
{
    return failureOf([&] { configuration.load(config); });
}

} // namespace zoltest
