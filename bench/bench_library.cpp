// What a host pays for the library: the time to load and free it, and the memory that it keeps.

#include <cstdio>
#include <string>

#include "arguments.h"
#include "measuring.h"
#include "platform/windows.h"

#include <psapi.h>

using namespace dialwright;

namespace {

using ScriptExport = int (*)(const wchar_t* text);

constexpr DWORD kStayMs = 20;

double Milliseconds(const bench::Stopwatch& watch) { return watch.Seconds() * 1000; }

void LoadWhatHostsHave() {
    ::LoadLibraryW(L"user32");
    ::LoadLibraryW(L"dbghelp");
}

bool PrintLoadTimes(int cycles, DWORD stayMs) {
    for (int i = 0; i < cycles; ++i) {
        const bench::Stopwatch load;
        const HMODULE library = ::LoadLibraryW(L"Dialwright.dll");
        const double loadMs = Milliseconds(load);
        if (library == nullptr) return false;
        if (stayMs != 0) ::Sleep(stayMs);
        const bench::Stopwatch free;
        ::FreeLibrary(library);
        std::printf("{\"load_ms\": %.3f, \"free_ms\": %.3f}\n", loadMs, Milliseconds(free));
    }
    return true;
}

long long WorkingSet() {
    PROCESS_MEMORY_COUNTERS counters{};
    ::K32GetProcessMemoryInfo(::GetCurrentProcess(), &counters, sizeof counters);
    return static_cast<long long>(counters.WorkingSetSize);
}

/// A command that is not known is told to the log, in one line.
bool LogLines(HMODULE library, int lines) {
    const auto validate =
        reinterpret_cast<ScriptExport>(reinterpret_cast<void*>(::GetProcAddress(library, "ValidateCommand")));
    if (validate == nullptr) return false;
    for (int i = 0; i < lines; ++i) {
        if (validate(L"Window.Polish Notepad") != 0) return false;
    }
    return true;
}

void PrintGrowth(long long before) {
    // A thread that is new takes its memory when it begins to run.
    ::Sleep(kStayMs);
    std::printf("{\"bytes\": %lld}\n", WorkingSet() - before);
}

bool PrintMemory(int lines) {
    // So that the host's standard output is not counted as ours.
    std::printf("The host's own first line\n");
    std::fflush(stdout);
    const long long before = WorkingSet();
    const HMODULE library = ::LoadLibraryW(L"Dialwright.dll");
    if (library == nullptr || !LogLines(library, lines)) return false;
    PrintGrowth(before);
    return true;
}

DWORD WINAPI SleepForEver(LPVOID) {
    ::Sleep(INFINITE);
    return 0;
}

bool PrintThreadMemory() {
    const long long before = WorkingSet();
    if (::CreateThread(nullptr, 0, &SleepForEver, nullptr, 0, nullptr) == nullptr) return false;
    PrintGrowth(before);
    return true;
}

}  // namespace

int main(int count, char** values) {
    const bench::Arguments arguments(
        count, values,
        "usage: bench_library --measure cold|warm|at-once|memory|thread --times N\n\n"
        "Loads and frees Dialwright.dll, which lies beside this program, so many times: in a host that has nothing\n"
        "loaded (cold), that has user32 and dbghelp (warm), that has them and frees the library as soon as it is\n"
        "loaded (at-once). Or logs so many lines with it (memory). Or starts a bare thread. Prints lines of JSON.\n",
        {"--measure", "--times"});
    const std::string what = arguments.Text("--measure");
    const int times = arguments.Number("--times");
    if (what != "cold") LoadWhatHostsHave();
    bool done = false;
    if (what == "cold" || what == "warm") {
        done = PrintLoadTimes(times, kStayMs);
    } else if (what == "at-once") {
        done = PrintLoadTimes(times, 0);
    } else if (what == "memory") {
        done = PrintMemory(times);
    } else if (what == "thread") {
        done = PrintThreadMemory();
    } else {
        arguments.Refuse("--measure does not know " + what);
    }
    return done ? 0 : 1;
}
