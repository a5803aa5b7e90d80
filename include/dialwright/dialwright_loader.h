#ifndef DIALWRIGHT_DIALWRIGHT_LOADER_H
#define DIALWRIGHT_DIALWRIGHT_LOADER_H

/*
 * Loads Dialwright.dll at run time and says what is wrong where it cannot be loaded. For C and C++, header only: no
 * import library is needed.
 *
 *     DialwrightLibrary dialwright;
 *     wchar_t why[DIALWRIGHT_LOADER_MESSAGE_UNITS];
 *     if (!DialwrightLoad(&dialwright, NULL, why, DIALWRIGHT_LOADER_MESSAGE_UNITS)) { show(why); return 1; }
 *     dialwright.executeCommand(L"Window.Close Notepad \".*\" 5000");
 *     DialwrightFree(&dialwright);
 *
 * Nothing here may be called from a DllMain.
 */

#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#include <string.h>
#include <windows.h>

#include "dialwright.h"

/* Units that hold any message of DialwrightLoad, with its end, for a path of the usual length; longer ones are cut. */
#define DIALWRIGHT_LOADER_MESSAGE_UNITS 512

/* The functions; each is what dialwright.h says of it. Null while the library is not loaded. */
typedef struct DialwrightLibrary {
    HMODULE module;
    int (*validateCommand)(const wchar_t* command);
    int (*validateScript)(const wchar_t* script);
    int (*executeCommand)(const wchar_t* command);
    int (*executeScript)(const wchar_t* script);
    int (*programLaunch)(const wchar_t* program, const wchar_t* arguments, unsigned long* processId);
} DialwrightLibrary;

/* Loads the library at this full path; null means Dialwright.dll beside the program. A relative path is refused: it
 * would mean another file in another current folder. Returns 1, or 0 with one sentence of why in message, as UTF-16 of
 * at most messageUnits units with its end (empty on success); message may be null. The library is the caller's, to be
 * given to DialwrightFree once, or to be kept till the process ends. Blocks for as long as the system needs to load a
 * library. Any thread. */
static inline int DialwrightLoad(DialwrightLibrary* library, const wchar_t* path, wchar_t* message,
                                 size_t messageUnits);

/* Frees what DialwrightLoad loaded; does nothing for what it did not load. No call may run in the library then. Blocks
 * a little more than 100 ms. */
static inline void DialwrightFree(DialwrightLibrary* library);

/* ---- from here on: how it is done ---- */

/* NOLINTBEGIN(modernize-use-nullptr,bugprone-multi-level-implicit-pointer-conversion): this is C, too */

#if defined(_M_ARM64) || defined(__aarch64__)
#define DIALWRIGHT_LOADER_MACHINE IMAGE_FILE_MACHINE_ARM64
#else
#define DIALWRIGHT_LOADER_MACHINE IMAGE_FILE_MACHINE_AMD64
#endif

/* Joins the parts, up to the first null one, and cuts what does not fit. */
static inline void DialwrightLoaderSay(wchar_t* message, size_t units, const wchar_t* const* parts) {
    size_t length = 0;
    if (message == NULL || units == 0) return;
    for (; *parts != NULL; ++parts) {
        const wchar_t* part = *parts;
        while (*part != 0 && length + 1 < units) message[length++] = *part++;
    }
    message[length] = 0;
}

static inline const wchar_t* DialwrightLoaderMachineName(unsigned machine) {
    switch (machine) {
        case IMAGE_FILE_MACHINE_AMD64: return L"x64";
        case IMAGE_FILE_MACHINE_ARM64: return L"ARM64";
        case IMAGE_FILE_MACHINE_I386: return L"x86";
        default: return L"another architecture";
    }
}

/* The machine that a program file is made for; 0 where it is no program file or cannot be read. */
static inline unsigned DialwrightLoaderMachineOf(const wchar_t* path) {
    unsigned char start[4096];
    DWORD size = 0;
    DWORD header;
    WORD machine;
    const HANDLE file = CreateFileW(path, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, NULL,
                                    OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, NULL);
    if (file == INVALID_HANDLE_VALUE) return 0;
    if (!ReadFile(file, start, sizeof start, &size, NULL)) size = 0;
    CloseHandle(file);
    if (size < 64 || start[0] != 'M' || start[1] != 'Z') return 0;
    memcpy(&header, start + 60, sizeof header);
    if (header > size - 6 || start[header] != 'P' || start[header + 1] != 'E') return 0;
    memcpy(&machine, start + header + 4, sizeof machine);
    return machine;
}

/* The system's own words for an error, without the line break behind them. */
static inline void DialwrightLoaderErrorText(DWORD error, wchar_t* text, DWORD units) {
    DWORD length = FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, NULL, error, 0, text,
                                  units - 1, NULL);
    while (length > 0 && text[length - 1] <= L' ') --length;
    text[length] = 0;
}

/* Stores the path of Dialwright.dll beside the program: 1 or 0. */
static inline int DialwrightLoaderBesideProgram(wchar_t* path, DWORD units) {
    static const wchar_t kName[] = L"Dialwright.dll";
    size_t i;
    DWORD length = GetModuleFileNameW(NULL, path, units);
    if (length == units) return 0;
    while (length > 0 && path[length - 1] != L'\\') --length;
    if (length == 0 || length + sizeof kName / sizeof kName[0] > units) return 0;
    for (i = 0; i < sizeof kName / sizeof kName[0]; ++i) path[length + i] = kName[i];
    return 1;
}

