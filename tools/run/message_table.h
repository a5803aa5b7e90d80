#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "run/log_message.h"

namespace dialwright::tools {

enum class MessageLevel : std::uint8_t { Info, Debug, Warning, Error };

/// What a message says about the course of a command.
enum class MessageRole : std::uint8_t {
    Announcement,  ///< repeats the command line
    Note,          ///< decides nothing
    WindowFound,
    ControlFound,  ///< an attempt begins to act; what attempts before it failed of no longer counts
    Clicking,      ///< the acting message of a click, which a modal dialog may hold up
    Failure,       ///< tells why
    Echo,          ///< tells that something failed, which a Failure before it tells better
};

/// One message that the library can write. Format and tag stand as in its source.
struct MessageRow {
    /// "*" where several functions write it.
    std::string_view tag;
    std::string_view format;
    MessageLevel level;
    MessageRole role;
    /// The stable code of a Failure or Echo.
    std::string_view code = {};
    /// What happened, in one sentence; {1}, {2} … stand for the conversions of the format.
    std::string_view sentence = {};
};

/// All that matter: every error and warning, and the messages that tell how far a command has come.
[[nodiscard]] std::span<const MessageRow> AllMessages();

/// A message with its row and what stood in its conversions.
struct KnownMessage {
    const MessageRow* row;
    std::vector<std::string> values;

    /// The row's sentence with the values in it.
    [[nodiscard]] std::string Sentence() const;
};

/// Nothing for a message that has no row.
[[nodiscard]] std::optional<KnownMessage> Recognize(const LogMessage& message);

}  // namespace dialwright::tools
