#include "lines.h"

#include <algorithm>

#include "language/commands.h"

namespace dialwright::fuzz {
namespace {

constexpr std::wstring_view kNoWindow = L" \"No such class of windows\" \"No such title [0-9]+\"";
constexpr std::wstring_view kArguments[] = {L"c",
                                            L"\"two words\"",
                                            L"12",
                                            L"\"\"",
                                            L"\"a\\\"b\"",
                                            L"1,2,3,4",
                                            L"0",
                                            L"\"open",
                                            L"2.1",
                                            L"\x3042",
                                            L"\"\\\\\"",
                                            L"\v",
                                            L"\"",
                                            L"-1",
                                            L".*",
                                            L"%s%n%ls",
                                            L"((((a*)",
                                            L"\xD83D",
                                            L"\xDE00\xD83D",
                                            L"2147483648",
                                            L"-99999999999999999999",
                                            L"1,2,3,",
                                            L"[a-"};
constexpr std::wstring_view kUnits = L"Wa.\"\"\\\\ \t\v\r\n#1,09-+%${}()[]*?\x00A0\x2028\x3042\xD83D\xDE00\xFFFF";

std::wstring RightArgument(ArgumentKind kind) {
    switch (kind) {
        case ArgumentKind::ControlPath: return L"2.1";
        case ArgumentKind::Rectangle: return L"1,2,3,4";
        case ArgumentKind::Position:
        case ArgumentKind::Size: return L"10,20";
        case ArgumentKind::Text:
        case ArgumentKind::ItemText: return L"\"some text\"";
        default: return L"1";
    }
}

}  // namespace

std::wstring Lines::Build(bool readable) {
    const CommandSpec* spec = &OneOf(kCommands);
    const auto isLate = [](const CommandSpec& command) {
        // A path is read when its window is there.
        return command.Arguments().empty() || command.Arguments()[0] == ArgumentKind::ControlPath;
    };
    while (!readable && isLate(*spec)) spec = &OneOf(kCommands);
    std::wstring line(spec->name);
    if (OneIn(3)) line += L".NonRegex";
    line += kNoWindow;
    bool isFirst = true;
    for (const ArgumentKind kind : spec->Arguments()) {
        line += L" " + (!readable && isFirst ? L"x" : RightArgument(kind));
        isFirst = false;
    }
    return line + L" 1";
}

std::wstring Lines::Right() { return Build(true); }

std::wstring Lines::Unreadable() { return Build(false); }

std::wstring Lines::Argument() { return OneIn(8) ? Junk() : std::wstring(OneOf(kArguments)); }

void Lines::Change(std::wstring& line) {
    const std::size_t at = Below(line.size() + 1);
    const std::size_t length = Below((std::min)(line.size() - at, std::size_t{12}) + 1);
    switch (Below(6)) {
        case 0: line.erase(at, length); break;
        case 1: line.insert(at, line.substr(at, length)); break;
        case 2: line.insert(at, 1, OneOf(kUnits)); break;
        case 3: line.insert(at, L" " + Argument() + L" "); break;
        case 4: line += L" " + Argument(); break;
        default:
            if (at < line.size()) line[at] = OneOf(kUnits);
            break;
    }
}

std::wstring Lines::Changed() {
    std::wstring line = OneIn(2) ? Right() : Unreadable();
    for (std::size_t changes = Below(4); changes > 0; --changes) Change(line);
    return line;
}

std::wstring Lines::Junk() {
    const std::size_t most = OneIn(2000) ? 20'000 : OneIn(50) ? 600 : 12;
    std::wstring junk(Below(most), L' ');
    for (wchar_t& unit : junk) unit = OneIn(3) ? static_cast<wchar_t>(1 + Below(0xFFFF)) : OneOf(kUnits);
    return junk;
}

std::wstring Lines::Script() {
    std::wstring script;
    for (std::size_t lines = Below(5); lines > 0; --lines) {
        const std::size_t kind = Below(12);
        if (kind < 7) script += Unreadable();
        if (kind >= 7 && kind < 10) script += Changed();
        if (kind == 10) script += Junk();
        script += OneIn(6) ? L"\r\n" : L"\n";
    }
    return script;
}

std::wstring Lines::NoProgram() {
    const std::wstring path = L"Z:\\no such folder\\" + Junk();
    return OneIn(3) ? L"\"" + path + L"\"" : path;
}

}  // namespace dialwright::fuzz
