#include "model/Vocabulary.h"

#include "model/Names.h"

namespace zolmodel
{

namespace
{

const std::size_t WHOLE_NAMES = 11;
const std::size_t COMPOSED_NAMES = 5;
const std::size_t NAMES_OF_ONE_VALUE = 9; // of which only the search can tell which is meant

const std::vector<std::string>& wholeNames()
{
    static const std::vector<std::string> names = {
        "a",
        "b",
        "B",
        "1",
        "a.txt",
        "a.tar.gz",
        "README",
        ".profile",
        "a.",
        "a+b",
        "a\\2Bb",
        "a\\2bb",
        "c++;",
        "a+b,c",
        "a,b",
        "a=b",
        "a*b",
        "a;b",
        "a#b",
        "a>b",
        "<t>",
        "a\\b",
        "a\\nb",
        "a\\rb",
        "\\\\n",
        "x\\2By",
        "a?b",
        "a?\?b",
        "a?\?\?b",
        "a?=b",
        "a,=b",
        "\"quoted\"",
        "\"\"",
        "\"",
        "\"esc\\\"",
        "\"esc\\\\\"",
        "  padded  ",
        " \"q\" ",
        "a\nb",
        "\t",
        "\x01",
        "a\xC3\xA9",
        "\xFF",
        "\xA0x\xA0",
        "\xD6\xD6\xD6\xF1",
        "....",
        "..x",
        ".a",
        "~",
        "FileGroup",
        "FileGroup+x",
        "FileInformation",
        ".filemnohousekeeping2",
        "quoted",
        "esc",
    };
    return names;
}

const std::vector<std::string>& pieces()
{
    static const std::vector<std::string> texts = {"a",   "b", "n",  "r", ",",  "=",    "\\",   "?",
                                                   "?\?", "+", "2B", " ", "\"", "*",    ";",    "#",
                                                   "<",   ">", ".",  "|", "\n", "\\2B", "\\2b", "\x80"};
    return texts;
}

std::string composedName(Chance& chance)
{
    std::string name;
    for (std::size_t count = 1 + chance.below(4); count > 0; --count)
    {
        name += chance.of(pieces());
    }
    return name == "." || name == ".." ? "a" : name;
}

} // namespace

const std::string ROOT_DN = "ManagedElement=1,SystemFunctions=1,FileM=1";

Chance::Chance(std::uint64_t seed, std::uint64_t round)
{
    std::seed_seq sequence = {seed & 0xFFFFFFFFU, seed >> 32U, round & 0xFFFFFFFFU, round >> 32U};
    _engine.seed(sequence);
}

std::vector<std::string> someNames(Chance& chance)
{
    std::vector<std::string> names = {"a", "a.txt"};
    if (chance.percent(35))
    {
        while (names.size() < NAMES_OF_ONE_VALUE)
        {
            names.push_back("a" + chance.of(questionMarkCandidates()) + "b");
        }
    }
    while (names.size() < WHOLE_NAMES)
    {
        names.push_back(chance.of(wholeNames()));
    }
    while (names.size() < WHOLE_NAMES + COMPOSED_NAMES)
    {
        names.push_back(composedName(chance));
    }
    return names;
}

const std::vector<std::string>& oddKeys()
{
    static const std::vector<std::string> keys = {"",    ".",     "..",   "...", "a/b", "/",
                                                  "a|b", "a|b/c", "a/b|", "..a", "~",   "~x",
                                                  " ",   "\\2B",  "\\2b", ".|",  "=",   ","};
    return keys;
}

std::vector<std::string> oddDns(const std::string& absolute, const std::string& name)
{
    const std::string group = ROOT_DN + ",FileGroup=";
    return {
        "",
        name,
        "=",
        "FileGroup",
        "FileGroup=" + name,
        ROOT_DN,
        ROOT_DN + ",FileMConfigData=1",
        ROOT_DN + ",FileMConfigData",
        ROOT_DN + ",FileGroupPolicy=" + name,
        ROOT_DN + ",Other=" + name,
        ROOT_DN + ",FileInformation=" + name,
        ROOT_DN + ",FileGroup",
        group,
        group + ".",
        group + "..",
        group + "...",
        group + "/" + name,
        group + "./" + name,
        group + "../" + name,
        group + "../fs/" + name,
        group + "../../out/" + name,
        group + name + "/",
        group + "a/" + name,
        group + "a=/" + name,
        group + name + "=.",
        group + name + "," + name,
        group + name + ",FileGroup",
        group + name + ",FileGroup=",
        group + name + ",FileGroup=..",
        group + name + ",FileInformation=",
        group + name + ",FileInformation=.",
        group + name + ",FileInformation=..",
        group + name + ",FileInformation=FileGroup\\2Bx",
        group + name + ",FileInformation=a\\2Bb",
        group + name + ",Other=" + name,
        group + "../" + name + ",FileInformation=abc",
        group + absolute.substr(1) + ",Other=" + name,
        group + absolute.substr(1) + ",FileMConfigData=" + name,
        group + absolute.substr(1) + ",Other=" + name + ",FileGroup=a",
    };
}

} // namespace zolmodel
