#pragma once

#include <string>
#include <vector>

#include "look/control_tree.h"
#include "look/ready_commands.h"
#include "look/window_list.h"

namespace dialwright::tools {

/// Paths in UTF-8; empty for what is not wanted.
struct PictureFiles {
    std::string picture;
    std::string page;

    [[nodiscard]] bool AreWanted() const { return !picture.empty() || !page.empty(); }
};

/// Takes the window's picture, without what is blanked, and writes what is wanted; complains on standard error. Returns
/// the exit code. Without a picture there is no picture file, and the page has the list alone.
[[nodiscard]] int WritePictures(const PictureFiles& files, const WindowInfo& window,
                                const std::vector<ControlInfo>& controls, NamedBy way,
                                const std::vector<Rectangle>& blanked);

}  // namespace dialwright::tools
