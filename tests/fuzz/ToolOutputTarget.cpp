#include "Expect.h"
#include "FileManagementZoleaWrapper.h"
#include "Input.h"
#include "ScratchDirectory.h"

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <unistd.h>

using namespace zolfuzz;
using ZolFileManagementCommon::FileManagementZoleaWrapper;

namespace
{

/// What the next command prints if no shell is to be asked, which takes a thousand times as long.
const std::string* output = nullptr;

bool isSpace(char character)
{
    return character == ' ' || (character >= '\t' && character <= '\r');
}

std::string expectedOf(const std::string& printed)
{
    std::string result;
    std::size_t inPiece = 0;
    bool isCut = false;
    for (const char character : printed)
    {
        isCut = isCut || character == '\0';
        result += isCut ? "" : std::string(1, character);
        if (++inPiece == 1023 || character == '\n')
        {
            inPiece = 0;
            isCut = false;
        }
    }
    while (!result.empty() && isSpace(result.back()))
    {
        result.pop_back();
    }
    const auto begin = std::find_if_not(result.begin(), result.end(), isSpace);
    return {begin, result.end()};
}

/// A `zolea` that prints the files that its arguments name, as they lie in the folder of the process.
void installTool()
{
    namespace fs = std::filesystem;
    const std::string& folder = scratchDirectory();
    fs::create_symlink("/bin/cat", folder + "/zolea");
    std::ofstream(folder + "/file-system");
    const char* const path = std::getenv("PATH");
    setenv("PATH", (folder + ":" + (path == nullptr ? "" : path)).c_str(), 1);
    if (chdir(folder.c_str()) != 0)
    {
        std::abort();
    }
}

/// The clock of the fuzzing program interrupts a read, which ends the output of a command.
void letClockInterruptNothing()
{
    struct sigaction action = {};
    sigaction(SIGALRM, nullptr, &action);
    action.sa_flags |= SA_RESTART;
    sigaction(SIGALRM, &action, nullptr);
}

void expectRoot(const std::string& printed, const char* how)
{
    std::string root = "as before";
    expect(FileManagementZoleaWrapper().readConfiguration(root), "gave no answer", printed);
    expectSame(root, expectedOf(printed), how, printed.substr(0, 3000));
}

} // namespace

extern "C" std::FILE* __real_popen(const char* command, const char* mode);
extern "C" int __real_pclose(std::FILE* stream);

extern "C" std::FILE* __wrap_popen(const char* command, const char* mode)
{
    if (output == nullptr)
    {
        return __real_popen(command, mode);
    }
    expectSame(command, "zolea file-system internalRoot", "the command", "");
    static char nothing = 0;
    return output->empty() ? fmemopen(&nothing, 1, "w+")
                           : fmemopen(const_cast<char*>(output->data()), output->size(), "r");
}

extern "C" int __wrap_pclose(std::FILE* stream)
{
    return output == nullptr ? __real_pclose(stream) : std::fclose(stream);
}

// What the external command prints. The first byte says whether a shell runs one and how often the rest
// comes.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const bool isInstalled = (installTool(), letClockInterruptNothing(), true);
    Input input(data, size);
    const unsigned int mode = input.byte();
    const bool isRun = isInstalled && mode >= 254;
    unsigned int times = mode % 16 == 0 ? 1000 : mode % 16 < 4 ? mode % 16 * 100 : 1;
    std::string printed;
    for (const std::string text = input.rest(); times > 0 && printed.size() < 3'000'000; --times)
    {
        printed += text;
    }
    if (isRun)
    {
        std::ofstream(scratchDirectory() + "/internalRoot", std::ios::binary) << printed;
        expectRoot(printed, "the answer by a shell");
        return 0;
    }
    output = &printed;
    expectRoot(printed, "the answer");
    output = nullptr;
    return 0;
}
