#pragma once

#include "support/TemporaryTree.h"

#include <string>
#include <vector>

namespace zoltest
{

/// A shell script in the place of the external command `zolea`: it comes first in this process's PATH until
/// the end of the object's life.
class FakeZolea
{
public:
    explicit FakeZolea(const std::string& script);
    FakeZolea(const FakeZolea&) = delete;
    FakeZolea& operator=(const FakeZolea&) = delete;
    ~FakeZolea();

    void setScript(const std::string& script);

    /// The arguments of each run so far.
    std::vector<std::string> runs() const;

private:
    TemporaryTree _folder;
    std::string _previousPath;
};

} // namespace zoltest
