#include "trace/plain_format.h"

#include <gtest/gtest.h>

#include <array>
#include <climits>
#include <cstdarg>
#include <cstdint>
#include <memory_resource>
#include <optional>
#include <string>

#include "trace/message_text.h"

namespace dialwright {
namespace {

struct Both {
    std::optional<std::string> plain;
    std::string byRuntime;
};

Both FormatIn(std::size_t room, const char* format, std::va_list arguments) {
    std::string area(room, '?');
    const auto plain = FormatPlain(area, format, arguments);
    std::pmr::monotonic_buffer_resource memory;
    return {plain ? std::optional(std::string(*plain)) : std::nullopt,
            std::string(FormatByRuntime(memory, format, arguments))};
}

Both Format(const char* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    Both both = FormatIn(1024, format, arguments);
    va_end(arguments);
    return both;
}

Both FormatInto(std::size_t room, const char* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    Both both = FormatIn(room, format, arguments);
    va_end(arguments);
    return both;
}

void ExpectTheSame(const Both& both) {
    ASSERT_TRUE(both.plain.has_value()) << both.byRuntime;
    EXPECT_EQ(both.byRuntime, both.plain.value_or(""));
}

void ExpectLeftToTheRuntime(const Both& both) { EXPECT_FALSE(both.plain.has_value()) << both.plain.value_or(""); }

TEST(FormatPlain, WritesTextAndNumbersAsTheRuntimeDoes) {
    for (const char* text : {"", "plain", "line\nline\n", "100%%", "%%", "%%%%d", "a%%b%%c", "\x01\x1F\x7F"}) {
        SCOPED_TRACE(text);
        ExpectTheSame(Format(text));
    }
    for (const int number : {0, 1, -1, 9, 10, -10, 1'000'000, INT_MAX, INT_MIN}) ExpectTheSame(Format("[%d]", number));
    for (const std::size_t number : {std::size_t{0}, std::size_t{42}, SIZE_MAX}) ExpectTheSame(Format("%zu!", number));
    ExpectTheSame(Format("%d%d%zu%%%d", 1, -2, std::size_t{3}, 4));
}

TEST(FormatPlain, WritesNarrowTextAsTheRuntimeDoes) {
    for (const char* text :
         {"", "Sign in", "%d%s%n", "\xE9\x80\xFF\x7F", "two\nlines", static_cast<const char*>(nullptr)}) {
        ExpectTheSame(Format("%s", text));
        ExpectTheSame(Format("<%s> and %ls", text, L"wide"));
    }
}

TEST(FormatPlain, WritesEveryNarrowByteAsTheRuntimeDoes) {
    for (int byte = 1; byte < 256; ++byte) {
        const std::string text(1, static_cast<char>(byte));
        ExpectTheSame(Format("[%s]", text.c_str()));
    }
}

TEST(FormatPlain, WritesWideTextAsTheRuntimeDoes) {
    for (const wchar_t* text :
         {L"", L"Sign in", L"%d%s%n", L"\x00E9\x07FF\x0800\xFFFF", static_cast<const wchar_t*>(nullptr)}) {
        ExpectTheSame(Format("%ls", text));
        ExpectTheSame(Format("'%ls' %s %ls", text, "narrow \xE9", text));
    }
}

TEST(FormatPlain, WritesEveryWideUnitThatIsNoSurrogateAsTheRuntimeDoes) {
    std::wstring text;
    for (unsigned int unit = 1; unit <= 0xFFFF; ++unit) {
        if (unit < 0xD800 || unit > 0xDFFF) text.push_back(static_cast<wchar_t>(unit));
        if (text.size() < 100 && unit != 0xFFFF) continue;
        ExpectTheSame(Format("%ls", text.c_str()));
        text.clear();
    }
}

TEST(FormatPlain, LeavesSurrogatesToTheRuntime) {
    ExpectLeftToTheRuntime(Format("%ls", L"\xD83D\xDE00"));
    ExpectLeftToTheRuntime(Format("%ls%ls", L"\xD83D", L"\xDE00"));
    ExpectLeftToTheRuntime(Format("%ls", L"\xDFFF"));
    ExpectLeftToTheRuntime(Format("%ls", L"\xD800"));
}

TEST(FormatPlain, LeavesEveryOtherSequenceToTheRuntime) {
    for (const char* format : {"%5d", "%-5d", "%05d", "%+d", "% d", "%.3d", "%ld", "%lld", "%u", "%x", "%c", "%i"}) {
        SCOPED_TRACE(format);
        ExpectLeftToTheRuntime(Format(format, 42));
    }
    for (const char* format : {"%5s", "%-5s", "%.2s", "%hs"}) {
        SCOPED_TRACE(format);
        ExpectLeftToTheRuntime(Format(format, "abc"));
    }
    for (const char* format : {"%5ls", "%.2ls", "%S", "%ws"}) {
        SCOPED_TRACE(format);
        ExpectLeftToTheRuntime(Format(format, L"abc"));
    }
    ExpectLeftToTheRuntime(Format("%p", static_cast<void*>(nullptr)));
    ExpectLeftToTheRuntime(Format("%5zu", std::size_t{1}));
    ExpectLeftToTheRuntime(Format("na\xEFve"));
}

TEST(FormatPlain, LeavesWhatDoesNotFitToTheRuntime) {
    for (const auto& [format, length] : {std::pair{"[%d]", 4U}, {"%d%%", 3U}, {"abc%d", 5U}}) {
        SCOPED_TRACE(format);
        ExpectTheSame(FormatInto(length, format, 12));
        ExpectLeftToTheRuntime(FormatInto(length - 1, format, 12));
    }
    ExpectTheSame(FormatInto(4, "%s", "abcd"));
    ExpectLeftToTheRuntime(FormatInto(3, "%s", "abcd"));
    ExpectLeftToTheRuntime(FormatInto(3, "%ls", static_cast<const wchar_t*>(nullptr)));
    ExpectLeftToTheRuntime(FormatInto(2, "%ls", L"\xFFFF"));
    ExpectLeftToTheRuntime(FormatInto(1, "%s", "\xE9"));
    ExpectLeftToTheRuntime(FormatInto(0, "a"));
    ExpectTheSame(FormatInto(0, ""));
}

}  // namespace
}  // namespace dialwright
