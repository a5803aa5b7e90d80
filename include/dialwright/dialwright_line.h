#ifndef DIALWRIGHT_DIALWRIGHT_LINE_H
#define DIALWRIGHT_DIALWRIGHT_LINE_H

/*
 * Writes command lines: quotes what needs it, always writes the timeout, and refuses what no line can hold. For C and
 * C++, header only; needs no windows.h.
 *
 *     const DialwrightArgument form[] = {DialwrightText(L"#32770"), DialwrightText(L"Sign in"), DialwrightNumber(1001),
 *                                        DialwrightText(L"say \"hi\"")};
 *     wchar_t line[256];
 *     DialwrightLineFault fault;
 *     size_t units = DialwrightWriteLine(line, 256, L"Window.SetText", form, 4, DIALWRIGHT_DEFAULT_TIMEOUT, &fault);
 *     if (units == 0) return fault.error;
 *     if (units > 256) return too_long();
 *     dialwright.executeCommand(line);
 */

#include <stddef.h>
#include <wchar.h>

/* Milliseconds, as the library takes where a line names none. */
#define DIALWRIGHT_DEFAULT_TIMEOUT 10000
#define DIALWRIGHT_WAIT_FOREVER (-1)

/* Behind a command's name: class and title are compared literally, and are no expressions. */
#define DIALWRIGHT_NON_REGEX L".NonRegex"

#define DIALWRIGHT_MOST_NUMBERS 4

typedef enum DialwrightArgumentKind {
    DIALWRIGHT_TEXT,
    DIALWRIGHT_NUMBERS,
    DIALWRIGHT_SECRET,
    DIALWRIGHT_ENVIRONMENT
} DialwrightArgumentKind;

/* One argument; make it with one of the functions below. The text is the caller's. */
typedef struct DialwrightArgument {
    DialwrightArgumentKind kind;
    const wchar_t* text;
    size_t length;
    int numbers[DIALWRIGHT_MOST_NUMBERS];
    size_t count;
} DialwrightArgument;

typedef enum DialwrightLineError {
    DIALWRIGHT_LINE_WRITTEN = 0,
    DIALWRIGHT_LINE_UNKNOWN_COMMAND,
    DIALWRIGHT_LINE_ARGUMENT_COUNT,
    DIALWRIGHT_LINE_NOT_AN_ARGUMENT,
    DIALWRIGHT_LINE_EMPTY_ARGUMENT,
    DIALWRIGHT_LINE_ZERO_CHARACTER,
    DIALWRIGHT_LINE_LINE_BREAK,
    DIALWRIGHT_LINE_HALF_CHARACTER,
    /* `dialwright run` would put another text in its place. */
    DIALWRIGHT_LINE_REFERENCE,
    /* A secret in another place than the text of a Window.SetText command. */
    DIALWRIGHT_LINE_SECRET_PLACE,
    DIALWRIGHT_LINE_SECRET_NAME,
    DIALWRIGHT_LINE_TIMEOUT
} DialwrightLineError;

typedef struct DialwrightLineFault {
    DialwrightLineError error;
    /* The argument at fault: 0 the class, 1 the title, then the command's own. */
    size_t argument;
} DialwrightLineFault;

/* A text; it must not be null. */
static inline DialwrightArgument DialwrightText(const wchar_t* text);

/* A control ID, an index, a tolerance, a check box's 0 or 1. */
static inline DialwrightArgument DialwrightNumber(int number);

/* A rectangle (left, top, right, bottom), and a position or size. */
static inline DialwrightArgument DialwrightRectangle(int left, int top, int right, int bottom);
static inline DialwrightArgument DialwrightPair(int first, int second);

/* The text that `dialwright run` finds under this name in its secret file, or in its environment. Letters, digits and
 * underscores. Only for the text of a Window.SetText command, and not for a line that the library itself is given. */