static inline int DialwrightLoaderIsFullPath(const wchar_t* path) {
    if (path[0] == L'\\' && path[1] == L'\\') return 1;
    return path[0] != 0 && path[1] == L':' && (path[2] == L'\\' || path[2] == L'/');
}

/* Why this file cannot be loaded, as far as the file tells: 1 and the message, or 0. The reason comes before the path,
 * so that a long path cannot push it out. */
static inline int DialwrightLoaderRefuses(const wchar_t* path, wchar_t* message, size_t units) {
    const unsigned machine = DialwrightLoaderMachineOf(path);
    const wchar_t* const wrongMachine[] = {L"this library is for ",
                                           DialwrightLoaderMachineName(machine),
                                           L", and this program is ",
                                           DialwrightLoaderMachineName(DIALWRIGHT_LOADER_MACHINE),
                                           L": ",
                                           path,
                                           NULL};
    const wchar_t* wrongFile[] = {NULL, path, NULL};
    if (!DialwrightLoaderIsFullPath(path)) {
        wrongFile[0] = L"this is not a full path: ";
    } else if (GetFileAttributesW(path) == INVALID_FILE_ATTRIBUTES) {
        wrongFile[0] = L"there is no such file: ";
    } else if (machine == 0) {
        wrongFile[0] = L"this is not a library, or it cannot be read: ";
    } else if (machine == DIALWRIGHT_LOADER_MACHINE) {
        return 0;
    }
    DialwrightLoaderSay(message, units, wrongFile[0] != NULL ? wrongFile : wrongMachine);
    return 1;
}

/* Looks one function up; notes its name where it is missing. */
#define DIALWRIGHT_LOADER_FIND(member, name)                         \
    do {                                                             \
        const FARPROC found = GetProcAddress(library->module, name); \
        memcpy(&library->member, &found, sizeof found);              \
        if (found == NULL) missing = L"" name;                       \
    } while (0)

/* The name of a function that the library lacks, or null. */
static inline const wchar_t* DialwrightLoaderFindFunctions(DialwrightLibrary* library) {
    const wchar_t* missing = NULL;
    DIALWRIGHT_LOADER_FIND(validateCommand, DIALWRIGHT_VALIDATE_COMMAND);
    DIALWRIGHT_LOADER_FIND(validateScript, DIALWRIGHT_VALIDATE_SCRIPT);
    DIALWRIGHT_LOADER_FIND(executeCommand, DIALWRIGHT_EXECUTE_COMMAND);
    DIALWRIGHT_LOADER_FIND(executeScript, DIALWRIGHT_EXECUTE_SCRIPT);
    DIALWRIGHT_LOADER_FIND(programLaunch, DIALWRIGHT_PROGRAM_LAUNCH);
    return missing;
}

/* Loads from a full path that may be good. */
static inline int DialwrightLoaderLoadFile(DialwrightLibrary* library, const wchar_t* path, wchar_t* message,
                                           size_t units) {
    wchar_t text[256];
    const wchar_t* parts[] = {text, L": ", path, NULL, NULL};
    if (DialwrightLoaderRefuses(path, message, units)) return 0;
    /* Its own imports come from its folder and the system, and never from the current folder. */
    library->module = LoadLibraryExW(path, NULL, LOAD_LIBRARY_SEARCH_DLL_LOAD_DIR | LOAD_LIBRARY_SEARCH_SYSTEM32);
    if (library->module == NULL) {
        DialwrightLoaderErrorText(GetLastError(), text, sizeof text / sizeof text[0]);
    } else {
        const wchar_t* const missing = DialwrightLoaderFindFunctions(library);
        if (missing == NULL) return 1;
        DialwrightFree(library);
        parts[0] = L"this library has no function ";
        parts[1] = missing;
        parts[2] = L": ";
        parts[3] = path;
    }
    DialwrightLoaderSay(message, units, parts);
    return 0;
}

static inline int DialwrightLoad(DialwrightLibrary* library, const wchar_t* path, wchar_t* message,
                                 size_t messageUnits) {
    static const wchar_t* const kNoFolder[] = {L"the program's own folder is too long or not known", NULL};
    wchar_t beside[4096];
    memset(library, 0, sizeof *library);
    if (message != NULL && messageUnits != 0) message[0] = 0;
    if (path != NULL) return DialwrightLoaderLoadFile(library, path, message, messageUnits);
    if (!DialwrightLoaderBesideProgram(beside, sizeof beside / sizeof beside[0])) {
        DialwrightLoaderSay(message, messageUnits, kNoFolder);
        return 0;
    }
    return DialwrightLoaderLoadFile(library, beside, message, messageUnits);
}

static inline void DialwrightFree(DialwrightLibrary* library) {
    if (library->module != NULL) FreeLibrary(library->module);
    memset(library, 0, sizeof *library);
}

/* NOLINTEND(modernize-use-nullptr,bugprone-multi-level-implicit-pointer-conversion) */

#endif
