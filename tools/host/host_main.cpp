// The worker of dialwright.exe: loads the library and calls it, one request at a time. Its standard output carries the
// library's messages, and behind those of each call an answer.

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <thread>

#include "platform/windows.h"
#include "run/wire.h"

#include <fcntl.h>
#include <io.h>

namespace {

using namespace dialwright::tools;

using ScriptExport = int (*)(const wchar_t* script);
using LaunchExport = int (*)(const wchar_t* program, const wchar_t* arguments, unsigned long* processId);

struct Library {
    ScriptExport executeScript = nullptr;
    LaunchExport programLaunch = nullptr;
};

template <class Export>
Export Find(HMODULE library, const char* name) {
    return reinterpret_cast<Export>(reinterpret_cast<void*>(::GetProcAddress(library, name)));
}

Answer Load(const std::wstring& path, Library& library) {
    const HMODULE module = ::LoadLibraryExW(path.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
    if (module == nullptr) return {.value = ::GetLastError()};
    library.executeScript = Find<ScriptExport>(module, "ExecuteScript");
    library.programLaunch = Find<LaunchExport>(module, "ProgramLaunch");
    const bool whole = library.executeScript != nullptr && library.programLaunch != nullptr;
    return {.result = whole ? 1 : 0, .value = ERROR_PROC_NOT_FOUND};
}

Answer Launch(const Library& library, const Request& request) {
    unsigned long processId = 0;
    const int result = library.programLaunch(request.first.c_str(), request.second.c_str(), &processId);
    return {.result = result, .value = static_cast<std::uint32_t>(processId)};
}

Answer CarryOut(const Request& request, std::string& word, Library& library) {
    if (request.kind == RequestKind::Begin) {
        word.assign(request.first.begin(), request.first.end());
        return Load(request.second, library);
    }
    if (request.kind == RequestKind::Launch) return Launch(library, request);
    return {.result = library.executeScript(request.first.c_str())};
}

/// The answer goes the way of the library's messages, so that it comes after them.
void Say(const std::string& line) {
    std::fputs((line + "\n").c_str(), stdout);
    std::fflush(stdout);
}

void Serve(HANDLE requests) {
    std::string word;
    Library library;
    while (const auto request = ReadRequest(requests)) {
        const auto begin = std::chrono::steady_clock::now();
        Answer answer = CarryOut(*request, word, library);
        const auto spent = std::chrono::steady_clock::now() - begin;
        answer.microseconds =
            static_cast<std::uint64_t>(std::chrono::duration_cast<std::chrono::microseconds>(spent).count());
        Say(FormatAnswer(word, answer));
    }
}

/// The end of this pipe is the end of the process, whatever a call is waiting for.
void LiveAsLongAs(HANDLE lifeline) {
    char ignored = 0;
    DWORD count = 0;
    while (::ReadFile(lifeline, &ignored, 1, &count, nullptr) && count > 0) continue;
    ::ExitProcess(0);
}

}  // namespace

int main(int count, char** values) {
    if (count != 2) {
        std::fprintf(stderr, "dialwright-host: the worker of dialwright.exe, which starts it\n");
        return 2;
    }
    ::_setmode(::_fileno(stdout), _O_BINARY);
    const auto lifeline = reinterpret_cast<HANDLE>(std::strtoull(values[1], nullptr, 10));
    std::thread([lifeline] { LiveAsLongAs(lifeline); }).detach();
    const HANDLE requests = ::GetStdHandle(STD_INPUT_HANDLE);
    // A program that is launched would get these from the system and keep our output open for as long as it runs.
    for (const DWORD standard : {STD_INPUT_HANDLE, STD_OUTPUT_HANDLE}) ::SetStdHandle(standard, nullptr);
    Serve(requests);
    return 0;
}
