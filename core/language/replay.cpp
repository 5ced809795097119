#include "language/replay.h"

#include <utility>

#include "text/scanner.h"

namespace quantiverse {

void replay_body(Interpreter& interpreter, std::string_view header, std::string_view default_name,
                 TextBuf& out) {
  if (!interpreter.body.is_body_closed() || interpreter.replaying) return;
  out.append_three(header, "\n", "");
  // The line that asks for the replay still needs what it has in its hands.
  std::swap(interpreter.line, interpreter.outer_line);
  interpreter.replaying = true;

  const Cursor start = interpreter.body.replay_start();
  Cursor expptr = start;
  skip_blanks_and_comments(expptr);
  process_lines(interpreter, default_name, expptr, out);
  interpreter.body.put_back_start(start);

  interpreter.replaying = false;
  std::swap(interpreter.line, interpreter.outer_line);
  // One error text serves all lines: the asking line ends with that of the last line read.
  std::swap(interpreter.line.err, interpreter.outer_line.err);
}

}  // namespace quantiverse
