#pragma once

#include "filem/shell/Candidates.h"

#include <cstddef>
#include <string>
#include <vector>

namespace zolhost::filem
{

/// What the word at the cursor of a line can become.
struct Completion
{
    std::size_t start = 0; ///< where the word begins
    std::string text;      ///< what stands from there to the cursor: as far as it is clear, with its quotes
    std::vector<Candidate> candidates;
    bool isCut = false; ///< there are more candidates, or may be
};

/// For the text of a line up to the cursor. It sees the tree as the transaction of the session does. Throws
/// Interrupted.
Completion complete(const std::string& textToCursor, Session& session);

} // namespace zolhost::filem
