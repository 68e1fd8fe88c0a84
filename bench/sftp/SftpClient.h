#pragma once

#include "rig/PipedProcess.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zolbench
{

/// A client of sftp-server, which it starts: the SSH file transfer protocol, version 3. Requests go out when
/// an answer is taken or the buffer is full, and are answered in their order, so that any number can be under
/// way.
class SftpClient
{
public:
    /// Where OpenSSH's server is installed, if it is.
    static std::optional<std::filesystem::path> installedServer();

    explicit SftpClient(const std::filesystem::path& server);

    void askOpenDirectory(std::string_view path);
    void askReadDirectory(std::string_view handle);
    void askClose(std::string_view handle);
    void askStatus(std::string_view path);
    void askMakeDirectory(std::string_view path, std::uint32_t mode);
    void askSetMode(std::string_view path, std::uint32_t mode);
    void askRemove(std::string_view path);

    struct Entry
    {
        std::string_view name; ///< until the next answer
        std::uint64_t size = 0;
        std::uint32_t mode = 0;
        std::uint32_t changed = 0;
    };

    // The next answer, which must be one to such a request.
    void takeDone(); ///< throws unless it was done
    std::string takeHandle();
    bool takeEntries(std::vector<Entry>& entries); ///< false at the end of the directory
    std::optional<Entry> takeStatus();             ///< nothing if there is no such file

private:
    class Request;
    class Answer;

    Answer next();
    void sendAll();

    PipedProcess _server;
    std::uint32_t _lastId = 0;
    std::string _requests; // not sent yet
    std::vector<char> _received;
    std::size_t _begin = 0; // of what is not taken yet
    std::size_t _end = 0;
};

} // namespace zolbench
