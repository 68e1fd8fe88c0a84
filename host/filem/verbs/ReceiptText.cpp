#include "filem/verbs/ReceiptText.h"

#include "filem/Session.h"
#include "filem/output/PrintableText.h"
#include "filem/output/Quoting.h"
#include "filem/output/ReceiptJson.h"
#include "filem/output/Sizes.h"
#include "filem/output/Totals.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <ostream>

namespace zolhost::filem
{

namespace
{

using Item = Receipt::Item;
using Outcome = StagedTransaction::Outcome;

std::string nameOf(const Session& session, const Item& item)
{
    return shownPath(item.path, session.rootDirectory());
}

std::string lineOf(const Session& session, const Item& item)
{
    const bool isMade = item.kind == Preview::Item::Kind::MakeDirectory;
    const bool remains = item.result == Item::Result::Remains;
    const std::string name = (isMade ? "+ " : "- ") + nameOf(session, item);
    std::string result = textOf(item.result);
    result.resize(7, ' ');
    std::string line = result + "  " +
                       session.colours().paint(remains  ? Colour::Warning
                                               : isMade ? Colour::New
                                                        : Colour::Going,
                                               name);
    if (isMade && !remains)
    {
        line += item.mode == 0 ? "  made and removed again" : "  " + modeText(item.mode);
    }
    if (!item.why.empty())
    {
        line += "  " + printable(item.why);
    }
    return line;
}

std::string secondsText(double seconds)
{
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%.2f s", seconds);
    return text.data();
}

std::size_t countOf(const Receipt& receipt, Item::Result result)
{
    return static_cast<std::size_t>(std::ranges::count(receipt.items, result, &Item::result));
}

std::string totalsText(const Outcome& outcome)
{
    const Receipt& receipt = outcome.receipt;
    std::string text = std::to_string(countOf(receipt, Item::Result::Done)) + " done";
    if (const auto wereSo = countOf(receipt, Item::Result::WasSo); wereSo != 0)
    {
        text += ", " + std::to_string(wereSo) + " " + (wereSo == 1 ? "was" : "were") + " so before";
    }
    if (const auto remain = countOf(receipt, Item::Result::Remains); remain != 0)
    {
        text += ", " + std::to_string(remain) + " " + (remain == 1 ? "remains" : "remain");
    }
    const std::string totals = textOf({.directoriesMade = receipt.directoriesMade,
                                       .filesRemoved = receipt.filesRemoved,
                                       .directoriesRemoved = receipt.directoriesRemoved,
                                       .othersRemoved = receipt.othersRemoved,
                                       .bytesRemoved = receipt.bytesRemoved},
                                      Tense::Past);
    return text + (totals.empty() ? "" : ": " + totals) + ", " + secondsText(outcome.time.count());
}

void printJson(const Session& session, const Outcome& outcome)
{
    for (const auto& item : outcome.receipt.items)
    {
        Json object;
        object["kind"] = "item";
        object.update(jsonOf(item));
        session.out() << object.dump() << '\n';
    }
    const Receipt& receipt = outcome.receipt;
    Json total;
    total["kind"] = "total";
    setText(total, "failure", outcome.failure);
    total["isComplete"] = receipt.isComplete();
    total["directoriesMade"] = receipt.directoriesMade;
    total["directoriesRemoved"] = receipt.directoriesRemoved;
    total["filesRemoved"] = receipt.filesRemoved;
    total["othersRemoved"] = receipt.othersRemoved;
    total["bytesRemoved"] = receipt.bytesRemoved;
    total["seconds"] = outcome.time.count();
    session.out() << total.dump() << '\n';
}

void printText(const Session& session, const Outcome& outcome, bool isWhole)
{
    for (const auto& item : outcome.receipt.items)
    {
        if (isWhole)
        {
            session.out() << lineOf(session, item) << '\n';
        }
        else if (item.result == Item::Result::Remains)
        {
            session.warn(nameOf(session, item) + " remains: " + printable(item.why));
        }
    }
    if (isWhole)
    {
        session.out() << totalsText(outcome) << '\n';
    }
}

} // namespace

ExitCode commitAndTell(Session& session, const std::string& comment, ReceiptForm form)
{
    const Outcome outcome = session.commit(comment);
    if (form.isJson)
    {
        printJson(session, outcome);
    }
    else
    {
        printText(session, outcome, form.isWhole);
    }
    if (!outcome.failure.empty())
    {
        throw CommandFailure(ExitCode::Failed, "can't commit: " + printable(outcome.failure));
    }
    return outcome.receipt.isComplete() ? ExitCode::Done : ExitCode::Remains;
}

} // namespace zolhost::filem
