#include "filem/output/LineFilter.h"

#include "filem/ExitCode.h"
#include "filem/output/PrintableText.h"

#include <cstddef>
#include <zol/common/RegularExpression.h>

namespace zolhost::filem
{

namespace
{

class Match : public LineFilter
{
public:
    Match(std::ostream& next, const std::string& expression, bool isWanted)
        : LineFilter(next)
        , _expression(expression, REG_EXTENDED | REG_NOSUB)
        , _isWanted(isWanted)
    {
        if (!_expression.isExpressionValid())
        {
            throw CommandFailure(ExitCode::Usage, "the regular expression is not valid");
        }
    }

protected:
    void take(const std::string& line) override
    {
        if (_expression.match(line, 0) == _isWanted)
        {
            next() << line << '\n';
        }
    }

private:
    Zol::RegularExpression _expression;
    bool _isWanted;
};

class CountLines : public LineFilter
{
public:
    using LineFilter::LineFilter;
    explicit CountLines(std::ostream& next)
        : LineFilter(next)
    {}

protected:
    void take(const std::string& /*line*/) override { ++_count; }
    void atEnd() override { next() << _count << '\n'; }

private:
    std::size_t _count = 0;
};

} // namespace

const std::vector<FilterDescription>& filters()
{
    static const std::vector<FilterDescription> descriptions = {
        {"match", "REGEX", "lines that the extended regular expression matches somewhere"},
        {"except", "REGEX", "the other lines"},
        {"count", "", "how many lines there are"},
    };
    return descriptions;
}

std::unique_ptr<LineFilter> LineFilter::make(const std::vector<std::string>& words, std::ostream& next)
{
    const std::string& name = words.front();
    for (const auto& filter : filters())
    {
        if (name != filter.name)
        {
            continue;
        }
        const std::size_t arguments = *filter.arguments == '\0' ? 0 : 1;
        if (words.size() != 1 + arguments)
        {
            throw CommandFailure(ExitCode::Usage,
                                 "usage: | " + name + (arguments == 0 ? "" : " ") + filter.arguments);
        }
        if (arguments == 0)
        {
            return std::make_unique<CountLines>(next);
        }
        return std::make_unique<Match>(next, words[1], name == "match");
    }
    throw CommandFailure(ExitCode::Usage,
                         "there is no filter " + printable(name) + "; there are match, except and count");
}

void LineFilter::end()
{
    if (!_line.empty())
    {
        take(_line);
        _line.clear();
    }
    atEnd();
}

LineFilter::int_type LineFilter::overflow(int_type character)
{
    if (!traits_type::eq_int_type(character, traits_type::eof()))
    {
        const char single = traits_type::to_char_type(character);
        if (single == '\n')
        {
            const std::string line = std::move(_line);
            _line.clear();
            take(line);
        }
        else
        {
            _line += single;
        }
    }
    return traits_type::not_eof(character);
}

} // namespace zolhost::filem
