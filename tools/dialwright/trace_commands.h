#pragma once

#include "subcommand.h"

namespace dialwright::tools {

// What can be done with traces; each is a subcommand of `dialwright trace`.

Action DefineTraceShow(CLI::App& command);
Action DefineTraceFollow(CLI::App& command);
Action DefineTraceAudit(CLI::App& command);
Action DefineTraceMemlog(CLI::App& command);

}  // namespace dialwright::tools
