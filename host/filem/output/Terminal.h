#pragma once

#include <cstddef>

namespace zolhost::filem::terminal
{

bool isTerminal(int descriptor);

struct Size
{
    std::size_t rows;
    std::size_t columns;
};
/// Of the terminal behind the descriptor; 24 by 80 if it doesn't say.
Size sizeOf(int descriptor);

/// Whether the other end of a pipe is closed.
bool isReaderGone(int descriptor);

/// Whether colours are welcome on it: it is a terminal, not a dumb one, and NO_COLOR is unset or empty.
bool takesColours(int descriptor);

} // namespace zolhost::filem::terminal
