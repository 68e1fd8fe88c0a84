#include "filem/HostSetup.h"

#include "engine/ConfigurationText.h"
#include "engine/PolicyModel.h"
#include "filem/output/PrintableText.h"

#include <cstdlib>
#include <filesystem>
#include <string>
#include <system_error>
#include <zol/common/LoggingWrapper.h>

namespace zolhost::filem
{

namespace
{

namespace fs = std::filesystem;

/// Absolute and without links, which the component would not follow where a path goes back by "..".
std::string rootDirectory(const fs::path& root)
{
    std::error_code error;
    const fs::path directory = fs::canonical(root, error);
    if (!error && !fs::is_directory(directory, error) && !error)
    {
        error = std::make_error_code(std::errc::not_a_directory);
    }
    if (error)
    {
        throw CommandFailure(ExitCode::NoHost,
                             "there is no root " + printable(root.string()) + ": " + error.message());
    }
    return directory.string();
}

/// Absolute, so that it is taken for a path whatever it begins with.
std::string configurationDocument(const fs::path& file)
{
    if (!fs::is_regular_file(file))
    {
        throw CommandFailure(ExitCode::NoHost, "there is no configuration " + printable(file.string()));
    }
    return fs::absolute(file).string();
}

std::string configurationOf(const CommandLine& line)
{
    if (line.root)
    {
        return configurationFor(rootDirectory(*line.root));
    }
    return line.config ? configurationDocument(*line.config) : configurationWithoutRoot();
}

} // namespace

Host::Setup setupOf(const CommandLine& line)
{
    Host::Setup setup;
    setup.library = line.library ? *line.library : Host::defaultLibrary();
    setup.configuration = configurationOf(line);
    try
    {
        if (line.policies)
        {
            setup.policies = readPolicies(*line.policies);
        }
    }
    catch (const BadModel& bad)
    {
        throw CommandFailure(ExitCode::Usage, "the policies " + printable(line.policies->string()) +
                                                  " can't be used: " + printable(bad.what()));
    }
    return setup;
}

void keepLogFromOperator()
{
    // NOLINTNEXTLINE(concurrency-mt-unsafe): there is one thread yet
    if (std::getenv("ZOL_LOG_LEVEL") == nullptr && std::getenv("ZOL_LOG_FILE") == nullptr)
    {
        Zol::LoggingWrapper::instance().set_level(0);
    }
}

} // namespace zolhost::filem
