#include "filem/AuditLog.h"

#include "filem/ExitCode.h"
#include "filem/output/Json.h"
#include "filem/output/PrintableText.h"
#include "filem/output/ReceiptJson.h"
#include "filem/output/RequestText.h"

#include <array>
#include <cstring>
#include <ctime>
#include <fcntl.h>
#include <pwd.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace zolhost::filem
{

namespace
{

std::string now()
{
    const std::time_t time = std::time(nullptr);
    std::tm parts = {};
    gmtime_r(&time, &parts);
    std::array<char, 32> text{};
    std::strftime(text.data(), text.size(), "%Y-%m-%dT%H:%M:%SZ", &parts);
    return text.data();
}

std::string userName()
{
    std::array<char, 4096> buffer{};
    passwd entry = {};
    passwd* found = nullptr;
    getpwuid_r(getuid(), &entry, buffer.data(), buffer.size(), &found);
    return found == nullptr ? std::to_string(getuid()) : found->pw_name;
}

[[noreturn]] void fail(const std::string& what)
{
    throw CommandFailure(ExitCode::Failed,
                         "the audit file " + what + ": " + std::generic_category().message(errno));
}

Json entryOf(const std::vector<Request>& requests, const std::string& rootDirectory)
{
    Json entry;
    entry["time"] = now();
    entry["user"] = userName();
    entry["uid"] = getuid();
    setText(entry, "root", rootDirectory);
    entry["staged"] = Json::array();
    for (const auto& request : requests)
    {
        entry["staged"].push_back(jsonOf(request));
    }
    return entry;
}

void write(int file, const Json& entry)
{
    const std::string line = entry.dump() + "\n";
    // one call, so that lines of several processes don't mix
    if (::write(file, line.data(), line.size()) != static_cast<ssize_t>(line.size()))
    {
        fail("can't be written to its end");
    }
}

} // namespace

AuditLog::AuditLog(const std::optional<std::filesystem::path>& file, std::string rootDirectory)
    : _rootDirectory(std::move(rootDirectory))
{
    if (file)
    {
        _file = open(file->c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0640);
        if (_file == -1)
        {
            fail(printable(file->string()) + " can't be opened");
        }
    }
}

AuditLog::~AuditLog()
{
    if (_file != -1)
    {
        close(_file);
    }
}

void AuditLog::append(const std::vector<Request>& requests, const StagedTransaction::Outcome& outcome,
                      const std::string& comment) const
{
    if (_file == -1)
    {
        return;
    }
    Json entry = entryOf(requests, _rootDirectory);
    entry["outcome"] = !outcome.failure.empty()       ? "failed"
                       : outcome.receipt.isComplete() ? "committed"
                                                      : "committed, something remains";
    entry["items"] = Json::array();
    for (const auto& item : outcome.receipt.items)
    {
        entry["items"].push_back(jsonOf(item));
    }
    setText(entry, "comment", comment);
    write(_file, entry);
}

void AuditLog::append(const std::vector<Request>& requests, const std::string& outcome) const
{
    if (_file != -1)
    {
        Json entry = entryOf(requests, _rootDirectory);
        entry["outcome"] = outcome;
        write(_file, entry);
    }
}

} // namespace zolhost::filem
