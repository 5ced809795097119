#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/value.h"

namespace quantiverse::host {

struct Menu {
  Value bar;
  Value position;  // nil if none was given
  std::vector<std::vector<Value>> rows;

  // The first cell without its "&".
  [[nodiscard]] std::string name() const;
};

// Rows of a table.
std::vector<std::vector<Value>> rows_of(const Array& table);

// What add-ins put on the menu bars, in order.
struct Menus {
  std::vector<Menu> menus;

  // Case ignored, with or without "&"; null if there is none.
  Menu* find(const Value& bar, std::string_view name);
  bool remove(const Value& bar, std::string_view name);
};

}  // namespace quantiverse::host
