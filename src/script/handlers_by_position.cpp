#include <vector>

#include "language/splitting.h"
#include "script/check_state.h"
#include "script/dialog_script_manager.h"
#include "script/position_target.h"
#include "script/retry.h"
#include "trace/trace.h"

namespace dialwright {
namespace {

constexpr std::size_t kCoordinateCount = 4;

using ParseNumber = int (*)(const std::wstring& text, const std::wstring& what);

PositionTarget ParseTarget(const std::vector<std::wstring>& pieces, const std::wstring& tolerance, ParseNumber parse) {
    // Braces fix the order, so that the first bad value is the one that is reported.
    return {.left = parse(pieces[0], L"leftX"),
            .top = parse(pieces[1], L"topY"),
            .right = parse(pieces[2], L"rightX"),
            .bottom = parse(pieces[3], L"bottomY"),
            .tolerance = parse(tolerance, L"tolerance")};
}

bool HasCoordinateCount(const std::vector<std::wstring>& pieces, std::size_t count, const char* tag) {
    if (pieces.size() == count) return true;
    TraceLog(tag, LOG_ERROR, "Invalid number of coordinates");
    return false;
}

}  // namespace

int DialogScriptManager::ExecuteWindowSetTextPosition(const TokenList& tokens, bool useRegex, unsigned int timeoutMs) {
    const auto pieces = SplitByComma(tokens[3]);
    constexpr const char* kTag = "DialogScriptManager::ExecuteWindowSetTextPosition";
    if (!HasCoordinateCount(pieces, kCoordinateCount, kTag)) return 0;
    const PositionTarget target = ParseTarget(pieces, tokens[4], &ParseInt);
    const Window window(tokens[1], tokens[2], timeoutMs, useRegex);
    return RetryUntilTimeout(window, [&] { return Window::SetTextHelper(FindControl(window, target), tokens[5]); });
}

int DialogScriptManager::ExecuteWindowClickButtonPosition(const TokenList& tokens, bool useRegex,
                                                          unsigned int timeoutMs) {
    const auto pieces = SplitByComma(tokens[3]);
    constexpr const char* kTag = "DialogScriptManager::ExecuteWindowClickButtonPosition";
    if (!HasCoordinateCount(pieces, kCoordinateCount, kTag)) return 0;
    const PositionTarget target = ParseTarget(pieces, tokens[4], &ParseInt);
    const Window window(tokens[1], tokens[2], timeoutMs, useRegex);
    return RetryUntilTimeout(window, [&] { return Window::ClickHelper(FindControl(window, target)); });
}

// Kept on purpose: the two dropdown commands do not count the coordinates. Those past the fourth are ignored; too
// few fail the command without a message.

int DialogScriptManager::ExecuteDropdownValueByPosition(const TokenList& tokens, bool useRegex,
                                                        unsigned int timeoutMs) {
    const auto pieces = SplitByComma(tokens[3]);
    if (pieces.size() < kCoordinateCount) return 0;
    const PositionTarget target = ParseTarget(pieces, tokens[4], &ParseInt);
    const Window window(tokens[1], tokens[2], timeoutMs, useRegex);
    return RetryUntilTimeout(
        window, [&] { return Window::SelectDropdownByValueInternal(FindControl(window, target), tokens[5]); });
}

int DialogScriptManager::ExecuteDropdownIndexByPosition(const TokenList& tokens, bool useRegex,
                                                        unsigned int timeoutMs) {
    const auto pieces = SplitByComma(tokens[3]);
    if (pieces.size() < kCoordinateCount) return 0;
    const PositionTarget target = ParseTarget(pieces, tokens[4], &ParseInt);
    const int index = ParseInt(tokens[5], L"index");
    const Window window(tokens[1], tokens[2], timeoutMs, useRegex);
    return RetryUntilTimeout(window,
                             [&] { return Window::SelectDropdownByIndexInternal(FindControl(window, target), index); });
}

int DialogScriptManager::ExecuteWindowClearTextPosition(const TokenList& tokens, bool useRegex,
                                                        unsigned int timeoutMs) {
    const auto pieces = SplitByComma(tokens[3]);
    constexpr const char* kTag = "DialogScriptManager::ExecuteWindowClearTextPosition";
    if (!HasCoordinateCount(pieces, kCoordinateCount, kTag)) return 0;
    const PositionTarget target = ParseTarget(pieces, tokens[4], &ParseInt);
    const Window window(tokens[1], tokens[2], timeoutMs, useRegex);
    return RetryUntilTimeout(window, [&] { return Window::ClearTextHelper(FindControl(window, target)); });
}

int DialogScriptManager::ExecuteRadioByPosition(const TokenList& tokens, bool useRegex, unsigned int timeoutMs) {
    const auto pieces = SplitByComma(tokens[3]);
    constexpr const char* kTag = "DialogScriptManager::ExecuteRadioByPosition";
    if (!HasCoordinateCount(pieces, kCoordinateCount, kTag)) return 0;
    const PositionTarget target = ParseTarget(pieces, tokens[4], &ParseInt);
    Window window(tokens[1], tokens[2], timeoutMs, useRegex);
    return RetryCheckByPosition(window, target, kChecked, kRadioLabel);
}

int DialogScriptManager::ExecuteCheckboxByPosition(const TokenList& tokens, bool useRegex, unsigned int timeoutMs) {
    const auto pieces = SplitByComma(tokens[3]);
    constexpr const char* kTag = "DialogScriptManager::ExecuteCheckboxByPosition";
    if (!HasCoordinateCount(pieces, kCoordinateCount, kTag)) return 0;
    const PositionTarget target = ParseTarget(pieces, tokens[4], &ParseInt);
    const int state = ParseInt(tokens[5], L"state");
    if (!IsCheckboxState(state, kTag)) return 0;
    Window window(tokens[1], tokens[2], timeoutMs, useRegex);
    return RetryCheckByPosition(window, target, state, kCheckboxLabel);
}

int DialogScriptManager::ExecuteWindowMove(const TokenList& tokens, bool useRegex, unsigned int timeoutMs) {
    constexpr const char* kTag = "DialogScriptManager::ExecuteWindowMove";
    const auto position = SplitByComma(tokens[3]);
    const auto size = SplitByComma(tokens[4]);
    if (!HasCoordinateCount(position, 2, kTag)) return 0;
    if (size.size() != 2) {
        TraceLog(kTag, LOG_ERROR, "Invalid number of dimensions");
        return 0;
    }
    const int x = ParseInt(position[0], L"X position");
    const int y = ParseInt(position[1], L"Y position");
    const int width = ParseInt(size[0], L"width");
    const int height = ParseInt(size[1], L"height");
    return Window::MoveWindow(tokens, useRegex, timeoutMs, x, y, width, height) ? 1 : 0;
}

}  // namespace dialwright
