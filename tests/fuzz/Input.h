#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace zolfuzz
{

/// The bytes of one execution, taken from the front. What is missing counts as zero.
class Input
{
public:
    Input(const std::uint8_t* data, std::size_t size)
        : _rest(reinterpret_cast<const char*>(data), size)
    {}

    bool isEmpty() const { return _rest.empty(); }

    unsigned int byte()
    {
        if (_rest.empty())
        {
            return 0;
        }
        const auto value = static_cast<unsigned char>(_rest.front());
        _rest.remove_prefix(1);
        return value;
    }

    unsigned int below(unsigned int limit) { return byte() % limit; }
    bool chance(unsigned int ofSixteen) { return byte() % 16 < ofSixteen; }

    /// As far as a line feed, which goes too.
    std::string line()
    {
        const auto end = _rest.find('\n');
        std::string text(_rest.substr(0, end));
        _rest.remove_prefix(end == std::string_view::npos ? _rest.size() : end + 1);
        return text;
    }

    std::string rest()
    {
        std::string text(_rest);
        _rest = {};
        return text;
    }

private:
    std::string_view _rest;
};

} // namespace zolfuzz
