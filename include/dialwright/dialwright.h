#ifndef DIALWRIGHT_DIALWRIGHT_H
#define DIALWRIGHT_DIALWRIGHT_H

/*
 * Dialwright drives the windows of other programs by text commands. For C and C++; needs no windows.h.
 *
 * Text: all strings are NUL-terminated UTF-16 of the caller's; they must not be null, are only read, and no pointer to
 * them is kept.
 *
 * Results: exactly 1 (success) or 0 (failure). What the library does, and nearly always why it fails, is written to
 * trace files in logs\trace\ beside the host program, and every message is copied to standard output, in UTF-8, as
 * "function: message". A standard-output pipe that nobody reads blocks the caller; without a standard output, or with
 * one that is closed, full or broken, the copy is dropped and nothing else happens.
 *
 * Threads: the functions may be called from any thread, also from several at once, but not from a DllMain. They run
 * wholly on the caller's thread and handle no messages meanwhile: a user-interface thread that calls them stops
 * answering, and one that searches for its own program's windows can wait for itself.
 *
 * Loading and freeing: load the library by its full path, or let dialwright_loader.h do it. It may be freed when no
 * call runs in it; that takes a little more than 100 ms. It may be loaded and freed as often as one likes, or be kept.
 *
 * The host: the first window search makes the host process per-monitor DPI aware, unless the host has declared itself
 * before; rectangles are physical pixels.
 *
 * Exceptions: std::bad_alloc, when there is no memory to build the command table or the command line of a program,
 * leaves a function. A host of another C++ runtime cannot catch it and ends.
 */

#include <wchar.h>

/* The version of this header. That of a library is in its file: see "File version" in its properties. */
#define DIALWRIGHT_VERSION_MAJOR 0
#define DIALWRIGHT_VERSION_MINOR 1
#define DIALWRIGHT_VERSION_PATCH 0
#define DIALWRIGHT_VERSION_STRING "0.1.0"
/* For comparisons: 1.2.3 is 10203. */
#define DIALWRIGHT_VERSION \
    (DIALWRIGHT_VERSION_MAJOR * 10000 + DIALWRIGHT_VERSION_MINOR * 100 + DIALWRIGHT_VERSION_PATCH)

/* The names of the functions, for GetProcAddress. */
#define DIALWRIGHT_VALIDATE_COMMAND "ValidateCommand"
#define DIALWRIGHT_VALIDATE_SCRIPT "ValidateScript"
#define DIALWRIGHT_EXECUTE_COMMAND "ExecuteCommand"
#define DIALWRIGHT_EXECUTE_SCRIPT "ExecuteScript"
#define DIALWRIGHT_PROGRAM_LAUNCH "ProgramLaunch"

#if defined(DIALWRIGHT_BUILDING)
#define DIALWRIGHT_API
#elif defined(_MSC_VER) || defined(__MINGW32__)
#define DIALWRIGHT_API __declspec(dllimport)
#else
#define DIALWRIGHT_API
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* Checks the shape of one command line: its name, its number of arguments, and that none is empty. Numbers, rectangles
 * and patterns are not looked at. Touches no window. Returns at once; a token of a million characters takes a second.
 * Writes why a line is refused to the trace and to standard output. */
DIALWRIGHT_API int ValidateCommand(const wchar_t* command);

/* Checks every line of a script, as ValidateCommand does; blank lines are skipped. Stops at the first invalid line. An
 * empty script is invalid. Touches no window; takes some microseconds a line. */
DIALWRIGHT_API int ValidateScript(const wchar_t* script);

/* Carries out one command. Blocks for up to the command's timeout (10,000 ms where it names none or 0; at most some
 * 100 ms more). What makes it longer: messages that the target must answer have no timeout, so a target that hangs, or
 * a click that opens a modal dialog, blocks the call until the target answers; typing takes about a millisecond a
 * character; a standard output that is not read blocks for ever. 1 means that the command was carried out, not that the
 * target liked it: a window of higher integrity drops our messages. Writes each step to the trace and to standard
 * output. */
DIALWRIGHT_API int ExecuteCommand(const wchar_t* command);

/* Carries out the lines of a script in order, each as ExecuteCommand does, and stops at the first that fails. What the
 * lines before it did is not undone: a malformed line is noticed only when its turn comes, so call ValidateScript
 * first. Blocks for as long as its commands do together. Writes each line, with the text of Window.SetText commands
 * masked, and then what the command writes. */
DIALWRIGHT_API int ExecuteScript(const wchar_t* script);

/* Starts a program by the command line "program arguments", in the caller's environment and current folder. A path with
 * blanks must come quoted. The process ID is stored where processId is not null, and only on success. Does not wait
 * for the program, nor for its window: returns as soon as the system has started it. The program inherits no handles.
 * The log shows the path of a program that cannot be started, never the arguments. */
DIALWRIGHT_API int ProgramLaunch(const wchar_t* program, const wchar_t* arguments, unsigned long* processId);

#ifdef __cplusplus
}
#endif

#endif
