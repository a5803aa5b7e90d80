#include <algorithm>
#include <array>

#include "check/source_text.h"
#include "dialwright/github.h"
#include "dialwright/junit.h"
#include "dialwright/printable.h"
#include "pieces.h"
#include "target.h"

namespace dialwright::fuzz {
namespace {

using namespace tools;

bool HoldsControls(std::string_view utf8, bool linesAreFine) {
    const std::wstring text = Wide(utf8);
    return std::ranges::any_of(text, [&](wchar_t unit) { return IsControl(unit) && !(linesAreFine && unit == L'\n'); });
}

/// Well formed as far as our own writer goes: elements close in order, and "<", "&" and quotes stand for themselves.
void CheckXml(std::string_view xml) {
    std::vector<std::string> open;
    std::size_t at = xml.find("?>") + 2;
    while ((at = xml.find_first_of("<&", at)) != std::string_view::npos) {
        if (xml[at] == '&') {
            const std::string_view rest = xml.substr(at);
            Require(rest.starts_with("&amp;") || rest.starts_with("&lt;") || rest.starts_with("&gt;") ||
                        rest.starts_with("&quot;"),
                    "an ampersand begins one of four names");
            ++at;
            continue;
        }
        const std::size_t end = xml.find('>', at);
        Require(end != std::string_view::npos, "an element ends");
        const std::string_view inside = xml.substr(at + 1, end - at - 1);
        Require(std::ranges::count(inside, '"') % 2 == 0 && !Contains(inside, "<"), "no value leaves its quotes");
        const std::string name(inside.substr(0, inside.find(' ')));
        if (name.starts_with('/')) {
            Require(!open.empty() && "/" + open.back() == name, "elements close in order");
            open.pop_back();
        } else if (!inside.ends_with('/')) {
            open.push_back(name);
        }
        at = end;
    }
    Require(open.empty(), "all elements are closed");
}

LineReport AnyLine(Input& input) {
    LineReport line;
    line.status = input.OneOf(std::array{LineStatus::Ok, LineStatus::Failed, LineStatus::Skipped, LineStatus::Planned});
    line.file = input.Bytes(10);
    line.text = input.Bytes(20);
    line.reason = input.Bytes(10);
    line.suggestion = input.Bytes(10);
    line.messages = {input.Bytes(20)};
    line.files = {input.Bytes(10)};
    return line;
}

}  // namespace

void Try(Input input) {
    const Annotation annotation{.level = "error",
                                .file = Printable(std::string_view(input.Bytes(20))),
                                .line = 1,
                                .title = Printable(std::string_view(input.Bytes(20))),
                                .text = Printable(std::string_view(input.Bytes(20)))};
    const std::string command = GithubAnnotation(annotation);
    Require(command.find('\n') == command.size() - 1, "an annotation is one line");
    Require(std::ranges::count(command.substr(0, command.find("::", 2)), ',') == 2, "no value ends its property");

    const FileReport file{.file = input.Bytes(10), .lines = {AnyLine(input), AnyLine(input)}};
    const std::string xml = FormatRunAsJUnit({.files = {file}, .traceFolder = {}});
    CheckXml(xml);
    Require(!HoldsControls(xml, true), "no control character comes into a report");
    Require(!HoldsControls(Printable(std::string_view(input.RestAsBytes())), false), "nor into what is printed");
}

}  // namespace dialwright::fuzz
