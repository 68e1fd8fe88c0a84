#pragma once

#include "engine/PolicyModel.h"

#include <list>
#include <string>
#include <vector>
#include <zol/common/MoRepository.h>

namespace zolhost
{

/// The managed objects that aren't the component's: the root and the policies below it. Installed from its
/// construction to its end. It doesn't change, so that any thread may ask.
class PolicyRepository : public Zol::MoRepository
{
public:
    explicit PolicyRepository(std::vector<FileGroupPolicy> policies);
    PolicyRepository(const PolicyRepository&) = delete;
    PolicyRepository& operator=(const PolicyRepository&) = delete;
    ~PolicyRepository() override;

    std::string getFirstMoInstance(unsigned long txHandle, const std::string& classPath) override;
    std::list<std::string> getChildren(unsigned long txHandle, const std::string& parentDn,
                                       const std::string& className) override;
    void getAttribute(unsigned long txHandle, const std::string& dn, const std::string& attributeName,
                      ZolMoAttributeValueResult_3& result) override;

private:
    std::vector<FileGroupPolicy> _policies;
};

} // namespace zolhost
