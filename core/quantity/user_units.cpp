#include "quantity/user_units.h"

namespace quantiverse {

const DimValue* UserUnits::find_user_unit(std::string_view name) const {
  const auto found = units_.find(name);
  return found == units_.end() ? nullptr : &found->second;
}

void UserUnits::store_user_unit(std::string_view name, const DimValue& value, TextBuf& err) {
  if (value.comp[0] == 0.0) {
    err.clear_text();
    err.append_text("ERROR: Cannot define a unit with value zero.\n");
    return;
  }
  units_.insert_or_assign(std::string(name), DimValue{false, {value.comp[0]}, value.exps});
  ++generation_;
}

}  // namespace quantiverse
