#pragma once

#include "addin/xloper.h"

namespace quantiverse {

// One of Excel's locale settings, such as kWorkspaceRow.
// false: Excel doesn't tell, or has fewer settings; `item` is then of no use.
bool GetWorkspaceItem(int index, CXlOper& item);

inline constexpr int kWorkspaceRow = 5;     // the letter for rows in R1C1 notation
inline constexpr int kWorkspaceColumn = 6;  // and for columns

// Puts the locale's letters for rows and columns into the add-in's state: R and C where Excel
// doesn't tell.
void ReadLocaleLetters();

}  // namespace quantiverse
