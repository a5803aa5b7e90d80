#include "library.h"

#include <stdexcept>

#include "platform/windows.h"
#include "support/child_process.h"

namespace dialwright::testing {
namespace {

using Export = int (*)(const wchar_t* text);

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

}  // namespace dialwright::testing
