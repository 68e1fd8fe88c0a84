#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace zolhost::filem
{

/// The lines of all sessions of an operator, in a file that nobody else can read. Each line is in it as soon
/// as it is added; several sessions may add to it at a time.
class HistoryFile
{
public:
    /// So many lines are kept at least, and not many times more.
    static constexpr std::size_t LENGTH = 1000;

    /// In the operator's directory for such state; nothing if there is none.
    static std::optional<std::filesystem::path> defaultFile();

    /// Without a file, nothing is kept.
    explicit HistoryFile(std::optional<std::filesystem::path> file);

    /// The last lines of earlier sessions, the oldest first.
    std::vector<std::string> load() const;

    /// Why the line can't be kept; empty if all is well.
    std::string add(const std::string& line) const;

private:
    std::optional<std::filesystem::path> _file;
};

} // namespace zolhost::filem
