#include "Expect.h"
#include "Input.h"
#include "ScratchDirectory.h"
#include "engine/ConfigurationText.h"
#include "engine/Host.h"
#include "filem/Script.h"
#include "support/OrdinaryUser.h"

#include <algorithm>
#include <cstdlib>
#include <dlfcn.h>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

using namespace zolfuzz;
using namespace zolhost::filem;

namespace
{

namespace fs = std::filesystem;

/// What lies in a folder, with the kinds and the sizes of files.
std::string listing(const fs::path& folder)
{
    std::vector<std::string> lines;
    for (const auto& entry : fs::recursive_directory_iterator(folder))
    {
        const auto status = entry.symlink_status();
        lines.push_back(entry.path().string() + (fs::is_directory(status) ? "/" : "") +
                        (fs::is_regular_file(status) ? " " + std::to_string(entry.file_size()) : ""));
    }
    std::sort(lines.begin(), lines.end());
    std::string text;
    for (const auto& line : lines)
    {
        text += line + "\n";
    }
    return text;
}

/// What a bug may remove is nobody's then, and so is what root alone can enter: the library is read before.
void dropRights()
{
    if (dlopen(zolhost::Host::defaultLibrary().c_str(), RTLD_NOW | RTLD_NODELETE) == nullptr)
    {
        std::abort();
    }
    zoltest::becomeOrdinaryUser();
}

/// A host on a tree of its own, with something of others beside it that it must leave alone.
class Stage
{
public:
    Stage()
    {
        dropRights();
        write(outside() / "precious", "x");
        renew();
        zolhost::Host::Setup setup;
        setup.library = zolhost::Host::defaultLibrary();
        setup.configuration = zolhost::configurationFor(root());
        _host = std::make_unique<zolhost::Host>(setup);
    }

    void renew() const
    {
        fs::remove_all(root());
        write(fs::path(root()) / "logs" / "a.log", "one");
        write(fs::path(root()) / "logs" / "b c.txt", "two");
        write(fs::path(root()) / "logs" / "old" / "a;b", "");
        write(fs::path(root()) / "kept" / ".filemnodirectorydelete", "");
        fs::create_directories(fs::path(root()) / "empty");
        fs::create_directory_symlink(outside(), fs::path(root()) / "link");
        fs::create_symlink(outside() / "precious", fs::path(root()) / "logs" / "precious");
    }

    zolhost::Host& host() const { return *_host; }
    static std::string root() { return scratchDirectory() + "/root"; }
    static fs::path outside() { return scratchDirectory() + "/outside"; }

private:
    static void write(const fs::path& file, const std::string& text)
    {
        fs::create_directories(file.parent_path());
        std::ofstream(file) << text;
    }

    std::unique_ptr<zolhost::Host> _host;
};

bool isLegible(const std::string& text)
{
    return std::none_of(text.begin(), text.end(),
                        [](unsigned char c) { return (c < 0x20 && c != '\n') || c == 0x7f; });
}

} // namespace

// A script of filem on a tree that is made for it.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const Stage stage;
    static const std::string before = listing(Stage::root());
    static const std::string others = listing(Stage::outside());

    Input input(data, size);
    const bool keepsGoing = input.below(2) == 1;
    const std::string script = input.rest();
    std::istringstream text(script);
    std::ostringstream out;
    std::ostringstream err;
    {
        Session session(stage.host(), Stage::root(), {.mode = Session::Mode::Script}, out, err);
        try
        {
            runScript(session, text, keepsGoing);
        }
        catch (const CommandFailure& failure)
        {
            expect(failure.code() != ExitCode::Done, "fails with success", script);
            expect(isLegible(failure.what()), "fails with control characters", script);
        }
    }
    expect(isLegible(err.str()), "warns with control characters", script);
    expectSame(listing(Stage::outside()), others, "what is of others", script);
    const std::string after = fs::exists(Stage::root()) ? listing(Stage::root()) : "";
    // a verb may be quoted, but not left out
    const bool mayCommit =
        script.find_first_of("'\"\\") != std::string::npos || script.find("commit") != std::string::npos;
    expect(mayCommit || after == before, "changed the disk without a commit", script);
    if (after != before)
    {
        stage.renew();
    }
    return 0;
}
