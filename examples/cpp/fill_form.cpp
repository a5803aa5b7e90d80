// Fills in a form of another program and tells why a line fails. Start it beside Dialwright.dll and
// practice_target.exe.
//
// Exit codes: 0 as it should be, 1 a line did not do what it should, or the library cannot be loaded.

#include <dialwright/dialwright.hpp>
#include <iostream>
#include <string>

namespace {

constexpr const wchar_t* kClass = L"#32770";

void FillForm(const dialwright::Library& library, const std::wstring& title) {
    using dialwright::Line;
    library.Execute(Line(L"Window.SetText", kClass, title, {12, L"Ada \"the first\" Lovelace"}, 20000));
    library.Execute(Line(L"Window.SetCheckbox", kClass, title, {31, true}));
    library.Execute(Line(L"Window.SelectDropdown.Value", kClass, title, {51, L"Beta"}));
    std::cerr << "the form is filled in\n";
}

/// Clicks what is not there. Whether it failed, as it must.
bool FailToClick(const dialwright::Library& library, const std::wstring& title) {
    try {
        library.Execute(dialwright::Line(L"Window.ClickButton", kClass, title, {311}, 1000));
        return false;
    } catch (const dialwright::CallError& error) {
        std::cerr << error.what() << "\n";
        return true;
    }
}

}  // namespace

int main() {
    try {
        const dialwright::Library library;
        const std::wstring title = L"C++ example (" + std::to_wstring(::GetCurrentProcessId()) + L")";
        const std::wstring pattern = dialwright::Literal(title);
        library.Launch(L"practice_target.exe", L"--title \"" + title + L"\"");
        FillForm(library, pattern);
        const bool failed = FailToClick(library, pattern);
        library.Execute(dialwright::Line(L"Window.Close", kClass, pattern));
        return failed ? 0 : 1;
    } catch (const dialwright::Error& error) {
        std::cerr << "fill_form: " << error.what() << "\n";
        return 1;
    }
}
