#include "filem/output/ProgressLine.h"

#include "filem/output/Interrupt.h"

#include <cstdio>
#include <utility>

namespace zolhost::filem
{

namespace
{

// what is done within this time isn't worth a line
constexpr std::chrono::milliseconds FIRST(500);
constexpr std::chrono::milliseconds EACH(100);

} // namespace

ProgressLine::ProgressLine(bool isShown, std::string what)
    : _isShown(isShown)
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
    _isOnScreen = true;
    const double seconds = std::chrono::duration<double>(now - _start).count();
    std::fprintf(stderr, "\r\x1b[K%s: %zu, %.0f/s, %.1f s", _what.c_str(), done,
                 static_cast<double>(done) / seconds, seconds);
    std::fflush(stderr);
}

void ProgressLine::clear()
{
    if (_isOnScreen)
    {
        std::fputs("\r\x1b[K", stderr);
        std::fflush(stderr);
        _isOnScreen = false;
    }
}

Progress ProgressLine::function()
{
    return [this](std::size_t done) { at(done); };
}

} // namespace zolhost::filem