static inline DialwrightArgument DialwrightSecret(const wchar_t* name);
static inline DialwrightArgument DialwrightEnvironment(const wchar_t* name);

/* The number of arguments that the command has behind class and title, or -1 for a name that no command has. The name
 * may end in .NonRegex. */
static inline int DialwrightArgumentsOf(const wchar_t* name);

/* Writes the line of a command. The arguments begin with class and title. The timeout is 1 to 2,147,483,647 ms, or
 * DIALWRIGHT_WAIT_FOREVER. Returns the units that the line needs with its end; what does not fit is not written, and
 * the line is empty then. Returns 0 for what cannot be written; why is in fault, which may be null. */
static inline size_t DialwrightWriteLine(wchar_t* line, size_t units, const wchar_t* name,
                                         const DialwrightArgument* arguments, size_t count, long long timeoutMs,
                                         DialwrightLineFault* fault);

/* Writes an expression for class or title that matches this very text, whatever its case, or any text for an empty one.
 * Returns the units that it needs with its end; what does not fit is not written, and the expression is empty then. */
static inline size_t DialwrightWritePattern(wchar_t* pattern, size_t units, const wchar_t* text);

/* ---- from here on: how it is done ---- */

/* NOLINTBEGIN(modernize-use-nullptr): this is C, too */

typedef struct DialwrightCommandRow {
    const wchar_t* name;
    int arguments;
} DialwrightCommandRow;

typedef struct DialwrightLineWriter {
    wchar_t* text;
    size_t units;
    size_t length;
} DialwrightLineWriter;

static inline size_t DialwrightLineLength(const wchar_t* text) {
    size_t length = 0;
    while (text[length] != 0) ++length;
    return length;
}

static inline DialwrightArgument DialwrightLineArgument(DialwrightArgumentKind kind, const wchar_t* text) {
    const DialwrightArgument argument = {kind, text, DialwrightLineLength(text), {0, 0, 0, 0}, 0};
    return argument;
}

static inline DialwrightArgument DialwrightText(const wchar_t* text) {
    return DialwrightLineArgument(DIALWRIGHT_TEXT, text);
}

static inline DialwrightArgument DialwrightSecret(const wchar_t* name) {
    return DialwrightLineArgument(DIALWRIGHT_SECRET, name);
}

static inline DialwrightArgument DialwrightEnvironment(const wchar_t* name) {
    return DialwrightLineArgument(DIALWRIGHT_ENVIRONMENT, name);
}

static inline DialwrightArgument DialwrightNumber(int number) {
    const DialwrightArgument argument = {DIALWRIGHT_NUMBERS, L"", 0, {number, 0, 0, 0}, 1};
    return argument;
}

static inline DialwrightArgument DialwrightPair(int first, int second) {
    const DialwrightArgument argument = {DIALWRIGHT_NUMBERS, L"", 0, {first, second, 0, 0}, 2};
    return argument;
}

static inline DialwrightArgument DialwrightRectangle(int left, int top, int right, int bottom) {
    const DialwrightArgument argument = {DIALWRIGHT_NUMBERS, L"", 0, {left, top, right, bottom}, 4};
    return argument;
}

/* Whether the text, of so many units, begins with the other; a unit of 0 ends both. */
static inline int DialwrightLineBegins(const wchar_t* text, size_t length, const wchar_t* with) {
    size_t i;
    for (i = 0; with[i] != 0; ++i) {
        if (i == length || text[i] != with[i]) return 0;
    }
    return 1;
}

/* The length of the name without .NonRegex. */
static inline size_t DialwrightLineBaseLength(const wchar_t* name) {
    const size_t suffix = DialwrightLineLength(DIALWRIGHT_NON_REGEX);
    const size_t length = DialwrightLineLength(name);
    if (length < suffix || !DialwrightLineBegins(name + length - suffix, suffix, DIALWRIGHT_NON_REGEX)) return length;
    return length - suffix;
}

