#pragma once

#include "sftp/SftpClient.h"
#include "ways/Way.h"

namespace zolbench
{

/// OpenSSH's server, as a client asks it that keeps many requests under way where one doesn't need the answer
/// of another.
class SftpWay : public Way
{
public:
    explicit SftpWay(const std::filesystem::path& server);

    bool worksInThisProcess() const override { return false; }

    void browse(const Task& task, Findings* findings) override;
    void count(const Task& task, Findings* findings) override;
    void files(const Task& task, Findings* findings) override;
    void create(const Task& task, Findings* findings) override;
    void remove(const Task& task, Findings* findings) override;
    void removeMatching(const Task& task, Findings* findings) override;
    void checkEmpty(const Task& task, Findings* findings) override;
    void exists(const Task& task, Findings* findings) override;
    void size(const Task& task, Findings* findings) override;

private:
    template<class Visit>
    void list(const std::string& path, std::size_t ahead, Visit visit);
    bool hasFiles(const std::string& path);

    SftpClient _client;
};

} // namespace zolbench
