// A host that crashes: what is in the trace, and that a dump of this system can be read. The library's own dumps are
// switched on by nothing in this version, so they are not to be had here.

#include <array>
#include <fstream>
#include <memory>
#include <string>

#include "trace/memory_log.h"
#include "verify/checks.h"
#include "verify/child_program.h"
#include "verify/library.h"
#include "verify/own_trace.h"
#include "verify/program_copy.h"

#include <dbghelp.h>

namespace dialwright::verify {
namespace {

constexpr DWORD kEndMs = 60000;

bool IsCrash(DWORD code) {
    // Wine passes on the low byte of the exception's code.
    return code == EXCEPTION_ACCESS_VIOLATION || code == (EXCEPTION_ACCESS_VIOLATION & 0xFFU);
}

Verdict Crash(const Setting& setting) {
    const std::filesystem::path program = CopyProgram(setting.Program(), setting.work / "crash");
    ChildProgram host({.program = program, .arguments = {L"--crash", L"--folder", setting.folder.wstring()}});
    const auto code = host.WaitForEnd(kEndMs);
    if (!code) return Failed("it does not end");
    if (!IsCrash(*code)) return Failed("exit code " + std::to_string(*code));
    const std::vector<std::string> errors = ReadTrace(program, true);
    const bool kept = !errors.empty() && errors.back().ends_with("Unknown command: Bogus.BeforeTheCrash");
    return PassedIf(kept, "exit code " + std::to_string(*code) + ", " + std::to_string(errors.size()) + " error lines");
}

Verdict LeavesTheFilterAlone(const Setting& setting) {
    LPTOP_LEVEL_EXCEPTION_FILTER const own = [](EXCEPTION_POINTERS*) -> LONG { return EXCEPTION_CONTINUE_SEARCH; };
    LPTOP_LEVEL_EXCEPTION_FILTER const before = ::SetUnhandledExceptionFilter(own);
    {
        const Library library(setting);
        library->validateCommand(L"Window.Close c t");
    }
    const bool same = ::SetUnhandledExceptionFilter(before) == own;
    return PassedIf(same, same ? "the host's own filter is still there" : "the host's filter has been replaced");
}

/// The lines as the library would keep them; they go into the dump as a stream of their own, which keeps it small.
bool WriteDump(const std::filesystem::path& path, TraceMemLog& log) {
    for (int line = 1; line <= 1500; ++line) StoreInMemoryLog(log, "line " + std::to_string(line));
    const tools::UniqueHandle file(
        ::CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
    MINIDUMP_USER_STREAM stream{.Type = LastReservedStream + 1, .BufferSize = sizeof log, .Buffer = &log};
    MINIDUMP_USER_STREAM_INFORMATION streams{.UserStreamCount = 1, .UserStreamArray = &stream};
    return ::MiniDumpWriteDump(::GetCurrentProcess(), ::GetCurrentProcessId(), file.get(), MiniDumpNormal, nullptr,
                               &streams, nullptr) != FALSE;
}

Verdict ReadDump(const Setting& setting) {
    // A dump takes its time, so this is asked first.
    if (!std::filesystem::exists(setting.Tool())) return Failed("dialwright.exe, which is to read it, is not there");
    const std::filesystem::path dump = setting.work / "check.dmp";
    const std::unique_ptr<TraceMemLog, decltype(&FreeMemoryLog)> log(AllocateMemoryLog(), &FreeMemoryLog);
    if (log == nullptr) return Failed("no memory");
    if (!WriteDump(dump, *log)) return Failed("the system writes no dump: error " + std::to_string(::GetLastError()));
    const Output output =
        RunToEnd({.program = setting.Tool(), .arguments = {L"trace", L"memlog", dump.wstring()}}, kEndMs);
    const bool good =
        output.exitCode == 0 && output.text.starts_with("line 477\n") && output.text.ends_with("line 1500\n");
    return PassedIf(good, "dialwright trace memlog ended with " + std::to_string(output.exitCode) + " and " +
                              std::to_string(output.text.size()) + " bytes");
}

}  // namespace

void CheckCrash(const Setting& setting, Journal& journal) {
    journal.Do("a crash keeps the errors before it", [&] { return Crash(setting); });
    journal.Do("the host's own crash filter stays", [&] { return LeavesTheFilterAlone(setting); });
    journal.Do("the lines in a dump of this system are read", [&] { return ReadDump(setting); });
    journal.Do("a dump by the library itself",
               [] { return Skipped("no host can switch it on: nothing in this version sets a settings key"); });
}

}  // namespace dialwright::verify
