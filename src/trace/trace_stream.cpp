#include "trace/trace_stream.h"

#include <array>
#include <cstdlib>

#include "platform/narrow_path.h"
#include "platform/windows.h"

#include <fcntl.h>
#include <io.h>
#include <share.h>

namespace dialwright {
namespace {

// Kept on purpose: one area for both streams. It costs no byte, as nothing stays in it when the lock is given up.
std::array<char, 65536> sharedBuffer;

std::uint64_t FileSize(const TraceStream& stream) {
    LARGE_INTEGER size{};
    return ::GetFileSizeEx(stream.handle, &size) ? static_cast<std::uint64_t>(size.QuadPart) : stream.size.load();
}

/// How many of the bytes that a failed write has left in the file belong to whole lines.
std::size_t WholeLines(std::string_view written) {
    const std::size_t end = written.rfind("\r\n");
    return end == std::string_view::npos ? 0 : end + 2;
}

/// Keeps the numbers of standard input, output and error from a file that is opened meanwhile: a host may have closed
/// one of them, and what it, or our own log, then writes there would land in the trace.
class StandardNumbersHeld {
public:
    StandardNumbersHeld() noexcept {
        int number = OpenNothing();
        for (; number >= 0 && number <= kLastStandard; number = OpenNothing()) held[count++] = number;
        if (number >= 0) ::_close(number);
    }
    ~StandardNumbersHeld() {
        while (count > 0) ::_close(held[--count]);
    }
    StandardNumbersHeld(const StandardNumbersHeld&) = delete;
    StandardNumbersHeld& operator=(const StandardNumbersHeld&) = delete;

private:
    static constexpr int kLastStandard = 2;

    static int OpenNothing() noexcept { return ::_wopen(L"NUL", _O_WRONLY | _O_NOINHERIT); }

    std::array<int, kLastStandard + 1> held{};
    std::size_t count = 0;
};

}  // namespace

bool OpenStream(TraceStream& stream, bool createFolders) noexcept {
    const WidePath path = WidenPath(stream.current.CStr());
    if (path[0] == L'\0') return false;
    if (createFolders) CreateFoldersOf(path);
    {
        const StandardNumbersHeld held;
        stream.file = ::_wfsopen(path.data(), L"a+b", _SH_DENYWR);
    }
    if (stream.file == nullptr) return false;
    std::setvbuf(stream.file, sharedBuffer.data(), _IOFBF, sharedBuffer.size());
    ::_fseeki64(stream.file, 0, SEEK_END);
    stream.size = static_cast<std::uint64_t>(::_ftelli64(stream.file));
    stream.handle = reinterpret_cast<HANDLE>(::_get_osfhandle(::_fileno(stream.file)));
    // A program that the host starts would keep the file open, and rotation could not begin it anew.
    ::SetHandleInformation(stream.handle, HANDLE_FLAG_INHERIT, 0);
    return true;
}

void CloseStream(TraceStream& stream) noexcept {
    if (stream.file == nullptr) return;
    stream.handle = nullptr;
    std::fflush(stream.file);
    std::fclose(stream.file);
    stream.file = nullptr;
}

std::uint64_t WriteStream(TraceStream& stream, std::string_view text) noexcept {
    // Past the stream's own buffer, to the descriptor below it: nothing is ever pending there that the other stream
    // could overwrite, or that the C runtime would write once more at the end of a process whose threads were ended
    // here.
    const int descriptor = ::_fileno(stream.file);
    if (::_write(descriptor, text.data(), static_cast<unsigned>(text.size())) == static_cast<int>(text.size())) {
        return text.size();
    }
    const std::uint64_t before = stream.size;
    const std::uint64_t after = FileSize(stream);
    const std::uint64_t added = after > before ? after - before : 0;
    const std::size_t kept = WholeLines(text.substr(0, added));
    ::_chsize_s(descriptor, static_cast<std::int64_t>(before + kept));
    return kept;
}

void SwitchToOtherFile(TraceStream& stream) noexcept {
    CloseStream(stream);
    stream.current = stream.current.View() == stream.first.View() ? stream.second : stream.first;
    DeleteTraceFile(stream.current);
}

void DeleteTraceFile(const TracePath& path) noexcept {
    const WidePath wide = WidenPath(path.CStr());
    if (wide[0] != L'\0') ::DeleteFileW(wide.data());
}

}  // namespace dialwright
