#ifndef QUANTIVERSE_C_H
#define QUANTIVERSE_C_H

#include <stddef.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Runs `length` bytes of `text`, one statement a line, and gives back the echo of every line with
 * its result or error as a NUL-terminated text, to be released with quantiverse_free. A NUL ends
 * the text early; `text` may be null if `length` is 0. Never returns null: a failed allocation
 * ends the process. May be called on several threads at once. */
char* quantiverse_interpret(const char* text, size_t length);

/* Releases what quantiverse_interpret gave. Null is allowed. */
void quantiverse_free(char* result);

#ifdef __cplusplus
}
#endif

#endif
