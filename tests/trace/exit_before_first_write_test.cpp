#include <gtest/gtest.h>

#include <cstdint>
#include <cstdio>
#include <ctime>
#include <string>
#include <vector>

#include "host_folder.h"
#include "support/wait.h"

namespace dialwright {
namespace {

/// Leaves without a line of its own, so that nothing is in the file yet when the end begins.
std::optional<DWORD> LeaveAtOnce(const HostFolder& host, const std::wstring& way) {
    testing::ChildProcess process(host.LoadHost(), {L"exit", way, L"0", L"0"});
    return process.WaitForExit(testing::kPatienceMs);
}

/// The seconds since 1970 that a line's time would be in UTC.
std::int64_t SecondsOf(const std::string& line) {
    std::tm time{};
    const int fields = std::sscanf(line.c_str(), "[%d-%d-%d %d:%d:%d.", &time.tm_year, &time.tm_mon, &time.tm_mday,
                                   &time.tm_hour, &time.tm_min, &time.tm_sec);
    EXPECT_EQ(6, fields) << line;
    time.tm_year -= 1900;
    time.tm_mon -= 1;
    return ::_mkgmtime64(&time);
}

/// A time zone for the programs that are started from here.
class ZoneOfChildren {
public:
    explicit ZoneOfChildren(const wchar_t* zone) { ::SetEnvironmentVariableW(L"TZ", zone); }
    ~ZoneOfChildren() { ::SetEnvironmentVariableW(L"TZ", nullptr); }
    ZoneOfChildren(const ZoneOfChildren&) = delete;
    ZoneOfChildren& operator=(const ZoneOfChildren&) = delete;
};

TEST(ExitBeforeTheFirstWrite, MakesTheFolderAndTheFileAndGoesOnInIt) {
    const HostFolder host;
    std::size_t expected = 0;
    for (const wchar_t* way : {L"ExitProcess", L"exit", L"return"}) {
        ASSERT_EQ(7U, LeaveAtOnce(host, way));
        expected += 2;
        const std::vector<std::string> lines = testing::ReadTrace(host.TraceFile());
        ASSERT_EQ(expected, lines.size());
        EXPECT_NE(std::string::npos, lines[expected - 2].find("[Dialwright  1359    info] (Time Zone: "));
        EXPECT_TRUE(lines[expected - 1].ends_with("[Dialwright  1418    info] trace stopped"));
        for (const std::string& line : lines) EXPECT_TRUE(line.starts_with("[20")) << line;
    }
}

TEST(ExitBeforeTheFirstWrite, HasTheTimeOfTheHostsZone) {
    const ZoneOfChildren zone(L"ABC-5:30");
    const HostFolder host;
    ASSERT_EQ(7U, LeaveAtOnce(host, L"ExitProcess"));
    const std::vector<std::string> lines = testing::ReadTrace(host.TraceFile());
    ASSERT_EQ(2U, lines.size());
    for (const std::string& line : lines) EXPECT_NE(std::string::npos, line.find(" UTC+05:30] ")) << line;
    // An hour is more than the slowest machine needs, and less than the zone is away.
    EXPECT_LT(SecondsOf(lines[1]) - SecondsOf(lines[0]), 3600) << lines[0] << lines[1];
    EXPECT_GE(SecondsOf(lines[1]), SecondsOf(lines[0]));
}

}  // namespace
}  // namespace dialwright
