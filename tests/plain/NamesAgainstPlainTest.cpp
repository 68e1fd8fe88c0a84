#include "FileMTransaction.h"

#include "plain/PlainNames.h"
#include "plain/WalkTree.h"

#include <gtest/gtest.h>

using ZolFileManagement::FileMTransaction;
using zoltest::below;

namespace
{

/// Of bytes that mean something to one of the conversions, most of them, and of any others.
std::string anyName(zoltest::Random& random)
{
    static const std::string pieces = "\\nr2Bb+\"#*,;<=> \t\n?a\xD6\xD6\xD6\xF1";
    std::string name;
    for (int length = below(random, 12); length > 0; --length)
    {
        name += below(random, 6) == 0
                    ? static_cast<char>(1 + below(random, 255))
                    : pieces[static_cast<std::size_t>(below(random, static_cast<int>(pieces.size())))];
        if (below(random, 12) == 0)
        {
            name += "\xD6\xD6\xD6\xF1";
        }
    }
    return name;
}

} // namespace

TEST(NamesAgainstPlain, AreConvertedToTheSame)
{
    zoltest::Random random(1);
    for (int i = 0; i < 20000; ++i)
    {
        const std::string name = anyName(random);
        struct
        {
            void (*plain)(std::string&);
            void (*ours)(std::string&);
        } const conversions[] = {{zoltest::plainAlignFile, FileMTransaction::alignNameWithQuestionMark},
                                 {zoltest::plainAlignGroup, FileMTransaction::alignFileGroupWith3gppRdn},
                                 {zoltest::plainReAlign, FileMTransaction::reAlignWith3gppRdn}};
        for (const auto& conversion : conversions)
        {
            std::string plain = name;
            std::string ours = name;
            conversion.plain(plain);
            conversion.ours(ours);
            ASSERT_EQ(plain, ours) << testing::PrintToString(name);
        }
    }
}
