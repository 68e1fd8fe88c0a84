#pragma once

#include "filem/Verb.h"
#include "staging/Request.h"

#include <string>
#include <vector>

namespace zolhost::filem
{

/// A verb that changes the tree. Alone it is a transaction of its own: staged, shown and dropped in a dry
/// run, else committed once the operator agrees. In a session it stages.
class ChangeVerb : public Verb
{
public:
    void declare(Arguments& arguments) final;
    ExitCode run(Session& session) final;

protected:
    virtual void declareOwn(Arguments& arguments) = 0;
    virtual std::vector<Request> requests(Session& session) = 0;
    virtual bool isForced() const { return false; } ///< may take the tree of the root
    virtual bool isDestructive() const { return true; }

private:
    ExitCode dryRun(Session& session) const;
    ExitCode carryOut(Session& session) const;
    void agree(Session& session) const;

    bool _isDryRun = false;
    bool _isAgreed = false;
    bool _isVerbose = false;
    bool _isJson = false;
    bool _throughLinks = false;
    std::string _comment;
};

} // namespace zolhost::filem
