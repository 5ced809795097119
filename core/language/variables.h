#pragma once

#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

#include "language/function_set.h"
#include "quantity/units.h"
#include "text/text_buf.h"

namespace quantiverse {

struct Variable {
  std::string_view name;  // in the call's text, exactly as written
  int number;             // from 201, never used again within a call
  bool held;              // a request varies it: assignments leave it alone
  DimValue value;
};

// The variables of one call, by name and by number. A record never moves and is only replaced in
// value, so compiled programs refer to it. Names are views into the call's text, which outlives
// the table's contents.
class Variables {
 public:
  // Exact comparison of the whole name; null if there is none.
  [[nodiscard]] Variable* find_variable(std::string_view name);

  // A missing variable leaves a message in `err`, and the result is 0, null, or the zero value
  // with infinities for components.
  [[nodiscard]] DimValue getvar(std::string_view name, TextBuf& err);
  [[nodiscard]] DimValue getvar_by_num(int number, TextBuf& err);
  [[nodiscard]] std::string_view varname_by_num(int number, TextBuf& err);
  [[nodiscard]] int varnum_by_name(std::string_view name, TextBuf& err);
  void setvar_by_num(int number, const DimValue& value, TextBuf& err);
  // Null if there is none.
  [[nodiscard]] Variable* find_number(int number);

  // Stores into the whole variable (component 0) or into one component, and makes the variable
  // if it is new. A component makes it a vector, and brings its dimension for the whole of it.
  // `value` becomes what the variable then holds.
  Variable& setvar(std::string_view name, DimValue& value, int component);
  // The same for a variable that is known to exist. A variable that a request varies keeps its
  // value, so that a line of a body that gives it a start doesn't undo the solver's work.
  static void set_variable(Variable& variable, DimValue& value, int component);

  // Says that `name` is going to be stored to. Its place in a large table is in no cache, and
  // fetching it takes about as long as reading the right side does.
  void expect(std::string_view name) const;

  // Forgets all variables; the next one has number 201 again.
  void clear();

 private:
  static constexpr int kFirstNumber = 201;

  // Open addressing; an entry is an index into records_ plus one, with the name's hash beside it
  // so that growing touches no record.
  struct Entry {
    std::uint32_t hash = 0;
    std::uint32_t index = 0;
  };
  [[nodiscard]] Entry& entry_of(std::string_view name, std::uint32_t hash);
  void grow();
  Variable& add_variable(Entry& entry, std::string_view name, std::uint32_t hash,
                         const DimValue& value);

  std::deque<Variable> records_;
  std::vector<Entry> entries_;
};

// May `name` become a variable? Units and functions are refused, with a message in `err`.
bool is_varname_okay(std::string_view name, const UserUnits& users, const FunctionSet& functions,
                     TextBuf& err);

}  // namespace quantiverse
