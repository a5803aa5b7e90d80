#include "trace/message_text.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <clocale>
#include <cstdarg>
#include <string>

namespace dialwright {
namespace {

std::string Format(const char* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    std::pmr::monotonic_buffer_resource memory;
    std::string text(FormatMessageText(memory, format, arguments));
    va_end(arguments);
    return text;
}

TEST(FormatMessageText, FormatsAsTheCRuntimeDoes) {
    EXPECT_EQ("plain", Format("plain"));
    EXPECT_EQ("", Format(""));
    EXPECT_EQ("-1 ms, 7 of 200000, 50%", Format("%d ms, %zu of %lld, 50%%", -1, std::size_t{7}, 200000LL));
    EXPECT_EQ("[   ab][cd   ]", Format("[%5s][%-5s]", "ab", "cd"));
    EXPECT_EQ("[ab]", Format("[%.2ls]", L"abcdef"));
    EXPECT_EQ("narrow wide", Format("%s %ls", "narrow", L"wide"));
}

TEST(FormatMessageText, TakesEveryTextInUtf8) {
    EXPECT_EQ("\xE6\x97\xA5\xE6\x9C\xAC", Format("%ls", L"\x65E5\x672C"));
    EXPECT_EQ("\xF0\x9F\x98\x80", Format("%ls", L"\xD83D\xDE00"));
    EXPECT_EQ(
        "a\xEF\xBF\xBD"
        "b",
        Format("%ls",
               L"a\xD83D"
               L"b"));
    EXPECT_EQ("\xEF\xBF\xBD", Format("%ls", L"\xDE00"));
    EXPECT_EQ("\xC3\xA9", Format("%ls", L"\x00E9"));
    EXPECT_EQ("%s%n 100%", Format("%ls", L"%s%n 100%"));
    const std::wstring large(200'000, L'\x3042');
    EXPECT_EQ(600'000U, Format("%ls", large.c_str()).size());
}

class LocaleKeeper {
public:
    explicit LocaleKeeper(const char* locale) { changed = std::setlocale(LC_ALL, locale) != nullptr; }
    ~LocaleKeeper() { std::setlocale(LC_ALL, "C"); }
    LocaleKeeper(const LocaleKeeper&) = delete;
    LocaleKeeper& operator=(const LocaleKeeper&) = delete;
    bool changed;
};

TEST(FormatMessageText, DoesNotDependOnTheHostsLocale) {
    for (const char* name : {".932", ".UTF-8", "C"}) {
        const LocaleKeeper locale(name);
        ASSERT_TRUE(locale.changed) << name;
        EXPECT_EQ("\xE6\x97\xA5 \xF0\x9F\x98\x80 \xC3\xBC", Format("%ls %s", L"\x65E5 \xD83D\xDE00", "\xFC")) << name;
    }
}

TEST(FormatMessageText, KnowsWideTextHoweverItIsAskedFor) {
    EXPECT_EQ("[  \xE3\x81\x82]", Format("[%3ls]", L"\x3042"));
    EXPECT_EQ("[\xE3\x81\x82  ]", Format("[%-3ls]", L"\x3042"));
    EXPECT_EQ("[\xE3\x81\x82]", Format("[%.*ls]", 1, L"\x3042\x3042"));
    EXPECT_EQ("\xE3\x81\x82", Format("%lc", wint_t{0x3042}));
    EXPECT_EQ("100% \xE3\x81\x82", Format("100%% %ls", L"\x3042"));
}

TEST(FormatMessageText, ReadsNarrowTextAsLatin1BesideWideTextAndWithoutIt) {
    EXPECT_EQ("\xC3\xA9\xC2\x80\xC3\xBF.", Format("%s", "\xE9\x80\xFF."));
    EXPECT_EQ("\xC3\xA9\xC2\x80\xC3\xBF.a", Format("%s%ls", "\xE9\x80\xFF.", L"a"));
}

TEST(FormatMessageText, GrowsItsBufferAsOftenAsItTakes) {
    for (const std::size_t length : {1022U, 1023U, 1024U, 1025U, 2047U, 2048U, 5000U}) {
        EXPECT_EQ(std::string(length, 'x'), Format("%s", std::string(length, 'x').c_str()));
        EXPECT_EQ(std::string(length, 'x'), Format("%ls", std::wstring(length, L'x').c_str()));
        EXPECT_EQ(std::string(length - 2, 'x') + "\xC3\xBC", Format("%s\xFC", std::string(length - 2, 'x').c_str()));
    }
}

std::string Indent(std::string_view message) {
    std::pmr::string text;
    AppendIndented(text, message);
    return std::string(text);
}

TEST(AppendIndented, IndentsEachLineButTheFirst) {
    const std::string indent(80, ' ');
    EXPECT_EQ("", Indent(""));
    EXPECT_EQ("one", Indent("one"));
    EXPECT_EQ("one\n", Indent("one\n"));
    EXPECT_EQ("one\n" + indent + "two", Indent("one\ntwo"));
    EXPECT_EQ("one\n" + indent + "two\n", Indent("one\ntwo\n"));
    EXPECT_EQ("\n" + indent + "\n" + indent + "x", Indent("\n\nx"));
}

}  // namespace
}  // namespace dialwright
