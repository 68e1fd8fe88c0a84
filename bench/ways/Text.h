#pragma once

#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>

namespace zolbench
{

/// A text that is handed out as the component's are.
using Text = std::unique_ptr<char, decltype(&std::free)>;

inline Text copyOf(const std::string& text)
{
    return {::strdup(text.c_str()), std::free};
}

} // namespace zolbench
