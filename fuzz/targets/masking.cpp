#include "language/masking.h"

#include "language/by_hand.h"
#include "language/numbers.h"
#include "pieces.h"
#include "run/command_line.h"
#include "target.h"

namespace dialwright::fuzz {
namespace {

constexpr std::wstring_view kSecret = L"S3CRET";
constexpr std::wstring_view kBegins[] = {L"Window.SetText", L"Window.SetText c t 1 ", L"Window.SetText.Path c t 1.2 ",
                                         L"Window.SetText.Position c t 1,2,3,4 5 ",
                                         L"Window.SetText.NonRegex \"a b\" t 1 "};
constexpr std::wstring_view kEnds[] = {L" 2000", L" \"500\"", L"", L" -1", L" 99999999999999999999"};

/// The secret is the text where it stands alone in its token and the token stands where a text stands.
void CheckSecret(const std::wstring& line) {
    const tools::CommandLine read = tools::ReadCommandLine(line);
    if (!read.HasText() || read.tokens[read.textToken].text != kSecret) return;
    Require(!Contains(tools::MaskedLine(line), kSecret), "people never see a typed text");
    // A last word that is no number, behind a text without quotes: that the log shows the text is warned of elsewhere.
    const bool textGoesOn = read.HasTimeout() && !ReadsAsInteger(read.tokens.back().text);
    if (!textGoesOn) Require(!Contains(MaskCommandForLog(line), kSecret), "no log holds a typed text");
}

}  // namespace

void Try(Input input) {
    const std::wstring begin(input.OneOf(kBegins));
    const std::wstring end(input.OneOf(kEnds));
    const std::wstring noise = input.RestAsText();
    const std::wstring line = begin + noise;
    Require(MaskCommandForLog(line) == testing::MaskFromTheBack(line), "masking from the back gives the same");
    Require(noise.starts_with(L"Window.SetText") || MaskCommandForLog(noise) == noise, "other lines stay as they are");
    (void)tools::MaskedLine(noise);
    if (Contains(noise, kSecret)) return;
    CheckSecret(begin + noise + L"\"" + std::wstring(kSecret) + L"\"" + end);
    CheckSecret(begin + L" " + std::wstring(kSecret) + noise + end);
    CheckSecret(begin + L" " + std::wstring(kSecret) + L" " + noise + end);
}

}  // namespace dialwright::fuzz
