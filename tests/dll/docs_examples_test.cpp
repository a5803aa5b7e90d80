#include <gtest/gtest.h>

#include <fstream>
#include <string>
#include <utility>
#include <vector>

#include "language/commands.h"
#include "library.h"
#include "platform/windows.h"
#include "support/log_capture.h"
#include "support/practice_window.h"

namespace dialwright::testing {
namespace {

std::wstring Wide(const std::string& utf8) {
    const int units = ::MultiByteToWideChar(CP_UTF8, 0, utf8.data(), static_cast<int>(utf8.size()), nullptr, 0);
    std::wstring wide(static_cast<std::size_t>(units), L'\0');
    ::MultiByteToWideChar(CP_UTF8, 0, utf8.data(), static_cast<int>(utf8.size()), wide.data(), units);
    return wide;
}

/// The last cell of each row of the command table, without its code marks.
std::vector<std::wstring> Examples() {
    std::ifstream docs(COMMAND_DOCS);
    std::vector<std::wstring> examples;
    for (std::string line; std::getline(docs, line);) {
        if (!line.starts_with("| `Window.")) continue;
        const std::size_t end = line.rfind('`');
        const std::size_t begin = line.rfind('`', end - 1) + 1;
        examples.push_back(Wide(line.substr(begin, end - begin)));
    }
    return examples;
}

/// Which control an example is meant for: a position might hit a neighbour.
void ExpectTheControlOf(const std::wstring& command, PracticeWindow& target) {
    const std::pair<const wchar_t*, const char*> controls[] = {
        {L"Window.SetText", "sent 12 "},   {L"Window.ClickButton", "sent 21 "}, {L"Window.SelectDropdown", "sent 51 "},
        {L"Window.ClearText", "sent 15 "}, {L"Window.SelectRadio", "sent 42 "}, {L"Window.SetCheckbox", "sent 31 "},
    };
    for (const auto& [family, received] : controls) {
        if (!command.starts_with(family)) continue;
        const auto events = target.TakeEvents();
        ASSERT_FALSE(events.empty()) << ::testing::PrintToString(command);
        EXPECT_TRUE(events.front().starts_with(received)) << events.front();
    }
}

TEST(DocsExamples, ActOnThePracticeTarget) {
    const auto examples = Examples();
    ASSERT_EQ(kCommandCount, examples.size());
    // In place of the docs' title one of this run's own; nothing else is changed.
    const std::wstring documented = L"Dialwright practice";
    for (std::size_t i = 0; i < examples.size(); ++i) {
        PracticeWindow target;
        std::wstring line = examples[i];
        const std::size_t title = line.find(documented);
        ASSERT_NE(std::wstring::npos, title) << ::testing::PrintToString(line);
        line.replace(title, documented.size(), target.Title());
        EXPECT_TRUE(line.starts_with(std::wstring(kCommands[i].name) + L" ")) << ::testing::PrintToString(line);
        const LogCapture log;
        EXPECT_EQ(1, ExecuteCommand(line)) << ::testing::PrintToString(line);
        ExpectTheControlOf(std::wstring(kCommands[i].name), target);
    }
}

}  // namespace
}  // namespace dialwright::testing
