#include "output_gate.h"

#include <stdexcept>
#include <utility>

#include <fcntl.h>
#include <io.h>

namespace dialwright::testing {
namespace {

constexpr unsigned kNextToNothing = 1;

std::array<int, 2> OpenPipe() {
    std::array<int, 2> ends{};
    if (::_pipe(ends.data(), kNextToNothing, _O_BINARY | _O_NOINHERIT) != 0) throw std::runtime_error("no pipe");
    return ends;
}

}  // namespace

OutputGate::OutputGate(std::string itsWords, std::function<void()> action)
    : words(std::move(itsWords)), then(std::move(action)), ends(OpenPipe()), output(ends[1]) {
    ::_close(ends[1]);
    reader = std::thread([this] { Read(); });
}

OutputGate::~OutputGate() {
    if (reader.joinable()) (void)Close();
}

const std::string& OutputGate::Close() {
    output.GiveBack();
    reader.join();
    ::_close(ends[0]);
    return text;
}

void OutputGate::Read() {
    std::array<char, 4096> area{};
    for (;;) {
        // Byte by byte up to the words: the rest of the message holds the writer while we act.
        const int count = ::_read(ends[0], area.data(), reached ? static_cast<unsigned>(area.size()) : 1);
        if (count <= 0) return;
        text.append(area.data(), static_cast<std::size_t>(count));
        if (reached || !text.ends_with(words)) continue;
        reached = true;
        then();
    }
}

}  // namespace dialwright::testing
