#include "run/worker.h"

#include <array>
#include <chrono>
#include <random>
#include <stdexcept>
#include <utility>
#include <vector>

namespace dialwright::tools {
namespace {

constexpr DWORD kStartMs = 60000;
/// Enough for the library to write down what it has in its buffer.
constexpr DWORD kEndMs = 5000;

std::string RandomWord() {
    std::random_device random;
    std::string word;
    for (int i = 0; i < 4; ++i) {
        constexpr char kDigits[] = "0123456789abcdef";
        for (unsigned bits = random(), digit = 0; digit < 8; ++digit, bits >>= 4U) word += kDigits[bits & 0xFU];
    }
    return word;
}

/// A job that ends its processes with its last handle, and does not hold the programs that they launch.
UniqueHandle MakeJob() {
    UniqueHandle job(::CreateJobObjectW(nullptr, nullptr));
    JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits{};
    limits.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE | JOB_OBJECT_LIMIT_SILENT_BREAKAWAY_OK;
    ::SetInformationJobObject(job.get(), JobObjectExtendedLimitInformation, &limits, sizeof limits);
    return job;
}

struct Pipe {
    UniqueHandle read;
    UniqueHandle write;
};

Pipe MakePipe() {
    HANDLE read = nullptr;
    HANDLE write = nullptr;
    if (!::CreatePipe(&read, &write, nullptr, 0)) throw std::runtime_error("there is no pipe to be had");
    return {UniqueHandle(read), UniqueHandle(write)};
}

/// Hands exactly these handles to a new process, whatever else this one has open.
class InheritedHandles {
public:
    explicit InheritedHandles(std::vector<HANDLE> inherited) : handles(std::move(inherited)) {
        SIZE_T size = 0;
        ::InitializeProcThreadAttributeList(nullptr, 1, 0, &size);
        memory.resize(size);
        ::InitializeProcThreadAttributeList(List(), 1, 0, &size);
        for (const HANDLE handle : handles) ::SetHandleInformation(handle, HANDLE_FLAG_INHERIT, HANDLE_FLAG_INHERIT);
        ::UpdateProcThreadAttribute(List(), 0, PROC_THREAD_ATTRIBUTE_HANDLE_LIST, static_cast<void*>(handles.data()),
                                    handles.size() * sizeof(HANDLE), nullptr, nullptr);
    }
    ~InheritedHandles() { ::DeleteProcThreadAttributeList(List()); }
    InheritedHandles(const InheritedHandles&) = delete;
    InheritedHandles& operator=(const InheritedHandles&) = delete;

    [[nodiscard]] LPPROC_THREAD_ATTRIBUTE_LIST List() {
        return reinterpret_cast<LPPROC_THREAD_ATTRIBUTE_LIST>(memory.data());
    }

private:
    std::vector<HANDLE> handles;
    std::vector<char> memory;
};

/// What a worker is started with.
struct WorkerEnds {
    HANDLE requests;
    HANDLE answers;
    HANDLE lifeline;
};

/// Suspended, in a group of its own, so that Ctrl-C comes to us alone.
bool StartSuspended(const std::filesystem::path& program, const WorkerEnds& ends, PROCESS_INFORMATION& started) {
    InheritedHandles inherited({ends.requests, ends.answers, ends.lifeline});
    STARTUPINFOEXW startup{};
    startup.StartupInfo.cb = sizeof startup;
    startup.StartupInfo.dwFlags = STARTF_USESTDHANDLES;
    startup.StartupInfo.hStdInput = ends.requests;
    startup.StartupInfo.hStdOutput = ends.answers;
    startup.StartupInfo.hStdError = nullptr;
    startup.lpAttributeList = inherited.List();
    std::wstring commandLine =
        L"\"" + program.wstring() + L"\" " + std::to_wstring(reinterpret_cast<std::uintptr_t>(ends.lifeline));
    return ::CreateProcessW(program.c_str(), commandLine.data(), nullptr, nullptr, TRUE,
                            EXTENDED_STARTUPINFO_PRESENT | CREATE_SUSPENDED | CREATE_NEW_PROCESS_GROUP, nullptr,
                            nullptr, &startup.StartupInfo, &started) != FALSE;
}

}  // namespace

Worker::Worker(HostPlace& place, const std::filesystem::path& library) : word(RandomWord()), job(MakeJob()) {
    Start(place);
    try {
        Begin(library);
    } catch (...) {
        End();
        throw;
    }
}

Worker::~Worker() { End(); }

void Worker::Start(HostPlace& place) {
    Pipe in = MakePipe();
    Pipe out = MakePipe();
    Pipe life = MakePipe();
    const WorkerEnds ends{.requests = in.read.get(), .answers = out.write.get(), .lifeline = life.read.get()};
    PROCESS_INFORMATION started{};
    bool runs = StartSuspended(place.Program(), ends, started);
    if (!runs && place.IsOwn()) {
        place.GiveUp();
        runs = StartSuspended(place.Program(), ends, started);
    }
    if (!runs)
        throw std::runtime_error("dialwright-host.exe cannot be started: error " + std::to_string(::GetLastError()));
    process.reset(started.hProcess);
    ::AssignProcessToJobObject(job.get(), process.get());
    ::ResumeThread(started.hThread);
    ::CloseHandle(started.hThread);
    input = std::move(in.write);
    lifeline = std::move(life.write);
    reader = std::thread([this, output = out.read.release()] { CollectLines(output); });
}

void Worker::Begin(const std::filesystem::path& library) {
    Send({.kind = RequestKind::Begin, .first = std::wstring(word.begin(), word.end()), .second = library.wstring()});
    while (const auto line = NextLine(kStartMs)) {
        const auto answer = ReadAnswer(word, *line);
        if (!answer) continue;
        if (answer->result == 1) return;
        throw std::runtime_error("Dialwright.dll cannot be loaded: error " + std::to_string(answer->value));
    }
    throw std::runtime_error("dialwright-host.exe does not answer");
}

void Worker::Send(const Request& request) {
    // A worker that is gone is noticed by the end of its lines.
    (void)WriteRequest(input.get(), request);
}

std::optional<std::string> Worker::NextLine(DWORD deadlineMs) {
    std::unique_lock lock(mutex);
    arrived.wait_for(lock, std::chrono::milliseconds(deadlineMs), [this] { return !lines.empty() || ended; });
    if (lines.empty()) return std::nullopt;
    std::string line = std::move(lines.front());
    lines.pop_front();
    return line;
}

bool Worker::HasEnded() {
    const std::lock_guard lock(mutex);
    return ended && lines.empty();
}

void Worker::CollectLines(HANDLE output) {
    const UniqueHandle owned(output);
    std::string pending;
    std::vector<char> chunk(std::size_t{1} << 16U);
    DWORD count = 0;
    while (::ReadFile(output, chunk.data(), static_cast<DWORD>(chunk.size()), &count, nullptr) && count > 0) {
        const std::lock_guard lock(mutex);
        for (DWORD i = 0; i < count; ++i) {
            if (chunk[i] == '\n') {
                lines.push_back(std::exchange(pending, {}));
            } else {
                pending.push_back(chunk[i]);
            }
        }
        arrived.notify_all();
    }
    const std::lock_guard lock(mutex);
    ended = true;
    arrived.notify_all();
}

void Worker::End() {
    // The worker leaves by itself then, also out of a call that waits for a window, and the library closes its trace.
    lifeline.reset();
    if (::WaitForSingleObject(process.get(), kEndMs) != WAIT_OBJECT_0) ::TerminateProcess(process.get(), 1);
    if (reader.joinable()) reader.join();
}

}  // namespace dialwright::tools
