#include "run/message_table.h"

#include <array>

#include "run/format_match.h"

namespace dialwright::tools {
namespace {

using enum MessageLevel;
using enum MessageRole;

constexpr std::array kRows = {
    // How far a command has come.
    MessageRow{"DialogScriptManager::ExecuteScript", "Executing command: %ls", Info, Announcement},
    MessageRow{"DialogScriptManager::ExecuteScript", "Invalid command: %ls", Error, Announcement},
    MessageRow{"Window::Window", "Window found successfully. Parent Window Handle: 0x%ls", Info, WindowFound},
    MessageRow{"Window::GetControlHandle", "Standard dialog control handle: 0x0", Debug, Failure, "control_not_found",
               "the dialog has no control with this ID"},
    MessageRow{"Window::GetControlHandle", "Standard dialog control handle: 0x%ls", Debug, ControlFound},
    MessageRow{"Window::FindChildControl::<lambda_1>::operator ()",
               "Found matching child control: Handle: 0x%ls ID: %d", Info, ControlFound},
    MessageRow{"Window::FindControlByHierarchy", "Final control HWND found: 0x%ls", Debug, ControlFound},
    MessageRow{"Window::FindControlByPosition", "Position search successful:\nFound HWND: 0x%ls\nPosition:   %ls", Info,
               ControlFound},
    MessageRow{"Window::ClickHelper", "Clicking button:\nHandle: 0x%ls\nID:     %d", Info, Clicking},

    // The window.
    MessageRow{"Window::Window", "Window search failed after %dms", Error, Failure, "window_not_found",
               "no window matched class and title within {1} ms"},
    MessageRow{"*", "%s: No valid window handle", Error, Echo, "window_not_found", "the window was not found"},
    MessageRow{"*", "%s failed with error: %d", Error, Failure, "action_failed", "{1} failed with error {2}"},
    MessageRow{"Window::BringToFront", "BringToFront failed (Error %d). Foreground access may be restricted.", Error,
               Failure, "foreground_refused", "the system did not let the window come to the front (error {1})"},

    // The control.
    MessageRow{"Window::GetControlHandle", "GetControlHandle - Parent window not initialized", Error, Echo,
               "window_not_found", "the window was not found"},
    MessageRow{"Window::FindChildControl", "Child control not found - ID: %d", Error, Failure, "control_not_found",
               "no control in the window has the ID {1}"},
    MessageRow{"Window::FindControlByHierarchy", "Error: hwndWindow is null. Cannot traverse hierarchy.", Error, Echo,
               "window_not_found", "the window was not found"},
    MessageRow{"Window::FindControlByHierarchy", "Failed to find child window at segment: %ls in hierarchy path: %ls",
               Error, Failure, "control_not_found", "the path {2} ends before its segment {1}"},
    MessageRow{"Window::FindControlByPosition", "Invalid window hierarchy for: 0x%ls", Error, Failure, "window_gone",
               "the window closed while the line ran"},
    MessageRow{"Window::FindControlByPosition",
               "Position search failed:\nTarget:    %ls\nTolerance: %d\nParent:    0x%ls", Warning, Failure,
               "control_not_found", "no control lies at {1} within {2} pixels"},
    MessageRow{"Window::GetScreenRect", "GetWindowRect failed for HWND: 0x%ls", Error, Note},
    MessageRow{"Window::GetLocalCoordinates", "GetLocalCoordinates - Invalid window handle (HWND: 0x%ls)", Error, Note},

    // The action.
    MessageRow{"Window::SetTextHelper", "SetTextHelper - Null control handle", Error, Echo, "control_not_found",
               "the control was not found"},
    MessageRow{"Window::ClickHelper", "ClickHelper - Null button handle", Error, Echo, "control_not_found",
               "the control was not found"},
    MessageRow{"Window::SimulateMouseClick", "SimulateMouseClick - Null control handle", Error, Echo,
               "control_not_found", "the control was not found"},
    MessageRow{"Window::SimulateMouseClick", "Failed to get control rect - Error: %d", Error, Note},
    MessageRow{"Window::SelectDropdownByValueInternal", "Value '%ls' not found in dropdown", Error, Failure,
               "item_not_found", "the dropdown has no item \"{1}\""},
    MessageRow{"Window::SelectDropdownByIndexInternal", "Invalid negative index: %d", Error, Failure, "bad_argument",
               "the index {1} is negative"},
    MessageRow{"Window::SelectDropdownByIndexInternal", "Index %d out of range (total items: %d)", Error, Failure,
               "item_not_found", "the dropdown has {2} items, so none at index {1}"},
    MessageRow{"Window::SetCheckState", "%ls control not found", Error, Echo, "control_not_found",
               "the control was not found"},
    MessageRow{"Window::SetCheckState", "Control (0x%ls) is not a checkbox/radio button", Error, Failure,
               "wrong_control_kind", "the control is neither a check box nor a radio button"},
    MessageRow{"Window::SetCheckState", "Control (0x%ls) is disabled or hidden", Error, Failure, "control_disabled",
               "the control is disabled or hidden"},
    MessageRow{"Window::SetCheckState", "Failed to set %ls state.\nPrevious: %d\nNew: %d", Error, Failure,
               "state_not_taken", "the control did not take the state: it is {3}"},

    // The line itself.
    MessageRow{"*", "Empty command", Error, Failure, "invalid_command", "the line holds no command"},
    MessageRow{"*", "Unknown command: %ls", Error, Failure, "invalid_command", "no command has the name {1}"},
    MessageRow{"DialogScriptManager::ValidateCommandArgs", "Invalid argument count for %ls", Error, Failure,
               "invalid_command", "{1} has too few or too many arguments"},
    MessageRow{"DialogScriptManager::ValidateCommandArgs", "Argument %d is empty for %ls", Error, Failure,
               "invalid_command", "argument {1} is empty"},
    MessageRow{"DialogScriptManager::ParseInt", "Invalid %ls: %ls", Error, Failure, "bad_argument",
               "the {1} is no number: {2}"},
    MessageRow{"*", "Invalid checkbox state: %d", Error, Failure, "bad_argument", "the state {1} is neither 0 nor 1"},
    MessageRow{"*", "Invalid number of coordinates", Error, Failure, "bad_argument",
               "a rectangle has four numbers, a position two"},
    MessageRow{"*", "Invalid number of dimensions", Error, Failure, "bad_argument", "a size has two numbers"},
    MessageRow{"DialogScriptManager::ExecuteCommand", "Unhandled command: %ls", Error, Failure, "internal",
               "the library has no way to carry out {1}"},
    MessageRow{"*", "Script is empty", Error, Failure, "invalid_command", "the line holds no command"},
    MessageRow{"*", "Exception during %s: %s", Error, Echo, "bad_argument", "the line cannot be carried out: {2}"},

    // Launching.
    MessageRow{"Program::Launch", "Error: Failed to launch program \"%ls\"", Error, Failure, "launch_failed",
               "the program {1} cannot be started"},
};

}  // namespace

std::span<const MessageRow> AllMessages() { return kRows; }

std::string KnownMessage::Sentence() const {
    std::string filled(row->sentence);
    for (std::size_t i = 0; i < values.size(); ++i) {
        const std::string place = "{" + std::to_string(i + 1) + "}";
        const std::size_t at = filled.find(place);
        if (at != std::string::npos) filled.replace(at, place.size(), values[i]);
    }
    return filled;
}

std::optional<KnownMessage> Recognize(const LogMessage& message) {
    for (const MessageRow& row : kRows) {
        if (row.tag != "*" && row.tag != message.tag) continue;
        if (auto values = MatchFormat(row.format, message.text)) return KnownMessage{&row, std::move(*values)};
    }
    return std::nullopt;
}

}  // namespace dialwright::tools
