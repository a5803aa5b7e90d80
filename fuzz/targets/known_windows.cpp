#include "dialwright/known_windows_file.h"

#include "target.h"

namespace dialwright::fuzz {

void Try(Input input) {
    const auto window = tools::ReadKnownWindow(input.RestAsBytes());
    Require(!window || window->controls.size() < 4096, "a short text holds few controls");
}

}  // namespace dialwright::fuzz
