#include "Expect.h"
#include "FileMTransaction.h"
#include "Input.h"
#include "RdnValue.h"
#include "Rules.h"
#include "support/FakeHost.h"

#include <array>
#include <zol/common/DnUtil.h>

using namespace zolfuzz;
using ZolFileManagement::FileMTransaction;

// A DN: whether it is accepted, where it leads, its class and value.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static constexpr std::array ROOTS = {"/fs", "/", "/fs/", "/a/../b/./c//", "relative/root", "..", "/~/c:"};
    static zoltest::FakeHost host;
    static FileMTransaction transaction(1, *host.portal1());

    Input input(data, size);
    const std::string root = ROOTS[input.below(ROOTS.size())];
    const std::string dn = input.rest().c_str();
    FileMTransaction::initialize(root);

    expectSame(transaction.checkDn(dn.c_str()), rules::acceptsDn(dn), "the verdict", dn);
    const Poco::Path path = transaction.convertDnToPath(dn.c_str());
    const rules::Location location = rules::locationOfDn(dn, root);
    expectSame(path.toString(), location.text, "below " + root + ", the path", dn);
    expectSame(path.isDirectory(), location.isDirectory, "the kind of the path", dn);
    expectSame(Zol::DnUtil::getClass(dn), rules::classOfDn(dn), "the class", dn);
    expectSame(ZolFileManagement::getRdnValue(dn), rules::lastValueOfDn(dn), "the value", dn);
    return 0;
}
