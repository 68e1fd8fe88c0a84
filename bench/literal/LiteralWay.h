#pragma once

#include "plain/PlainTransaction.h"
#include "ways/Way.h"

namespace zolbench
{

/// The rules step by step on POCO, as the tests hold them against the component: each question asked anew,
/// each path built anew.
class LiteralWay : public Way
{
public:
    explicit LiteralWay(const std::string& root);

    void browse(const Task& task, Findings* findings) override;
    void count(const Task& task, Findings* findings) override;
    void files(const Task& task, Findings* findings) override;
    void create(const Task& task, Findings* findings) override;
    void remove(const Task& task, Findings* findings) override;
    void removeMatching(const Task& task, Findings* findings) override;
    void checkEmpty(const Task& task, Findings* findings) override;
    void exists(const Task& task, Findings* findings) override;
    void size(const Task& task, Findings* findings) override;
    void intend(const Task& task) override;
    void apply(const Task& task, Findings* findings) override;

private:
    Poco::Path pathOf(const std::string& dn) const { return zoltest::plainPathOf(_root, dn); }

    std::string _root;
    zoltest::PlainChanges _noChanges;
    zoltest::PlainTransaction _transaction;
};

} // namespace zolbench
