#include "language/tokenizer.h"

#include "language/by_hand.h"
#include "target.h"

namespace dialwright::fuzz {
namespace {

bool IsBlank(std::wstring_view text) { return text.find_first_not_of(L" \t\n\v\f\r") == std::wstring_view::npos; }

void CheckPlaces(const std::wstring& line, const TokenList& tokens) {
    const std::vector<Token> placed = TokenizeWithOffsets(line);
    Require(placed.size() == tokens.size(), "both ways find as many tokens");
    const std::wstring_view text = line;
    std::size_t end = 0;
    for (std::size_t i = 0; i < placed.size(); ++i) {
        const Token& token = placed[i];
        Require(token.text == tokens[i], "both ways find the same tokens");
        Require(token.offset >= end && token.offset + token.length <= line.size(), "tokens lie apart and in the line");
        Require(IsBlank(text.substr(end, token.offset - end)), "between two tokens are blanks alone");
        const std::wstring_view written = text.substr(token.offset, token.length);
        Require(token.quoted ? written.starts_with(L'"') && written.ends_with(L'"') : written == token.text,
                "a token stands where it is said to stand");
        end = token.offset + token.length;
    }
    Require(IsBlank(text.substr(end)), "behind the last token are blanks alone");
}

}  // namespace

void Try(Input input) {
    const std::wstring line = input.RestAsText();
    const TokenList tokens = TokenizeCommand(line);
    Require(tokens == testing::ScanByHand(line), "a scan by hand finds the same tokens");
    CheckPlaces(line, tokens);
}

}  // namespace dialwright::fuzz
