#pragma once

#include <string>
#include <zol/spi/ZolMoAttributeValue_3.h>

namespace zoltest
{

/// A value in one line, so that a test can compare it as a whole: the type and the values in brackets, e.g.
/// `string["a"]`, `bool[true]`, `int[5]`, `uint[5]`, `reference["dn", "dn"]`, `struct[{a: uint[1], b:
/// bool[true]}]` or, without values, `reference[]`; "none" for a null pointer.
std::string toText(const ZolMoAttributeValueContainer_3* container);

} // namespace zoltest
