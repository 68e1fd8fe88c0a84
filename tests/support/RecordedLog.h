#pragma once

#include <memory>
#include <string>
#include <thread>
#include <vector>
#include <zol/common/LogSink.h>

namespace zoltest
{

/// One call of the logging interface, kept.
struct LogCall
{
    Zol::LogRecord::Call call;
    unsigned int number;
    unsigned int subsystem;
    unsigned int category;
    std::string file; ///< empty for a log
    std::string function;
    int line;
    std::string text;
    std::thread::id thread;
};

/// One log statement of the component: the two calls that it consists of, as one.
struct LogStatement
{
    std::string text; ///< as RecordedLog::statements() gives it
    std::string function;
    std::string file;
};

/// Keeps what the process logs, from its construction to its end, which restores the level and goes back to
/// the sink of the environment. At most one object lives at a time.
class RecordedLog
{
public:
    explicit RecordedLog(int level = 8);
    RecordedLog(const RecordedLog&) = delete;
    RecordedLog& operator=(const RecordedLog&) = delete;
    ~RecordedLog();

    std::vector<LogCall> calls() const;

    /// The statements in the order of their first calls, each as its form and its text, e.g. "enter  >> ",
    /// "exit  << ", "plain Executing 'x'" or "severity-3 Failed to registerParticipant". A subsystem other
    /// than FileM is shown behind: "plain text [subsystem 1]". A call that makes no statement of one of the
    /// four forms with the next one of its thread gives a text that begins with "MALFORMED".
    std::vector<std::string> statements() const;
    std::vector<LogStatement> fullStatements() const;

    void clear();

private:
    class Sink;

    std::shared_ptr<Sink> _sink;
    int _previousLevel;
};

} // namespace zoltest
