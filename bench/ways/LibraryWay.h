#pragma once

#include "ways/LibraryTransaction.h"
#include "ways/Way.h"

#include <optional>

namespace zolbench
{

/// Through the tables that a host gets, in one transaction.
class LibraryWay : public Way
{
public:
    explicit LibraryWay(const Library& library);

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
    static constexpr unsigned long handle = 1;

    const Library& _library;
    std::optional<LibraryTransaction> _intended;
};

} // namespace zolbench
