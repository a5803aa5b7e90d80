/* Runs a script of commands: a small but whole host. Reads one UTF-8 file, with or without a byte-order mark, and hands
 * it to ExecuteScript. */

#include <dialwright/dialwright.h>

#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include <windows.h>

/* The whole file as text for the library, or null. To be freed by the caller. */
static wchar_t* read_script(const char* path) {
    FILE* file = fopen(path, "rb");
    if (file == NULL) return NULL;
    fseek(file, 0, SEEK_END);
    const int size = (int)ftell(file);
    if (size < 0) {
        fclose(file);
        return NULL;
    }
    fseek(file, 0, SEEK_SET);
    char* bytes = malloc((size_t)size + 1);
    wchar_t* text = calloc((size_t)size + 1, sizeof(wchar_t));
    if (bytes != NULL && text != NULL && fread(bytes, 1, (size_t)size, file) == (size_t)size) {
        const int mark = size >= 3 && memcmp(bytes, "\xEF\xBB\xBF", 3) == 0 ? 3 : 0;
        MultiByteToWideChar(CP_UTF8, 0, bytes + mark, size - mark, text, size);
    } else {
        free(text);
        text = NULL;
    }
    free(bytes);
    fclose(file);
    return text;
}

int main(int count, char** arguments) {
    if (count != 2) {
        fprintf(stderr, "usage: run_script SCRIPT\n\nExit codes: 0 all lines done, 1 a line failed, 2 no script.\n");
        return 2;
    }
    wchar_t* script = read_script(arguments[1]);
    if (script == NULL) {
        fprintf(stderr, "run_script: %s cannot be read\n", arguments[1]);
        return 2;
    }
    const int done = ExecuteScript(script);
    free(script);
    return done ? 0 : 1;
}
