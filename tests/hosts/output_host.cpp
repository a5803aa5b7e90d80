// A host whose standard output is in a bad way: closed, broken, full or in wide mode. It logs, and then says on
// standard error and by its exit code that it is still alive.

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "platform/windows.h"
#include "trace/trace.h"

#include <fcntl.h>
#include <io.h>

#if defined(__MINGW32__)
extern "C" _invalid_parameter_handler __cdecl _set_thread_local_invalid_parameter_handler(_invalid_parameter_handler);
#endif

namespace {

void CALLBACK DieOfInvalidParameter(const wchar_t*, const wchar_t*, const wchar_t*, unsigned int, std::uintptr_t) {
    std::_Exit(77);
}

bool Spoil(const std::string& way, const char* ownPath) {
    if (way == "closed-descriptor") return ::_close(1) == 0;
    if (way == "closed-stream") return std::fclose(stdout) == 0;
    if (way == "wide-mode") return ::_setmode(1, _O_U16TEXT) != -1;
    if (way == "utf8-mode") return ::_setmode(1, _O_U8TEXT) != -1;
    if (way == "read-only") return std::freopen(ownPath, "rb", stdout) != nullptr;
    if (way == "full") return std::freopen("Z:\\dev\\full", "wb", stdout) != nullptr;
    if (way == "broken-pipe") {
        int ends[2] = {-1, -1};
        if (::_pipe(ends, 4096, _O_BINARY) != 0) return false;
        return ::_dup2(ends[1], 1) == 0 && ::_close(ends[1]) == 0 && ::_close(ends[0]) == 0;
    }
    return way == "sound" || way == "waiting" || way == "own-handler";
}

}  // namespace

int main(int count, char** values) {
    if (count != 2 || !Spoil(values[1], values[0])) {
        std::fprintf(stderr, "usage: output_host WAY\n");
        return 2;
    }
    ::_set_invalid_parameter_handler(&DieOfInvalidParameter);
    const std::string way = values[1];
    if (way == "own-handler") ::_set_thread_local_invalid_parameter_handler(&DieOfInvalidParameter);
    // Of even and of odd length: a stream in wide mode takes them differently.
    for (int line = 0; line < 3; ++line) {
        dialwright::TraceLog("Host", dialwright::LOG_INFO, "even %ls", L"\x3042");
        dialwright::TraceLog("Host", dialwright::LOG_INFO, "odd %ls", L"\x3042");
    }
    if (way == "own-handler") {
        const auto kept = ::_set_thread_local_invalid_parameter_handler(nullptr);
        return kept == &DieOfInvalidParameter ? 7 : 78;
    }
    // What was logged must be out by now, not only at our end.
    if (way == "waiting") std::fgetc(stdin);
    std::fprintf(stderr, "alive\n");
    return 7;
}
