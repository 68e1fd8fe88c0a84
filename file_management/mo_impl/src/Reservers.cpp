#include "FileMTransaction.h"
#include "MoAccessorReads.h"

namespace ZolFileManagement
{

void FileMTransaction::getFileGroupReservers(const char* dn, std::vector<std::string>& reservers)
{
    Zol::MoAccessor accessor(1, 60);
    accessor.useTransaction(_txHandle);
    std::list<std::string> policies;
    accessor.getChildren(getFileMRoot(), "FileGroupPolicy", policies);
    for (const std::string& policy : policies)
    {
        for (const auto& reference : accessor.getSeqAttr<Zol::MoAccessor::MoRef>(policy, "fileGroup"))
        {
            if (reference.dn == dn)
            {
                reservers.push_back(policy);
            }
        }
    }
}

} // namespace ZolFileManagement
