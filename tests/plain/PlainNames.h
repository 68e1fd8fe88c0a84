#pragma once

#include <string>

namespace zoltest
{

// The conversions of names as their rules state them, by tables and with no look at the name beforehand.

void plainReAlign(std::string& value);
void plainAlignFile(std::string& name);
void plainAlignGroup(std::string& name);

} // namespace zoltest
