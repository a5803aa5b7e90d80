#include "look/command_text.h"

#include <algorithm>

#include "dialwright/dialwright_line.h"
#include "language/commands.h"
#include "language/tokenizer.h"
#include "run/command_line.h"
#include "target.h"

// What our programs and the SDK's header write, the library's tokenizer must read back.
namespace dialwright::fuzz {
namespace {

using tools::QuoteToken;

constexpr std::size_t kMostUnits = 64;

void CheckQuoteToken(const TokenList& texts) {
    std::wstring line;
    for (const std::wstring& text : texts) line += QuoteToken(text) + L" ";
    Require(TokenizeCommand(line) == texts, "quoted texts come back as they were");
}

void CheckHeader(const CommandSpec& command, const TokenList& texts) {
    std::vector<DialwrightArgument> arguments;
    TokenList expected = {std::wstring(command.name)};
    for (std::size_t i = 0; i + 1 < command.minTokens; ++i) {
        expected.push_back(texts[i].substr(0, texts[i].find(L'\0')));
        arguments.push_back(DialwrightText(texts[i].c_str()));
    }
    std::wstring line(8 * kMostUnits, L'\0');
    DialwrightLineFault fault{};
    const std::size_t units = DialwrightWriteLine(line.data(), line.size(), expected[0].c_str(), arguments.data(),
                                                  arguments.size(), DIALWRIGHT_DEFAULT_TIMEOUT, &fault);
    Require((units == 0) == (fault.error != DIALWRIGHT_LINE_WRITTEN), "no line where there is a fault, and one else");
    if (units == 0) return;
    Require(units <= line.size(), "the line has room in what its texts could need");
    Require(line[units - 1] == L'\0' && line.find(L'\0') == units - 1, "a line ends where it is said to end");
    line.resize(units - 1);
    expected.emplace_back(L"10000");
    Require(TokenizeCommand(line) == expected, "the header's line is read back as its texts");
    Require(tools::ReadCommandLine(line).command == &command, "the header's line is a command");
}

}  // namespace

void Try(Input input) {
    const CommandSpec& command = input.OneOf(kCommands);
    TokenList texts(1 + kMostOwnArguments + 2);
    for (std::wstring& text : texts) text = input.Text(kMostUnits);
    CheckHeader(command, texts);
    CheckQuoteToken(texts);
}

}  // namespace dialwright::fuzz
