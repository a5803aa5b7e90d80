#include "look/ready_commands.h"

#include <algorithm>
#include <array>

#include "check/check.h"
#include "language/by_hand.h"
#include "run/command_line.h"
#include "target.h"

namespace dialwright::fuzz {
namespace {

using namespace tools;

constexpr std::size_t kStackBytes = std::size_t{512} * 1024;

std::wstring WithoutZeros(std::wstring text) {
    std::erase(text, L'\0');
    return text;
}

ControlInfo AnyControl(Input& input) {
    ControlInfo control;
    control.path = std::to_wstring(input.Between(1, 99)) + L"." + std::to_wstring(input.Between(1, 99));
    control.id = input.Any<int>();
    control.idIsOurs = input.Flag();
    if (input.Flag()) control.tolerance = input.Between(0, 8);
    control.kind = static_cast<ControlKind>(input.Between(0, static_cast<int>(ControlKind::Other)));
    control.rectangle = {input.Any<int>(), input.Any<int>(), input.Any<int>(), input.Any<int>()};
    return control;
}

void CheckLine(const std::wstring& line, const WindowInfo& window) {
    Require(testing::IsValidByHand(line), "a line that is written for a user is valid");
    Require(line.find(L'\n') == std::wstring::npos, "and is one line");
    const WindowCriteria criteria = ReadCommandLine(line).Criteria();
    Require(NameMatcher(criteria, kStackBytes).Takes(window.className, window.title), "and means the window");
    const SourceText source{.lines = {{.number = 1, .text = line}}};
    const auto findings = CheckScript(source);
    const auto isError = [](const Finding& finding) { return finding.Level() == Severity::Error; };
    Require(std::ranges::none_of(findings, isError), "and nothing in it must fail");
}

}  // namespace

void Try(Input input) {
    const ControlInfo control = AnyControl(input);
    const NamedBy wanted = input.OneOf(std::array{NamedBy::Id, NamedBy::Path, NamedBy::Rectangle});
    WindowInfo window;
    // As the system has it: a class has a name.
    window.className = L"c" + WithoutZeros(input.Text(30));
    window.title = WithoutZeros(input.RestAsText());
    for (const std::wstring& line : ReadyCommands(window, control, wanted)) CheckLine(line, window);
    for (const std::wstring& line : ReadyWindowCommands(window)) CheckLine(line, window);
}

}  // namespace dialwright::fuzz
