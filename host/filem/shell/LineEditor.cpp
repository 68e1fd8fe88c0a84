#include "filem/shell/LineEditor.h"

#include "filem/output/PrintableText.h"
#include "filem/output/Terminal.h"
#include "filem/shell/Columns.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <cwchar>
#include <histedit.h>
#include <poll.h>
#include <string>
#include <system_error>
#include <unistd.h>
#include <vector>

namespace zolhost::filem
{

namespace
{

/// How many characters the text has; libedit counts by them.
int countCharacters(const std::string& text)
{
    const std::size_t count = std::mbstowcs(nullptr, text.c_str(), 0);
    return count == static_cast<std::size_t>(-1) ? 0 : static_cast<int>(count);
}

} // namespace

/// The program's locale stays as it is, since regular expressions go by it: only this thread reads UTF-8.
LineEditor::LineEditor(const ShellSignals& signals, HistoryFile history)
    : _signals(signals)
    , _file(std::move(history))
    , _locale(newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr))
    , _localeBefore(uselocale(_locale))
    , _out(fdopen(dup(STDERR_FILENO), "w"))
    , _editor(el_init("filem", stdin, _out, _out))
    , _history(history_init())
{
    if (_out == nullptr || _editor == nullptr || _history == nullptr)
    {
        throw std::system_error(ENOMEM, std::generic_category(), "no line editor");
    }
    el_set(_editor, EL_CLIENTDATA, this);
    el_set(_editor, EL_PROMPT, givePrompt);
    el_set(_editor, EL_GETCFN, giveCharacter);
    el_set(_editor, EL_EDITOR, "emacs");
    bindKeys();
    loadHistory();
}

LineEditor::~LineEditor()
{
    el_end(_editor);
    history_end(_history);
    std::fclose(_out);
    uselocale(_localeBefore);
    if (_locale != nullptr)
    {
        freelocale(_locale);
    }
}

void LineEditor::bindKeys()
{
    // the operator's own bindings, which ours don't take away
    el_source(_editor, nullptr);
    el_set(_editor, EL_ADDFN, "filem-complete", "completes or lists", completeAtTab);
    constexpr std::array<std::array<const char*, 2>, 8> BINDINGS = {{{"^I", "filem-complete"},
                                                                     {"^R", "em-inc-search-prev"},
                                                                     {"^W", "ed-delete-prev-word"},
                                                                     {"\\e[3~", "ed-delete-next-char"},
                                                                     {"\\e[1~", "ed-move-to-beg"},
                                                                     {"\\e[4~", "ed-move-to-end"},
                                                                     {"\\e[1;5C", "em-next-word"},
                                                                     {"\\e[1;5D", "ed-prev-word"}}};
    for (const auto& [key, command] : BINDINGS)
    {
        el_set(_editor, EL_BIND, key, command, nullptr);
    }
}

void LineEditor::loadHistory()
{
    HistEvent event;
    ::history(_history, &event, H_SETSIZE, static_cast<int>(HistoryFile::LENGTH));
    ::history(_history, &event, H_SETUNIQUE, 1);
    el_set(_editor, EL_HIST, ::history, _history);
    for (const auto& line : _file.load())
    {
        ::history(_history, &event, H_ENTER, line.c_str());
    }
}

LineEditor::Input LineEditor::read(const std::string& prompt)
{
    _completes = true;
    auto input = edit(prompt);
    if (input.kind == Input::Kind::Line && input.line.find_first_not_of(" \t") != std::string::npos)
    {
        keep(input.line);
    }
    return input;
}

LineEditor::Input LineEditor::ask(const std::string& question)
{
    _completes = false;
    return edit(question);
}

LineEditor::Input LineEditor::edit(const std::string& prompt)
{
    _prompt = prompt;
    _lineOfTab.clear();
    _isCancelled = false;
    // before the prompt is drawn, so that the terminal doesn't echo what comes at once
    el_set(_editor, EL_PREP_TERM, 1);
    int count = 0;
    const char* const text = _isGone ? nullptr : el_gets(_editor, &count);
    if (_isGone)
    {
        return {Input::Kind::Gone};
    }
    if (_isCancelled)
    {
        return {Input::Kind::Cancelled};
    }
    if (text == nullptr)
    {
        print("\n");
        return {Input::Kind::Left};
    }
    std::string line = text;
    if (line.ends_with('\n'))
    {
        line.pop_back();
    }
    return {Input::Kind::Line, line};
}

