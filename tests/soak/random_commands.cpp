#include "random_commands.h"

#include <array>

#include "support/windows_of_others.h"

namespace dialwright::testing {
namespace {

/// The timeout tells the command's number: long enough, and it stands in the trace.
constexpr int kFirstTimeout = 100'000;
constexpr std::wstring_view kLetters = L"abcXYZ019 %\"\\_\u00E4\u00E9\u65E5\u672C\u0416";
constexpr int kMostJitter = 2;
constexpr std::array<const wchar_t*, 3> kItems = {L"Alpha", L"Beta", L"Gamma"};
constexpr std::array<const wchar_t*, 3> kItemsInOtherCase = {L"ALPHA", L"beta", L"gAMMA"};

std::wstring Quoted(const std::wstring& text) {
    std::wstring quoted = L"\"";
    for (const wchar_t unit : text) {
        if (unit == L'"' || unit == L'\\') quoted.push_back(L'\\');
        quoted.push_back(unit);
    }
    return quoted + L"\"";
}

std::string Narrow(const std::wstring& ascii) {
    std::string narrow;
    for (const wchar_t unit : ascii) narrow.push_back(static_cast<char>(unit));
    return narrow;
}

}  // namespace

RandomCommand RandomCommands::Next() {
    ++number;
    struct Row {
        int weight;
        RandomCommand (RandomCommands::*make)();
    };
    static constexpr std::array<Row, 9> kRows = {{{350, &RandomCommands::MakeEdit},
                                                  {120, &RandomCommands::MakeClick},
                                                  {150, &RandomCommands::MakeCheck},
                                                  {80, &RandomCommands::MakeRadio},
                                                  {150, &RandomCommands::MakeDropdown},
                                                  {80, &RandomCommands::MakeWindow},
                                                  {45, &RandomCommands::MakeRefused},
                                                  {10, &RandomCommands::MakeUnreadablePath},
                                                  {15, &RandomCommands::MakeLateFailure}}};
    int left = Below(1000);
    for (const Row& row : kRows) {
        if (left < row.weight) return (this->*row.make)();
        left -= row.weight;
    }
    return {};
}

template <class... Kinds>
std::size_t RandomCommands::PickControl(Kinds... kinds) {
    for (;;) {
        const auto control = static_cast<std::size_t>(Below(static_cast<int>(fixture.controls.size())));
        if (((fixture.controls[control].kind == kinds) || ...)) return control;
    }
}

RandomCommands::Address RandomCommands::PickAddress(std::size_t index) {
    const FixtureControl& control = fixture.controls[index];
    for (;;) {
        const int way = Below(4) % 3;  // positions fill the trace most: no more often than needed
        if (way == kById && control.reachedById) {
            return {.control = index, .way = way, .argument = std::to_wstring(control.id)};
        }
        if (way == kByPath) return {.control = index, .way = way, .argument = PathText(control)};
        if (way != kByPosition || !model.IsNormal()) continue;
        const int jitter = Below(kMostJitter + 1);
        const Rectangle place{.left = control.place.left + jitter,
                              .top = control.place.top - jitter,
                              .right = control.place.right - jitter,
                              .bottom = control.place.bottom + jitter};
        return {.control = index, .way = way, .argument = RectangleArgument(place) + L" " + std::to_wstring(jitter)};
    }
}

std::wstring RandomCommands::PathText(const FixtureControl& control) const {
    std::wstring text;
    for (const int position : control.path) text += (text.empty() ? L"" : L".") + std::to_wstring(position);
    return text;
}

std::wstring RandomCommands::PickText(std::size_t length) {
    std::wstring text;
    for (std::size_t i = 0; i < length; ++i) {
        text.push_back(kLetters[static_cast<std::size_t>(Below(static_cast<int>(kLetters.size())))]);
    }
    return text;
}

RandomCommand RandomCommands::Begin(const std::wstring& name) {
    const bool literal = Below(2) == 0;
    RandomCommand command;
    command.line = name + (literal ? L".NonRegex " : L" ") + Quoted(fixture.windowClass) + L" " + Quoted(fixture.title);
    command.mark = "Timeout:  " + std::to_string(kFirstTimeout + number) + "ms";
    command.trace = {{"Window::Window", 2}};
    return command;
}

/// `stem` goes with an ID and `stemByPlace` with a path or position: "%" in them is the word for the way.
RandomCommand RandomCommands::BeginAt(const Address& address, const std::wstring& stem,
                                      const std::wstring& stemByPlace) {
    std::wstring name = stem;
    if (address.way != kById) {
        name = stemByPlace;
        name.replace(name.find(L'%'), 1, address.way == kByPath ? L"Path" : L"Position");
    }
    RandomCommand command = Begin(name);
    command.line += L" " + address.argument;
    command.control = address.control;
    NoteLookup(command, address);
    return command;
}

void RandomCommands::NoteLookup(RandomCommand& command, const Address& address) const {
    if (address.way == kById) {
        command.trace.push_back(
            {fixture.isDialog ? "Window::GetControlHandle" : "Window::FindChildControl::<lambda_1>::operator ()", 1});
    } else if (address.way == kByPath) {
        int records = 2;
        for (const int position : fixture.controls[address.control].path) records += 3 + position;
        command.trace.push_back({"Window::FindControlByHierarchy", records});
    } else {
        command.trace.push_back({"Window::FindControlByPosition", 1});
        command.trace.push_back({kEnumeration, kAnyCount});
        command.trace.push_back({"Window::FindControlByPosition", 1});
    }
}

void RandomCommands::End(RandomCommand& command) const {
    command.line += L" " + std::to_wstring(kFirstTimeout + number);
}

void RandomCommands::ExpectClick(const FixtureControl& control) {
    const std::string posted = "posted " + std::to_string(control.id);
    model.Expect(posted + " WM_LBUTTONDOWN");
    model.Expect(posted + " WM_LBUTTONUP");
}

RandomCommand RandomCommands::MakeEdit() {
    const std::size_t index = PickControl(ControlKind::Edit);
    const FixtureControl& control = fixture.controls[index];
    const std::string id = std::to_string(control.id);
    const Address address = PickAddress(index);
    RandomCommand command;
    if (!model.IsEmpty(index)) {
        command = BeginAt(address, L"Window.ClearText", L"Window.ClearText.%");
        command.trace.push_back({"Window::ClearTextHelper", 1});
        model.Clear(index);
        model.Expect("sent " + id + " WM_SETTEXT");
    } else {
        const std::wstring text = PickText(1 + static_cast<std::size_t>(Below(Below(20) == 0 ? 60 : 6)));
        command = BeginAt(address, L"Window.SetText", L"Window.SetText.%");
        command.line += L" " + Quoted(text);
        command.trace.push_back({"Window::SetTextHelper", 1});
        command.trace.push_back({"Window::SimulateMouseClick", 1});
        model.Type(index, text);
        model.Expect("sent " + id + " WM_CHAR", static_cast<int>(text.size()));
        ExpectClick(control);
    }
    model.Expect("posted " + control.parent + " WM_COMMAND " + id + " EN_CHANGE");
    End(command);
    return command;
}

RandomCommand RandomCommands::MakeClick() {
    const std::size_t index = PickControl(ControlKind::Push, ControlKind::AutoCheck, ControlKind::ManualCheck,
                                          ControlKind::ThreeState, ControlKind::Radio);
    const FixtureControl& control = fixture.controls[index];
    RandomCommand command = BeginAt(PickAddress(index), L"Window.ClickButton", L"Window.ClickButton.%");
    command.trace.push_back({"Window::ClickHelper", 1});
    command.trace.push_back({"Window::SimulateMouseClick", 1});
    command.clicks = true;
    model.Click(index);
    model.Expect("sent " + std::to_string(control.id) + " BM_CLICK");
    ExpectClick(control);
    model.Expect("inner " + control.parent + " WM_COMMAND " + std::to_string(control.id) + " BN_CLICKED", 2);
    End(command);
    return command;
}

RandomCommand RandomCommands::MakeCheck() {
    const std::size_t index = PickControl(ControlKind::AutoCheck, ControlKind::ManualCheck, ControlKind::ThreeState);
    const int state = Below(2);
    RandomCommand command = BeginAt(PickAddress(index), L"Window.SetCheckbox", L"Window.SetCheckbox.By%");
    command.line += L" " + std::to_wstring(state);
    command.trace.push_back({"Window::SetCheckState", 1});
    model.SetState(index, state);
    model.Expect("sent " + std::to_string(fixture.controls[index].id) + " BM_SETCHECK");
    End(command);
    return command;
}

RandomCommand RandomCommands::MakeRadio() {
    const std::size_t index = PickControl(ControlKind::Radio);
    RandomCommand command = BeginAt(PickAddress(index), L"Window.SelectRadio", L"Window.SelectRadio.By%");
    command.trace.push_back({"Window::SetCheckState", 1});
    model.SetState(index, 1);
    model.Expect("sent " + std::to_string(fixture.controls[index].id) + " BM_SETCHECK");
    End(command);
    return command;
}

RandomCommand RandomCommands::MakeDropdown() {
    const std::size_t index = PickControl(ControlKind::Dropdown);
    const std::string id = std::to_string(fixture.controls[index].id);
    const int item = Below(static_cast<int>(kItems.size()));
    const auto row = static_cast<std::size_t>(item);
    const Address address = PickAddress(index);
    RandomCommand command;
    if (Below(2) == 0) {
        command = BeginAt(address, L"Window.SelectDropdown.Value", L"Window.SelectDropdown.By%.Value");
        command.line += std::wstring(L" ") + (Below(2) == 0 ? kItems : kItemsInOtherCase)[row];
        model.Expect("sent " + id + " CB_FINDSTRINGEXACT");
    } else {
        command = BeginAt(address, L"Window.SelectDropdown.Index", L"Window.SelectDropdown.By%.Index");
        command.line += L" " + std::to_wstring(item);
        model.Expect("sent " + id + " CB_GETCOUNT");
    }
    model.Expect("sent " + id + " CB_SETCURSEL");
    model.SetState(index, item);
    End(command);
    return command;
}

RandomCommand RandomCommands::MakeWindow() {
    struct Row {
        const wchar_t* name;
        const char* function;
        void (Model::*change)();
    };
    static constexpr std::array<Row, 4> kRows = {
        {{L"Window.Restore", "Window::RestoreWindow", &Model::Restore},
         {L"Window.Minimize", "Window::MinimizeWindow", &Model::Minimize},
         {L"Window.Maximize", "Window::MaximizeWindow", &Model::Maximize},
         {L"Window.BringToFront", "Window::BringToFront", &Model::BringToFront}}};
    const int pick = Below(9);
    if (pick == 0) return MakeClose();
    const bool isShow = pick <= static_cast<int>(kRows.size());
    if (!isShow && model.IsNormal()) return MakeMove();
    const Row& row = kRows[isShow ? static_cast<std::size_t>(pick - 1) : 0];
    RandomCommand command = Begin(row.name);
    command.trace.push_back({row.function, 1});
    command.movesFocus = true;
    (model.*row.change)();
    End(command);
    return command;
}

RandomCommand RandomCommands::MakeMove() {
    const int x = Below(200) - 50;
    const int y = Below(200);
    const int width = 500 + Below(200);
    const int height = 330 + Below(100);
    RandomCommand command = Begin(L"Window.Move");
    command.line += L" " + std::to_wstring(x) + L"," + std::to_wstring(y) + L" " + std::to_wstring(width) + L"," +
                    std::to_wstring(height);
    command.trace.push_back({"Window::MoveWindow", 1});
    model.Move({.left = x, .top = y, .right = x + width, .bottom = y + height});
    End(command);
    return command;
}

/// The target refuses to close.
RandomCommand RandomCommands::MakeClose() {
    RandomCommand command = Begin(L"Window.Close");
    command.trace.push_back({"Window::CloseWindow", 1});
    model.Expect("posted window WM_CLOSE");
    End(command);
    return command;
}

/// Lines that fail before any window is looked for.
RandomCommand RandomCommands::MakeRefused() {
    struct Row {
        const wchar_t* name;
        const wchar_t* before;
        const wchar_t* behind;
        const char* mark;
        std::vector<FunctionRun> trace;
    };
    constexpr const char* kExecute = "DialogScriptManager::ExecuteCommand";
    constexpr const char* kParse = "DialogScriptManager::ParseInt";
    static const std::array<Row, 5> kRows = {
        {{L"Window.SetCheckbox",
          L"31 ",
          L"",
          "Invalid checkbox state: ",
          {{"DialogScriptManager::ExecuteCheckboxByID", 1}}},
         {L"Window.ClickButton", L"x", L"", "Invalid button ID: x", {{kParse, 1}, {kExecute, 1}}},
         {L"Window.SelectDropdown.Index", L"51 x", L"", "Invalid dropdown index: x", {{kParse, 1}, {kExecute, 1}}},
         {L"Window.Move", L"x", L",1 2,3", "Invalid X position: x", {{kParse, 1}, {kExecute, 1}}},
         {L"Window.Bogus", L"", L"", "Unknown command: Window.Bogus", {{kExecute, 1}}}}};
    const std::size_t choice = static_cast<std::size_t>(Below(static_cast<int>(kRows.size())));
    const Row& row = kRows[choice];
    const bool isUnknown = choice + 1 == kRows.size();
    const std::wstring shown = std::to_wstring(kFirstTimeout + number);
    RandomCommand command = Begin(isUnknown ? row.name + shown : row.name);
    if (!isUnknown) command.line += std::wstring(L" ") + row.before + shown + row.behind;
    command.result = 0;
    command.mark = row.mark + Narrow(shown);
    command.trace = row.trace;
    return command;
}

RandomCommand RandomCommands::MakeUnreadablePath() {
    RandomCommand command = Begin(L"Window.ClickButton.Path");
    command.line += L" 1.x";
    command.result = 0;
    constexpr int kRecords = 1 + 4 + 1;
    command.trace.push_back({"Window::FindControlByHierarchy", kRecords});
    command.trace.push_back({"DialogScriptManager::ExecuteCommand", 1});
    End(command);
    return command;
}

/// Lines that are tried until their time is up.
RandomCommand RandomCommands::MakeLateFailure() {
    struct Row {
        const wchar_t* name;
        const wchar_t* arguments;
        const char* perhaps;
    };
    static constexpr std::array<Row, 10> kRows = {
        {{L"Window.ClickButton", L"4711", nullptr},
         {L"Window.SetText.Path", L"23.1.9 x", nullptr},
         {L"Window.ClearText.Position", L"5000,5000,5001,5001 0", nullptr},
         {L"Window.SelectDropdown.Value", L"51 Delta", "sent 51 CB_FINDSTRINGEXACT"},
         {L"Window.SelectDropdown.Index", L"51 3", "sent 51 CB_GETCOUNT"},
         {L"Window.SelectDropdown.Index", L"51 -1", nullptr},
         {L"Window.SetCheckbox", L"21 1", nullptr},
         {L"Window.SetCheckbox", L"34 1", nullptr},
         {L"Window.SetCheckbox", L"35 1", nullptr},
         {L"Window.SelectRadio", L"4711", nullptr}}};
    const Row& row = kRows[static_cast<std::size_t>(Below(static_cast<int>(kRows.size())))];
    // The pattern matches the title all the same; the number in it stands in the trace.
    const std::wstring sign = L"(#" + std::to_wstring(number) + L")?";
    const bool hasWindow = Below(4) != 0;
    RandomCommand command;
    command.line = std::wstring(row.name) + L" " + Quoted(fixture.windowClass) + L" " +
                   Quoted((hasWindow ? L"" : L"no ") + fixture.title + sign) + L" " + row.arguments + L" 20";
    command.result = 0;
    command.mark = Narrow(sign);
    command.trace = {{"Window::Window", 1}};
    command.mayLeaveMore = true;
    if (hasWindow && row.perhaps != nullptr) model.ExpectPerhaps(row.perhaps);
    return command;
}

}  // namespace dialwright::testing
