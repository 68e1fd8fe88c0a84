#include "filem/shell/HistoryFile.h"

#include "filem/output/Quoting.h"

#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <fstream>
#include <iterator>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace zolhost::filem
{

namespace
{

namespace fs = std::filesystem;

std::string textOfError()
{
    return std::generic_category().message(errno);
}

/// Those that are missing, for the owner alone.
void makeDirectories(const fs::path& directory)
{
    struct stat status = {};
    if (directory.empty() || stat(directory.c_str(), &status) == 0)
    {
        return;
    }
    makeDirectories(directory.parent_path());
    mkdir(directory.c_str(), S_IRWXU);
}

class Descriptor
{
public:
    explicit Descriptor(const fs::path& file)
        : _number(open(file.c_str(), O_RDWR | O_APPEND | O_CREAT | O_CLOEXEC, S_IRUSR | S_IWUSR))
    {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor()
    {
        if (_number != -1)
        {
            close(_number);
        }
    }
    int number() const { return _number; }

private:
    int _number;
};

std::vector<std::string> linesOf(const fs::path& file)
{
    std::vector<std::string> lines;
    std::ifstream text(file);
    for (std::string line; std::getline(text, line);)
    {
        if (isUtf8(line) && !line.empty())
        {
            lines.push_back(std::move(line));
        }
    }
    return lines;
}

/// In place, so that a shell that is killed meanwhile leaves no second file.
void replaceContent(const fs::path& file, const std::vector<std::string>& lines)
{
    std::string text;
    for (const auto& line : lines)
    {
        text += line + '\n';
    }
    std::ofstream(file, std::ios::in | std::ios::out) << text;
    std::error_code error;
    fs::resize_file(file, text.size(), error);
}

} // namespace

std::optional<fs::path> HistoryFile::defaultFile()
{
    // NOLINTBEGIN(concurrency-mt-unsafe): nobody sets them
    const char* const state = std::getenv("XDG_STATE_HOME");
    const char* const home = std::getenv("HOME");
    // NOLINTEND(concurrency-mt-unsafe)
    if (state != nullptr && *state == '/')
    {
        return fs::path(state) / "filem" / "history";
    }
    if (home != nullptr && *home == '/')
    {
        return fs::path(home) / ".local" / "state" / "filem" / "history";
    }
    return std::nullopt;
}

HistoryFile::HistoryFile(std::optional<fs::path> file)
    : _file(std::move(file))
{}

std::vector<std::string> HistoryFile::load() const
{
    if (!_file)
    {
        return {};
    }
    auto lines = linesOf(*_file);
    const bool isToBeCut = lines.size() > 2 * LENGTH;
    if (lines.size() > LENGTH)
    {
        lines.erase(lines.begin(), lines.end() - static_cast<std::ptrdiff_t>(LENGTH));
    }
    if (isToBeCut)
    {
        replaceContent(*_file, lines);
    }
    return lines;
}

std::string HistoryFile::add(const std::string& line) const
{
    if (!_file)
    {
        return {};
    }
    makeDirectories(_file->parent_path());
    const Descriptor file(*_file);
    const std::string text = line + '\n';
    const bool isKept = file.number() != -1 && fchmod(file.number(), S_IRUSR | S_IWUSR) == 0 &&
                        write(file.number(), text.data(), text.size()) == static_cast<ssize_t>(text.size());
    return isKept ? std::string() : textOfError();
}

} // namespace zolhost::filem
