// What the launch tests start: tells how it was started, in a file beside it that is named after its process ID.

#include <array>
#include <cstdio>
#include <string>

#include "platform/text_encoding.h"
#include "platform/windows.h"

int main() {
    std::array<wchar_t, MAX_PATH> program{};
    std::array<wchar_t, MAX_PATH> folder{};
    ::GetModuleFileNameW(nullptr, program.data(), static_cast<DWORD>(program.size()));
    ::GetCurrentDirectoryW(static_cast<DWORD>(folder.size()), folder.data());
    const std::wstring path = program.data();
    const std::wstring report =
        path.substr(0, path.rfind(L'\\') + 1) + L"launched-" + std::to_wstring(::GetCurrentProcessId()) + L".txt";
    // Written under another name first: whoever waits for the file must find it whole.
    const std::wstring unfinished = report + L".new";
    std::FILE* file = ::_wfopen(unfinished.c_str(), L"wb");
    if (file == nullptr) return 1;
    const std::wstring told = path + L"\n" + ::GetCommandLineW() + L"\n" + folder.data() + L"\n";
    std::fputs(dialwright::ToUtf8(told).c_str(), file);
    std::fclose(file);
    return ::MoveFileW(unfinished.c_str(), report.c_str()) ? 0 : 1;
}
