#include "FileGroupIterator.h"
#include "LiteralPath.h"

#include "plain/PlainWalk.h"
#include "support/RecordedLog.h"
#include "support/TemporaryTree.h"

#include <climits>
#include <fcntl.h>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <initializer_list>
#include <sys/stat.h>
#include <unistd.h>

namespace zoltest
{

namespace
{

using ZolFileManagement::FileGroupIterator;
using ZolFileManagement::literalPath;
using Texts = std::vector<std::string>;

void makeEntry(int directory, const std::string& name, char kind)
{
    switch (kind)
    {
    case 'd':
        ASSERT_EQ(::mkdirat(directory, name.c_str(), 0700), 0);
        break;
    case 'l':
        ASSERT_EQ(::symlinkat("/", directory, name.c_str()), 0);
        break;
    default:
        ::close(::openat(directory, name.c_str(), O_CREAT | O_WRONLY, 0600));
        break;
    }
}

/// A directory whose text, with a slash behind it, has the given length, and a way to make something in it.
class LongDirectory
{
public:
    explicit LongDirectory(std::size_t length)
        : text(tree.path() + "/")
        , handle(::open(text.c_str(), O_PATH | O_DIRECTORY))
    {
        while (text.size() < length)
        {
            const std::size_t left = length - text.size();
            const std::string name(left > 250 ? 200 : left - 1, 'd');
            EXPECT_EQ(::mkdirat(handle, name.c_str(), 0700), 0);
            const int next = ::openat(handle, name.c_str(), O_PATH | O_DIRECTORY);
            ::close(handle);
            handle = next;
            text += name + "/";
        }
    }
    LongDirectory(const LongDirectory&) = delete;
    LongDirectory& operator=(const LongDirectory&) = delete;
    ~LongDirectory() { ::close(handle); }

    TemporaryTree tree;
    std::string text;
    int handle;
};

template<class Walk>
Texts trail(Walk& walk, RecordedLog& log)
{
    Texts lines;
    Poco::Path entry;
    while (walk.getNext(entry))
    {
        lines.push_back(entry.toString());
    }
    for (const std::string& line : log.statements())
    {
        lines.push_back(line);
    }
    log.clear();
    return lines;
}

} // namespace

TEST(LongPaths, AreWalkedAsPlainlyAsShortOnes)
{
    const PlainChanges plainChanges;
    const ZolFileManagement::NonComittedData changes;
    int endedAtOnce = 0;
    int endedLater = 0;
    char mark = 'A'; // other names in each directory, for another order
    for (const std::size_t length : std::initializer_list<std::size_t>{
             PATH_MAX - 18, PATH_MAX - 17, PATH_MAX - 16, PATH_MAX - 15, PATH_MAX - 14, PATH_MAX - 13,
             PATH_MAX - 12, PATH_MAX - 1, PATH_MAX, PATH_MAX + 1})
    {
        const LongDirectory directory(length);
        ++mark;
        // what was made last comes first on a file system in memory: not what is too long
        for (std::size_t size = 22; size >= 4; --size)
        {
            for (const char kind : {'l', 'd', 'f'})
            {
                makeEntry(directory.handle, std::string(size - 1, kind) + mark, kind);
            }
        }
        const Poco::Path path = literalPath(directory.text);
        for (const bool isOfFiles : {true, false})
        {
            RecordedLog log;
            PlainWalk plain(path, plainChanges, isOfFiles);
            const Texts expected = trail(plain, log);
            if (!expected.empty() && expected.back().starts_with("plain Unexpected exception"))
            {
                ++(expected.front().starts_with('/') ? endedLater : endedAtOnce);
            }
            for (const auto span : {FileGroupIterator::Span::SeveralCalls, FileGroupIterator::Span::OneCall})
            {
                FileGroupIterator ours(path, changes, isOfFiles, span);
                EXPECT_EQ(trail(ours, log), expected) << length;
            }
        }
    }
    EXPECT_GT(endedAtOnce, 0);
    EXPECT_GT(endedLater, 0);
}

} // namespace zoltest
