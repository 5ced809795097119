/* The C interface, from C. */
#include <quantiverse/c.h>
#include <stdio.h>
#include <string.h>

struct Case {
  const char* text;
  size_t length;
  const char* expected;
};

static const struct Case kCases[] = {
    {"5 ft; m\n", 8, "[  1 ] 5 ft; m\n        = 1.524 m\n\n"},
    {"1+1 and what is behind the length", 3, "[  1 ] 1+1\n        = 2 \n\n"},
    {"1+1\0+1", 6, "[  1 ] 1+1\n        = 2 \n\n"},
    {"", 0, ""},
    {NULL, 0, ""},
    {"1 m + 1 s", 9, NULL}, /* an error is output like any other */
};

int main(void) {
  int failures = 0;
  size_t i;
  for (i = 0; i < sizeof kCases / sizeof kCases[0]; ++i) {
    char* output = quantiverse_interpret(kCases[i].text, kCases[i].length);
    const int right = kCases[i].expected == NULL ? strstr(output, "ERROR") != NULL
                                                 : strcmp(output, kCases[i].expected) == 0;
    if (!right) {
      printf("case %d gave:\n%s\n", (int)i, output);
      ++failures;
    }
    quantiverse_free(output);
  }
  quantiverse_free(NULL);
  return failures;
}
