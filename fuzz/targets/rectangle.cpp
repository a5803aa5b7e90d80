#include "language/rectangle.h"

#include <cstdint>
#include <cstdlib>
#include <vector>

#include "language/numbers.h"
#include "language/splitting.h"
#include "look/position_rule.h"
#include "target.h"

namespace dialwright::fuzz {
namespace {

Rectangle AnyRectangle(Input& input) {
    if (input.Flag()) {
        const auto edge = [&] { return input.Between(-20, 20); };
        return {.left = edge(), .top = edge(), .right = edge(), .bottom = edge()};
    }
    return {.left = input.Any<int>(), .top = input.Any<int>(), .right = input.Any<int>(), .bottom = input.Any<int>()};
}

bool IsNear(int one, int other, int tolerance) { return std::llabs(std::int64_t{one} - other) <= tolerance; }

bool AreNear(const Rectangle& one, const Rectangle& other, int tolerance) {
    return IsNear(one.left, other.left, tolerance) && IsNear(one.top, other.top, tolerance) &&
           IsNear(one.right, other.right, tolerance) && IsNear(one.bottom, other.bottom, tolerance);
}

void CheckText(const Rectangle& rectangle) {
    std::wstring text = FormatRectangle(rectangle);
    Require(text.front() == L'[' && text.back() == L']', "a rectangle stands in brackets");
    const std::size_t middle = text.find(L"]-[");
    Require(middle != std::wstring::npos, "its corners have a dash between them");
    text = text.substr(1, middle - 1) + L"," + text.substr(middle + 3, text.size() - middle - 4);
    const auto edges = SplitByComma(text);
    Require(edges.size() == 4, "it has four edges");
    const Rectangle read = {.left = ConvertToInt(edges[0]),
                            .top = ConvertToInt(edges[1]),
                            .right = ConvertToInt(edges[2]),
                            .bottom = ConvertToInt(edges[3])};
    Require(read == rectangle, "its text is read back as it was");
}

/// The first place that a search with the tolerance takes.
std::size_t FirstTaken(const std::vector<Rectangle>& places, const Rectangle& wanted, int tolerance) {
    std::size_t first = 0;
    while (!EdgesWithinTolerance(places[first], wanted, tolerance)) ++first;
    return first;
}

void CheckTolerance(Input& input) {
    std::vector<Rectangle> places(input.Between<std::size_t>(1, 6));
    for (Rectangle& place : places) place = AnyRectangle(input);
    const std::size_t wanted = input.Between<std::size_t>(0, places.size() - 1);
    const auto tolerance = tools::ToleranceThatFinds(places, wanted);
    if (!tolerance) {
        Require(FirstTaken(places, places[wanted], 0) != wanted, "no tolerance where another is in the very place");
        return;
    }
    Require(FirstTaken(places, places[wanted], *tolerance) == wanted, "the tolerance finds the control");
    Require(*tolerance == 8 || FirstTaken(places, places[wanted], *tolerance + 1) != wanted, "it is the largest");
}

}  // namespace

void Try(Input input) {
    const Rectangle one = AnyRectangle(input);
    const Rectangle other = AnyRectangle(input);
    const int tolerance = input.Flag() ? input.Between(-2, 50) : input.Any<int>();
    CheckText(one);
    Require(EdgesWithinTolerance(one, other, tolerance) == AreNear(one, other, tolerance), "near is near in 64 bits");
    Require(EdgesWithinTolerance(other, one, tolerance) == EdgesWithinTolerance(one, other, tolerance), "both ways");
    const Rectangle moved = RelativeTo(one, other);
    const Rectangle origin = RelativeTo({}, {.left = other.left, .top = other.top});
    Require(RelativeTo(moved, origin) == one, "what was moved can be moved back, also around the end of the numbers");
    CheckTolerance(input);
}

}  // namespace dialwright::fuzz
