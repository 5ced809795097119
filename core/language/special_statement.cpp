#include "language/special_statement.h"

#include <algorithm>
#include <array>

#include "language/replay.h"
#include "language/result_text.h"
#include "language/unit_definition.h"
#include "text/scanner.h"

namespace quantiverse {
namespace {

enum class Word : std::uint8_t { kMks, kCgs, kFps, kIps, kDefUnit, kBegin, kEnd, kPrintFunc };
constexpr std::array<std::string_view, 8> kWords = {"MKS",     "cgs",   "FPS", "IPS",
                                                    "DefUnit", "begin", "end", "PrintFunc"};

bool find_word(std::string_view name, Word& word) {
  const auto* const found = std::find_if(
      kWords.begin(), kWords.end(), [name](std::string_view w) { return equal_nocase(w, name); });
  if (found == kWords.end()) return false;
  word = static_cast<Word>(found - kWords.begin());
  return true;
}

void report_unit_system(const UnitSystems& systems, TextBuf& out) {
  const auto count = static_cast<int>(systems.exceptions().size());
  out.append_three(" Default units = ", unit_system_name(systems.system()), " with ");
  out.append_integer(count);
  // Only MKS minds the singular.
  const bool one = count == 1 && systems.system() == UnitSystem::kMks;
  out.append_text(one ? " exception.\n" : " exceptions.\n");
}

void use_unit_system(UnitSystem system, Interpreter& interpreter, Cursor& expptr, TextBuf& out,
                     TextBuf& err) {
  Units& units = interpreter.units;
  // The system is set before its list is read, so it holds even if the list fails.
  units.systems.set_unit_system(system);
  read_default_unit_list(units, expptr, err);
  if (!err.is_empty_text()) out.append_three(err.text(), "\n", "");
  report_unit_system(units.systems, out);
}

// What the statement has to say, newlines and all.
void carry_out(Word word, Interpreter& interpreter, Cursor& expptr, TextBuf& out, TextBuf& err) {
  switch (word) {
    case Word::kMks:
    case Word::kCgs:
    case Word::kFps:
    case Word::kIps:
      use_unit_system(static_cast<UnitSystem>(word), interpreter, expptr, out, err);
      break;
    case Word::kDefUnit:
      define_user_unit(interpreter, expptr, out, err);
      out.append_buffer(err);
      break;
    case Word::kBegin:
      interpreter.body.open_body(expptr);
      return;
    case Word::kEnd:
      if (!interpreter.body.close_body(expptr)) out.append_text("ERROR: Missing BEGIN.\n");
      break;
    case Word::kPrintFunc:
      replay_body(interpreter, "Header:", "PrintFunc", out);
      return;
  }
  out.append_text("\n");
}

}  // namespace

bool is_special_function(Interpreter& interpreter, Cursor& expptr, TextBuf& out,
                         int& line_counter) {
  Backtrack back(expptr);
  skip_blanks_and_comments(expptr);
  Word word = Word::kMks;
  if (!find_word(scan_name(expptr), word)) return false;

  out.append_text(kIndent);
  TextBuf& err = interpreter.line.err;
  carry_out(word, interpreter, expptr, out, err);
  out.append_text("\n");
  // `begin` and what has failed use up no number.
  const bool counts = word != Word::kBegin && (word == Word::kPrintFunc || err.is_empty_text());
  if (counts) ++line_counter;
  skip_to_end_of_line(expptr);
  return back.accept();
}

}  // namespace quantiverse
