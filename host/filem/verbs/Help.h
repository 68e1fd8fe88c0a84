#pragma once

#include "engine/MoModel.h"
#include "filem/Verb.h"

#include <iosfwd>
#include <string>
#include <string_view>

namespace zolhost::filem
{

/// All verbs, or one verb or class of objects. It needs no host. Throws CommandFailure for an unknown topic.
void printHelp(std::ostream& out, const std::string& topic);

/// What verbs of this kind stand under.
std::string_view headOf(VerbKind kind);

/// What kind of value an attribute has, in words.
std::string typeName(const MoAttribute& attribute);

} // namespace zolhost::filem
