#include "model/Runner.h"

#include "model/Generator.h"
#include "model/Shrinker.h"
#include "model/Vocabulary.h"

#include <cstring>
#include <ctime>
#include <fstream>
#include <list>
#include <sstream>
#include <stdexcept>
#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

/// There under the leak sanitizer alone.
extern "C" int __lsan_do_recoverable_leak_check() __attribute__((weak));

namespace zolmodel
{

namespace
{

const unsigned OPERATIONS_OF_A_ROUND = 300;
const unsigned SECONDS_OF_A_ROUND = 60;
const mode_t FILE_CREATION_MASK = 022;
const int AGREES = 0;
const int DIFFERS = 1;

std::string content(const std::string& path)
{
    std::ostringstream text;
    text << std::ifstream(path, std::ios::binary).rdbuf();
    return text.str();
}

} // namespace

/// What the process that compares has reached, seen from the one that waits for it.
struct Runner::Progress
{
    unsigned long round;
    unsigned long operations;
    unsigned long skipped;
    Tally tally;
};

Runner::Runner(Settings settings)
    : _settings(std::move(settings))
    , _subject(_settings.library)
    , _command("printf '%s' '" + surroundingsOfComparison().commandOutput + "'")
{
    umask(FILE_CREATION_MASK);
    setenv("TZ", "UTC-2", 1);
    tzset();
    const Surroundings surroundings = surroundingsOfComparison();
    std::list<std::string> dns;
    for (const auto& policy : surroundings.policies)
    {
        dns.push_back(policy.dn);
        _policies.setReferences(policy.dn, "fileGroup", policy.groups);
    }
    dns.push_back(ROOT_DN + ",FileGroupPolicy=can't be read");
    _policies.setChildren(ROOT_DN, "FileGroupPolicy", dns);
    _subject.start(_sandbox.internalRoot());
}

Result Runner::run()
{
    void* shared = mmap(nullptr, sizeof(Progress), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    if (shared == MAP_FAILED)
    {
        throw std::runtime_error("mmap");
    }
    auto& progress = *static_cast<Progress*>(shared);
    Result result;
    auto difference = apart([&] { return runRounds(progress); });
    result.operations = progress.operations;
    result.skipped = progress.skipped;
    result.tally = progress.tally;
    if (difference)
    {
        const unsigned long round = progress.round;
        auto again = apart([&] { return record(round); });
        Finding finding = {recorded(), again.value_or("it doesn't show again: " + *difference)};
        if (again)
        {
            finding.operations =
                shrunk(finding.operations, [&](const auto& part) { return replay(part).has_value(); });
            finding.difference = replay(finding.operations).value_or(finding.difference);
        }
        result.finding = finding;
    }
    munmap(shared, sizeof(Progress));
    return result;
}

std::optional<std::string> Runner::apart(const std::function<std::optional<std::string>()>& body) const
{
    const pid_t child = fork();
    if (child < 0)
    {
        throw std::runtime_error("fork");
    }
    if (child == 0)
    {
        std::optional<std::string> difference;
        try
        {
            difference = body();
        }
        catch (const std::exception& exception)
        {
            difference = std::string("the comparison itself fails: ") + exception.what();
        }
        if (difference)
        {
            std::ofstream(_sandbox.report(), std::ios::binary) << *difference;
        }
        _exit(difference ? DIFFERS : AGREES);
    }
    int status = 0;
    waitpid(child, &status, 0);
    if (WIFEXITED(status) && WEXITSTATUS(status) == AGREES)
    {
        return std::nullopt;
    }
    if (WIFEXITED(status) && WEXITSTATUS(status) == DIFFERS)
    {
        return content(_sandbox.report());
    }
    return WIFSIGNALED(status) ? std::string("the process ended by: ") + strsignal(WTERMSIG(status))
                               : "the process ended with code " + std::to_string(WEXITSTATUS(status));
}

std::optional<std::string> Runner::runRounds(Progress& progress)
{
    unsigned long long lastIteratorId = 0;
    for (; progress.operations < _settings.operations; ++progress.round)
    {
        alarm(SECONDS_OF_A_ROUND);
        Comparison comparison(_subject, _sandbox, progress.round + 1, lastIteratorId, _settings.mistake);
        comparison.tallyIn(&progress.tally);
        Generator generator(_settings.seed, progress.round, comparison.model(), _sandbox);
        for (unsigned i = 0; i < OPERATIONS_OF_A_ROUND && progress.operations < _settings.operations; ++i)
        {
            ++progress.operations;
            if (auto difference = comparison.step(generator.next()))
            {
                return difference;
            }
        }
        if (auto difference = comparison.finish())
        {
            return difference;
        }
        progress.skipped += comparison.skipped();
        lastIteratorId = comparison.model().world().lastIteratorId;
    }
    alarm(0);
    const bool leaks = __lsan_do_recoverable_leak_check != nullptr && __lsan_do_recoverable_leak_check() != 0;
    return leaks ? std::optional<std::string>("the component leaks, see standard error") : std::nullopt;
}

// As runRounds, and each operation is written down before it is done.
std::optional<std::string> Runner::record(unsigned long round)
{
    alarm(SECONDS_OF_A_ROUND);
    std::ofstream stream(recordPath(), std::ios::binary | std::ios::trunc);
    Comparison comparison(_subject, _sandbox, 1, 0, _settings.mistake);
    Generator generator(_settings.seed, round, comparison.model(), _sandbox);
    for (unsigned i = 0; i < OPERATIONS_OF_A_ROUND; ++i)
    {
        const Operation operation = generator.next();
        const std::string bytes = packed(operation);
        stream << bytes.size() << ' ' << bytes << std::flush;
        if (auto difference = comparison.step(operation))
        {
            return difference;
        }
    }
    return comparison.finish();
}

std::optional<std::string> Runner::replay(const std::vector<Operation>& operations)
{
    return apart([&]() -> std::optional<std::string> {
        alarm(SECONDS_OF_A_ROUND);
        Comparison comparison(_subject, _sandbox, 1, 0, _settings.mistake);
        for (const auto& operation : operations)
        {
            if (auto difference = comparison.step(operation))
            {
                return difference;
            }
        }
        return comparison.finish();
    });
}

std::vector<Operation> Runner::recorded() const
{
    std::istringstream stream(content(recordPath()));
    unlink(recordPath().c_str());
    std::vector<Operation> operations;
    for (std::size_t size = 0; stream >> size;)
    {
        stream.get();
        std::string bytes(size, '\0');
        stream.read(bytes.data(), static_cast<std::streamsize>(size));
        operations.push_back(unpacked(bytes));
    }
    return operations;
}

} // namespace zolmodel
