#include "FileMTransaction.h"

#include <Poco/File.h>
#include <array>
#include <boost/algorithm/string/replace.hpp>

namespace ZolFileManagement
{

namespace
{

// What a pair of question marks may stand for, in the order in which it is tried.
constexpr std::array candidates{"\\n", "\\r", ",", "=", "+", "<", ">", "#", ";", "\\", "\"", "*"};

} // namespace

bool FileMTransaction::replace3gppIllegalChars(std::string& dn)
{
    if (dn.find("?\?") == std::string::npos)
    {
        return Poco::File(convertDnToPath(dn.c_str())).exists(); // every candidate gives the same text
    }
    for (const char* candidate : candidates)
    {
        const std::string candidateDn = boost::algorithm::replace_all_copy(dn, "??", candidate);
        if (Poco::File(convertDnToPath(candidateDn.c_str())).exists())
        {
            dn = candidateDn;
            return true;
        }
    }
    return false;
}

} // namespace ZolFileManagement
