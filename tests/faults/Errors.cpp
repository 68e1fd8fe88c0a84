#include "Errors.h"

#include <cerrno>
#include <map>

namespace faults
{

using faultshim::Function;

const std::vector<int>& errorsOf(Function function)
{
    static const std::vector<int> ofPaths = {EACCES, EIO, ENAMETOOLONG, ELOOP, ENOMEM};
    static const std::vector<int> ofChanges = {EROFS, EACCES, EIO, ENOSPC, ENAMETOOLONG, ELOOP, ENOMEM};
    static const std::vector<int> ofOpening = {EMFILE, EACCES, EIO, ENAMETOOLONG, ELOOP, ENOMEM};
    static const std::vector<int> ofFiles = {EIO, ENOMEM};
    static const std::vector<int> ofMemory = {ENOMEM};
    static const std::map<Function, const std::vector<int>> others = {
        {Function::Mkdir, ofChanges},
        {Function::Chmod, ofChanges},
        {Function::Unlink, ofChanges},
        {Function::Unlinkat, ofChanges},
        {Function::Rmdir, ofChanges},
        {Function::Remove, ofChanges},
        {Function::Opendir, ofOpening},
        {Function::Open, ofOpening},
        {Function::Openat, ofOpening},
        {Function::Fdopen, ofMemory},
        {Function::Fdopendir, ofMemory},
        {Function::Fcntl, {EMFILE}},
        {Function::Fstat, ofFiles},
        {Function::Readdir, ofFiles},
        {Function::Getdents, ofFiles},
        {Function::Fgets, ofFiles},
        {Function::Close, {EIO, ENOSPC}},
        {Function::Closedir, {EIO}},
        // what its pipe and its process may lack
        {Function::Popen, {EMFILE, EAGAIN, ENOMEM}},
        {Function::Fork, {EAGAIN, ENOMEM}},
        {Function::Regcomp, ofMemory},
        {Function::Regexec, ofMemory},
        {Function::Pclose, {ECHILD, EIO}},
    };
    if (faultshim::isAllocator(function))
    {
        return ofMemory;
    }
    const auto found = others.find(function);
    return found == others.end() ? ofPaths : found->second;
}

} // namespace faults
