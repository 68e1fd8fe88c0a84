#include "filem/output/ProgressLine.h"

#include "filem/output/Interrupt.h"
#include "filem/output/Pager.h"

#include <array>
#include <cstdio>
#include <ostream>
#include <utility>

namespace zolhost::filem
{

namespace
{

// what is done within this time isn't worth a line
constexpr std::chrono::milliseconds FIRST(500);
constexpr std::chrono::milliseconds EACH(100);

} // namespace

ProgressLine::ProgressLine(bool isShown, std::ostream& terminal, std::string what)
    : _isShown(isShown)
    , _terminal(terminal)
    , _what(std::move(what))
    , _start(Clock::now())
    , _next(_start + FIRST)
{}

ProgressLine::~ProgressLine()
{
    clear();
}

void ProgressLine::at(std::size_t done)
{
    if (_canStop)
    {
        interrupt::check();
    }
    if (!_isShown)
    {
        return;
    }
    const auto now = Clock::now();
    if (now < _next)
    {
        return;
    }
    _next = now + EACH;
    if (Pager::isAtWork())
    {
        return;
    }
    _isOnScreen = true;
    const double seconds = std::chrono::duration<double>(now - _start).count();
    std::array<char, 80> figures{};
    std::snprintf(figures.data(), figures.size(), "%zu, %.0f/s, %.1f s", done,
                  static_cast<double>(done) / seconds, seconds);
    _terminal << "\r\x1b[K" + _what + ": " + figures.data() << std::flush;
}

void ProgressLine::clear()
{
    if (_isOnScreen)
    {
        _terminal << "\r\x1b[K" << std::flush;
        _isOnScreen = false;
    }
}

Progress ProgressLine::function()
{
    return [this](std::size_t done) { at(done); };
}

} // namespace zolhost::filem
