// A program with windows to search, to look into and to act upon. It ends with the program that it works for.

#include <string>

#include "arguments.h"
#include "platform/windows.h"
#include "target_names.h"

using namespace dialwright;

namespace {

HANDLE settled = nullptr;

LRESULT CALLBACK HandleMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message != bench::kSettle) return ::DefWindowProcW(window, message, wParam, lParam);
    ::SetEvent(settled);
    return 0;
}

bool RegisterTargetClass() {
    WNDCLASSW windowClass{};
    windowClass.lpfnWndProc = &HandleMessage;
    windowClass.hInstance = ::GetModuleHandleW(nullptr);
    windowClass.lpszClassName = bench::kTargetClass;
    return ::RegisterClassW(&windowClass) != 0;
}

HWND CreateTop(const std::wstring& title, DWORD style) {
    return ::CreateWindowExW(0, bench::kTargetClass, title.c_str(), WS_OVERLAPPEDWINDOW | style, 40, 40, 900, 700,
                             nullptr, nullptr, ::GetModuleHandleW(nullptr), nullptr);
}

HWND CreateChild(HWND parent, const wchar_t* className, int id, DWORD style, const RECT& place) {
    return ::CreateWindowExW(0, className, L"Control", WS_CHILD | WS_VISIBLE | style, place.left, place.top,
                             place.right, place.bottom, parent, reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)),
                             ::GetModuleHandleW(nullptr), nullptr);
}

void CreateControls(HWND window) {
    CreateChild(window, L"Edit", bench::kEditId, ES_AUTOHSCROLL, {10, 10, 300, 24});
    CreateChild(window, L"Button", bench::kButtonId, BS_PUSHBUTTON, {10, 50, 100, 24});
    CreateChild(window, L"Button", bench::kCheckId, BS_CHECKBOX, {10, 90, 100, 24});
    const HWND combo = CreateChild(window, L"ComboBox", bench::kComboId, CBS_DROPDOWNLIST, {10, 130, 200, 200});
    for (const wchar_t* item : {L"Invoice", L"Credit card", bench::kItem}) {
        ::SendMessageW(combo, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(item));
    }
}

void CreateSiblings(HWND parent, int count) {
    for (int i = 0; i < count; ++i)
        CreateChild(parent, L"Static", bench::kFirstChildId + i, 0, {i % 40 * 20, i / 40 * 20, 18, 18});
}

void CreateChain(HWND parent, int depth) {
    for (int i = 0; i < depth && parent != nullptr; ++i) {
        parent = CreateChild(parent, bench::kTargetClass, bench::kFirstChildId + i, 0, {1, 1, 600, 400});
    }
}

HANDLE OpenHostsEvent(DWORD host, const wchar_t* name) {
    return ::OpenEventW(EVENT_MODIFY_STATE, FALSE, bench::EventName(host, name).c_str());
}

void PumpWhile(HANDLE host) {
    while (::MsgWaitForMultipleObjects(1, &host, FALSE, INFINITE, QS_ALLINPUT) != WAIT_OBJECT_0) {
        MSG message{};
        while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) ::DispatchMessageW(&message);
    }
}

}  // namespace

int main(int count, char** values) {
    const bench::Arguments arguments(
        count, values,
        "usage: bench_target --host PROCESS-ID --windows N --children N --depth N\n\n"
        "Started by the benchmarks: so many hidden windows, a window of controls, one with so many children and one\n"
        "with a chain of children. Sets the event of its host when they are there, and ends with its host.\n",
        {"--host", "--windows", "--children", "--depth"});
    const auto hostId = static_cast<DWORD>(arguments.Number("--host"));
    const HANDLE host = ::OpenProcess(SYNCHRONIZE, FALSE, hostId);
    const HANDLE ready = OpenHostsEvent(hostId, L"ready");
    settled = OpenHostsEvent(hostId, L"settled");
    if (host == nullptr || ready == nullptr || settled == nullptr || !RegisterTargetClass()) return 1;

    const auto title = [&](const std::wstring& name) { return bench::TargetTitle(hostId, name); };
    for (int i = arguments.Number("--windows"); i > 0; --i) CreateTop(title(L"window " + std::to_wstring(i)), 0);
    CreateSiblings(CreateTop(title(bench::kFlatWindow), 0), arguments.Number("--children"));
    CreateChain(CreateTop(title(bench::kDeepWindow), 0), arguments.Number("--depth"));
    CreateControls(CreateTop(title(bench::kControlsWindow), WS_VISIBLE));
    ::SetEvent(ready);
    PumpWhile(host);
    return 0;
}
