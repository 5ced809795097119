#pragma once

#include <string_view>

#include "language/interpreter.h"

namespace quantiverse {

// Appends `header` and a newline, then reads the body once more, line by line, as if it stood
// there, with `default_name` in front of the numbers of its labels. Its lines see the variables
// as they are; what they assign stays, except to a variable that a request varies.
// Without a closed body nothing happens, nor while a replay runs: no body costs more than its
// length.
void replay_body(Interpreter& interpreter, std::string_view header, std::string_view default_name,
                 TextBuf& out);

}  // namespace quantiverse
