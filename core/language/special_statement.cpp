#include "language/special_statement.h"

#include "text/scanner.h"

namespace quantiverse {
namespace {

// The system that a word names whatever its case, if it names one.
bool find_unit_system(std::string_view word, UnitSystem& system) {
  if (word.size() != kUnitSystemNames.front().size()) return false;  // nearly every line
  for (const UnitSystem candidate :
       {UnitSystem::kMks, UnitSystem::kCgs, UnitSystem::kFps, UnitSystem::kIps}) {
    if (equal_nocase(word, unit_system_name(candidate))) {
      system = candidate;
      return true;
    }
  }
  return false;
}

void report_unit_system(const UnitSystems& systems, TextBuf& message) {
  const auto count = static_cast<int>(systems.exceptions().size());
  message.append_three(" Default units = ", unit_system_name(systems.system()), " with ");
  message.append_integer(count);
  // Only MKS minds the singular.
  const bool one = count == 1 && systems.system() == UnitSystem::kMks;
  message.append_text(one ? " exception.\n" : " exceptions.\n");
}

}  // namespace

bool is_special_function(Units& units, Cursor& expptr, TextBuf& message, TextBuf& err,
                         int& line_counter) {
  Backtrack back(expptr);
  skip_blanks_and_comments(expptr);
  UnitSystem system = UnitSystem::kMks;
  if (!find_unit_system(scan_name(expptr), system)) return false;

  // The system is set before its list is read, so it holds even if the list fails.
  units.systems.set_unit_system(system);
  read_default_unit_list(units, expptr, err);
  if (err.is_empty_text()) {
    ++line_counter;
  } else {
    message.append_buffer(err);
    message.append_text("\n");
  }
  report_unit_system(units.systems, message);
  skip_to_end_of_line(expptr);
  return back.accept();
}

}  // namespace quantiverse
