#include "run/reason.h"

#include <cstdlib>

#include "run/message_table.h"

namespace dialwright::tools {
namespace {

HWND HandleOf(const std::string& hexadecimal) {
    constexpr int kBase = 16;
    return reinterpret_cast<HWND>(std::strtoull(hexadecimal.c_str(), nullptr, kBase));
}

/// Two reasons that the messages tell by a number or a text only.
std::string CodeOf(const KnownMessage& message) {
    if (message.row->code == "action_failed") {
        const unsigned long error = std::strtoul(message.values.back().c_str(), nullptr, 10);
        if (error == 0) return "window_was_hidden";
        if (error == ERROR_ACCESS_DENIED) return "access_denied";
        if (error == ERROR_INVALID_WINDOW_HANDLE) return "window_gone";
    }
    const bool isException = message.row->format.starts_with("Exception");
    if (isException && message.values.back().find("alloc") != std::string::npos) return "out_of_memory";
    return std::string(message.row->code);
}

}  // namespace

void Course::Follow(std::span<const LogMessage> messages) {
    for (; taken < messages.size(); ++taken) Take(messages[taken]);
}

void Course::Take(const LogMessage& message) {
    const auto known = Recognize(message);
    if (!known) return;
    switch (known->row->role) {
        case MessageRole::WindowFound: window = HandleOf(known->values[0]); break;
        case MessageRole::ControlFound:
            control = HandleOf(known->values[0]);
            failed = false;
            break;
        case MessageRole::Clicking: clicking = true; break;
        case MessageRole::Echo:
            if (failed && !failureIsEcho) break;
            [[fallthrough]];
        case MessageRole::Failure:
            failed = true;
            failureIsEcho = known->row->role == MessageRole::Echo;
            failure = {.code = CodeOf(*known), .sentence = known->Sentence()};
            if (failure.code == "window_was_hidden") {
                failure.sentence = "the window was hidden; it is shown now, which the library counts as a failure";
            }
            break;
        case MessageRole::Announcement:
        case MessageRole::Note: break;
    }
}

Reason Course::WhyItFailed() const {
    if (failed) return failure;
    if (window == nullptr) {
        return {.code = "window_not_found", .sentence = "no window matched class and title in time"};
    }
    if (IsActing()) return {.code = "action_failed", .sentence = "the control did not do what it was asked to"};
    return {.code = "no_time_left", .sentence = "the window came up so late that no time was left for the control"};
}

}  // namespace dialwright::tools
