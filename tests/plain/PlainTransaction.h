#pragma once

#include "plain/PlainWalk.h"

#include <Poco/Path.h>
#include <string>
#include <zol/spi/ZolReturnT.h>

namespace zoltest
{

/// What a DN stands for as its rules state it, by searches through the whole of it.
Poco::Path plainPathOf(const std::string& internalRoot, const std::string& dn);

/// The changes of a transaction as their rules state them: sets of paths, a look for each question, and a
/// commit by POCO.
class PlainTransaction
{
public:
    explicit PlainTransaction(std::string internalRoot);

    ZolReturnT create(const std::string& parentDn, const std::string& name); ///< a name that is allowed
    ZolReturnT deleteM(const std::string& dn);
    ZolReturnT remove(const std::string& dn); ///< the action
    bool removeFiles(const Poco::Path& directory, const std::string& expression);
    ZolReturnT commit();

private:
    Poco::Path pathOf(const std::string& dn) const { return plainPathOf(_root, dn); }

    std::string _root;
    PlainChanges _changes;
};

} // namespace zoltest
