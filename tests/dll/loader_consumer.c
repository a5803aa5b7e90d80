/* A host in C that loads the library beside it at run time. Needs no import library. */
#include <dialwright/dialwright_loader.h>

#include <stdio.h>

int main(void) {
    DialwrightLibrary dialwright;
    wchar_t why[DIALWRIGHT_LOADER_MESSAGE_UNITS];
    int valid;
    if (!DialwrightLoad(&dialwright, NULL, why, DIALWRIGHT_LOADER_MESSAGE_UNITS)) {
        fprintf(stderr, "%ls\n", why);
        return 2;
    }
    valid = dialwright.validateCommand(L"Window.Close Cls Title") && !dialwright.validateCommand(L"");
    DialwrightFree(&dialwright);
    return valid ? 0 : 1;
}
