#pragma once

#include <functional>
#include <list>
#include <map>
#include <mutex>
#include <string>
#include <utility>
#include <vector>
#include <zol/common/MoRepository.h>
#include <zol/spi/ZolReturnT.h>

namespace zoltest
{

/// Throws something instead of giving an answer.
using Failure = std::function<void()>;

Failure throwsZolException(ZolReturnT code);
Failure throwsRuntimeError(const std::string& text);
Failure throwsForeign(); ///< something that is no std::exception

/// The managed objects of others. Installed from its construction to its end; at most one object lives at a
/// time.
class FakeRepository : public Zol::MoRepository
{
public:
    FakeRepository();
    FakeRepository(const FakeRepository&) = delete;
    FakeRepository& operator=(const FakeRepository&) = delete;
    ~FakeRepository() override;

    // What it answers. A failure, where there is one, comes before the answer.
    std::string firstInstance = "ManagedElement=1,SystemFunctions=1,FileM=1";
    Failure firstInstanceFailure;
    Failure childrenFailure;
    void setChildren(const std::string& parentDn, const std::string& className,
                     std::list<std::string> children);
    /// Without one of these an attribute can't be read, by a ZolException with code -2.
    void setReferences(const std::string& dn, const std::string& attribute,
                       const std::vector<std::string>& references);
    void setStrings(const std::string& dn, const std::string& attribute,
                    const std::vector<std::string>& texts);
    void setNoContainer(const std::string& dn, const std::string& attribute);
    void setFailure(const std::string& dn, const std::string& attribute, Failure failure);

    // What it was asked.
    /// "getFirstMoInstance tx=7 path", "getChildren tx=7 dn class" and "getAttribute tx=7 dn name".
    std::vector<std::string> calls() const;
    void clear();         ///< forgets the calls
    int releases() const; ///< how many results were released, in the whole process
    int handedOut() const;

    std::string getFirstMoInstance(unsigned long txHandle, const std::string& classPath) override;
    std::list<std::string> getChildren(unsigned long txHandle, const std::string& parentDn,
                                       const std::string& className) override;
    void getAttribute(unsigned long txHandle, const std::string& dn, const std::string& attributeName,
                      ZolMoAttributeValueResult_3& result) override;

private:
    using Fill = std::function<void(ZolMoAttributeValueResult_3&)>;
    using Key = std::pair<std::string, std::string>;

    void setTexts(ZolOamSpiMoAttributeType_3 type, const std::string& dn, const std::string& attribute,
                  const std::vector<std::string>& texts);

    std::map<Key, std::list<std::string>> _children;
    std::map<Key, Fill> _attributes;
    mutable std::mutex _mutex; // protects the calls
    std::vector<std::string> _calls;
};

} // namespace zoltest
