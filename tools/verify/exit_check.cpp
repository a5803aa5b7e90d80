// A process that ends while its threads are logging.

#include <array>
#include <string>

#include "verify/checks.h"
#include "verify/child_program.h"
#include "verify/leaving_host.h"
#include "verify/own_trace.h"
#include "verify/program_copy.h"

namespace dialwright::verify {
namespace {

constexpr DWORD kEndMs = 20000;

/// Each thread numbers its lines: a gap is a line that was lost, a repetition one that was written twice.
std::string Gap(const std::vector<std::string>& lines) {
    std::array<int, kLeavingThreads> last{};
    constexpr std::string_view kMark = "Bogus.";
    for (const std::string& line : lines) {
        const std::size_t at = line.rfind(kMark);
        if (at == std::string::npos) continue;
        std::size_t used = 0;
        const int thread = std::stoi(line.substr(at + kMark.size()), &used);
        const int number = std::stoi(line.substr(at + kMark.size() + used + 1));
        if (number != ++last.at(static_cast<std::size_t>(thread))) return line;
    }
    return {};
}

Verdict JudgeTrace(const std::vector<std::string>& lines, bool inOrder) {
    const std::string count = std::to_string(lines.size()) + " lines";
    if (const std::string torn = TornLine(lines); !torn.empty()) return Failed(count + "; not whole: " + torn);
    if (!inOrder) return Passed(count);
    if (const std::string gap = Gap(lines); !gap.empty()) return Failed(count + "; lost or doubled before: " + gap);
    if (!HasEndedInOrder(lines)) return Failed(count + "; the trace does not end with \"trace stopped\"");
    return Passed(count);
}

Verdict LeaveBy(const Setting& setting, const std::wstring& way, int round) {
    const std::filesystem::path program = CopyProgram(setting.Program(), setting.work / (way + std::to_wstring(round)));
    ChildProgram host({.program = program, .arguments = {L"--leave", way, L"--folder", setting.folder.wstring()}});
    const auto code = host.WaitForEnd(kEndMs);
    if (!code) return Failed("it does not end");
    if (*code != kLeavingCode) return Failed("exit code " + std::to_string(*code) + " in place of 7");
    return JudgeTrace(ReadTrace(program), way != L"TerminateProcess");
}

}  // namespace

void CheckExits(const Setting& setting, Journal& journal) {
    const int rounds = setting.quick ? 1 : 10;
    for (const std::wstring way : {L"ExitProcess", L"return", L"TerminateProcess"}) {
        for (int round = 1; round <= rounds; ++round) {
            journal.Do(std::string(way.begin(), way.end()) + " " + std::to_string(round),
                       [&] { return LeaveBy(setting, way, round); });
        }
    }
}

}  // namespace dialwright::verify
