#include "host/registry.h"

#include <algorithm>
#include <utility>

#include "host/text.h"

namespace quantiverse::host {

int Registry::add(Registration registration) {
  registration.id = ++last_id_;
  if (registration.macro_type != MacroType::kHidden) {
    remove_name(registration.function_text);
    names_.push_back(registration.function_text);
  }
  registrations_.push_back(std::move(registration));
  return last_id_;
}

bool Registry::remove(int id) {
  return std::erase_if(registrations_, [&](const auto& row) { return row.id == id; }) > 0;
}

bool Registry::remove_name(std::string_view name) {
  return std::erase_if(names_, [&](const auto& row) { return equal_ignoring_case(row, name); }) > 0;
}

const Registration* Registry::find(std::string_view function_text, MacroType type) const {
  const auto found =
      std::find_if(registrations_.rbegin(), registrations_.rend(), [&](const auto& row) {
        return row.macro_type == type && equal_ignoring_case(row.function_text, function_text);
      });
  return found != registrations_.rend() ? &*found : nullptr;
}

}  // namespace quantiverse::host
