#include "look/control_tree.h"

namespace dialwright::tools {

const char* NameOf(ControlKind kind) {
    switch (kind) {
        case ControlKind::Edit: return "edit";
        case ControlKind::ReadOnlyEdit: return "readonly";
        case ControlKind::Password: return "password";
        case ControlKind::PushButton: return "button";
        case ControlKind::CheckBox: return "checkbox";
        case ControlKind::RadioButton: return "radio";
        case ControlKind::GroupBox: return "group";
        case ControlKind::Dropdown: return "dropdown";
        case ControlKind::Other: break;
    }
    return "other";
}

}  // namespace dialwright::tools
