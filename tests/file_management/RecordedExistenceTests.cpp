#include "RecordedExistenceTests.h"

#include <Poco/File.h>

namespace zoltest
{

namespace
{

RecordedExistenceTests* live = nullptr;

} // namespace

RecordedExistenceTests::RecordedExistenceTests()
{
    live = this;
}

RecordedExistenceTests::~RecordedExistenceTests()
{
    live = nullptr;
}

} // namespace zoltest

// The linker sends this program's calls of Poco::File::exists() const here.
extern "C" {

bool __real__ZNK4Poco4File6existsEv(const Poco::File* file);
bool __wrap__ZNK4Poco4File6existsEv(const Poco::File* file)
{
    if (zoltest::live != nullptr)
    {
        zoltest::live->note(file->path());
    }
    return __real__ZNK4Poco4File6existsEv(file);
}
}
