#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "check/finding.h"
#include "check/known_windows.h"
#include "language/commands.h"
#include "language/tokenizer.h"

namespace dialwright::tools {

/// A line that has the shape of a command, taken apart as the library would.
struct LineContext {
    std::size_t number = 0;
    std::wstring_view text;
    std::vector<Token> tokens;
    const CommandSpec* command = nullptr;
    bool useRegex = true;

    [[nodiscard]] bool HasTimeout() const { return tokens.size() == command->MaxTokens(); }
    [[nodiscard]] Finding At(std::string_view code, const Token& token, std::wstring message) const {
        return {.code = code,
                .line = number,
                .column = token.offset + 1,
                .length = token.length,
                .text = std::move(message)};
    }
};

// A tool has the usual stack of a program; a host with less refuses patterns of some thousand characters earlier.
inline constexpr std::size_t kUsualStackBytes = 1U << 20U;

using Findings = std::vector<Finding>;

/// DW2xx: what must fail when the line runs, whatever windows there are.
void CheckValues(const LineContext& line, Findings& findings);

/// DW305: clicks on what is known to be no push button.
void CheckKnownClicks(const LineContext& line, std::span<const KnownWindow> known, Findings& findings);

/// DW3xx: what works, but hardly as it was meant.
void CheckHabits(const LineContext& line, Findings& findings);

}  // namespace dialwright::tools
