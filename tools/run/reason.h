#pragma once

#include <span>
#include <string>

#include "platform/windows.h"
#include "run/log_message.h"

namespace dialwright::tools {

/// Why a line failed: a code that stays the same from version to version, and a sentence for people.
struct Reason {
    std::string code;
    std::string sentence;
};

/// Follows a command by the messages that it writes.
class Course {
public:
    /// Takes notice of the messages that are new since the last call.
    void Follow(std::span<const LogMessage> messages);

    /// The window that the command found; null before that.
    [[nodiscard]] HWND Window() const { return window; }
    /// The control that it found last; null before that.
    [[nodiscard]] HWND Control() const { return control; }
    /// The library may have begun to act on the target, and so may have to wait for its answer.
    [[nodiscard]] bool IsActing() const { return control != nullptr; }
    [[nodiscard]] bool IsClicking() const { return clicking; }

    /// Why a command that ended with 0 failed: the last failure of its last attempt.
    [[nodiscard]] Reason WhyItFailed() const;

private:
    void Take(const LogMessage& message);

    std::size_t taken = 0;
    HWND window = nullptr;
    HWND control = nullptr;
    bool clicking = false;
    bool failed = false;
    bool failureIsEcho = false;
    Reason failure;
};

}  // namespace dialwright::tools
