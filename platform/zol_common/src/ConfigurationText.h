#pragma once

#include <string>

namespace Zol
{

/// The text of a configuration document and what messages call it.
struct ConfigurationText
{
    std::string text;
    std::string name;
};

/// `config` itself if it begins with '<' after white space, otherwise the content of the file of that path.
/// Throws ZolException if the file can't be read.
ConfigurationText readConfigurationText(const std::string& config);

} // namespace Zol
