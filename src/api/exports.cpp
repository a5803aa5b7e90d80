#include "dialwright/dialwright.h"
#include "script/dialog_script_manager.h"

// Every call builds a manager of its own and drops it; nothing is kept for the next one.

using dialwright::DialogScriptManager;

extern "C" int ValidateCommand(const wchar_t* command) { return DialogScriptManager().ValidateCommand(command); }

extern "C" int ValidateScript(const wchar_t* script) { return DialogScriptManager().ValidateScript(script); }

extern "C" int ExecuteCommand(const wchar_t* command) { return DialogScriptManager().ExecuteCommand(command); }

extern "C" int ExecuteScript(const wchar_t* script) { return DialogScriptManager().ExecuteScript(script); }
