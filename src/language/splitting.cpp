#include "language/splitting.h"

#include <cstddef>

namespace dialwright {
namespace {

constexpr wchar_t kBlanks[] = L" \t\r\n";

/// Reads as std::getline does: a delimiter ends a piece, and nothing after the last one is no piece.
template <class Visit>
void ForEachPiece(const std::wstring& text, wchar_t delimiter, Visit&& visit) {
    for (std::size_t start = 0; start < text.size();) {
        const std::size_t end = text.find(delimiter, start);
        if (end == std::wstring::npos) {
            visit(text.substr(start));
            return;
        }
        visit(text.substr(start, end - start));
        start = end + 1;
    }
}

std::vector<std::wstring> SplitAt(const std::wstring& text, wchar_t delimiter) {
    std::vector<std::wstring> pieces;
    ForEachPiece(text, delimiter, [&](std::wstring piece) { pieces.push_back(std::move(piece)); });
    return pieces;
}

}  // namespace

std::vector<std::wstring> SplitScriptLines(const std::wstring& script) {
    std::vector<std::wstring> lines;
    ForEachPiece(script, L'\n', [&](std::wstring line) {
        if (line.find_first_not_of(kBlanks) != std::wstring::npos) lines.push_back(std::move(line));
    });
    return lines;
}

std::vector<std::wstring> SplitByComma(const std::wstring& text) { return SplitAt(text, L','); }

std::vector<std::wstring> SplitHierarchyPath(const std::wstring& path) { return SplitAt(path, L'.'); }

}  // namespace dialwright