void LineEditor::keep(const std::string& line)
{
    HistEvent event;
    ::history(_history, &event, H_ENTER, line.c_str());
    const std::string trouble = _file.add(line);
    if (!trouble.empty() && !_hasWarned)
    {
        _hasWarned = true;
        print("filem: the history can't be kept: " + printable(trouble) + "\n");
    }
}

LineEditor& LineEditor::of(editline* editor)
{
    void* self = nullptr;
    el_get(editor, EL_CLIENTDATA, &self);
    return *static_cast<LineEditor*>(self);
}

char* LineEditor::givePrompt(editline* editor)
{
    return of(editor)._prompt.data();
}

int LineEditor::giveCharacter(editline* editor, wchar_t* character)
{
    return of(editor).nextCharacter(*character) ? 1 : 0;
}

unsigned char LineEditor::completeAtTab(editline* editor, int /*key*/)
{
    return of(editor).tab();
}

bool LineEditor::waitForByte()
{
    while (true)
    {
        if (ShellSignals::mustEnd())
        {
            _isGone = true;
            return false;
        }
        if (ShellSignals::takeInterrupt())
        {
            _isCancelled = true;
            print(toLastRow() + "^C\n");
            return false;
        }
        if (ShellSignals::takeResize())
        {
            el_resize(_editor);
        }
        if (ShellSignals::takeContinue())
        {
            el_set(_editor, EL_PREP_TERM, 1);
            el_set(_editor, EL_REFRESH);
        }
        std::array<pollfd, 2> events = {{{STDIN_FILENO, POLLIN, 0}, {_signals.descriptor(), POLLIN, 0}}};
        const int ready = poll(events.data(), events.size(), -1);
        if (ready > 0 && events[1].revents != 0)
        {
            _signals.drain();
        }
        else if (ready > 0)
        {
            return true;
        }
    }
}

/// False at the end of the input, or if the line is cancelled. What isn't UTF-8 is left out.
bool LineEditor::nextCharacter(wchar_t& character)
{
    std::mbstate_t state = {};
    while (waitForByte())
    {
        char byte = 0;
        const ssize_t count = ::read(STDIN_FILENO, &byte, 1);
        if (count == -1 && (errno == EINTR || errno == EAGAIN))
        {
            continue;
        }
        if (count != 1)
        {
            _isGone = true;
            return false;
        }
        constexpr auto BAD = static_cast<std::size_t>(-1);
        constexpr auto UNFINISHED = static_cast<std::size_t>(-2);
        const std::size_t result = std::mbrtowc(&character, &byte, 1, &state);
        if (result == BAD)
        {
            state = {};
        }
        else if (result != UNFINISHED)
        {
            return true;
        }
    }
    return false;
}

unsigned char LineEditor::tab()
{
    if (!_completes || !_complete)
    {
        return CC_ERROR;
    }
    const LineInfo* const line = el_line(_editor);
    const std::string before(line->buffer, line->cursor);
    const Completion completion = _complete(before);
    const std::string after = before.substr(0, completion.start) + completion.text;
    if (after != before)
    {
        el_deletestr(_editor, countCharacters(before.substr(completion.start)));
        el_insertstr(_editor, completion.text.c_str());
        _lineOfTab = after;
        return CC_REFRESH;
    }
    if (completion.candidates.empty() || _lineOfTab != before)
    {
        _lineOfTab = before;
        return CC_REFRESH_BEEP;
    }
    list(completion);
    return CC_NORM;
}

/// Below the line, which is drawn again after it.
void LineEditor::list(const Completion& completion)
{
    std::vector<std::string> texts;
    for (const auto& candidate : completion.candidates)
    {
        texts.push_back(candidate.shown);
    }
    const auto [rows, columns] = terminal::sizeOf(STDERR_FILENO);
    const std::size_t others = 3; // the line before and after, and the note
    print(toLastRow() + '\n' + inColumns(texts, columns, std::max(rows, others + 1) - others) +
          (completion.isCut ? "and others that weren't looked for\n" : ""));
    el_set(_editor, EL_REFRESH);
}

/// Takes the cursor of the terminal to the last row that the line fills.
std::string LineEditor::toLastRow() const
{
    const LineInfo* const line = el_line(_editor);
    const std::size_t columns = terminal::sizeOf(STDERR_FILENO).columns;
    const std::size_t atCursor = width(_prompt) + width(printable({line->buffer, line->cursor}));
    const std::size_t atEnd = atCursor + width(printable({line->cursor, line->lastchar}));
    std::string down(atEnd / columns - atCursor / columns, '\n');
    return down;
}

void LineEditor::print(std::string_view text) const
{
    std::fwrite(text.data(), 1, text.size(), _out);
    std::fflush(_out);
}

} // namespace zolhost::filem
