#include "Faults.h"
#include "ProcessState.h"
#include "ReadsFixture.h"

#include <cerrno>
#include <fcntl.h>
#include <limits>

using namespace testing;

namespace zoltest
{

namespace
{

constexpr std::time_t tenOClock = 1577959200; // 2 January 2020, 10:00:00 UTC

class FileTime : public Reads
{
protected:
    std::string time(const std::string& name = "d/f") const
    {
        return ZolFileManagement::FileMTransaction::getDate(Poco::Path(tree.path(name)));
    }
    std::string readTime() { return attribute(fileDn("f", groupDn("d")), "modificationTime"); }

    static std::string local(std::time_t moment)
    {
        std::tm parts{};
        ::localtime_r(&moment, &parts);
        char text[32];
        return {text, std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%S", &parts)};
    }
    static std::string quoted(const std::string& text) { return "string[\"" + text + "\"]"; }

    void setModificationTime(const std::string& name, std::time_t moment) const
    {
        const timespec times[] = {{moment, 0}, {moment, 0}};
        ASSERT_EQ(::utimensat(AT_FDCWD, tree.path(name).c_str(), times, 0), 0);
    }
    std::time_t changeTime(const std::string& name) const
    {
        struct stat status
        {};
        EXPECT_EQ(::stat(tree.path(name).c_str(), &status), 0);
        return status.st_ctime;
    }

    Faults faults;
};

TEST_F(FileTime, IsThatOfTheZoneOfTheProcess)
{
    tree.file("d/f");
    faults.statAnswer = [](struct stat& status) { status.st_ctime = tenOClock; };
    struct
    {
        const char* zone;
        const char* time;
    } const cases[] = {
        {"UTC0", "2020-01-02T10:00:00"},
        {"<+02>-2", "2020-01-02T12:00:00"},
        {"<-11>11", "2020-01-01T23:00:00"},
        {"<+0545>-5:45", "2020-01-02T15:45:00"},
    };
    for (const auto& row : cases)
    {
        const TimeZone zone(row.zone);
        EXPECT_EQ(time(), row.time) << row.zone;
        EXPECT_EQ(readTime(), quoted(row.time)) << row.zone;
        EXPECT_THAT(attribute(groupDn("d"), "files"), HasSubstr("modificationTime: " + quoted(row.time)));
    }
}

TEST_F(FileTime, HasDigitsForEachPart)
{
    tree.file("d/f");
    const TimeZone zone("UTC0");
    struct
    {
        std::time_t moment;
        const char* time;
    } const cases[] = {
        {0, "1970-01-01T00:00:00"},
        {1078031045, "2004-02-29T05:04:05"},
        {1735689599, "2024-12-31T23:59:59"},
        {-62135596800, "0001-01-01T00:00:00"},
        {253402300800, "10000-01-01T00:00:00"},
    };
    for (const auto& row : cases)
    {
        faults.statAnswer = [&](struct stat& status) { status.st_ctime = row.moment; };
        EXPECT_EQ(time(), row.time);
    }
}

TEST_F(FileTime, IsThatOfTheLastChangeOfStatusNotOfContent)
{
    tree.file("d/f");
    setModificationTime("d/f", tenOClock);

    EXPECT_EQ(time(), local(changeTime("d/f")));
    EXPECT_NE(time(), local(tenOClock));
    EXPECT_EQ(readTime(), quoted(local(changeTime("d/f"))));
}

TEST_F(FileTime, MovesWithAChangeOfPermissionsAlone)
{
    tree.file("d/f");
    setModificationTime("d/f", tenOClock);
    faults.statAnswer = [](struct stat& status) { status.st_ctime = tenOClock; };
    const std::string before = readTime();
    faults.statAnswer = nullptr;

    tree.chmod("d/f", 0640);

    EXPECT_EQ(before, quoted(local(tenOClock)));
    EXPECT_NE(readTime(), before);
    EXPECT_EQ(readTime(), quoted(local(changeTime("d/f"))));
}

TEST_F(FileTime, OfALinkIsThatOfItsTarget)
{
    tree.link("d/link", tree.file("target"));
    Texts asked;
    faults.stat = [&](const std::string& path) {
        asked.push_back(path);
        return 0;
    };
    faults.statAnswer = [](struct stat& status) {
        status.st_ctime = S_ISREG(status.st_mode) ? tenOClock : 0;
    };

    EXPECT_EQ(time("d/link"), local(tenOClock));
    EXPECT_THAT(asked, ElementsAre(tree.path("d/link")));
}

TEST_F(FileTime, IsEmptyWhereItCantBeReadAndWritesNothing)
{
    tree.file("d/f");
    tree.link("d/link", tree.path("nowhere"));
    const RecordedLog log;

    EXPECT_EQ(time("d/missing"), "");
    EXPECT_EQ(time("d/link"), "");
    faults.stat = [](const std::string&) { return EACCES; };
    EXPECT_EQ(time(), "");
    EXPECT_THAT(log.statements(), IsEmpty());
}

TEST_F(FileTime, IsEmptyBeyondTheCalendar)
{
    tree.file("d/f");
    faults.statAnswer = [](struct stat& status) {
        status.st_ctime = std::numeric_limits<std::time_t>::max();
    };

    EXPECT_EQ(time(), "");
}

} // namespace

} // namespace zoltest
