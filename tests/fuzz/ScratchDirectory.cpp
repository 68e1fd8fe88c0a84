#include "ScratchDirectory.h"

#include "support/MemoryFolder.h"

#include <filesystem>
#include <stdexcept>
#include <stdlib.h>

namespace zolfuzz
{

namespace
{

namespace fs = std::filesystem;

class Scratch
{
public:
    Scratch()
        : path(zoltest::memoryFolder() + "/zol-fuzz-XXXXXX")
    {
        if (mkdtemp(path.data()) == nullptr)
        {
            throw std::runtime_error("no folder " + path);
        }
    }
    Scratch(const Scratch&) = delete;
    Scratch& operator=(const Scratch&) = delete;
    ~Scratch()
    {
        std::error_code ignored;
        fs::remove_all(path, ignored);
    }

    std::string path;
};

} // namespace

const std::string& scratchDirectory()
{
    static const Scratch scratch;
    return scratch.path;
}

} // namespace zolfuzz
