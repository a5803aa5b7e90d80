// A host that loads the library and leaves it in one of several ways. Data goes to the standard output that it was
// started with; the library's own copies go nowhere.

#include <array>
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include "platform/windows.h"
#include "probe_exports.h"
#include "process_figures.h"

namespace {

using namespace dialwright::testing;

using ScriptExport = int (*)(const wchar_t* text);

constexpr int kMostThreads = 16;

HANDLE output = nullptr;

void Say(const std::string& line) {
    const std::string whole = line + "\n";
    DWORD written = 0;
    ::WriteFile(output, whole.data(), static_cast<DWORD>(whole.size()), &written, nullptr);
}

/// Keeps the pipe for Say and closes the stream that the library copies its messages to.
void TakeStandardOutput() {
    ::DuplicateHandle(::GetCurrentProcess(), ::GetStdHandle(STD_OUTPUT_HANDLE), ::GetCurrentProcess(), &output, 0,
                      FALSE, DUPLICATE_SAME_ACCESS);
    std::fclose(stdout);
}

std::wstring Beside(const wchar_t* name) {
    std::array<wchar_t, std::size_t{2} * MAX_PATH> path{};
    ::GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
    const std::wstring host = path.data();
    return host.substr(0, host.rfind(L'\\') + 1) + name;
}

HMODULE Load(const wchar_t* name) {
    const HMODULE library = ::LoadLibraryW(Beside(name).c_str());
    if (library == nullptr) {
        Say("cannot be loaded");
        std::_Exit(3);
    }
    return library;
}

template <class Export>
Export Find(HMODULE library, const char* name) {
    return reinterpret_cast<Export>(reinterpret_cast<void*>(::GetProcAddress(library, name)));
}

void LogOneLine(HMODULE library, int number) {
    Find<ScriptExport>(library, "ValidateCommand")((L"Bogus." + std::to_wstring(number)).c_str());
}

/// cycles COUNT none|pause|call: loads and frees so often; prints what the process holds before and after.
int RunCycles(int count, const std::string& way) {
    std::mt19937 random(1);  // NOLINT(bugprone-random-generator-seed): the same pauses each time
    const auto cycle = [&](int number) {
        const HMODULE library = Load(L"Dialwright.dll");
        if (way == "call") LogOneLine(library, number);
        if (way == "pause") ::Sleep(random() % 4);  // the moment at which the library goes is what varies
        ::FreeLibrary(library);
    };
    for (int number = 0; number < 3; ++number) cycle(-1);
    const ProcessFigures before = ProcessFigures::Now();
    for (int number = 0; number < count; ++number) cycle(number);
    ProcessFigures after = ProcessFigures::Now();
    // Threads of the system's pool leave when they have been idle for some seconds.
    for (int look = 0; look < 20 && after.threads > before.threads; ++look) {
        ::Sleep(500);  // between two looks at the condition
        after = ProcessFigures::Now();
    }
    Say(before.Text() + " " + after.Text());
    return 0;
}

std::array<std::atomic<int>, kMostThreads> logged{};

[[noreturn]] void Leave(const std::string& way) {
    if (way == "ExitProcess") ::ExitProcess(7);
    if (way == "exit") std::exit(7);  // NOLINT(concurrency-mt-unsafe): what other threads do then is the question
    if (way == "_exit") std::_Exit(7);
    ::TerminateProcess(::GetCurrentProcess(), 7);
    std::abort();
}

/// exit WAY THREADS LINES: logs from many threads and leaves while they log on. Prints how many lines of each thread
/// had been logged before.
int LogAndExit(const std::string& way, int threads, int lines) {
    const auto log = Find<ProbeLogExport>(Load(kProbeName), "ProbeLog");
    for (int thread = 0; thread < threads; ++thread) {
        std::thread([thread, log] {
            for (int line = 1;; ++line) {
                log(thread, line);
                logged[static_cast<std::size_t>(thread)] = line;
            }
        }).detach();
    }
    int sum = 0;
    while (sum < lines) {
        sum = 0;
        for (const auto& count : logged) sum += count;
        ::Sleep(0);
    }
    std::string counts;
    for (int thread = 0; thread < threads; ++thread) {
        counts += std::to_string(logged[static_cast<std::size_t>(thread)]) + " ";
    }
    Say(counts);
    if (way == "return") return 7;
    Leave(way);
}

/// calls: logs one line for each line that comes in, and frees the library at the end of the input.
int LogOnDemand() {
    const HMODULE library = Load(L"Dialwright.dll");
    Say("ready");
    int number = 0;
    for (int c = std::fgetc(stdin); c != EOF; c = std::fgetc(stdin)) {
        if (c != '\n') continue;
        LogOneLine(library, ++number);
        Say("logged");
    }
    ::FreeLibrary(library);
    return 7;
}

/// rounds KEY LINES: logs so many lines for each line that comes in, by the settings of the key.
int LogRounds(const char* keyPath, int lines) {
    const HMODULE library = Load(kProbeName);
    Find<ProbeSettingsExport>(library, "ProbeSettings")(keyPath);
    const auto log = Find<ProbeLogExport>(library, "ProbeLog");
    Say("ready");
    int round = 0;
    for (int c = std::fgetc(stdin); c != EOF; c = std::fgetc(stdin)) {
        if (c != '\n') continue;
        ++round;
        for (int line = 1; line <= lines; ++line) log(round, line);
        Say("logged");
    }
    ::FreeLibrary(library);
    return 7;
}

/// filter KEY: has the crash filter installed by the settings, frees the library and tells whether a filter is left.
int FreeWithFilter(const char* keyPath) {
    const HMODULE library = Load(kProbeName);
    Find<ProbeSettingsExport>(library, "ProbeSettings")(keyPath);
    const auto installed = ::SetUnhandledExceptionFilter(nullptr);
    ::SetUnhandledExceptionFilter(installed);
    ::FreeLibrary(library);
    Say(installed == nullptr ? "was not installed" : "was installed");
    Say(::SetUnhandledExceptionFilter(nullptr) == nullptr ? "is gone" : "is left");
    return 0;
}

}  // namespace

int main(int count, char** values) {
    const std::vector<std::string> arguments(values + 1, values + count);
    const std::string mode = arguments.empty() ? "" : arguments[0];
    TakeStandardOutput();
    if (mode == "cycles" && arguments.size() == 3) return RunCycles(std::stoi(arguments[1]), arguments[2]);
    if (mode == "exit" && arguments.size() == 4) {
        return LogAndExit(arguments[1], std::stoi(arguments[2]), std::stoi(arguments[3]));
    }
    if (mode == "calls") return LogOnDemand();
    if (mode == "rounds" && arguments.size() == 3) {
        return LogRounds(arguments[1].c_str(), std::stoi(arguments[2]));
    }
    if (mode == "filter" && arguments.size() == 2) return FreeWithFilter(arguments[1].c_str());
    std::fprintf(stderr,
                 "usage: load_host cycles COUNT none|pause|call\n"
                 "       load_host exit ExitProcess|exit|_exit|return|TerminateProcess THREADS LINES\n"
                 "       load_host calls\n"
                 "       load_host rounds KEY LINES\n"
                 "       load_host filter KEY\n");
    return 2;
}
