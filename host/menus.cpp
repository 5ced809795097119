#include "host/menus.h"

#include <algorithm>

#include "host/text.h"

namespace quantiverse::host {
namespace {

std::string without_marks(std::string_view text) {
  std::string name(text);
  std::erase(name, '&');
  return name;
}

bool is_on(const Menu& menu, const Value& bar, const std::string& name) {
  return plain_number(menu.bar) == plain_number(bar) && equal_ignoring_case(menu.name(), name);
}

}  // namespace

std::string Menu::name() const { return without_marks(constant_text(rows.front().front())); }

std::vector<std::vector<Value>> rows_of(const Array& table) {
  std::vector<std::vector<Value>> rows;
  for (int r = 0; r < table.rows; ++r) {
    const auto start = table.elements.begin() + std::ptrdiff_t{r} * table.columns;
    rows.emplace_back(start, start + table.columns);
  }
  return rows;
}

Menu* Menus::find(const Value& bar, std::string_view name) {
  const std::string wanted = without_marks(name);
  const auto found = std::find_if(menus.begin(), menus.end(),
                                  [&](const Menu& menu) { return is_on(menu, bar, wanted); });
  return found != menus.end() ? &*found : nullptr;
}

bool Menus::remove(const Value& bar, std::string_view name) {
  const Menu* const found = find(bar, name);
  if (found == nullptr) return false;
  menus.erase(menus.begin() + (found - menus.data()));
  return true;
}

}  // namespace quantiverse::host
