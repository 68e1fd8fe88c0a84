#pragma once

#include <string>
#include <vector>

namespace zoltest
{

/// Keeps what the program asks the disk about with Poco::File::exists, until the end of this object. At most
/// one object lives at a time, in a process with one thread.
class RecordedExistenceTests
{
public:
    RecordedExistenceTests();
    RecordedExistenceTests(const RecordedExistenceTests&) = delete;
    RecordedExistenceTests& operator=(const RecordedExistenceTests&) = delete;
    ~RecordedExistenceTests();

    const std::vector<std::string>& paths() const { return _paths; }

    void note(const std::string& path) { _paths.push_back(path); }

private:
    std::vector<std::string> _paths;
};

} // namespace zoltest