static inline int DialwrightArgumentsOf(const wchar_t* name) {
    static const DialwrightCommandRow kRows[] = {
        {L"Window.SetText", 2},
        {L"Window.SetText.Path", 2},
        {L"Window.SetText.Position", 3},
        {L"Window.ClickButton", 1},
        {L"Window.ClickButton.Path", 1},
        {L"Window.ClickButton.Position", 2},
        {L"Window.SelectDropdown.Value", 2},
        {L"Window.SelectDropdown.Index", 2},
        {L"Window.SelectDropdown.ByPath.Value", 2},
        {L"Window.SelectDropdown.ByPath.Index", 2},
        {L"Window.SelectDropdown.ByPosition.Value", 3},
        {L"Window.SelectDropdown.ByPosition.Index", 3},
        {L"Window.ClearText", 1},
        {L"Window.ClearText.Path", 1},
        {L"Window.ClearText.Position", 2},
        {L"Window.Move", 2},
        {L"Window.BringToFront", 0},
        {L"Window.Minimize", 0},
        {L"Window.Maximize", 0},
        {L"Window.Restore", 0},
        {L"Window.Close", 0},
        {L"Window.SelectRadio", 1},
        {L"Window.SelectRadio.ByPath", 1},
        {L"Window.SelectRadio.ByPosition", 2},
        {L"Window.SetCheckbox", 2},
        {L"Window.SetCheckbox.ByPath", 2},
        {L"Window.SetCheckbox.ByPosition", 3},
    };
    const size_t length = DialwrightLineBaseLength(name);
    size_t i;
    for (i = 0; i < sizeof kRows / sizeof kRows[0]; ++i) {
        if (DialwrightLineLength(kRows[i].name) == length && DialwrightLineBegins(name, length, kRows[i].name)) {
            return kRows[i].arguments;
        }
    }
    return -1;
}

static inline int DialwrightLineTakesText(const wchar_t* name) {
    return DialwrightLineBegins(name, DialwrightLineLength(name), L"Window.SetText");
}

static inline void DialwrightLinePut(DialwrightLineWriter* writer, wchar_t unit) {
    if (writer->length < writer->units) writer->text[writer->length] = unit;
    ++writer->length;
}

static inline void DialwrightLinePutText(DialwrightLineWriter* writer, const wchar_t* text) {
    while (*text != 0) DialwrightLinePut(writer, *text++);
}

static inline void DialwrightLinePutNumber(DialwrightLineWriter* writer, long long number) {
    wchar_t digits[24];
    size_t at = sizeof digits / sizeof digits[0] - 1;
    const int negative = number < 0;
    digits[at] = 0;
    do {
        const long long digit = number % 10;
        digits[--at] = L"0123456789"[digit < 0 ? -digit : digit];
        number /= 10;
    } while (number != 0);
    if (negative) digits[--at] = L'-';
    DialwrightLinePutText(writer, digits + at);
}

/* Ends the text; empties it where it did not fit. Returns the units that it needs. */
static inline size_t DialwrightLineEnd(DialwrightLineWriter* writer) {
    DialwrightLinePut(writer, 0);
    if (writer->length > writer->units && writer->units > 0) writer->text[0] = 0;
    return writer->length;
}

static inline int DialwrightLineIsHalf(const wchar_t* text, size_t length, size_t at) {
    const int isFirst = text[at] >= 0xD800 && text[at] <= 0xDBFF;
    const int isSecond = text[at] >= 0xDC00 && text[at] <= 0xDFFF;
    if (isFirst) return at + 1 == length || text[at + 1] < 0xDC00 || text[at + 1] > 0xDFFF;
    return isSecond && (at == 0 || text[at - 1] < 0xD800 || text[at - 1] > 0xDBFF);
}

