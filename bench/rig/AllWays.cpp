#include "rig/AllWays.h"

#include "literal/LiteralWay.h"
#include "sftp/SftpWay.h"
#include "strict/StrictWay.h"
#include "ways/FloorWay.h"
#include "ways/LibraryWay.h"
#include "ways/StandardWay.h"

namespace zolbench
{

Ways allWays(const Library& library, const std::string& root)
{
    Ways ways;
    ways.push_back(std::make_unique<LibraryWay>(library));
    ways.push_back(std::make_unique<FloorWay>());
    ways.push_back(std::make_unique<StrictWay>(root));
    ways.push_back(std::make_unique<LiteralWay>(root));
    ways.push_back(std::make_unique<StandardWay>());
    if (const auto server = SftpClient::installedServer())
    {
        ways.push_back(std::make_unique<SftpWay>(*server));
    }
    return ways;
}

} // namespace zolbench
