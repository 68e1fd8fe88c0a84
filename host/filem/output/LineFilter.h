#pragma once

#include <memory>
#include <ostream>
#include <streambuf>
#include <string>
#include <vector>

namespace zolhost::filem
{

/// What stands behind a `|`: takes the lines of a command and gives some of them, or something about them.
class LineFilter : public std::streambuf
{
public:
    LineFilter(const LineFilter&) = delete;
    LineFilter& operator=(const LineFilter&) = delete;

    /// `match REGEX`, `except REGEX` or `count`; the words aren't empty. `next` gets the result and must
    /// outlive it. Throws CommandFailure.
    static std::unique_ptr<LineFilter> make(const std::vector<std::string>& words, std::ostream& next);

    /// Gives what is given at the end only.
    void end();

protected:
    explicit LineFilter(std::ostream& next)
        : _next(next)
    {}

    virtual void take(const std::string& line) = 0;
    virtual void atEnd() {}
    std::ostream& next() { return _next; }

    int_type overflow(int_type character) override;

private:
    std::ostream& _next;
    std::string _line;
};

/// The names of the filters with their arguments, for help and completion.
struct FilterDescription
{
    const char* name;
    const char* arguments;
    const char* summary;
};
const std::vector<FilterDescription>& filters();

} // namespace zolhost::filem
