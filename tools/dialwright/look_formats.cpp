#include "look_formats.h"

#include "json_text.h"
#include "printable.h"
#include "window/describe.h"

namespace dialwright::tools {
namespace {

Json ToJson(const Rectangle& rectangle) {
    return {{"left", rectangle.left}, {"top", rectangle.top}, {"right", rectangle.right}, {"bottom", rectangle.bottom}};
}

Json ToJson(const std::vector<std::wstring>& lines) {
    Json all = Json::array();
    for (const std::wstring& line : lines) all.push_back(Printable(line));
    return all;
}

Json ToJson(const WindowInfo& window) {
    return {{"handle", Printable(FormatHandleHex(window.handle))},
            {"class", Printable(window.className)},
            {"title", Printable(window.title)},
            {"processId", window.processId},
            {"program", Printable(window.program)},
            {"frame", ToJson(window.frame)},
            {"visible", window.visible},
            {"enabled", window.enabled},
            {"minimized", window.minimized},
            {"hung", window.hung}};
}

Json ToleranceOf(const ControlInfo& control) { return control.tolerance ? Json(*control.tolerance) : Json(nullptr); }

Json ToJson(const WindowInfo& window, const ControlInfo& control, NamedBy way, std::size_t number) {
    return {{"number", number},
            {"handle", Printable(FormatHandleHex(control.handle))},
            {"path", Printable(control.path)},
            {"id", control.id},
            {"idFindsIt", control.idIsOurs},
            {"class", Printable(control.className)},
            {"kind", NameOf(control.kind)},
            {"text", Printable(control.text)},
            {"rectangle", ToJson(control.rectangle)},
            {"tolerance", ToleranceOf(control)},
            {"visible", control.visible},
            {"enabled", control.enabled},
            {"commands", ToJson(ReadyCommands(window, control, way))}};
}

std::string StateOf(const WindowInfo& window) {
    std::string state = window.visible ? "" : " hidden";
    if (!window.enabled) state += " disabled";
    if (window.minimized) state += " minimized";
    if (window.hung) state += " hung";
    return state;
}

std::string LineOf(const WindowInfo& window) {
    return "0x" + Printable(FormatHandleHex(window.handle)) + "  " + Printable(window.className) + "  \"" +
           Printable(window.title) + "\"  " + Printable(window.program) + " " + std::to_string(window.processId) +
           "  " + Printable(FormatRectangle(window.frame)) + StateOf(window) + "\n";
}

std::string LineOf(const ControlInfo& control, const std::string& number) {
    std::string line(static_cast<std::size_t>(control.depth) * 2, ' ');
    line += number + Printable(control.path) + "  " + NameOf(control.kind) + "  ID " + std::to_string(control.id) +
            "  " + Printable(control.className) + "  \"" + Printable(control.text) + "\"  " +
            Printable(FormatRectangle(control.rectangle));
    if (!control.visible) line += " hidden";
    if (!control.enabled) line += " disabled";
    return line + "\n";
}

Json ListOf(const std::vector<WindowInfo>& windows) {
    Json all = Json::array();
    for (const WindowInfo& window : windows) all.push_back(ToJson(window));
    return all;
}

}  // namespace

std::string FormatWindows(const std::vector<WindowInfo>& windows, bool json) {
    if (json) return JsonText({{"schema", 1}, {"windows", ListOf(windows)}});
    std::string text;
    for (const WindowInfo& window : windows) text += LineOf(window);
    return text;
}

std::string FormatMatches(const std::vector<WindowInfo>& windows, bool json) {
    if (json) return JsonText({{"schema", 1}, {"matches", ListOf(windows)}});
    std::string text;
    for (const WindowInfo& window : windows) text += (text.empty() ? "taken   " : "also    ") + LineOf(window);
    return text;
}

std::string ControlsAsJson(const WindowInfo& window, const std::vector<ControlInfo>& controls, NamedBy way) {
    Json all = Json::array();
    for (const ControlInfo& control : controls) all.push_back(ToJson(window, control, way, all.size() + 1));
    return JsonText({{"schema", 1},
                     {"window", ToJson(window)},
                     {"commands", ToJson(ReadyWindowCommands(window))},
                     {"controls", all}});
}

std::string ControlsAsText(const WindowInfo& window, const std::vector<ControlInfo>& controls, NamedBy way,
                           bool numbered) {
    std::string text = LineOf(window);
    for (const std::wstring& line : ReadyWindowCommands(window)) text += "    " + Printable(line) + "\n";
    int number = 0;
    for (const ControlInfo& control : controls) {
        ++number;
        text += LineOf(control, numbered ? "[" + std::to_string(number) + "] " : "");
        const std::string indent(static_cast<std::size_t>(control.depth) * 2 + 4, ' ');
        for (const std::wstring& line : ReadyCommands(window, control, way)) text += indent + Printable(line) + "\n";
    }
    return text;
}

}  // namespace dialwright::tools