static inline DialwrightLineError DialwrightLineCheckText(const wchar_t* text, size_t length) {
    size_t i;
    if (length == 0) return DIALWRIGHT_LINE_EMPTY_ARGUMENT;
    for (i = 0; i < length; ++i) {
        if (text[i] == 0) return DIALWRIGHT_LINE_ZERO_CHARACTER;
        if (text[i] == L'\n' || text[i] == L'\r') return DIALWRIGHT_LINE_LINE_BREAK;
        if (DialwrightLineIsHalf(text, length, i)) return DIALWRIGHT_LINE_HALF_CHARACTER;
    }
    return DIALWRIGHT_LINE_WRITTEN;
}

/* Whether the text begins with the lower-case ASCII word, whatever its own case. */
static inline int DialwrightLineBeginsAnyCase(const wchar_t* text, size_t length, const wchar_t* word) {
    size_t i;
    for (i = 0; word[i] != 0; ++i) {
        if (i == length) return 0;
        if (text[i] != word[i] && (text[i] < L'A' || text[i] > L'Z' || text[i] + (L'a' - L'A') != word[i])) return 0;
    }
    return 1;
}

static inline int DialwrightLineHoldsReference(const wchar_t* text, size_t length) {
    size_t i;
    for (i = 0; i < length; ++i) {
        if (DialwrightLineBeginsAnyCase(text + i, length - i, L"${secret:") ||
            DialwrightLineBeginsAnyCase(text + i, length - i, L"${env:") ||
            DialwrightLineBeginsAnyCase(text + i, length - i, L"$${")) {
            return 1;
        }
    }
    return 0;
}

static inline DialwrightLineError DialwrightLineCheckSecretName(const wchar_t* name, size_t length) {
    size_t i;
    for (i = 0; i < length; ++i) {
        const wchar_t unit = name[i];
        const int isLetter = (unit >= L'A' && unit <= L'Z') || (unit >= L'a' && unit <= L'z');
        if (!isLetter && (unit < L'0' || unit > L'9') && unit != L'_') return DIALWRIGHT_LINE_SECRET_NAME;
    }
    return length == 0 ? DIALWRIGHT_LINE_SECRET_NAME : DIALWRIGHT_LINE_WRITTEN;
}

static inline DialwrightLineError DialwrightLineCheck(const DialwrightArgument* argument, int isCriterion,
                                                      int isTypedText) {
    DialwrightLineError error;
    switch (argument->kind) {
        case DIALWRIGHT_NUMBERS:
            if (isCriterion || argument->count > DIALWRIGHT_MOST_NUMBERS) return DIALWRIGHT_LINE_NOT_AN_ARGUMENT;
            return argument->count == 0 ? DIALWRIGHT_LINE_EMPTY_ARGUMENT : DIALWRIGHT_LINE_WRITTEN;
        case DIALWRIGHT_SECRET:
        case DIALWRIGHT_ENVIRONMENT:
            if (!isTypedText) return DIALWRIGHT_LINE_SECRET_PLACE;
            return DialwrightLineCheckSecretName(argument->text, argument->length);
        case DIALWRIGHT_TEXT:
            error = DialwrightLineCheckText(argument->text, argument->length);
            if (error != DIALWRIGHT_LINE_WRITTEN) return error;
            if (isTypedText && DialwrightLineHoldsReference(argument->text, argument->length)) {
                return DIALWRIGHT_LINE_REFERENCE;
            }
            return DIALWRIGHT_LINE_WRITTEN;
    }
    return DIALWRIGHT_LINE_NOT_AN_ARGUMENT;
}

/* Every backslash is doubled: before a quote, and before some line ends, one alone would change what is read. */
static inline void DialwrightLinePutQuoted(DialwrightLineWriter* writer, const wchar_t* text, size_t length) {
    size_t i;
    DialwrightLinePut(writer, L'"');
    for (i = 0; i < length; ++i) {
        if (text[i] == L'"' || text[i] == L'\\') DialwrightLinePut(writer, L'\\');
        DialwrightLinePut(writer, text[i]);
    }
    DialwrightLinePut(writer, L'"');
}

