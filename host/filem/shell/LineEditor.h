#pragma once

#include "filem/shell/Completion.h"
#include "filem/shell/HistoryFile.h"
#include "filem/shell/ShellSignals.h"

#include <clocale>
#include <cstdio>
#include <functional>
#include <string>
#include <string_view>
#include <utility>

struct editline;
struct history;

namespace zolhost::filem
{

/// What the operator types, line by line, with the keys of Emacs, history and completion. It draws on
/// standard error. For one thread.
class LineEditor
{
public:
    LineEditor(const ShellSignals& signals, HistoryFile history);
    LineEditor(const LineEditor&) = delete;
    LineEditor& operator=(const LineEditor&) = delete;
    ~LineEditor();

    using Complete = std::function<Completion(const std::string& textToCursor)>;
    /// What Tab asks.
    void setComplete(Complete complete) { _complete = std::move(complete); }

    struct Input
    {
        enum class Kind
        {
            Line,
            Cancelled, ///< by Ctrl-C
            Left,      ///< by Ctrl-D on an empty line
            Gone       ///< nothing will come any more, or the shell must end
        };
        Kind kind;
        std::string line = {};
    };
    Input read(const std::string& prompt);
    /// The answer to a question, which isn't kept.
    Input ask(const std::string& question);

private:
    static char* givePrompt(editline* editor);
    static int giveCharacter(editline* editor, wchar_t* character);
    static unsigned char completeAtTab(editline* editor, int key);
    static LineEditor& of(editline* editor);

    void bindKeys();
    void loadHistory();
    Input edit(const std::string& prompt);
    bool waitForByte();
    bool nextCharacter(wchar_t& character);
    unsigned char tab();
    std::string toLastRow() const;
    void list(const Completion& completion);
    void keep(const std::string& line);
    void print(std::string_view text) const;

    const ShellSignals& _signals;
    HistoryFile _file;
    locale_t _locale;
    locale_t _localeBefore;
    std::FILE* _out;
    editline* _editor;
    history* _history;
    Complete _complete;
    bool _completes = false;
    std::string _prompt;
    std::string _lineOfTab; ///< up to the cursor, as the last Tab left it
    bool _isCancelled = false;
    bool _isGone = false;
    bool _hasWarned = false;
};

} // namespace zolhost::filem
