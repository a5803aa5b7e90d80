#pragma once

#include <string>
#include <vector>

#include "support/child_process.h"
#include "support/temporary_folder.h"

namespace dialwright {

/// A folder of its own with copies of a host and the library, so that the host's trace files are its own too.
class HostFolder {
public:
    explicit HostFolder(const std::wstring& ending = L"") : folder(ending) {
        for (const wchar_t* name : {L"load_host.exe", L"crash_host.exe", L"Dialwright.dll", L"DialwrightProbe.dll"}) {
            ::CopyFileW((testing::ProgramFolder() + name).c_str(), folder.File(name).c_str(), TRUE);
        }
    }

    [[nodiscard]] std::wstring LoadHost() const { return folder.File(L"load_host.exe"); }
    [[nodiscard]] std::wstring CrashHost() const { return folder.File(L"crash_host.exe"); }
    [[nodiscard]] std::wstring TraceFolder() const { return folder.File(L"logs\\trace\\"); }
    /// "" or "_error" for the part between number and extension.
    [[nodiscard]] std::wstring TraceFile(const std::wstring& part = L"") const {
        DWORD session = 0;
        ::ProcessIdToSessionId(::GetCurrentProcessId(), &session);
        return TraceFolder() + L"load_host.exe_" + std::to_wstring(session) + L"_Dialwright_1" + part + L".log";
    }
    [[nodiscard]] const testing::TemporaryFolder& Folder() const { return folder; }

private:
    testing::TemporaryFolder folder;
};

}  // namespace dialwright
