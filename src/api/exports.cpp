#include "dialwright/dialwright.h"
#include "launch/program.h"
#include "script/dialog_script_manager.h"

// Every script call builds a manager of its own and drops it; nothing is kept for the next one.

using dialwright::DialogScriptManager;
using dialwright::Program;

extern "C" int ValidateCommand(const wchar_t* command) { return DialogScriptManager().ValidateCommand(command); }

extern "C" int ValidateScript(const wchar_t* script) { return DialogScriptManager().ValidateScript(script); }

extern "C" int ExecuteCommand(const wchar_t* command) { return DialogScriptManager().ExecuteCommand(command); }

extern "C" int ExecuteScript(const wchar_t* script) { return DialogScriptManager().ExecuteScript(script); }

extern "C" int ProgramLaunch(const wchar_t* program, const wchar_t* arguments, unsigned long* processId) {
    return Program::Launch(program, arguments, processId) ? 1 : 0;
}
