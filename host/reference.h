#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "host/value.h"

// References to cells as text: A1, and R1C1 with the letters R and C.
namespace quantiverse::host {

// A cell as a formula names it. Where it isn't absolute, R1C1 names it by its distance from the
// cell of the formula, A1 by its place.
struct CellName {
  int row = 0;
  int column = 0;
  bool is_row_absolute = false;
  bool is_column_absolute = false;
};

// The size of the sheet, and what depends on it.
struct Sheet {
  int rows = 0;
  int columns = 0;

  static Sheet of_version(int version);

  // The whole text as a reference, such as "B2" or "A1:B2"; the corners may come in any order.
  // Without "$" unless `may_be_absolute`. Nothing if it is none or leaves the sheet.
  [[nodiscard]] std::optional<Area> area_of(std::string_view text,
                                            bool may_be_absolute = false) const;

  // A formula with its references from one notation into the other, for the cell `row`, `column`
  // to stand in. Texts in double quotes and whatever isn't a reference stay as they are. A distance
  // that leaves the sheet goes on at its other end.
  [[nodiscard]] std::string to_r1c1(std::string_view formula, int row, int column) const;
  [[nodiscard]] std::string to_a1(std::string_view formula, int row, int column) const;

  // Reads a name at `at` and goes behind it. Nothing if there is none; `at` then stays.
  [[nodiscard]] std::optional<CellName> read_a1(std::string_view text, std::size_t& at) const;
  [[nodiscard]] std::optional<CellName> read_r1c1(std::string_view text, std::size_t& at, int row,
                                                  int column) const;
};

// "B2", or "A1:B2" for more than one cell.
std::string area_text(const Area& area);

}  // namespace quantiverse::host
