#include "check/check.h"

#include <algorithm>
#include <set>

#include "language/by_hand.h"
#include "platform/text_encoding.h"
#include "target.h"

namespace dialwright::fuzz {
namespace {

using namespace tools;

void CheckFindings(const SourceText& source, const std::vector<Finding>& findings) {
    std::set<std::string_view> codes;
    for (const Rule& rule : AllRules()) codes.insert(rule.code);
    std::size_t line = 1;
    for (const Finding& finding : findings) {
        Require(codes.contains(finding.code), "every code is in the list of rules");
        Require(finding.line >= line, "findings come in the order of their lines");
        line = finding.line;
        Require(line <= (std::max)(source.lines.size(), std::size_t{1}), "a finding is in a line that is there");
        const std::size_t units = source.lines.empty() ? 0 : source.lines[line - 1].text.size();
        Require(finding.column >= 1 && finding.column - 1 + finding.length <= units, "and within that line");
        Require(!finding.text.empty(), "and says what it found");
    }
}

void CheckSource(const std::string& bytes, const SourceText& source) {
    std::wstring joined;
    for (const SourceLine& line : source.lines) joined += line.text + L"\n";
    std::string_view read = bytes;
    if (read.starts_with("\xEF\xBB\xBF")) read.remove_prefix(3);
    if (source.hadInvalidBytes) {
        Require(Wide(read).size() <= joined.size(), "no byte is lost");
        return;
    }
    const std::string back = ToUtf8(joined);
    Require(back == read || back == std::string(read) + "\n", "valid text comes back as it was");
}

}  // namespace

void Try(Input input) {
    const KnownWindow known{
        .className = L"c",
        .title = input.Text(8),
        .controls = {{.path = L"1", .id = 1, .idFindsIt = true, .rectangle = {}, .kind = KnownKind::CheckBox}}};
    const std::string bytes = input.RestAsBytes();
    const SourceText source = ReadSource(bytes);
    CheckSource(bytes, source);
    const std::vector<Finding> findings = CheckScript(source, {&known, 1});
    CheckFindings(source, findings);
    Require(findings.size() >= CheckScript(source).size(), "what is known of windows finds more, never less");
    const bool refused =
        std::ranges::any_of(findings, [](const Finding& finding) { return finding.code.starts_with("DW1"); });
    Require(refused != testing::IsValidScriptByHand(PureScript(source)),
            "a script is refused exactly where the library refuses it");
}

}  // namespace dialwright::fuzz
