#include "run/message_table.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <regex>
#include <string>
#include <tuple>
#include <vector>

#include "run/format_match.h"
#include "run/log_message.h"
#include "run/reason.h"

namespace dialwright::tools {
namespace {

using Values = std::vector<std::string>;

TEST(MatchFormat, GivesWhatStandsInTheConversions) {
    const std::vector<std::tuple<const char*, const char*, std::optional<Values>>> rows = {
        {"plain", "plain", Values{}},
        {"plain", "plain!", std::nullopt},
        {"plain", "plai", std::nullopt},
        {"%ls", "", Values{""}},
        {"%ls", "any thing", Values{"any thing"}},
        {"ID: %d", "ID: -7", Values{"-7"}},
        {"ID: %d", "Id: -7", std::nullopt},
        {"%zu of %lld%s", "1 of 2", Values{"1", "2", ""}},
        {"Value '%ls' not found", "Value 'it's' not found' not found", Values{"it's' not found"}},
        {"segment: %ls in path: %ls", "segment: 3 in path: 2.3", Values{"3", "2.3"}},
        {"a\n%ls\nb", "a\nx\ny\nb", Values{"x\ny"}},
    };
    for (const auto& [format, text, expected] : rows) EXPECT_EQ(expected, MatchFormat(format, text)) << format;
}

TEST(MessageCollector, FoldsTheFurtherLinesOfAMessage) {
    MessageCollector collector;
    const std::string indent(80, ' ');
    collector.Add("Window::ClickHelper: Clicking button:");
    collector.Add(indent + "Handle: 0x1");
    collector.Add(indent + "ID:     2");
    collector.Add("Window::Window: Window search failed after 5ms");
    collector.Add("something else");
    ASSERT_EQ(3U, collector.All().size());
    EXPECT_EQ("Window::ClickHelper", collector.All()[0].tag);
    EXPECT_EQ("Clicking button:\nHandle: 0x1\nID:     2", collector.All()[0].text);
    EXPECT_EQ("Window search failed after 5ms", collector.All()[1].text);
    EXPECT_EQ("", collector.All()[2].tag);
    EXPECT_EQ("something else", collector.All()[2].text);
}

struct Call {
    std::string level;
    std::string format;
};

std::string TextOf(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

/// Every call of TraceLog in the library whose level is an error or a warning, with its format as the compiler sees it.
std::vector<Call> LoudCalls() {
    const std::regex call(R"re(TraceLog\(\s*[^;]*?,\s*(LOG_ERROR|LOG_WARNING),\s*((?:"(?:[^"\\]|\\.)*"\s*)+))re");
    const std::regex piece(R"re("((?:[^"\\]|\\.)*)")re");
    std::vector<Call> calls;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(LIBRARY_SOURCES)) {
        const std::string text = TextOf(entry.path());
        for (std::sregex_iterator found(text.begin(), text.end(), call), end; found != end; ++found) {
            const std::string literals = (*found)[2];
            std::string format;
            for (std::sregex_iterator part(literals.begin(), literals.end(), piece); part != end; ++part) {
                format += (*part)[1];
            }
            format = std::regex_replace(format, std::regex(R"(\\n)"), "\n");
            calls.push_back({.level = (*found)[1], .format = std::regex_replace(format, std::regex(R"(\\")"), "\"")});
        }
    }
    return calls;
}

bool HasRow(const Call& call) {
    const MessageLevel level = call.level == "LOG_ERROR" ? MessageLevel::Error : MessageLevel::Warning;
    for (const MessageRow& row : AllMessages()) {
        if (row.format == call.format && row.level == level) return true;
    }
    // Put together in the script loop out of an announcement and a line.
    return call.format == "%s: %ls";
}

TEST(AllMessages, HasEveryErrorAndWarningOfTheLibrary) {
    const std::vector<Call> calls = LoudCalls();
    EXPECT_GT(calls.size(), 30U);
    for (const Call& call : calls) EXPECT_TRUE(HasRow(call)) << call.level << " " << call.format;
}

TEST(AllMessages, HasNoErrorThatTheLibraryDoesNotWrite) {
    const std::vector<Call> calls = LoudCalls();
    for (const MessageRow& row : AllMessages()) {
        if (row.level != MessageLevel::Error && row.level != MessageLevel::Warning) continue;
        const bool written = std::ranges::any_of(calls, [&](const Call& call) { return row.format == call.format; });
        EXPECT_TRUE(written) << row.format;
    }
}

TEST(AllMessages, GivesEachFailureACodeAndASentence) {
    for (const MessageRow& row : AllMessages()) {
        const bool tellsWhy = row.role == MessageRole::Failure || row.role == MessageRole::Echo;
        EXPECT_EQ(tellsWhy, !row.code.empty()) << row.format;
        EXPECT_EQ(tellsWhy, !row.sentence.empty()) << row.format;
    }
}

TEST(AllMessages, HaveTheirCodesInTheDocs) {
    const std::string docs = TextOf(TOOL_DOCS);
    for (const MessageRow& row : AllMessages()) {
        if (row.code.empty()) continue;
        EXPECT_NE(std::string::npos, docs.find("`" + std::string(row.code) + "`")) << row.code;
    }
}

std::string CodeAfter(const std::vector<LogMessage>& messages) {
    Course course;
    course.Follow(messages);
    return course.WhyItFailed().code;
}

const LogMessage kFoundWindow{.tag = "Window::Window", .text = "Window found successfully. Parent Window Handle: 0x1F"};
const LogMessage kNoControl{.tag = "Window::FindChildControl", .text = "Child control not found - ID: 77"};
const LogMessage kNullButton{.tag = "Window::ClickHelper", .text = "ClickHelper - Null button handle"};
const LogMessage kFoundControl{.tag = "Window::FindChildControl::<lambda_1>::operator ()",
                               .text = "Found matching child control: Handle: 0x2A ID: 77"};
const LogMessage kDisabled{.tag = "Window::SetCheckState", .text = "Control (0x2A) is disabled or hidden"};

TEST(Course, TellsWhyTheLastAttemptFailed) {
    EXPECT_EQ("window_not_found", CodeAfter({}));
    EXPECT_EQ("window_not_found", CodeAfter({{"Window::Window", "Window search failed after 50ms"}}));
    EXPECT_EQ("no_time_left", CodeAfter({kFoundWindow}));
    EXPECT_EQ("control_not_found", CodeAfter({kFoundWindow, kNoControl, kNullButton}));
    EXPECT_EQ("control_disabled", CodeAfter({kFoundWindow, kNoControl, kFoundControl, kDisabled}));
    EXPECT_EQ("control_not_found", CodeAfter({kFoundWindow, kFoundControl, kDisabled, kNoControl}));
    EXPECT_EQ("action_failed", CodeAfter({kFoundWindow, kNoControl, kFoundControl}));
    EXPECT_EQ("control_not_found",
              CodeAfter({kFoundWindow, {"Window::GetControlHandle", "Standard dialog control handle: 0x0"}}));
}

TEST(Course, TellsTheSystemsErrorsApart) {
    EXPECT_EQ("access_denied", CodeAfter({kFoundWindow, {"Window::Close", "CloseWindow failed with error: 5"}}));
    EXPECT_EQ("window_was_hidden",
              CodeAfter({kFoundWindow, {"Window::Minimize", "MinimizeWindow failed with error: 0"}}));
    EXPECT_EQ("window_gone", CodeAfter({kFoundWindow, {"Window::Close", "CloseWindow failed with error: 1400"}}));
    EXPECT_EQ("action_failed", CodeAfter({kFoundWindow, {"Window::Close", "CloseWindow failed with error: 87"}}));
    const char* const tag = "DialogScriptManager::ExecuteCommand";
    EXPECT_EQ("out_of_memory", CodeAfter({{tag, "Exception during command execution: std::bad_alloc"}}));
    EXPECT_EQ("bad_argument", CodeAfter({{tag, "Exception during command execution: invalid stoi argument"}}));
}

TEST(Course, PrefersTheReasonToItsEcho) {
    Course course;
    course.Follow(std::vector<LogMessage>{kFoundWindow, kNoControl, kNullButton});
    EXPECT_EQ("no control in the window has the ID 77", course.WhyItFailed().sentence);
    EXPECT_EQ(reinterpret_cast<HWND>(std::uintptr_t{0x1F}), course.Window());
    EXPECT_FALSE(course.IsActing());
    course.Follow(std::vector<LogMessage>{kFoundWindow, kNoControl, kNullButton, kFoundControl});
    EXPECT_TRUE(course.IsActing());
    EXPECT_EQ(reinterpret_cast<HWND>(std::uintptr_t{0x2A}), course.Control());
}

}  // namespace
}  // namespace dialwright::tools
