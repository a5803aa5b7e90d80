#include "doctor/facts.h"

#include <array>
#include <memory>

#include "look/integrity.h"
#include "look/unique_handle.h"
#include "platform/text_encoding.h"
#include "platform/windows.h"
#include "run/host_place.h"
#include "run/own_files.h"

#include <wtsapi32.h>

namespace dialwright::tools {
namespace {

std::string NameOfObject(HANDLE object) {
    std::array<wchar_t, 256> name{};
    if (object == nullptr || !::GetUserObjectInformationW(object, UOI_NAME, name.data(), sizeof name, nullptr))
        return {};
    return ToUtf8(name.data());
}

std::string InputDesktop() {
    const HDESK desktop = ::OpenInputDesktop(0, FALSE, DESKTOP_READOBJECTS);
    const std::string name = NameOfObject(desktop);
    if (desktop != nullptr) ::CloseDesktop(desktop);
    return name;
}

bool WindowStationIsVisible() {
    USEROBJECTFLAGS flags{};
    return ::GetUserObjectInformationW(::GetProcessWindowStation(), UOI_FLAGS, &flags, sizeof flags, nullptr) &&
           (flags.dwFlags & WSF_VISIBLE) != 0;
}

std::optional<bool> IsLocked(DWORD session) {
    wchar_t* data = nullptr;
    DWORD bytes = 0;
    if (!::WTSQuerySessionInformationW(WTS_CURRENT_SERVER_HANDLE, session, WTSSessionInfoEx, &data, &bytes)) return {};
    const std::unique_ptr<wchar_t, decltype(&::WTSFreeMemory)> freed(data, &::WTSFreeMemory);
    if (data == nullptr || bytes < sizeof(WTSINFOEXW)) return {};
    const auto* const info = reinterpret_cast<const WTSINFOEXW*>(data);
    if (info->Level != 1) return {};
    const LONG flags = info->Data.WTSInfoExLevel1.SessionFlags;
    if (flags == WTS_SESSIONSTATE_LOCK) return true;
    return flags == WTS_SESSIONSTATE_UNLOCK ? std::optional(false) : std::nullopt;
}

Integrity LevelOf(DWORD id) {
    if (id >= SECURITY_MANDATORY_SYSTEM_RID) return Integrity::System;
    if (id >= SECURITY_MANDATORY_HIGH_RID) return Integrity::High;
    return id >= SECURITY_MANDATORY_MEDIUM_RID ? Integrity::Medium : Integrity::Low;
}

std::optional<Integrity> LevelOfProcess(HANDLE process) {
    const auto id = IntegrityOf(process);
    return id ? std::optional(LevelOf(*id)) : std::nullopt;
}

void ReadTarget(Facts& facts, const WindowCriteria& criteria) {
    const WindowMatcher matcher(criteria);
    facts.target = TargetState::Missing;
    for (const WindowInfo& window : ListTopLevelWindows()) {
        if (!matcher.Takes(window)) continue;
        const UniqueHandle process(::OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, window.processId));
        if (process != nullptr) facts.targetIntegrity = LevelOfProcess(process.get());
        facts.target = facts.targetIntegrity ? TargetState::Known : TargetState::NoRight;
        return;
    }
}

std::uint32_t SystemCodePage() {
    std::array<wchar_t, 16> text{};
    DWORD bytes = sizeof text;
    if (::RegGetValueW(HKEY_LOCAL_MACHINE, L"SYSTEM\\CurrentControlSet\\Control\\Nls\\CodePage", L"ACP", RRF_RT_REG_SZ,
                       nullptr, text.data(), &bytes) != ERROR_SUCCESS) {
        return 0;
    }
    return static_cast<std::uint32_t>(::wcstoul(text.data(), nullptr, 10));
}

/// Whether the path survives the way through the code page, in which the library is told of it.
bool CanBeSpelled(const std::wstring& path) {
    std::string narrow(path.size() * 4, '\0');
    const int length = ::WideCharToMultiByte(CP_ACP, 0, path.data(), static_cast<int>(path.size()), narrow.data(),
                                             static_cast<int>(narrow.size()), nullptr, nullptr);
    std::wstring back(path.size() + 1, L'\0');
    const int units =
        ::MultiByteToWideChar(CP_ACP, 0, narrow.data(), length, back.data(), static_cast<int>(back.size()));
    back.resize(static_cast<std::size_t>(units));
    return back == path;
}

/// Whether a file can be made there, or in the nearest folder above that exists. It leaves nothing behind. The path
/// ends in a backslash.
bool CanBeWritten(std::wstring folder) {
    DWORD attributes = INVALID_FILE_ATTRIBUTES;
    for (; attributes == INVALID_FILE_ATTRIBUTES; attributes = ::GetFileAttributesW(folder.c_str())) {
        const std::size_t end = folder.rfind(L'\\');
        if (end == std::wstring::npos) return false;
        folder.erase(end);
    }
    if ((attributes & FILE_ATTRIBUTE_DIRECTORY) == 0) return false;
    const std::wstring name = folder + L"\\dialwright-doctor-" + std::to_wstring(::GetCurrentProcessId()) + L".tmp";
    const HANDLE file = ::CreateFileW(name.c_str(), GENERIC_WRITE | DELETE, FILE_SHARE_DELETE, nullptr, CREATE_NEW,
                                      FILE_ATTRIBUTE_TEMPORARY | FILE_FLAG_DELETE_ON_CLOSE, nullptr);
    if (file == INVALID_HANDLE_VALUE) return false;
    ::CloseHandle(file);
    return true;
}

void ReadSession(Facts& facts) {
    DWORD session = 0;
    ::ProcessIdToSessionId(::GetCurrentProcessId(), &session);
    facts.session = session;
    facts.windowStationIsVisible = WindowStationIsVisible();
    facts.isRemote = ::GetSystemMetrics(SM_REMOTESESSION) != 0;
    facts.isLocked = IsLocked(session);
    facts.inputDesktop = InputDesktop();
    facts.ownDesktop = NameOfObject(::GetThreadDesktop(::GetCurrentThreadId()));
}

void ReadDisplay(Facts& facts) {
    const DPI_AWARENESS awareness = ::GetAwarenessFromDpiAwarenessContext(::GetThreadDpiAwarenessContext());
    facts.isPerMonitorAware = awareness == DPI_AWARENESS_PER_MONITOR_AWARE;
    facts.dpi = ::GetDpiForSystem();
    facts.codePage = ::GetACP();
    facts.systemCodePage = SystemCodePage();
}

}  // namespace

std::string_view NameOf(Integrity integrity) {
    switch (integrity) {
        case Integrity::Low: return "low";
        case Integrity::Medium: return "medium";
        case Integrity::High: return "high";
        case Integrity::System: break;
    }
    return "system";
}

Facts ReadFacts(const Places& places, const std::optional<WindowCriteria>& target) {
    Facts facts;
    ReadSession(facts);
    facts.integrity = LevelOfProcess(::GetCurrentProcess());
    if (target) ReadTarget(facts, *target);
    ReadDisplay(facts);
    const std::wstring folder = FirstTraceFolder(places.workFolder).wstring() + L"\\";
    facts.traceFolder = ToUtf8(folder);
    facts.traceFolderLength = folder.size();
    facts.traceFolderCanBeSpelled = CanBeSpelled(folder);
    facts.traceFolderCanBeWritten = CanBeWritten(folder);
    facts.libraryPath = ToUtf8(places.library.wstring());
    facts.library = ReadProgramFile(places.library.wstring());
    facts.program = ReadProgramFile(OwnProgram().wstring());
    return facts;
}

}  // namespace dialwright::tools
