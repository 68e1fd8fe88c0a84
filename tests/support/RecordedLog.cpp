#include "support/RecordedLog.h"

#include <mutex>
#include <optional>
#include <zol/common/LoggingWrapper.h>
#include <zol/common/Trace.h>

namespace zoltest
{

namespace
{

using Call = Zol::LogRecord::Call;

constexpr unsigned int LevelOfTraces = 14;

std::string describe(const LogCall& call)
{
    const char* name = call.call == Call::Log ? "log " : call.call == Call::Trace ? "trace " : "trace_v2 ";
    return name + std::to_string(call.number) + " '" + call.text + "' in " + call.function + " at " +
           call.file + ":" + std::to_string(call.line);
}

// The form that a first call announces and the level that its second call must have.
struct Form
{
    std::string name;
    unsigned int level;
};

std::optional<Form> formOf(const LogCall& first)
{
    if (first.call == Call::Log && first.category == 1)
    {
        return Form{"severity-" + std::to_string(first.number), first.number};
    }
    if (first.call == Call::Trace)
    {
        switch (first.number)
        {
        case 0:
            return Form{"plain", LevelOfTraces};
        case 9:
            return Form{"enter", LevelOfTraces};
        case 10:
            return Form{"exit", LevelOfTraces};
        default:
            break;
        }
    }
    return std::nullopt;
}

bool samePlace(const LogCall& first, const LogCall& second)
{
    return first.function == second.function &&
           (first.call == Call::Log || (first.file == second.file && first.line == second.line));
}

std::string fold(const LogCall& first, const LogCall* second)
{
    const auto form = formOf(first);
    if (!form || second == nullptr || second->call != Call::TraceV2 || second->number != form->level ||
        second->text != first.text || !samePlace(first, *second))
    {
        return "MALFORMED " + describe(first) + (second == nullptr ? "" : " then " + describe(*second));
    }
    std::string text = form->name + " " + first.text;
    if (second->subsystem != Zol::Trace::FileM)
    {
        text += " [subsystem " + std::to_string(second->subsystem) + "]";
    }
    return text;
}

} // namespace

class RecordedLog::Sink : public Zol::LogSink
{
public:
    void write(const Zol::LogRecord& record) override
    {
        const std::scoped_lock lock(_mutex);
        _calls.push_back({record.call, record.number, record.subsystem, record.category,
                          record.file == nullptr ? "" : record.file, record.function, record.line,
                          std::string(record.text), std::this_thread::get_id()});
    }

    std::vector<LogCall> calls() const
    {
        const std::scoped_lock lock(_mutex);
        return _calls;
    }

    void clear()
    {
        const std::scoped_lock lock(_mutex);
        _calls.clear();
    }

private:
    mutable std::mutex _mutex;
    std::vector<LogCall> _calls;
};

RecordedLog::RecordedLog(int level)
    : _sink(std::make_shared<Sink>())
    , _previousLevel(Zol::LoggingWrapper::instance().get_level())
{
    Zol::LoggingWrapper::instance().set_sink(_sink);
    Zol::LoggingWrapper::instance().set_level(level);
}

RecordedLog::~RecordedLog()
{
    Zol::LoggingWrapper::instance().set_level(_previousLevel);
    Zol::LoggingWrapper::instance().set_sink(nullptr);
}

std::vector<LogCall> RecordedLog::calls() const
{
    return _sink->calls();
}

std::vector<LogStatement> RecordedLog::fullStatements() const
{
    const std::vector<LogCall> all = calls();
    std::vector<bool> used(all.size(), false);
    std::vector<LogStatement> result;
    for (std::size_t i = 0; i < all.size(); ++i)
    {
        if (used[i])
        {
            continue;
        }
        std::size_t next = i + 1;
        while (next < all.size() && all[next].thread != all[i].thread)
        {
            ++next;
        }
        const LogCall* second = next < all.size() ? &all[next] : nullptr;
        result.push_back({fold(all[i], second), all[i].function,
                          second != nullptr && all[i].file.empty() ? second->file : all[i].file});
        if (second != nullptr)
        {
            used[next] = true;
        }
    }
    return result;
}

std::vector<std::string> RecordedLog::statements() const
{
    std::vector<std::string> texts;
    for (auto& statement : fullStatements())
    {
        texts.push_back(std::move(statement.text));
    }
    return texts;
}

void RecordedLog::clear()
{
    _sink->clear();
}

} // namespace zoltest
