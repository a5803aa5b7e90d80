#include "api/logging_setup.h"

#include <array>

#include "platform/windows.h"
#include "trace/bounded_text.h"
#include "trace/logger.h"

namespace dialwright {

TracePath LogFileName(std::string_view hostPath, unsigned long session) noexcept {
    std::array<char, 24> area;
    BoundedText number(area);
    number.PutNumber(session);
    TracePath name;
    // The whole path where it has no backslash.
    name.Assign(hostPath.substr(hostPath.rfind('\\') + 1));
    name.Append("_");
    name.Append(number.View());
    name.Append("_Dialwright.log");
    return name;
}

bool ConfigureLogging() noexcept {
    std::array<char, 260> host{};
    if (::GetModuleFileNameA(nullptr, host.data(), static_cast<DWORD>(host.size())) == 0) return false;
    host.back() = '\0';
    DWORD session = 0;
    if (!::ProcessIdToSessionId(::GetCurrentProcessId(), &session)) return false;
    TraceStart("", LogFileName(host.data(), session).CStr(), "Dialwright");
    return true;
}

}  // namespace dialwright
