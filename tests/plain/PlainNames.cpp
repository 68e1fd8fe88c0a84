#include "plain/PlainNames.h"

#include "NameEncoding.h"

#include <boost/algorithm/string/classification.hpp>
#include <boost/algorithm/string/replace.hpp>
#include <boost/algorithm/string/trim.hpp>

namespace zoltest
{

using ZolFileManagement::replaceAll;

void plainReAlign(std::string& value)
{
    replaceAll(value, {{"\\2B", "+"}, {"\\2b", "+"}});
}

void plainAlignFile(std::string& name)
{
    replaceAll(name, {{"\\n", "?\?"}, {"\\r", "?\?"}});
    replaceAll(name, {{"\"", "?\?"},
                      {"#", "?\?"},
                      {"*", "?\?"},
                      {"+", "?\?"},
                      {",", "?\?"},
                      {";", "?\?"},
                      {"<", "?\?"},
                      {"=", "?\?"},
                      {">", "?\?"},
                      {"\\", "?\?"}});
}

void plainAlignGroup(std::string& name)
{
    const std::string placeholder = "\xD6\xD6\xD6\xF1";
    ZolFileManagement::stripQuotes(name);
    boost::algorithm::trim_if(name, boost::algorithm::is_space());
    boost::algorithm::replace_all(name, "+", placeholder);
    plainAlignFile(name);
    boost::algorithm::replace_all(name, placeholder, "\\2B");
}

} // namespace zoltest
