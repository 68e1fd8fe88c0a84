#pragma once

#include "filem/ExitCode.h"
#include "staging/Preview.h"

#include <string>

namespace zolhost::filem
{

class Session;

/// Done if nothing would change, Failed if something would, and Remains if not all of it could be done.
ExitCode codeOf(const Preview& preview);

/// What a commit would do, item by item with what goes along, and the totals; as JSON one object a line.
void print(const Session& session, const Preview& preview, bool isJson);

/// "2 directories to be made, 14 files (12K) and 1 directory to be removed".
std::string totalsText(const Preview& preview);

} // namespace zolhost::filem
