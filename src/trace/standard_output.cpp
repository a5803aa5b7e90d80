#include "trace/standard_output.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include <io.h>

#if defined(__MINGW32__)
// In the C runtime since its first version, and missing from the mingw-w64 headers.
extern "C" _CRTIMP _invalid_parameter_handler __cdecl _set_thread_local_invalid_parameter_handler(
    _invalid_parameter_handler);
#endif

namespace dialwright {
namespace {

void IgnoreInvalidParameter(const wchar_t*, const wchar_t*, const wchar_t*, unsigned int, std::uintptr_t) {}

/// The C runtime ends the process on a closed or wide-mode descriptor unless a handler says otherwise. The
/// process-wide handler is the host's, so ours is set on this thread alone, and only while we write.
class InvalidParameterGuard {
public:
    InvalidParameterGuard() noexcept
        : previous(::_set_thread_local_invalid_parameter_handler(&IgnoreInvalidParameter)) {}
    ~InvalidParameterGuard() { ::_set_thread_local_invalid_parameter_handler(previous); }
    InvalidParameterGuard(const InvalidParameterGuard&) = delete;
    InvalidParameterGuard& operator=(const InvalidParameterGuard&) = delete;

private:
    _invalid_parameter_handler previous;
};

/// Keeps the stream to this thread, so that nothing of others comes between its buffer and our text.
class LockedOutput {
public:
    LockedOutput() noexcept { ::_lock_file(stdout); }
    ~LockedOutput() { ::_unlock_file(stdout); }
    LockedOutput(const LockedOutput&) = delete;
    LockedOutput& operator=(const LockedOutput&) = delete;
};

}  // namespace

void WriteStandardOutput(std::string_view text) noexcept {
    const InvalidParameterGuard guard;
    // A program without a console has a stream without a file.
    if (::_fileno(stdout) < 0) return;
    // One lock for all of it. The bytes go through the stream and not past it to its file: a thread that gets the lock
    // while the process ends would write into whatever has the file's number by then, the trace file for one.
    const LockedOutput locked;
    // What the host has written before goes out first, and is not lost with our text where that cannot be written.
    ::_fflush_nolock(stdout);
    ::_fwrite_nolock(text.data(), 1, text.size(), stdout);
    ::_fflush_nolock(stdout);
}

}  // namespace dialwright
