#include "verify/child_program.h"

#include <array>
#include <chrono>
#include <stdexcept>
#include <utility>

#include "platform/text_encoding.h"

namespace dialwright::verify {
namespace {

using tools::UniqueHandle;

/// What the watchdogs end a program with.
constexpr UINT kEnded = 99;

struct Pipe {
    UniqueHandle read;
    UniqueHandle write;
};

Pipe MakePipe() {
    SECURITY_ATTRIBUTES inheritable{
        .nLength = sizeof inheritable, .lpSecurityDescriptor = nullptr, .bInheritHandle = TRUE};
    HANDLE read = nullptr;
    HANDLE write = nullptr;
    if (!::CreatePipe(&read, &write, &inheritable, 0)) throw std::runtime_error("there is no pipe to be had");
    return {UniqueHandle(read), UniqueHandle(write)};
}

UniqueHandle MakeJob() {
    UniqueHandle job(::CreateJobObjectW(nullptr, nullptr));
    JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits{};
    limits.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE;
    ::SetInformationJobObject(job.get(), JobObjectExtendedLimitInformation, &limits, sizeof limits);
    return job;
}

/// In quotes, so that the program finds exactly this text among its arguments.
std::wstring Quoted(const std::wstring& argument) {
    std::wstring quoted = L"\"";
    std::size_t backslashes = 0;
    for (const wchar_t unit : argument) {
        // Those before a quote count twice.
        if (unit == L'"') quoted.append(backslashes + 1, L'\\');
        backslashes = unit == L'\\' ? backslashes + 1 : 0;
        quoted.push_back(unit);
    }
    return quoted.append(backslashes, L'\\') + L"\"";
}

std::wstring CommandLine(const ChildStart& start) {
    std::wstring line = Quoted(start.program.wstring());
    for (const std::wstring& argument : start.arguments) line += L" " + Quoted(argument);
    return line;
}

/// Suspended, so that nothing of it happens outside its job.
PROCESS_INFORMATION Start(const ChildStart& start, HANDLE input, HANDLE output) {
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdInput = input;
    startup.hStdOutput = output;
    startup.hStdError = output;
    PROCESS_INFORMATION started{};
    std::wstring line = CommandLine(start);
    const auto create = [&] {
        if (start.token != nullptr) {
            return ::CreateProcessAsUserW(start.token, start.program.c_str(), line.data(), nullptr, nullptr, TRUE,
                                          CREATE_SUSPENDED, nullptr, nullptr, &startup, &started);
        }
        return ::CreateProcessW(start.program.c_str(), line.data(), nullptr, nullptr, TRUE, CREATE_SUSPENDED, nullptr,
                                nullptr, &startup, &started);
    };
    BOOL ok = create();
    // A new process of Wine's now and then ends before its first instruction.
    if (!ok && ::GetLastError() == ERROR_INTERNAL_ERROR) ok = create();
    if (!ok) throw StartError(start.program, ::GetLastError());
    return started;
}

}  // namespace

StartError::StartError(const std::filesystem::path& program, DWORD error)
    : std::runtime_error(ToUtf8(program.filename().wstring()) + " cannot be started: error " + std::to_string(error)),
      code(error) {}

ChildProgram::ChildProgram(const ChildStart& start) : job(MakeJob()) {
    Pipe in = MakePipe();
    Pipe out = MakePipe();
    ::SetHandleInformation(in.write.get(), HANDLE_FLAG_INHERIT, 0);
    ::SetHandleInformation(out.read.get(), HANDLE_FLAG_INHERIT, 0);
    const PROCESS_INFORMATION started = Start(start, in.read.get(), out.write.get());
    process.reset(started.hProcess);
    ::AssignProcessToJobObject(job.get(), process.get());
    ::ResumeThread(started.hThread);
    ::CloseHandle(started.hThread);
    input = std::move(in.write);
    output = std::move(out.read);
    reader = std::thread([this] { CollectLines(); });
}

ChildProgram::~ChildProgram() {
    End();
    reader.join();
}

void ChildProgram::WriteLine(const std::string& line) {
    const std::string whole = line + "\n";
    DWORD written = 0;
    ::WriteFile(input.get(), whole.data(), static_cast<DWORD>(whole.size()), &written, nullptr);
}

std::optional<std::string> ChildProgram::ReadLine(DWORD deadlineMs) {
    std::unique_lock lock(mutex);
    arrived.wait_for(lock, std::chrono::milliseconds(deadlineMs), [this] { return !lines.empty() || ended; });
    if (lines.empty()) return std::nullopt;
    std::string line = std::move(lines.front());
    lines.pop_front();
    return line;
}

std::optional<DWORD> ChildProgram::WaitForEnd(DWORD deadlineMs) {
    if (::WaitForSingleObject(process.get(), deadlineMs) != WAIT_OBJECT_0) return std::nullopt;
    DWORD code = 0;
    ::GetExitCodeProcess(process.get(), &code);
    return code;
}

void ChildProgram::End() {
    input.reset();
    ::TerminateJobObject(job.get(), kEnded);
    ::TerminateProcess(process.get(), kEnded);
}

void ChildProgram::CollectLines() {
    std::string pending;
    std::array<char, 4096> chunk{};
    DWORD count = 0;
    while (::ReadFile(output.get(), chunk.data(), static_cast<DWORD>(chunk.size()), &count, nullptr) && count > 0) {
        const std::lock_guard lock(mutex);
        for (DWORD i = 0; i < count; ++i) {
            if (chunk[i] == '\n') {
                lines.push_back(std::exchange(pending, {}));
            } else if (chunk[i] != '\r') {
                pending.push_back(chunk[i]);
            }
        }
        arrived.notify_all();
    }
    const std::lock_guard lock(mutex);
    if (!pending.empty()) lines.push_back(pending);
    ended = true;
    arrived.notify_all();
}

Output RunToEnd(const ChildStart& start, DWORD deadlineMs) {
    ChildProgram child(start);
    Output output;
    while (const auto line = child.ReadLine(deadlineMs)) output.text += *line + "\n";
    const auto code = child.WaitForEnd(deadlineMs);
    if (!code) throw std::runtime_error(ToUtf8(start.program.filename().wstring()) + " does not end");
    output.exitCode = *code;
    return output;
}

}  // namespace dialwright::verify
