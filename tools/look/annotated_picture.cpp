#include "look/annotated_picture.h"

#include <algorithm>
#include <array>
#include <limits>
#include <string>

namespace dialwright::tools {
namespace {

constexpr Colour kActs = 0x2563EB;
constexpr Colour kRests = 0x8A94A6;
constexpr Colour kDigits = 0xFFFFFF;

Size LabelSize(const Mark& mark, int scale) {
    const Size digits = DigitsSize(std::to_string(mark.number), scale);
    return {.width = digits.width + 4 * scale, .height = digits.height + 4 * scale};
}

int OverlapOf(const Rectangle& one, const Rectangle& other) {
    const int width = (std::min)(one.right, other.right) - (std::max)(one.left, other.left);
    const int height = (std::min)(one.bottom, other.bottom) - (std::max)(one.top, other.top);
    return width > 0 && height > 0 ? width * height : 0;
}

Rectangle PlacedAt(int left, int top, Size size) {
    return {.left = left, .top = top, .right = left + size.width, .bottom = top + size.height};
}

/// Corners inside, then beside and above the control; the best-liked first.
std::array<Rectangle, 9> Candidates(const Rectangle& control, Size label) {
    const int inRight = control.right - label.width;
    const int inBottom = control.bottom - label.height;
    const int middle = (control.top + control.bottom - label.height) / 2;
    return {{
        PlacedAt(inRight, control.top, label),
        PlacedAt(control.left, control.top, label),
        PlacedAt(inRight, inBottom, label),
        PlacedAt(control.left, inBottom, label),
        PlacedAt(control.right, middle, label),
        PlacedAt(control.left - label.width, middle, label),
        PlacedAt(inRight, control.top - label.height, label),
        PlacedAt(control.left, control.top - label.height, label),
        PlacedAt(inRight, control.bottom, label),
    }};
}

/// Around the control, so that the frame hides nothing of it.
Rectangle FrameOf(const Mark& mark, int scale) {
    const auto& [left, top, right, bottom] = mark.place;
    return {.left = left - scale, .top = top - scale, .right = right + scale, .bottom = bottom + scale};
}

bool IsInside(const Rectangle& rectangle, const Picture& picture) {
    return rectangle.left >= 0 && rectangle.top >= 0 && rectangle.right <= picture.width &&
           rectangle.bottom <= picture.height;
}

Rectangle BestPlace(const Picture& picture, const Mark& mark, int scale, const std::vector<Rectangle>& taken) {
    constexpr int kCostOfHidingANumber = 100;
    constexpr int kCostOfALessLikedPlace = 2;
    const auto candidates = Candidates(mark.place, LabelSize(mark, scale));
    Rectangle best = candidates.front();
    int least = (std::numeric_limits<int>::max)();
    int rank = 0;
    for (const Rectangle& place : candidates) {
        int cost = DetailIn(picture, place) + kCostOfALessLikedPlace * rank++;
        for (const Rectangle& other : taken) cost += kCostOfHidingANumber * OverlapOf(place, other);
        if (!IsInside(place, picture) || cost >= least) continue;
        least = cost;
        best = place;
    }
    return best;
}

}  // namespace

std::vector<Mark> MarksOf(const std::vector<ControlInfo>& controls) {
    std::vector<Mark> marks;
    int number = 0;
    for (const ControlInfo& control : controls) {
        ++number;
        if (!control.visible) continue;
        const bool acts = control.kind != ControlKind::Other && control.kind != ControlKind::GroupBox &&
                          control.kind != ControlKind::ReadOnlyEdit;
        marks.push_back({.number = number, .place = control.rectangle, .acts = acts});
    }
    return marks;
}

std::vector<Rectangle> PlaceLabels(const Picture& picture, const std::vector<Mark>& marks, int scale) {
    std::vector<Rectangle> labels;
    for (const Mark& mark : marks) labels.push_back(BestPlace(picture, mark, scale, labels));
    return labels;
}

void Annotate(Picture& picture, const std::vector<Mark>& marks, int scale) {
    const std::vector<Rectangle> labels = PlaceLabels(picture, marks, scale);
    for (const Mark& mark : marks) DrawFrame(picture, FrameOf(mark, scale), scale, mark.acts ? kActs : kRests);
    for (std::size_t i = 0; i < marks.size(); ++i) {
        FillRectangle(picture, labels[i], marks[i].acts ? kActs : kRests);
        DrawDigits(picture, std::to_string(marks[i].number), labels[i].left + 2 * scale, labels[i].top + 2 * scale,
                   scale, kDigits);
    }
}

}  // namespace dialwright::tools
