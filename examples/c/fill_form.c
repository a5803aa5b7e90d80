/* Fills in a form of another program and tells why a line fails. Loads the library at run time and writes the lines by
 * dialwright_line.h. Start it beside Dialwright.dll and practice_target.exe.
 *
 * Exit codes: 0 as it should be, 1 a line did not do what it should, 2 the library cannot be loaded. */

#include <dialwright/dialwright_errors.h>
#include <dialwright/dialwright_line.h>
#include <dialwright/dialwright_loader.h>

#include <stdio.h>

static DialwrightLibrary dialwright;
static wchar_t title[64];

static void say(const char* what, const wchar_t* text) {
    char utf8[4096];
    if (WideCharToMultiByte(CP_UTF8, 0, text, -1, utf8, sizeof utf8, NULL, NULL) == 0) return;
    fprintf(stderr, "%s%s\n", what, utf8);
}

/* Writes a line for the form and carries it out; says why where that fails. */
static int act(const wchar_t* name, const DialwrightArgument* own, size_t count, int timeoutMs) {
    DialwrightArgument arguments[5] = {DialwrightText(L"#32770"), DialwrightText(title)};
    DialwrightLineFault fault;
    DialwrightErrorMark mark;
    wchar_t line[512];
    wchar_t why[4096];
    for (size_t i = 0; i < count; ++i) arguments[2 + i] = own[i];
    const size_t units =
        DialwrightWriteLine(line, sizeof line / sizeof line[0], name, arguments, 2 + count, timeoutMs, &fault);
    if (units == 0 || units > sizeof line / sizeof line[0]) {
        fprintf(stderr, "no line: error %d, argument %d\n", (int)fault.error, (int)fault.argument);
        return 0;
    }
    DialwrightMarkErrors(&mark);
    if (dialwright.executeCommand(line)) return 1;
    DialwrightErrorsSince(&mark, why, sizeof why / sizeof why[0]);
    say("failed: ", name);
    say("why: ", why[0] != 0 ? why : L"no error file can be read");
    return 0;
}

static int fill_form(void) {
    const DialwrightArgument name[] = {DialwrightNumber(12), DialwrightText(L"Ada \"the first\" Lovelace")};
    const DialwrightArgument box[] = {DialwrightNumber(31), DialwrightNumber(1)};
    const DialwrightArgument item[] = {DialwrightNumber(51), DialwrightText(L"Beta")};
    return act(L"Window.SetText", name, 2, 20000) && act(L"Window.SetCheckbox", box, 2, 5000) &&
           act(L"Window.SelectDropdown.Value", item, 2, 5000);
}

int main(void) {
    const DialwrightArgument missing[] = {DialwrightNumber(311)};
    wchar_t why[DIALWRIGHT_LOADER_MESSAGE_UNITS];
    wchar_t options[96];
    int done;
    if (!DialwrightLoad(&dialwright, NULL, why, DIALWRIGHT_LOADER_MESSAGE_UNITS)) {
        say("fill_form: ", why);
        return 2;
    }
    swprintf(title, sizeof title / sizeof title[0], L"C example %lu", GetCurrentProcessId());
    swprintf(options, sizeof options / sizeof options[0], L"--title \"%ls\"", title);
    done = dialwright.programLaunch(L"practice_target.exe", options, NULL) && fill_form();
    if (done) fputs("the form is filled in\n", stderr);
    done = done && !act(L"Window.ClickButton", missing, 1, 1000);
    done = act(L"Window.Close", NULL, 0, 5000) && done;
    DialwrightFree(&dialwright);
    return done ? 0 : 1;
}
