/* A host in C: the header alone, without windows.h, and the import library. */
#include <dialwright/dialwright.h>

#include <stdio.h>
#include <string.h>

static int wrong = 0;

static void expect(int expected, int actual) {
    if (expected != actual) wrong = 1;
}

static void expect_versions_agree(void) {
    char text[32];
    snprintf(text, sizeof text, "%d.%d.%d", DIALWRIGHT_VERSION_MAJOR, DIALWRIGHT_VERSION_MINOR,
             DIALWRIGHT_VERSION_PATCH);
    expect(0, strcmp(text, DIALWRIGHT_VERSION_STRING));
    expect(1, DIALWRIGHT_VERSION >= 100 && DIALWRIGHT_VERSION < 1000000);
}

int main(void) {
    expect(1, ValidateCommand(L"Window.Close Cls Title"));
    expect(0, ValidateCommand(L""));
    expect(1, ValidateScript(L"Window.Close Cls Title\nWindow.Restore Cls Title 500"));
    expect(0, ValidateScript(L"\n"));
    expect(0, ExecuteCommand(L"Window.Close NoSuchClass none 1"));
    expect(0, ExecuteScript(L"Window.Close NoSuchClass none 1"));
    expect(0, ProgramLaunch(L"no-such-program.exe", L"", 0));
    expect_versions_agree();
    return wrong;
}
