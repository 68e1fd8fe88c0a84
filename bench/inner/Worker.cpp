#include "Worker.h"

#include <cstdlib>
#include <fstream>
#include <stdexcept>

namespace zolbench
{

namespace
{

ZolReturnT getInterface(ZolMgmtSpiInterface_1, ZolMgmtSpiInterface_1** result)
{
    *result = nullptr; // no messages to an operator
    return ZolReturnOk;
}

ZolMgmtSpiInterfacePortal_1 portal = {
    "Bench", "ZolMgmtSpiInterfacePortal", "1", getInterface, nullptr, nullptr, nullptr};

std::filesystem::path newFolder()
{
    std::string folder = std::filesystem::temp_directory_path() / "zol_bench_inner.XXXXXX";
    if (::mkdtemp(folder.data()) == nullptr)
    {
        throw std::runtime_error(folder);
    }
    return folder;
}

} // namespace

const std::string Worker::directoryDn = "ManagedElement=1,SystemFunctions=1,FileM=1,FileGroup=directory";

Worker::Worker()
    : _root(newFolder())
{
    std::filesystem::create_directory(_root / "directory");
    std::ofstream(_root / "directory/a=b");
    ZolFileManagement::FileMTransaction::initialize(_root);
    _transaction = std::make_unique<ZolFileManagement::FileMTransaction>(1, portal);
}

Worker::~Worker()
{
    _transaction->finish();
    std::error_code ignored;
    std::filesystem::remove_all(_root, ignored);
}

} // namespace zolbench
