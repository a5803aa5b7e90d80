#include "run/target.h"

#include <array>
#include <cstdint>

#include "look/integrity.h"
#include "look/unique_handle.h"

namespace dialwright::tools {
namespace {

constexpr std::chrono::milliseconds kStays{500};

std::uint32_t OwnIntegrity() {
    static const std::uint32_t own = IntegrityOf(::GetCurrentProcess()).value_or(SECURITY_MANDATORY_MEDIUM_RID);
    return own;
}

}  // namespace

bool OthersMayHaveMoreRights() { return OwnIntegrity() < SECURITY_MANDATORY_HIGH_RID; }

bool HasMoreRightsThanWe(HWND window) {
    if (!OthersMayHaveMoreRights()) return false;
    DWORD processId = 0;
    ::GetWindowThreadProcessId(window, &processId);
    const UniqueHandle process(::OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, processId));
    return process != nullptr && IntegrityOf(process.get()).value_or(0) > OwnIntegrity();
}

bool DoesNotAnswer(HWND window) {
    constexpr UINT kAnswerMs = 200;
    DWORD_PTR ignored = 0;
    return ::IsWindow(window) &&
           ::SendMessageTimeoutW(window, WM_NULL, 0, 0, SMTO_ABORTIFHUNG | SMTO_BLOCK, kAnswerMs, &ignored) == 0;
}

HWND OpenDialogOf(HWND window) {
    if (window == nullptr || ::IsWindowEnabled(window) || ::IsHungAppWindow(window)) return nullptr;
    const HWND popup = ::GetLastActivePopup(window);
    if (popup == nullptr || popup == window || !::IsWindowVisible(popup)) return nullptr;
    DWORD owner = 0;
    DWORD opener = 0;
    ::GetWindowThreadProcessId(window, &owner);
    ::GetWindowThreadProcessId(popup, &opener);
    return owner == opener ? popup : nullptr;
}

std::optional<std::wstring> DialogWatch::Look(HWND window) {
    const HWND dialog = OpenDialogOf(window);
    const auto now = std::chrono::steady_clock::now();
    const bool isNew = dialog != nullptr && dialog != before;
    if (!isNew) since.reset();
    if (isNew && !since) since = now;
    if (!isNew || now - *since < kStays) return std::nullopt;
    std::array<wchar_t, 256> title{};
    ::GetWindowTextW(dialog, title.data(), static_cast<int>(title.size()));
    return title.data();
}

}  // namespace dialwright::tools
