#include "commands.h"

#include <iostream>
#include <map>
#include <memory>
#include <sstream>
#include <string>
#include <thread>

#include "layout.h"
#include "platform/text_encoding.h"
#include "process_figures.h"
#include "recorder.h"

namespace practice {
namespace {

std::wstring FromUtf8(const std::string& text) {
    const int units = ::MultiByteToWideChar(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), nullptr, 0);
    std::wstring wide(static_cast<std::size_t>(units), L'\0');
    ::MultiByteToWideChar(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), wide.data(), units);
    return wide;
}

std::wstring Rest(std::wistringstream& words) {
    std::wstring rest;
    std::getline(words >> std::ws, rest);
    return rest;
}

RECT ReadPlace(std::wistringstream& words) {
    RECT place{};
    wchar_t comma = 0;
    words >> place.left >> comma >> place.top >> comma >> place.right >> comma >> place.bottom;
    return place;
}

std::map<UINT_PTR, std::wstring>& Delayed() {
    static std::map<UINT_PTR, std::wstring> delayed;
    return delayed;
}

HWND delayedWindow = nullptr;
constexpr UINT kExitCodeOfDeath = 99;

void CALLBACK RunDelayed(HWND, UINT, UINT_PTR timer, DWORD) {
    ::KillTimer(nullptr, timer);
    const std::wstring line = Delayed()[timer];
    Delayed().erase(timer);
    RunCommand(delayedWindow, line);
}

void RunAfter(HWND window, UINT milliseconds, const std::wstring& line) {
    delayedWindow = window;
    Delayed()[::SetTimer(nullptr, 0, milliseconds, &RunDelayed)] = line;
}

void RunControlCommand(HWND window, const std::wstring& verb, std::wistringstream& words) {
    int id = 0;
    words >> id;
    const HWND control = ::GetDlgItem(window, id);
    int flag = 0;
    if (control == nullptr) {
        Print("error no such control, or no such command");
    } else if (verb == L"destroy") {
        ::DestroyWindow(control);
    } else if (verb == L"enable" && words >> flag) {
        ::EnableWindow(control, flag);
    } else if (verb == L"show" && words >> flag) {
        ::ShowWindow(control, flag != 0 ? SW_SHOW : SW_HIDE);
    } else if (verb == L"move") {
        const RECT place = ReadPlace(words);
        ::MoveWindow(control, place.left, place.top, place.right, place.bottom, TRUE);
    } else {
        Print("error unknown command");
    }
}

void CreateByCommand(HWND window, std::wistringstream& words) {
    std::wstring kind;
    int id = 0;
    int parentId = 0;
    words >> kind >> id;
    const RECT place = ReadPlace(words);
    words >> parentId;
    const HWND parent = parentId == 0 ? window : ::GetDlgItem(window, parentId);
    if (CreateControl(parent, kind, id, place, Rest(words)) == nullptr) Print("error cannot create");
}

void RunWindowCommand(HWND window, const std::wstring& verb, std::wistringstream& words) {
    if (verb == L"title") {
        ::SetWindowTextW(window, Rest(words).c_str());
    } else if (verb == L"window") {
        int show = 0;
        words >> show;
        ::ShowWindow(window, show);
    } else if (verb == L"close") {
        ::DestroyWindow(window);
    } else if (verb == L"front") {
        ::SetForegroundWindow(window);
    } else if (verb == L"place") {
        const RECT place = ReadPlace(words);
        ::MoveWindow(window, place.left, place.top, place.right, place.bottom, TRUE);
    } else if (verb == L"open") {
        std::wstring windowClass;
        words >> windowClass;
        CreatePlainWindow(windowClass, Rest(words), false);
    } else {
        RunControlCommand(window, verb, words);
    }
}

/// LPARAM is a std::wstring* to run and delete, or null at the end of the input.
constexpr UINT kRunCommand = WM_APP + 1;

LRESULT CALLBACK ChannelProc(HWND channel, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message != kRunCommand) return ::DefWindowProcW(channel, message, wParam, lParam);
    const std::unique_ptr<std::wstring> line(reinterpret_cast<std::wstring*>(lParam));
    if (line != nullptr) {
        RunCommand(reinterpret_cast<HWND>(::GetWindowLongPtrW(channel, GWLP_USERDATA)), *line);
    } else {
        ::PostQuitMessage(0);
    }
    return 0;
}

/// A window without a face: commands queue up behind what was posted to the target before them.
HWND OpenChannel(HWND window) {
    WNDCLASSEXW definition{};
    definition.cbSize = sizeof definition;
    definition.lpfnWndProc = &ChannelProc;
    definition.hInstance = ::GetModuleHandleW(nullptr);
    definition.lpszClassName = L"PracticeCommands";
    ::RegisterClassExW(&definition);
    const HWND channel = ::CreateWindowExW(0, definition.lpszClassName, L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                                           definition.hInstance, nullptr);
    ::SetWindowLongPtrW(channel, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(window));
    return channel;
}

}  // namespace

void RunCommand(HWND window, const std::wstring& line) {
    std::wistringstream words(line);
    std::wstring verb;
    words >> verb;
    if (verb == L"mark") {
        Print("mark " + dialwright::ToUtf8(Rest(words)));
    } else if (verb == L"after") {
        UINT milliseconds = 0;
        words >> milliseconds;
        RunAfter(window, milliseconds, Rest(words));
    } else if (verb == L"hang") {
        DWORD milliseconds = 0;
        words >> milliseconds;
        Print("hanging");
        ::Sleep(milliseconds);
    } else if (verb == L"die") {
        ::TerminateProcess(::GetCurrentProcess(), kExitCodeOfDeath);
    } else if (verb == L"figures") {
        const auto figures = dialwright::testing::ProcessFigures::Now();
        constexpr unsigned kKibibyte = 1024;
        Print("figures " + std::to_string(figures.threads) + " " + std::to_string(figures.handles) + " " +
              std::to_string(figures.privateBytes / kKibibyte) + " " + std::to_string(figures.guiObjects));
    } else if (verb == L"create") {
        CreateByCommand(window, words);
    } else {
        RunWindowCommand(window, verb, words);
    }
}

void TakeCommands(HWND window) {
    const HWND channel = OpenChannel(window);
    std::thread([channel] {
        for (std::string line; std::getline(std::cin, line);) {
            if (!line.empty() && line.back() == '\r') line.pop_back();
            auto command = std::make_unique<std::wstring>(FromUtf8(line));
            ::PostMessageW(channel, kRunCommand, 0, reinterpret_cast<LPARAM>(command.release()));
        }
        ::PostMessageW(channel, kRunCommand, 0, 0);
    }).detach();
}

}  // namespace practice
