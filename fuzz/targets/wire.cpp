#include "run/wire.h"

#include "target.h"

namespace dialwright::fuzz {
namespace {

using namespace tools;

void CheckRoundTrip(const Request& request) {
    MemoryPipe pipe;
    Require(WriteRequest(&pipe, request), "a request can be written");
    const auto read = ReadRequest(&pipe);
    Require(read && read->kind == request.kind && read->first == request.first && read->second == request.second,
            "a request comes back as it was");
    Require(pipe.read == pipe.bytes.size(), "and nothing is left");
    for (std::size_t cut : {std::size_t{1}, pipe.bytes.size() / 2, pipe.bytes.size()}) {
        MemoryPipe torn{.bytes = pipe.bytes.substr(0, pipe.bytes.size() - cut)};
        Require(!ReadRequest(&torn), "a torn request is none");
    }
}

void CheckAnswer(const std::string& word, const Answer& answer) {
    const auto read = ReadAnswer(word, FormatAnswer(word, answer));
    Require(read && read->result == answer.result && read->microseconds == answer.microseconds &&
                read->value == answer.value,
            "an answer comes back as it was");
}

}  // namespace

void Try(Input input) {
    const Answer answer{
        .result = input.Any<int>(), .microseconds = input.Any<std::uint64_t>(), .value = input.Any<std::uint32_t>()};
    const std::string word = "answer-" + std::to_string(input.Any<std::uint64_t>());
    CheckAnswer(word, answer);
    CheckRoundTrip({.kind = RequestKind::Launch, .first = input.Text(40), .second = input.Text(40)});
    (void)ReadAnswer(word, word + input.Bytes(60));
    // Of 12 bytes on, this may pass for a request of any length.
    MemoryPipe garbage{.bytes = input.RestAsBytes()};
    while (ReadRequest(&garbage)) continue;
}

}  // namespace dialwright::fuzz
