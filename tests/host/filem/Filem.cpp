#include "Filem.h"

#include <array>
#include <ctime>
#include <sys/stat.h>

Filem::Outcome Filem::run(const Texts& arguments, zoltest::ProcessSurroundings surroundings)
{
    Texts words = {FILEM_PROGRAM};
    words.insert(words.end(), arguments.begin(), arguments.end());
    surroundings.environment.emplace_back("ZOL_LOG_LEVEL", "0");
    return zoltest::runProcess(words, surroundings);
}

Filem::Outcome Filem::filem(const Texts& command) const
{
    Texts words = {"--root", tree.path()};
    words.insert(words.end(), command.begin(), command.end());
    return run(words);
}

Filem::Outcome Filem::script(const std::string& lines) const
{
    zoltest::ProcessSurroundings surroundings;
    surroundings.input = lines;
    return run({"--root", tree.path()}, surroundings);
}

std::string Filem::timeOf(const std::string& name) const
{
    struct stat status = {};
    EXPECT_EQ(stat(tree.path(name).c_str(), &status), 0) << name;
    std::tm time = {};
    localtime_r(&status.st_ctime, &time);
    std::array<char, 32> text{};
    std::strftime(text.data(), text.size(), "%Y-%m-%dT%H:%M:%S", &time);
    return text.data();
}

std::string Filem::failure(const std::string& command, const std::string& dn, const std::string& why)
{
    return "filem: can't " + command + ", on " + dn + ": " + why + "\n";
}

Filem::Outcome Filem::missing(const std::string& command, const std::string& dnBelowRoot)
{
    return {4, "", failure(command, root + "," + dnBelowRoot, "no such object")};
}
