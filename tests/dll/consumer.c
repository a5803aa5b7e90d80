/* A host in C: the header alone, without windows.h, and the import library. */
#include <dialwright/dialwright.h>

static int wrong = 0;

static void expect(int expected, int actual) {
    if (expected != actual) wrong = 1;
}

int main(void) {
    expect(1, ValidateCommand(L"Window.Close Cls Title"));
    expect(0, ValidateCommand(L""));
    expect(1, ValidateScript(L"Window.Close Cls Title\nWindow.Restore Cls Title 500"));
    expect(0, ValidateScript(L"\n"));
    expect(0, ExecuteCommand(L"Window.Close NoSuchClass none 1"));
    expect(0, ExecuteScript(L"Window.Close NoSuchClass none 1"));
    expect(0, ProgramLaunch(L"no-such-program.exe", L"", 0));
    return wrong;
}
