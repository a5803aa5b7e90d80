#ifndef DIALWRIGHT_DIALWRIGHT_ERRORS_H
#define DIALWRIGHT_DIALWRIGHT_ERRORS_H

/*
 * Gives what the library wrote into its error file while a call ran: why it failed. For C and C++, header only.
 *
 *     DialwrightErrorMark mark;
 *     DialwrightMarkErrors(&mark);
 *     if (!dialwright.executeCommand(line)) {
 *         wchar_t why[4096];
 *         DialwrightErrorsSince(&mark, why, 4096);
 *         show(why);
 *     }
 *
 * The messages are the log's own, and may show a typed text where a line was misshapen; dialwright.hpp hides it. There
 * are none where the host lies in a folder that cannot be written, where another program of the same name holds the
 * files, or where the window came up so late that no time was left for the control.
 */

#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <windows.h>

#include "dialwright_line.h"

/* How far the two error files of this process went at some time. */
typedef struct DialwrightErrorMark {
    unsigned long long size[2];
    unsigned long long identity[2];
} DialwrightErrorMark;

/* Notes how far the error files go now. Any thread. */
static inline void DialwrightMarkErrors(DialwrightErrorMark* mark);

/* Gives the messages that calls of this thread caused since the mark, "function: message" each and one a line; a line
 * that continues a message begins with four blanks. Returns the units that they need with their end, 1 where there are
 * none. Where they do not fit the text is empty. Of very many errors the last 256 KiB of each file is read. */
static inline size_t DialwrightErrorsSince(const DialwrightErrorMark* mark, wchar_t* text, size_t units);

/* ---- from here on: how it is done ---- */

/* NOLINTBEGIN(modernize-use-nullptr): this is C, too */

#define DIALWRIGHT_ERRORS_MOST_BYTES 262144

/* What is read of a file, and its messages, which are written over the beginning: they are never longer. */
typedef struct DialwrightErrorArea {
    char bytes[DIALWRIGHT_ERRORS_MOST_BYTES];
    int kept;
    wchar_t wide[DIALWRIGHT_ERRORS_MOST_BYTES];
} DialwrightErrorArea;

#ifdef __cplusplus
#define DIALWRIGHT_ERRORS_AREA(memory) (static_cast<DialwrightErrorArea*>(memory))
#else
#define DIALWRIGHT_ERRORS_AREA(memory) (memory)
#endif

/* Opens the first (0) or second (1) error file, for a moment only: while somebody holds it open the library cannot
 * begin it anew. */
static inline HANDLE DialwrightErrorsOpen(int which) {
    wchar_t program[4096];
    wchar_t path[4096 + 64];
    DialwrightLineWriter writer = {path, sizeof path / sizeof path[0], 0};
    DWORD session = 0;
    DWORD i;
    const DWORD units = sizeof program / sizeof program[0];
    const DWORD length = GetModuleFileNameW(NULL, program, units);
    DWORD folder = length;
    if (length == 0 || length == units || !ProcessIdToSessionId(GetCurrentProcessId(), &session)) {
        return INVALID_HANDLE_VALUE;
    }
    while (folder > 0 && program[folder - 1] != L'\\') --folder;
    for (i = 0; i < folder; ++i) DialwrightLinePut(&writer, program[i]);
    DialwrightLinePutText(&writer, L"logs\\trace\\");
    DialwrightLinePutText(&writer, program + folder);
    DialwrightLinePut(&writer, L'_');
    DialwrightLinePutNumber(&writer, session);
    DialwrightLinePutText(&writer, which == 0 ? L"_Dialwright_1_error.log" : L"_Dialwright_2_error.log");
    DialwrightLineEnd(&writer);
    return CreateFileW(path, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, NULL, OPEN_EXISTING,
                       FILE_ATTRIBUTE_NORMAL, NULL);
}

static inline void DialwrightMarkErrors(DialwrightErrorMark* mark) {
    int which;
    memset(mark, 0, sizeof *mark);
    for (which = 0; which < 2; ++which) {
        BY_HANDLE_FILE_INFORMATION facts;
        const HANDLE file = DialwrightErrorsOpen(which);
        if (file == INVALID_HANDLE_VALUE) continue;
        if (GetFileInformationByHandle(file, &facts)) {
            mark->size[which] = facts.nFileSizeHigh * 0x100000000ULL + facts.nFileSizeLow;
            mark->identity[which] = facts.nFileIndexHigh * 0x100000000ULL + facts.nFileIndexLow;
        }
        CloseHandle(file);
    }
}

