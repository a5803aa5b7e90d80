#include "language/splitting.h"

#include <algorithm>

#include "target.h"

namespace dialwright::fuzz {
namespace {

using Pieces = std::vector<std::wstring>;

std::wstring Join(const Pieces& pieces, wchar_t delimiter) {
    std::wstring text;
    for (std::size_t i = 0; i < pieces.size(); ++i) text += (i == 0 ? L"" : std::wstring(1, delimiter)) + pieces[i];
    return text;
}

/// There is exactly one list of pieces for which all of this holds.
void CheckSplit(const std::wstring& text, const Pieces& pieces, wchar_t delimiter) {
    const bool endsInOne = text.ends_with(delimiter);
    Require(Join(pieces, delimiter) == text.substr(0, text.size() - (endsInOne ? 1 : 0)), "joined pieces are the text");
    const auto delimiters = static_cast<std::size_t>(std::ranges::count(text, delimiter));
    const std::size_t behindLast = text.empty() || endsInOne ? 0 : 1;
    Require(pieces.size() == delimiters + behindLast, "there is a piece for each delimiter, and one for the rest");
    for (const std::wstring& piece : pieces) Require(piece.find(delimiter) == std::wstring::npos, "no piece holds one");
}

bool IsBlank(const std::wstring& line) { return line.find_first_not_of(L" \t\r\n") == std::wstring::npos; }

}  // namespace

void Try(Input input) {
    const std::wstring text = input.RestAsText();
    CheckSplit(text, SplitByComma(text), L',');
    CheckSplit(text, SplitHierarchyPath(text), L'.');
    // Line feeds for commas and no commas else: the lines of a script are such pieces, less the blank ones.
    std::wstring swapped = text;
    for (wchar_t& unit : swapped) unit = unit == L'\n' ? L',' : unit == L',' ? L';' : unit;
    std::wstring script = text;
    std::ranges::replace(script, L',', L';');
    Pieces lines = SplitByComma(swapped);
    std::erase_if(lines, IsBlank);
    Require(SplitScriptLines(script) == lines, "lines are the pieces between line feeds that are not blank");
}

}  // namespace dialwright::fuzz
