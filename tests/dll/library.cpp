#include "library.h"

#include <stdexcept>

#include "platform/windows.h"
#include "support/child_process.h"

namespace dialwright::testing {
namespace {

using ScriptExport = int (*)(const wchar_t* text);
using LaunchExport = int (*)(const wchar_t* program, const wchar_t* arguments, unsigned long* processId);

template <class Export = ScriptExport>
Export Find(const char* name) {
    static const HMODULE library = ::LoadLibraryW((ProgramFolder() + L"Dialwright.dll").c_str());
    if (library == nullptr) throw std::runtime_error("the DLL cannot be loaded");
    const auto found = reinterpret_cast<Export>(reinterpret_cast<void*>(::GetProcAddress(library, name)));
    if (found == nullptr) throw std::runtime_error(std::string("no export ") + name);
    return found;
}

}  // namespace

int ValidateCommand(const std::wstring& command) { return Find("ValidateCommand")(command.c_str()); }

int ValidateScript(const std::wstring& script) { return Find("ValidateScript")(script.c_str()); }

int ExecuteCommand(const std::wstring& command) { return Find("ExecuteCommand")(command.c_str()); }

int ExecuteScript(const std::wstring& script) { return Find("ExecuteScript")(script.c_str()); }

int ProgramLaunch(const std::wstring& program, const std::wstring& arguments, unsigned long* processId) {
    return Find<LaunchExport>("ProgramLaunch")(program.c_str(), arguments.c_str(), processId);
}

}  // namespace dialwright::testing
