#pragma once

#include <vector>

#include "look/control_tree.h"
#include "look/picture.h"

namespace dialwright::tools {

/// What is drawn around one control.
struct Mark {
    int number = 0;
    Rectangle place;
    /// A command acts on it; the others are drawn more quietly.
    bool acts = false;
};

/// One mark for each visible control, numbered from 1 in the order of the list, hidden ones counted.
[[nodiscard]] std::vector<Mark> MarksOf(const std::vector<ControlInfo>& controls);

/// Where the number of each mark goes: where it hides least of the picture and none of the other numbers.
[[nodiscard]] std::vector<Rectangle> PlaceLabels(const Picture& picture, const std::vector<Mark>& marks, int scale);

/// Frames and numbers. `scale` is 1 for a screen of 96 pixels an inch.
void Annotate(Picture& picture, const std::vector<Mark>& marks, int scale);

}  // namespace dialwright::tools
