#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "verify/practice.h"

namespace dialwright::verify {

using Events = std::vector<std::string>;

/// What a family of commands does to the practice target, seen from outside.
struct CommandEffect {
    std::string_view family;
    /// The control that is meant; 0 for the window.
    int control;
    /// Brings the target into a state in which the effect is not there yet.
    void (*prepare)(const Practice& target);
    /// Empty where the effect is there and nothing else has happened, else what was found in its place.
    std::string (*fault)(Practice& target, const Events& events);
};

/// Throws for a command of a family that is not known here.
[[nodiscard]] const CommandEffect& EffectOf(std::wstring_view command);

/// What commands type and select.
inline constexpr const wchar_t* kTypedText = L"a \x00E9 \x3042";
inline constexpr const wchar_t* kItemText = L"Beta";
inline constexpr int kItemIndex = 1;

}  // namespace dialwright::verify
