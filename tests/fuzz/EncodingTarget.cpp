#include "Expect.h"
#include "FileMTransaction.h"
#include "Input.h"
#include "Rules.h"
#include "engine/NameForms.h"
#include "support/FakeHost.h"

using namespace zolfuzz;
using ZolFileManagement::FileMTransaction;

namespace
{

template<class Change>
std::string changed(std::string text, Change change)
{
    change(text);
    return text;
}

/// Nothing of the name is lost on its way out.
bool keepsItsName(const std::string& name)
{
    return name.find_first_of("\"#*,;<=>\\ \t\n\v\f\r") == std::string::npos &&
           name.find("\xD6\xD6\xD6\xF1") == std::string::npos;
}

} // namespace

// A name on disk, or a value: both encodings, the way back, and what the host makes of them.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static zoltest::FakeHost host;
    static FileMTransaction transaction(1, *host.portal1());
    const std::string text = Input(data, size).rest();

    const std::string group = changed(text, FileMTransaction::alignFileGroupWith3gppRdn);
    expectSame(group, rules::fileGroupValue(text), "the value of the directory", text);
    expectSame(zolhost::fileGroupValueOf(text), group, "the host's value of the directory", text);

    const std::string information = changed(text, FileMTransaction::alignNameWithQuestionMark);
    expectSame(information, rules::fileInformationValue(text), "the value of the file", text);
    expectSame(zolhost::fileInformationValueOf(text), information, "the host's value of the file", text);

    const std::string name = changed(text, FileMTransaction::reAlignWith3gppRdn);
    expectSame(name, rules::directoryName(text), "the name", text);
    expectSame(zolhost::directoryNameOf(text), name, "the host's name", text);

    if (keepsItsName(text))
    {
        expectSame(changed(group, FileMTransaction::reAlignWith3gppRdn), text, "the way back", text);
    }

    const std::string key = text.c_str();
    std::string error = "as before";
    const bool isIllegal = transaction.illegalNaming(key.c_str(), error);
    const auto refusal = rules::refusalOfName(key);
    expectSame(isIllegal, refusal.has_value(), "the refusal", key);
    expectSame(error, refusal.value_or("as before"), "the reason", key);
    return 0;
}
