#include "known_windows_file.h"

#include <string>

#include "check/source_text.h"
#include "json_text.h"
#include "look/control_tree.h"

namespace dialwright::tools {
namespace {

KnownKind KindNamed(const std::string& name) {
    if (name == NameOf(ControlKind::CheckBox)) return KnownKind::CheckBox;
    return name == NameOf(ControlKind::RadioButton) ? KnownKind::RadioButton : KnownKind::Other;
}

KnownControl ControlIn(const Json& json) {
    const Json& place = json.at("rectangle");
    return {.path = Wide(json.at("path").get<std::string>()),
            .id = json.at("id"),
            .idFindsIt = json.at("idFindsIt"),
            .rectangle = {.left = place.at("left"),
                          .top = place.at("top"),
                          .right = place.at("right"),
                          .bottom = place.at("bottom")},
            .kind = KindNamed(json.at("kind"))};
}

}  // namespace

std::optional<KnownWindow> ReadKnownWindow(std::string_view json) {
    try {
        const Json read = Json::parse(json);
        if (read.at("schema") != 1) return std::nullopt;
        KnownWindow window{.className = Wide(read.at("window").at("class").get<std::string>()),
                           .title = Wide(read.at("window").at("title").get<std::string>()),
                           .controls = {}};
        for (const Json& control : read.at("controls")) window.controls.push_back(ControlIn(control));
        return window;
    } catch (const Json::exception&) {
        return std::nullopt;
    }
}

}  // namespace dialwright::tools
