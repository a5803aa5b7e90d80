#include "support/child_process.h"

#include <array>
#include <chrono>
#include <stdexcept>
#include <utility>

#include "support/wait.h"

namespace dialwright::testing {
namespace {

struct Pipe {
    HANDLE read = nullptr;
    HANDLE write = nullptr;
};

Pipe MakePipe() {
    SECURITY_ATTRIBUTES inheritable{
        .nLength = sizeof inheritable, .lpSecurityDescriptor = nullptr, .bInheritHandle = TRUE};
    Pipe pipe;
    if (!::CreatePipe(&pipe.read, &pipe.write, &inheritable, 0)) throw std::runtime_error("no pipe");
    return pipe;
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

std::wstring CommandLine(const std::wstring& program, const std::vector<std::wstring>& arguments) {
    std::wstring line = Quoted(program);
    for (const std::wstring& argument : arguments) line += L" " + Quoted(argument);
    return line;
}

HANDLE Start(std::wstring commandLine, HANDLE input, HANDLE output) {
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdInput = input;
    startup.hStdOutput = output;
    startup.hStdError = output;
    PROCESS_INFORMATION started{};
    const auto create = [&] {
        return ::CreateProcessW(nullptr, commandLine.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup,
                                &started);
    };
    BOOL ok = create();
    // A new process of Wine's now and then ends before its first instruction (seen once in some ten thousand starts).
    if (!ok && ::GetLastError() == ERROR_INTERNAL_ERROR) ok = create();
    if (!ok) throw std::runtime_error("the program cannot be started: error " + std::to_string(::GetLastError()));
    ::CloseHandle(started.hThread);
    return started.hProcess;
}

}  // namespace

std::wstring ProgramFolder() {
    std::array<wchar_t, MAX_PATH> path{};
    ::GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
    const std::wstring whole = path.data();
    return whole.substr(0, whole.rfind(L'\\') + 1);
}

ChildProcess::ChildProcess(const std::wstring& program, const std::vector<std::wstring>& arguments) {
    const bool isPath = program.find(L'\\') != std::wstring::npos;
    const Pipe in = MakePipe();
    const Pipe out = MakePipe();
    ::SetHandleInformation(in.write, HANDLE_FLAG_INHERIT, 0);
    ::SetHandleInformation(out.read, HANDLE_FLAG_INHERIT, 0);
    process = Start(CommandLine(isPath ? program : ProgramFolder() + program, arguments), in.read, out.write);
    ::CloseHandle(in.read);
    ::CloseHandle(out.write);
    input = in.write;
    reader = std::thread([this, output = out.read] { CollectLines(output); });
}

ChildProcess::~ChildProcess() {
    CloseInput();
    if (!WaitForExit(Patient(5000))) Kill();
    reader.join();
    ::CloseHandle(process);
}

void ChildProcess::WriteLine(const std::string& line) {
    const std::string whole = line + "\n";
    DWORD written = 0;
    ::WriteFile(input, whole.data(), static_cast<DWORD>(whole.size()), &written, nullptr);
}

void ChildProcess::CloseInput() {
    if (const HANDLE closing = std::exchange(input, nullptr)) ::CloseHandle(closing);
}

std::optional<std::string> ChildProcess::ReadLine(DWORD deadlineMs) {
    std::unique_lock lock(mutex);
    arrived.wait_for(lock, std::chrono::milliseconds(deadlineMs), [this] { return !lines.empty() || ended; });
    if (lines.empty()) return std::nullopt;
    std::string line = std::move(lines.front());
    lines.pop_front();
    return line;
}

void ChildProcess::Kill() { ::TerminateProcess(process, 99); }

std::optional<DWORD> ChildProcess::WaitForExit(DWORD deadlineMs) {
    if (::WaitForSingleObject(process, deadlineMs) != WAIT_OBJECT_0) return std::nullopt;
    DWORD code = 0;
    ::GetExitCodeProcess(process, &code);
    return code;
}

void ChildProcess::CollectLines(HANDLE output) {
    std::string pending;
    std::array<char, 4096> chunk{};
    DWORD count = 0;
    while (::ReadFile(output, chunk.data(), static_cast<DWORD>(chunk.size()), &count, nullptr) && count > 0) {
        const std::lock_guard lock(mutex);
        for (DWORD i = 0; i < count; ++i) {
            if (chunk[i] == '\n') {
                lines.push_back(std::move(pending));
                pending.clear();
            } else if (chunk[i] != '\r') {
                pending.push_back(chunk[i]);
            }
        }
        arrived.notify_all();
    }
    ::CloseHandle(output);
    const std::lock_guard lock(mutex);
    ended = true;
    arrived.notify_all();
}

}  // namespace dialwright::testing
