#include "language/interpreter.h"

#include <algorithm>
#include <exception>

#include "language/statement.h"
#include "text/scanner.h"
#include "text/vectors.h"

namespace quantiverse {
namespace {

// The lines that an editor puts in front of a new worksheet. Unlike other comments they are not
// echoed.
constexpr std::string_view kDirections[] = {
    "#  DIRECTIONS:",
    "#  (1) Enter your problem HERE in the INPUT tab.",
    "#  (2) Click the CALCULATE button.",
    "#  (3) The results are displayed in the OUTPUT tab.",
    "#  (3) The results are displayed under the OUTPUT tab.",
    "#  For examples, click on the QUICK START link or the Examples tab.",
    "#  See the QUICK START link or the Examples tab for more details.",
    "#  START TYPING BELOW:",
};

bool is_directions_line(Cursor expptr) {
  if (expptr.peek() != '#') return false;
  return std::any_of(std::begin(kDirections), std::end(kDirections),
                     [&expptr](std::string_view line) { return accept_keyword(line, expptr); });
}

// What a line adds to its own text in the output, roughly. Reserving it takes no memory until it
// is used, and saves copying a large output as it grows.
constexpr std::size_t kUsualReport = 48;
constexpr std::size_t kMostReserved = std::size_t{256} * 1024 * 1024;

std::size_t expected_output(std::string_view text) {
  const auto lines = static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n')) + 1;
  return std::min(2 * text.size() + kUsualReport * lines, kMostReserved);
}

// A text longer than this doesn't leave its storage behind for the next one.
constexpr std::size_t kUsualText = std::size_t{64} * 1024;

}  // namespace

void LineScratch::begin_line() {
  err.clear_text();
  result.clear_text();
  failed_run = {};
  good_target = nullptr;
}

void process_an_expression(Interpreter& interpreter, std::string_view default_name,
                           int& line_counter, Cursor& expptr, TextBuf& out) {
  const Cursor line_text = expptr;
  if (is_directions_line(expptr)) return;
  skip_blanks_and_comments(expptr);
  if (is_comment_range(line_text, expptr)) {
    while (next_comment_line(expptr)) {
    }
    out.append_three("\n", line_text.until(expptr), "\n\n");
    return;
  }
  if (is_end_of_line(expptr)) return;
  // A label counts the statements that worked, and a body collects them.
  ++line_counter;
  if (compile_one_full_line(interpreter, default_name, line_counter, line_text, expptr, out)) {
    interpreter.body.append_program(interpreter.line.compiled.program);
  } else {
    --line_counter;
  }
}

void process_lines(Interpreter& interpreter, std::string_view default_name, Cursor& expptr,
                   TextBuf& out) {
  int line_counter = 0;
  while (!is_end_of_text(expptr)) {
    process_an_expression(interpreter, default_name, line_counter, expptr, out);
    skip_blanks_and_comments(expptr);
    if (!is_end_of_text(expptr)) expptr.step();
  }
}

void Interpreter::begin_call() {
  variables.clear();
  units.users.clear();
  units.systems.clear();
  units.stack.begin_call();
  guard = RepeatGuard();
  body.clear();
  request.begin_call();
}

void Interpreter::interpret(std::string_view text, TextBuf& out) {
  try {
    begin_call();
    text = text.substr(0, text.find('\0'));
    out.reserve(expected_output(text));
    Cursor expptr(text);
    process_lines(*this, "", expptr, out);
    body.clear();
    request.begin_call();
    variables.clear();
    if (text.size() > kUsualText) {
      line = LineScratch();
      outer_line = LineScratch();
      spare_stacks = {};
    }
  } catch (const std::exception&) {  // an allocation that failed, or would be beyond any size
    nrerror("Allocation failure in allocate_and_init_str_vusk().");
  }
}

}  // namespace quantiverse
