#include "run/wire.h"

#include <algorithm>
#include <cstdio>

namespace dialwright::tools {
namespace {

struct Head {
    RequestKind kind;
    std::uint32_t firstUnits;
    std::uint32_t secondUnits;
};

bool WriteAll(HANDLE pipe, const void* data, std::size_t size) {
    const char* bytes = static_cast<const char*>(data);
    while (size > 0) {
        DWORD written = 0;
        if (!::WriteFile(pipe, bytes, static_cast<DWORD>(size), &written, nullptr)) return false;
        bytes += written;
        size -= written;
    }
    return true;
}

bool ReadAll(HANDLE pipe, void* data, std::size_t size) {
    char* bytes = static_cast<char*>(data);
    while (size > 0) {
        DWORD count = 0;
        if (!::ReadFile(pipe, bytes, static_cast<DWORD>(size), &count, nullptr) || count == 0) return false;
        bytes += count;
        size -= count;
    }
    return true;
}

bool WriteText(HANDLE pipe, const std::wstring& text) {
    return WriteAll(pipe, text.data(), text.size() * sizeof(wchar_t));
}

/// Grows as the text comes: what the other side says of its length takes no memory by itself.
bool ReadText(HANDLE pipe, std::uint32_t units, std::wstring& text) {
    constexpr std::size_t kPieceUnits = 65536;
    while (text.size() < units) {
        const std::size_t before = text.size();
        text.resize((std::min)(std::size_t{units}, before + kPieceUnits));
        if (!ReadAll(pipe, text.data() + before, (text.size() - before) * sizeof(wchar_t))) return false;
    }
    return true;
}

}  // namespace

bool WriteRequest(HANDLE pipe, const Request& request) {
    const Head head{.kind = request.kind,
                    .firstUnits = static_cast<std::uint32_t>(request.first.size()),
                    .secondUnits = static_cast<std::uint32_t>(request.second.size())};
    return WriteAll(pipe, &head, sizeof head) && WriteText(pipe, request.first) && WriteText(pipe, request.second);
}

std::optional<Request> ReadRequest(HANDLE pipe) {
    Head head{};
    if (!ReadAll(pipe, &head, sizeof head)) return std::nullopt;
    Request request{.kind = head.kind, .first = {}, .second = {}};
    if (!ReadText(pipe, head.firstUnits, request.first)) return std::nullopt;
    if (!ReadText(pipe, head.secondUnits, request.second)) return std::nullopt;
    return request;
}

std::string FormatAnswer(const std::string& word, const Answer& answer) {
    return word + " " + std::to_string(answer.result) + " " + std::to_string(answer.microseconds) + " " +
           std::to_string(answer.value);
}

std::optional<Answer> ReadAnswer(const std::string& word, std::string_view line) {
    if (!line.starts_with(word)) return std::nullopt;
    Answer answer;
    unsigned long long microseconds = 0;
    unsigned long value = 0;
    const std::string rest(line.substr(word.size()));
    if (std::sscanf(rest.c_str(), " %d %llu %lu", &answer.result, &microseconds, &value) != 3) return std::nullopt;
    answer.microseconds = microseconds;
    answer.value = static_cast<std::uint32_t>(value);
    return answer;
}

}  // namespace dialwright::tools
