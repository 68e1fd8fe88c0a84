#include "model/Outcome.h"

#include "model/Printable.h"

namespace zolmodel
{

namespace
{

std::string joined(const char* title, const std::vector<std::string>& texts)
{
    std::string result;
    for (const auto& text : texts)
    {
        result += std::string(", ") + title + " \"" + printable(text) + "\"";
    }
    return result;
}

} // namespace

bool agree(const Outcome& expected, const Outcome& actual)
{
    return expected.code == actual.code && (expected.valueIsUncertain || expected.value == actual.value) &&
           expected.messages == actual.messages && expected.hostCalls == actual.hostCalls;
}

std::string toText(const Outcome& outcome)
{
    return "code " + std::to_string(outcome.code) +
           (outcome.value.empty() ? "" : ", " + printable(outcome.value)) +
           joined("message", outcome.messages) + joined("call of", outcome.hostCalls);
}

} // namespace zolmodel
