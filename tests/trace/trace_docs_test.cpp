#include <gtest/gtest.h>

#include <array>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>

#include "trace/levels.h"
#include "trace/line_prefix.h"
#include "trace/settings_word.h"

namespace dialwright {
namespace {

std::string Docs() {
    std::ifstream file(TRACE_DOCS, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

struct Setting {
    std::uint64_t bit;
    const char* name;
};

TEST(TraceDocs, ListEverySettingWithItsBit) {
    constexpr std::array<Setting, 17> kSettings = {{
        {.bit = LOG_INFO, .name = "LOG_INFO"},
        {.bit = LOG_DEBUG, .name = "LOG_DEBUG"},
        {.bit = LOG_WARNING, .name = "LOG_WARNING"},
        {.bit = LOG_ERROR, .name = "LOG_ERROR"},
        {.bit = TRACE_FILE, .name = "TRACE_FILE"},
        {.bit = TRACE_MEMORY, .name = "TRACE_MEMORY"},
        {.bit = TRACE_DEBUGGER, .name = "TRACE_DEBUGGER"},
        {.bit = TRACE_CONSOLE, .name = "TRACE_CONSOLE"},
        {.bit = TRACE_NO_TIME, .name = "TRACE_NO_TIME"},
        {.bit = TRACE_NO_PID, .name = "TRACE_NO_PID"},
        {.bit = TRACE_NO_TID, .name = "TRACE_NO_TID"},
        {.bit = TRACE_NO_NAME, .name = "TRACE_NO_NAME"},
        {.bit = TRACE_NO_LINE, .name = "TRACE_NO_LINE"},
        {.bit = TRACE_NO_LEVEL, .name = "TRACE_NO_LEVEL"},
        {.bit = TRACE_NO_COLOR, .name = "TRACE_NO_COLOR"},
        {.bit = TRACE_PID_IN_NAME, .name = "TRACE_PID_IN_NAME"},
        {.bit = TRACE_CRASH_DUMP, .name = "TRACE_CRASH_DUMP"},
    }};
    const std::string docs = Docs();
    for (const Setting& setting : kSettings) {
        std::ostringstream row;
        row << "| 0x" << std::hex << setting.bit << " | `" << setting.name << "` |";
        EXPECT_NE(std::string::npos, docs.find(row.str())) << row.str();
    }
}

TEST(TraceDocs, ShowALineAsItIsWritten) {
    std::tm local{};
    local.tm_year = 125;
    local.tm_mon = 8;
    local.tm_mday = 8;
    local.tm_hour = 14;
    local.tm_min = 5;
    local.tm_sec = 23;
    const SecondText second = TextOfSecond(local, -7200);
    std::array<char, kMostPrefixBytes> area;
    BoundedText prefix(area);
    PutPrefix(prefix, {.settings = kSettingsAtStart,
                       .time = {.second = &second, .fraction = 1234567},
                       .processId = 4312,
                       .threadId = 8876,
                       .loggerName = "Dialwright",
                       .sourceLine = kLevelRows[0].sourceLine,
                       .levelText = kLevelRows[0].text});
    const std::string line = "\n" + std::string(prefix.View()) + "Window::SetTextHelper: Setting text\n";
    EXPECT_NE(std::string::npos, Docs().find(line)) << line;
}

}  // namespace
}  // namespace dialwright
