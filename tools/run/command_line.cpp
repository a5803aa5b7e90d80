#include "run/command_line.h"

#include <algorithm>
#include <stdexcept>

#include "language/numbers.h"

namespace dialwright::tools {
namespace {

const CommandSpec* FindCommand(const std::wstring& name) {
    const auto found = std::ranges::find(kCommands, std::wstring_view(name), &CommandSpec::name);
    return found == kCommands.end() ? nullptr : &*found;
}

bool HasRightCount(const CommandSpec& command, std::size_t tokens) {
    return tokens >= command.minTokens && tokens <= command.MaxTokens();
}

std::size_t TextToken(const CommandSpec& command) {
    const auto kinds = command.Arguments();
    const auto text = std::ranges::find(kinds, ArgumentKind::Text);
    constexpr std::size_t kOwnArguments = 3;
    return text == kinds.end() ? CommandLine::kNoText : kOwnArguments + static_cast<std::size_t>(text - kinds.begin());
}

}  // namespace

std::uint64_t CommandLine::TimeoutMs() const {
    if (!HasTimeout()) return kDefaultTimeoutMs;
    try {
        const std::uint64_t timeout = ConvertToUnsigned(tokens.back().text);
        return timeout == 0 ? kDefaultTimeoutMs : timeout;
    } catch (const std::logic_error&) {
        return kDefaultTimeoutMs;  // the library refuses the line
    }
}

WindowCriteria CommandLine::Criteria() const {
    return {.className = tokens[1].text, .title = tokens[2].text, .literal = !useRegex};
}

CommandLine ReadCommandLine(const std::wstring& line) {
    CommandLine read{.tokens = TokenizeWithOffsets(line)};
    if (read.tokens.empty()) return read;
    const CommandSpec* const command = FindCommand(StripNonRegexSuffix(read.tokens[0].text, &read.useRegex));
    if (command == nullptr || !HasRightCount(*command, read.tokens.size())) return read;
    read.command = command;
    read.textToken = TextToken(*command);
    return read;
}

std::wstring MaskedLine(const std::wstring& line) {
    const CommandLine read = ReadCommandLine(line);
    if (read.tokens.empty()) return L"";
    if (read.command == nullptr) return read.tokens[0].text + (read.tokens.size() > 1 ? L" …" : L"");
    const std::size_t begin = read.tokens[0].offset;
    const std::size_t end = read.tokens.back().offset + read.tokens.back().length;
    if (!read.HasText()) return line.substr(begin, end - begin);
    const Token& text = read.tokens[read.textToken];
    // What stands where the timeout should, and is none, belongs to a text without quotes.
    const bool textGoesOn = read.HasTimeout() && !ReadsAsInteger(read.tokens.back().text);
    const std::size_t behind = textGoesOn ? end : text.offset + text.length;
    return line.substr(begin, text.offset - begin) + L"\"*****\"" + line.substr(behind, end - behind);
}

ProgramAndArguments SplitProgram(const std::wstring& whole) {
    const std::wstring text = whole.substr((std::min)(whole.find_first_not_of(L' '), whole.size()));
    const bool quoted = text.starts_with(L'"');
    const std::size_t closing = quoted ? text.find(L'"', 1) : text.find(L' ');
    const std::size_t end = closing == std::wstring::npos ? text.size() : closing + (quoted ? 1 : 0);
    const std::size_t rest = text.find_first_not_of(L' ', end);
    return {.program = text.substr(0, end), .arguments = rest == std::wstring::npos ? L"" : text.substr(rest)};
}

}  // namespace dialwright::tools
