#include <cstdint>
#include <cstdlib>

// The log is no concern of these programs, unless somebody looks for what went wrong.
extern "C" int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/)
{
    setenv("ZOL_LOG_LEVEL", "0", 0);
    return 0;
}
