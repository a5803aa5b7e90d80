#include "verify/plain_output.h"

#include <sstream>
#include <stdexcept>

#include "verify/program_copy.h"

namespace dialwright::verify {

PlainOutput RunPlainHost(const Setting& setting, const std::wstring& line, const Practice& target, HANDLE token) {
    constexpr DWORD kEndMs = 30000;
    constexpr std::string_view kBegin = "plain ";
    const std::filesystem::path program = CopyProgram(setting.PlainHost(), setting.work / "plain");
    const std::wstring window = std::to_wstring(reinterpret_cast<std::uintptr_t>(target.Handle()));
    const Output output = RunToEnd(
        {.program = program, .arguments = {setting.Library().wstring(), line, window}, .token = token}, kEndMs);
    PlainOutput told;
    std::istringstream lines(output.text);
    for (std::string text; std::getline(lines, text);) {
        if (!text.starts_with(kBegin)) continue;
        const std::size_t value = text.rfind(' ');
        told[text.substr(kBegin.size(), value - kBegin.size())] = text.substr(value + 1);
    }
    if (!told.contains("result"))
        throw std::runtime_error("the host without a manifest ended with " + std::to_string(output.exitCode) +
                                 " and said: " + output.text);
    return told;
}

}  // namespace dialwright::verify