/* Where the new lines of a file begin: at its beginning where it was begun anew since the mark. */
static inline unsigned long long DialwrightErrorsFrom(const DialwrightErrorMark* mark, const DialwrightErrorMark* now,
                                                      int which) {
    const int isAnew = mark->identity[which] != now->identity[which] || mark->size[which] > now->size[which];
    const unsigned long long from = isAnew ? 0 : mark->size[which];
    if (now->size[which] - from <= DIALWRIGHT_ERRORS_MOST_BYTES) return from;
    return now->size[which] - DIALWRIGHT_ERRORS_MOST_BYTES;
}

/* Reads the file from there on. Returns the number of bytes. */
static inline DWORD DialwrightErrorsRead(int which, unsigned long long from, DialwrightErrorArea* area) {
    ULARGE_INTEGER start;
    OVERLAPPED place;
    DWORD size = 0;
    const HANDLE file = DialwrightErrorsOpen(which);
    if (file == INVALID_HANDLE_VALUE) return 0;
    start.QuadPart = from;
    memset(&place, 0, sizeof place);
    place.Offset = start.LowPart;
    place.OffsetHigh = start.HighPart;
    if (!ReadFile(file, area->bytes, sizeof area->bytes, &size, &place)) size = 0;
    CloseHandle(file);
    return size;
}

/* The place behind the text in [begin, end), or null. The text must not begin anew within itself. */
static inline const char* DialwrightErrorsBehind(const char* begin, const char* end, const char* text) {
    const char* at = text;
    for (; begin != end; ++begin) {
        if (*begin != *at) at = text;
        if (*begin == *at) ++at;
        if (*at == 0) return begin + 1;
    }
    return NULL;
}

static inline void DialwrightErrorsKeep(DialwrightErrorArea* area, const char* indent, const char* begin,
                                        const char* end) {
    if (begin != end && end[-1] == '\r') --end;
    while (*indent != 0) area->bytes[area->kept++] = *indent++;
    while (begin != end) area->bytes[area->kept++] = *begin++;
    area->bytes[area->kept++] = '\n';
}

/* Keeps the messages of this thread among the bytes: "[time] [process:thread] [Dialwright  43   error] message". */
static inline void DialwrightErrorsSift(DialwrightErrorArea* area, const char* end) {
    static const char kContinued[] = "                                                                                ";
    char own[48];
    const char* line = area->bytes;
    int isOwn = 0;
    snprintf(own, sizeof own, "] [%lu:%lu] [Dialwright ", GetCurrentProcessId(), GetCurrentThreadId());
    while (line != end) {
        const char* const feed = DialwrightErrorsBehind(line, end, "\n");
        const char* const next = feed == NULL ? end : feed;
        const char* const stop = feed == NULL ? end : feed - 1;
        if (DialwrightErrorsBehind(line, stop, kContinued) == line + sizeof kContinued - 1) {
            if (isOwn) DialwrightErrorsKeep(area, "    ", line + sizeof kContinued - 1, stop);
        } else {
            const char* const prefix = *line == '[' ? DialwrightErrorsBehind(line, stop, own) : NULL;
            const char* const message = prefix != NULL ? DialwrightErrorsBehind(prefix, stop, "] ") : NULL;
            isOwn = message != NULL;
            if (isOwn) DialwrightErrorsKeep(area, "", message, stop);
        }
        line = next;
    }
}

static inline void DialwrightErrorsPut(DialwrightLineWriter* writer, DialwrightErrorArea* area) {
    int i;
    const int units =
        MultiByteToWideChar(CP_UTF8, 0, area->bytes, area->kept, area->wide, DIALWRIGHT_ERRORS_MOST_BYTES);
    for (i = 0; i < units; ++i) DialwrightLinePut(writer, area->wide[i]);
}

static inline size_t DialwrightErrorsSince(const DialwrightErrorMark* mark, wchar_t* text, size_t units) {
    DialwrightLineWriter writer = {text, units, 0};
    DialwrightErrorMark now;
    DialwrightErrorArea* const area = DIALWRIGHT_ERRORS_AREA(calloc(1, sizeof(DialwrightErrorArea)));
    int turn;
    DialwrightMarkErrors(&now);
    for (turn = 0; area != NULL && turn < 2; ++turn) {
        /* A file that was begun anew goes on where the other one ended. */
        const int which = DialwrightErrorsFrom(mark, &now, 0) == 0 ? 1 - turn : turn;
        const unsigned long long from = DialwrightErrorsFrom(mark, &now, which);
        if (from == now.size[which]) continue;
        area->kept = 0;
        DialwrightErrorsSift(area, area->bytes + DialwrightErrorsRead(which, from, area));
        DialwrightErrorsPut(&writer, area);
    }
    free(area);
    return DialwrightLineEnd(&writer);
}

/* NOLINTEND(modernize-use-nullptr) */

#endif
