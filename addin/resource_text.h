#pragma once

#include <string>
#include <string_view>

// Texts that refer to the module's string resources: "#" and a number, decimal or hexadecimal
// behind 0x, stand for the string of that number in the add-in's language; "#@" and a number for
// that in Excel's.
namespace quantiverse {

// Replaces the references in `text`; `out` may be `text`. What came in isn't looked at again. A "#"
// without a number is ordinary text, a reference to nothing stays as it is.
// false: there was a reference to nothing.
// Asks Excel for its language at the first "#@". Main thread only.
bool ExpandResourceText(std::u16string_view text, std::u16string& out);
bool ExpandResourceText(std::string_view text, std::string& out);

}  // namespace quantiverse
