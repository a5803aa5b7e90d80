#include "check/nearest_name.h"

#include <algorithm>

#include "check/edit_distance.h"
#include "language/commands.h"
#include "target.h"

namespace dialwright::fuzz {

void Try(Input input) {
    const std::wstring one = input.Text(20);
    const std::wstring other = input.Text(20);
    const std::wstring third = input.Text(20);
    const std::size_t apart = tools::EditDistance(one, other);
    Require(tools::EditDistance(one, one) == 0, "a text is no distance from itself");
    Require(apart == tools::EditDistance(other, one), "the way back is as long");
    Require(apart <= tools::EditDistance(one, third) + tools::EditDistance(third, other), "a detour is no shorter");
    Require(apart <= (std::max)(one.size(), other.size()), "no way is longer than writing all anew");

    std::wstring name(input.OneOf(kCommands).name);
    Require(tools::NearestCommandName(name) == name, "nothing is nearer than the name itself");
    const std::wstring typed = name.substr(0, input.Between<std::size_t>(0, name.size())) + input.Text(6);
    const std::wstring_view nearest = tools::NearestCommandName(typed);
    const bool isName = std::ranges::find(kCommands, nearest, &CommandSpec::name) != kCommands.end();
    Require(nearest.empty() || isName, "what is proposed is a command");

    const std::wstring suffix = L".NonRegex";
    bool useRegex = false;
    const std::wstring stripped = StripNonRegexSuffix(typed, &useRegex);
    Require((useRegex ? stripped : stripped + suffix) == typed, "the suffix is what was taken off");
    Require(useRegex == !(typed.ends_with(suffix) && typed.size() > suffix.size()), "and is taken where it stands");
}

}  // namespace dialwright::fuzz
