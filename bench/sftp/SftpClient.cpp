#include "sftp/SftpClient.h"

#include <cstring>
#include <stdexcept>
#include <sys/stat.h>

namespace zolbench
{

namespace
{

enum Type : std::uint8_t
{
    init = 1,
    version = 2,
    close = 4,
    setStatus = 9,
    openDirectory = 11,
    readDirectory = 12,
    remove = 13,
    makeDirectory = 14,
    status = 17,
    answerStatus = 101,
    answerHandle = 102,
    answerName = 104,
    answerAttributes = 105,
};

enum Code : std::uint32_t
{
    ok = 0,
    endOfFile = 1,
    noSuchFile = 2,
};

enum Attribute : std::uint32_t
{
    size = 1,
    userAndGroup = 2,
    permissions = 4,
    times = 8,
};

constexpr std::uint32_t protocolVersion = 3;
constexpr std::size_t receiveBuffer = 512 * 1024; // longer than any answer

void appendNumber(std::string& packet, std::uint32_t number)
{
    for (int shift = 24; shift >= 0; shift -= 8)
    {
        packet += static_cast<char>(number >> shift);
    }
}

} // namespace

/// Appends a request to the buffer, with its length before it when it is complete.
class SftpClient::Request
{
public:
    Request(std::string& packets, Type type, std::uint32_t id)
        : _packets(packets)
        , _begin(packets.size())
    {
        appendNumber(_packets, 0);
        _packets += static_cast<char>(type);
        appendNumber(_packets, id);
    }
    Request(const Request&) = delete;
    Request& operator=(const Request&) = delete;
    ~Request()
    {
        std::string length;
        appendNumber(length, static_cast<std::uint32_t>(_packets.size() - _begin - 4));
        _packets.replace(_begin, 4, length);
    }

    Request& text(std::string_view text)
    {
        appendNumber(_packets, static_cast<std::uint32_t>(text.size()));
        _packets += text;
        return *this;
    }
    Request& mode(std::uint32_t mode)
    {
        appendNumber(_packets, permissions);
        appendNumber(_packets, mode);
        return *this;
    }

private:
    std::string& _packets;
    std::size_t _begin;
};

/// Reads an answer from its start.
class SftpClient::Answer
{
public:
    explicit Answer(std::string_view packet)
        : _rest(packet)
    {
        _type = static_cast<std::uint8_t>(_rest.front());
        _rest.remove_prefix(1);
        number(); // the request's
    }

    std::uint8_t type() const { return _type; }
    void requireType(Type type) const
    {
        if (_type != type)
        {
            throw std::runtime_error("sftp-server answers with type " + std::to_string(_type));
        }
    }

    std::uint32_t number()
    {
        std::uint32_t number = 0;
        for (const char byte : take(4))
        {
            number = number << 8 | static_cast<unsigned char>(byte);
        }
        return number;
    }
    std::string_view text() { return take(number()); }
    void readAttributes(Entry& entry)
    {
        const std::uint32_t given = number();
        if ((given & size) != 0)
        {
            const std::uint64_t high = number();
            entry.size = high << 32 | number();
        }
        if ((given & userAndGroup) != 0)
        {
            take(8);
        }
        if ((given & permissions) != 0)
        {
            entry.mode = number();
        }
        if ((given & times) != 0)
        {
            number();
            entry.changed = number();
        }
    }

private:
    std::string_view take(std::size_t length)
    {
        const std::string_view taken = _rest.substr(0, length);
        _rest.remove_prefix(length);
        return taken;
    }

    std::string_view _rest;
    std::uint8_t _type;
};

std::optional<std::filesystem::path> SftpClient::installedServer()
{
    for (const char* place : {"/usr/lib/openssh/sftp-server", "/usr/libexec/openssh/sftp-server",
                              "/usr/lib/ssh/sftp-server", "/usr/libexec/sftp-server"})
    {
        if (std::filesystem::exists(place))
        {
            return place;
        }
    }
    return {};
}

SftpClient::SftpClient(const std::filesystem::path& server)
    : _server({server.string()})
    , _received(receiveBuffer)
{
    Request(_requests, init, protocolVersion); // the version stands where others have their number
    next().requireType(version);
}

void SftpClient::askOpenDirectory(std::string_view path)
{
    Request(_requests, openDirectory, ++_lastId).text(path);
}

void SftpClient::askReadDirectory(std::string_view handle)
{
    Request(_requests, readDirectory, ++_lastId).text(handle);
}

void SftpClient::askClose(std::string_view handle)
{
    Request(_requests, close, ++_lastId).text(handle);
}

void SftpClient::askStatus(std::string_view path)
{
    Request(_requests, status, ++_lastId).text(path);
}

void SftpClient::askMakeDirectory(std::string_view path, std::uint32_t mode)
{
    Request(_requests, makeDirectory, ++_lastId).text(path).mode(mode);
}

void SftpClient::askSetMode(std::string_view path, std::uint32_t mode)
{
    Request(_requests, setStatus, ++_lastId).text(path).mode(mode);
}

void SftpClient::askRemove(std::string_view path)
{
    Request(_requests, remove, ++_lastId).text(path);
}

void SftpClient::takeDone()
{
    Answer answer = next();
    answer.requireType(answerStatus);
    if (const std::uint32_t code = answer.number(); code != ok)
    {
        throw std::runtime_error("sftp-server answers with code " + std::to_string(code));
    }
}

std::string SftpClient::takeHandle()
{
    Answer answer = next();
    answer.requireType(answerHandle);
    return std::string(answer.text());
}

bool SftpClient::takeEntries(std::vector<Entry>& entries)
{
    entries.clear();
    Answer answer = next();
    if (answer.type() == answerStatus && answer.number() == endOfFile)
    {
        return false;
    }
    answer.requireType(answerName);
    for (std::uint32_t count = answer.number(); count > 0; --count)
    {
        Entry& entry = entries.emplace_back();
        entry.name = answer.text();
        answer.text(); // a line for readers
        answer.readAttributes(entry);
    }
    return true;
}

std::optional<SftpClient::Entry> SftpClient::takeStatus()
{
    Answer answer = next();
    if (answer.type() == answerStatus && answer.number() == noSuchFile)
    {
        return {};
    }
    answer.requireType(answerAttributes);
    Entry entry;
    answer.readAttributes(entry);
    return entry;
}

SftpClient::Answer SftpClient::next()
{
    const auto receive = [this](std::size_t size) {
        while (_end - _begin < size)
        {
            const std::size_t got = _server.read(_received.data() + _end, _received.size() - _end);
            if (got == 0)
            {
                throw std::runtime_error("sftp-server has ended");
            }
            _end += got;
        }
    };
    sendAll();
    constexpr std::size_t lengthSize = 4;
    if (_received.size() - _end < _received.size() / 2)
    {
        std::memmove(_received.data(), _received.data() + _begin, _end - _begin);
        _end -= _begin;
        _begin = 0;
    }
    receive(lengthSize);
    std::size_t length = 0;
    for (std::size_t i = 0; i < lengthSize; ++i)
    {
        length = length << 8 | static_cast<unsigned char>(_received[_begin + i]);
    }
    receive(lengthSize + length);
    const std::string_view packet(_received.data() + _begin + lengthSize, length);
    _begin += lengthSize + length;
    return Answer(packet);
}

void SftpClient::sendAll()
{
    _server.write(_requests.data(), _requests.size());
    _requests.clear();
}

} // namespace zolbench
