#pragma once

#include "strict/StrictChanges.h"
#include "ways/Way.h"

#include <map>
#include <memory>
#include <mutex>

namespace zolbench
{

/// Written by hand over POSIX for one purpose at a time, with every result of the library: what is asked at
/// the moment of a call, what waits for a commit in which order, which entries count, records and names.
class StrictWay : public Way
{
public:
    explicit StrictWay(std::string root);

    void browse(const Task& task, Findings* findings) override;
    void count(const Task& task, Findings* findings) override;
    void files(const Task& task, Findings* findings) override;
    void create(const Task& task, Findings* findings) override;
    void remove(const Task& task, Findings* findings) override;
    void removeMatching(const Task& task, Findings* findings) override;
    void checkEmpty(const Task& task, Findings* findings) override;
    void exists(const Task& task, Findings* findings) override;
    void size(const Task& task, Findings* findings) override;
    void openAndClose(const Task& task, Findings* findings) override;
    void intend(const Task& task) override;
    void apply(const Task& task, Findings* findings) override;

private:
    std::string _root;
    StrictChanges _changes;
    std::mutex _mutex; // protects the transactions
    std::map<unsigned long, std::unique_ptr<StrictChanges>> _transactions;
};

} // namespace zolbench
