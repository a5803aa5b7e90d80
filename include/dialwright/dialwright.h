#ifndef DIALWRIGHT_DIALWRIGHT_H
#define DIALWRIGHT_DIALWRIGHT_H

/*
 * Dialwright drives the windows of other programs by text commands.
 *
 * Text: all strings are NUL-terminated UTF-16 of the caller's; they must not be null, are only read, and no pointer to
 * them is kept.
 *
 * Results: exactly 1 (success) or 0 (failure). What the library does, and nearly always why it fails, is written to
 * trace files in logs\trace\ beside the host program, and copied to standard output, in UTF-8. A standard-output pipe
 * that nobody reads blocks the caller.
 *
 * Threads: the functions may be called from any thread, also from several at once, but not from a DllMain. They run
 * wholly on the caller's thread and handle no messages meanwhile: a user-interface thread that calls them stops
 * answering. The library may be freed when no call runs in it; that takes a little more than 100 ms.
 *
 * The host: the first window search makes the host process per-monitor DPI aware, unless the host has declared itself
 * before; rectangles are physical pixels.
 *
 * Exceptions: std::bad_alloc, when there is no memory to build the command table or the command line of a program,
 * leaves a function. A host of another C++ runtime cannot catch it and ends.
 */

#include <wchar.h>

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

/* Checks the shape of one command line: its name, its number of arguments, and that none is empty. Touches no
 * window. Returns at once. */
DIALWRIGHT_API int ValidateCommand(const wchar_t* command);

/* Checks every line of a script; blank lines are skipped. Stops at the first invalid line. An empty script is
 * invalid. Touches no window. */
DIALWRIGHT_API int ValidateScript(const wchar_t* script);

/* Carries out one command. Blocks for up to the command's timeout (10,000 ms where it names none; at most some
 * 100 ms more). Messages that the target must answer have no timeout: a target that hangs, or a click that opens
 * a modal dialog, blocks the call until the target answers. */
DIALWRIGHT_API int ExecuteCommand(const wchar_t* command);

/* Carries out the lines of a script in order, each as ExecuteCommand does, and stops at the first that fails. What the
 * lines before it did is not undone: a malformed line is noticed only when its turn comes, so call ValidateScript
 * first. Blocks for as long as its commands do together. */
DIALWRIGHT_API int ExecuteScript(const wchar_t* script);

/* Starts a program by the command line "program arguments", in the caller's environment and current folder. A path with
 * blanks must come quoted. The process ID is stored where processId is not null, and only on success. Does not wait
 * for the program, nor for its window. The program inherits no handles. The log shows the path of a program that cannot
 * be started, never the arguments. */
DIALWRIGHT_API int ProgramLaunch(const wchar_t* program, const wchar_t* arguments, unsigned long* processId);

#ifdef __cplusplus
}
#endif

#endif
