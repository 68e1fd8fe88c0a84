#include "filem/shell/GatedOutput.h"

#include "filem/output/Interrupt.h"

#include <cerrno>
#include <unistd.h>

namespace zolhost::filem
{

void OutputGate::open()
{
    const std::scoped_lock lock(_mutex);
    _isOpen = true;
}

void OutputGate::close()
{
    const std::scoped_lock lock(_mutex);
    _isOpen = false;
}

void OutputGate::write(int descriptor, std::string_view text)
{
    const std::scoped_lock lock(_mutex);
    while (_isOpen && !text.empty())
    {
        const ssize_t written = ::write(descriptor, text.data(), text.size());
        if (written >= 0)
        {
            text.remove_prefix(static_cast<std::size_t>(written));
        }
        else if (errno != EINTR)
        {
            // nobody reads it
            interrupt::request();
            return;
        }
    }
}

GatedBuffer::int_type GatedBuffer::overflow(int_type character)
{
    if (!traits_type::eq_int_type(character, traits_type::eof()))
    {
        const char single = traits_type::to_char_type(character);
        xsputn(&single, 1);
    }
    return traits_type::not_eof(character);
}

std::streamsize GatedBuffer::xsputn(const char* text, std::streamsize size)
{
    _line.append(text, static_cast<std::size_t>(size));
    if (std::string_view(text, static_cast<std::size_t>(size)).find('\n') != std::string_view::npos)
    {
        sync();
    }
    return size;
}

int GatedBuffer::sync()
{
    _gate.write(_descriptor, _line);
    _line.clear();
    return 0;
}

} // namespace zolhost::filem
