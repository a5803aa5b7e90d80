#pragma once

#include <span>
#include <string_view>

#include "verify/journal.h"
#include "verify/setting.h"

namespace dialwright::verify {

/// One thing that is looked at, in a process of its own.
struct Check {
    const char* name;
    const char* asks;
    /// A check that takes longer than this hangs.
    unsigned seconds;
    void (*run)(const Setting& setting, Journal& journal);
};

/// All of them, in the order of the report.
[[nodiscard]] std::span<const Check> Checks();
/// Null for a name that is none.
[[nodiscard]] const Check* FindCheck(std::string_view name);

void CheckFiles(const Setting& setting, Journal& journal);
void CheckLoading(const Setting& setting, Journal& journal);
void CheckTrace(const Setting& setting, Journal& journal);
void CheckCommands(const Setting& setting, Journal& journal);
void CheckRefusals(const Setting& setting, Journal& journal);
void CheckScripts(const Setting& setting, Journal& journal);
void CheckExits(const Setting& setting, Journal& journal);
void CheckDpi(const Setting& setting, Journal& journal);
void CheckElevation(const Setting& setting, Journal& journal);
void CheckCrash(const Setting& setting, Journal& journal);
void CheckTool(const Setting& setting, Journal& journal);

}  // namespace dialwright::verify
