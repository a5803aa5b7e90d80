#include "verify/checks.h"

#include <algorithm>

namespace dialwright::verify {
namespace {

constexpr Check kChecks[] = {
    {"files", "are the files there, for this architecture and of one version?", 60, &CheckFiles},
    {"load", "can the library be loaded and freed again and again, and leaves nothing behind?", 180, &CheckLoading},
    {"trace", "does the trace file say what was done, in whole lines?", 60, &CheckTrace},
    {"commands", "does each command do what it says, seen from outside?", 300, &CheckCommands},
    {"refusals", "are wrong lines refused, and timeouts kept?", 60, &CheckRefusals},
    {"scripts", "do scripts stop where a line fails, and do programs start?", 60, &CheckScripts},
    {"exit", "does a process that ends while its threads log end well, and its trace whole?", 180, &CheckExits},
    {"dpi", "is a host made aware of the scale, and are rectangles physical pixels?", 60, &CheckDpi},
    {"elevation", "what happens between processes of different rights?", 90, &CheckElevation},
    {"crash", "what is left when the host crashes, and can a dump be read?", 120, &CheckCrash},
    {"tool", "do dialwright.exe and its worker do their work?", 120, &CheckTool},
};

}  // namespace

std::span<const Check> Checks() { return kChecks; }

const Check* FindCheck(std::string_view name) {
    const auto* const found =
        std::ranges::find(kChecks, name, [](const Check& check) { return std::string_view(check.name); });
    return found == std::end(kChecks) ? nullptr : found;
}

}  // namespace dialwright::verify