static inline void DialwrightLinePutArgument(DialwrightLineWriter* writer, const DialwrightArgument* argument) {
    size_t i;
    DialwrightLinePut(writer, L' ');
    if (argument->kind == DIALWRIGHT_TEXT) {
        DialwrightLinePutQuoted(writer, argument->text, argument->length);
    } else if (argument->kind == DIALWRIGHT_NUMBERS) {
        for (i = 0; i < argument->count; ++i) {
            if (i > 0) DialwrightLinePut(writer, L',');
            DialwrightLinePutNumber(writer, argument->numbers[i]);
        }
    } else {
        DialwrightLinePutText(writer, argument->kind == DIALWRIGHT_SECRET ? L"${secret:" : L"${env:");
        for (i = 0; i < argument->length; ++i) DialwrightLinePut(writer, argument->text[i]);
        DialwrightLinePut(writer, L'}');
    }
}

/* The first fault of what is to be written. */
static inline DialwrightLineFault DialwrightLineFaultOf(const wchar_t* name, const DialwrightArgument* arguments,
                                                        size_t count, long long timeoutMs) {
    DialwrightLineFault fault = {DIALWRIGHT_LINE_WRITTEN, 0};
    const int own = DialwrightArgumentsOf(name);
    size_t expected = 2;
    int i;
    for (i = 0; i < own; ++i) ++expected;
    if (own < 0) {
        fault.error = DIALWRIGHT_LINE_UNKNOWN_COMMAND;
    } else if (count != expected) {
        fault.error = DIALWRIGHT_LINE_ARGUMENT_COUNT;
    } else if (timeoutMs != DIALWRIGHT_WAIT_FOREVER && (timeoutMs < 1 || timeoutMs > 2147483647)) {
        fault.error = DIALWRIGHT_LINE_TIMEOUT;
    }
    for (; fault.error == DIALWRIGHT_LINE_WRITTEN && fault.argument < count; ++fault.argument) {
        const int isTypedText = fault.argument + 1 == count && DialwrightLineTakesText(name);
        fault.error = DialwrightLineCheck(&arguments[fault.argument], fault.argument < 2, isTypedText);
        if (fault.error != DIALWRIGHT_LINE_WRITTEN) break;
    }
    return fault;
}

static inline size_t DialwrightWriteLine(wchar_t* line, size_t units, const wchar_t* name,
                                         const DialwrightArgument* arguments, size_t count, long long timeoutMs,
                                         DialwrightLineFault* fault) {
    DialwrightLineWriter writer = {line, units, 0};
    const DialwrightLineFault found = DialwrightLineFaultOf(name, arguments, count, timeoutMs);
    size_t i;
    if (fault != NULL) *fault = found;
    if (units > 0) line[0] = 0;
    if (found.error != DIALWRIGHT_LINE_WRITTEN) return 0;
    DialwrightLinePutText(&writer, name);
    for (i = 0; i < count; ++i) DialwrightLinePutArgument(&writer, &arguments[i]);
    DialwrightLinePut(&writer, L' ');
    DialwrightLinePutNumber(&writer, timeoutMs);
    return DialwrightLineEnd(&writer);
}

static inline size_t DialwrightWritePattern(wchar_t* pattern, size_t units, const wchar_t* text) {
    static const wchar_t kSpecial[] = L"\\^$.|?*+()[]{}";
    DialwrightLineWriter writer = {pattern, units, 0};
    if (*text == 0) DialwrightLinePutText(&writer, L".*");
    for (; *text != 0; ++text) {
        const wchar_t* special = kSpecial;
        while (*special != 0 && *special != *text) ++special;
        if (*special != 0) DialwrightLinePut(&writer, L'\\');
        DialwrightLinePut(&writer, *text);
    }
    return DialwrightLineEnd(&writer);
}

/* NOLINTEND(modernize-use-nullptr) */

#endif
