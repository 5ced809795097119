#include "addin/message_table.h"

#include <array>
#include <string_view>

namespace quantiverse {
namespace {

// A message in both forms, which are the same text but for one.
struct MessageRow {
  unsigned number;
  const char* built_in;
  const char16_t* resource;
};

#define QV_BOTH(number, text) \
  { number, text, u##text }

// clang-format off
constexpr MessageRow kRows[] = {
    QV_BOTH(0, ""),
    QV_BOTH(1, "#ERROR: {0}"),
    QV_BOTH(2, "#WAIT!"),
    QV_BOTH(3, "unknown type"),
    QV_BOTH(4, "boolean"),
    QV_BOTH(5, "number"),
    QV_BOTH(6, "integer"),
    QV_BOTH(7, "string"),
    QV_BOTH(8, "error"),
    QV_BOTH(9, "long integer"),
    QV_BOTH(10, "Conversion error"),
    QV_BOTH(11, "Expected {0}"),
    QV_BOTH(12, "Expected {1} for {0}"),
    QV_BOTH(13, "Expected at least 1 value for {0}"),
    QV_BOTH(14, "Label {1} not found in {0}"),
    QV_BOTH(15, "Expected vector for {0}"),
    QV_BOTH(16, "Expected at least {1} values for {0}"),
    QV_BOTH(17, "Expected 1 row in {0}"),
    QV_BOTH(18, "Expected {1} rows in {0}"),
    QV_BOTH(19, "Expected 1 column in {0}"),
    QV_BOTH(20, "Expected {1} columns in {0}"),
    QV_BOTH(21, "Expected 1 value in {0}"),
    QV_BOTH(22, "Expected {1} values in {0}"),
    QV_BOTH(23, "Expected 1 value in row {2} of {0}"),
    QV_BOTH(24, "Expected {1} values in row {2} of {0}"),
    QV_BOTH(25, "Expected 1 value in column {2} of {0}"),
    QV_BOTH(26, "Expected {1} values in column {2} of {0}"),
    QV_BOTH(27, "Expected at least {1} rows for {0}"),
    QV_BOTH(28, "Expected at least {1} columns for {0}"),
    QV_BOTH(29, "Failed to convert {0} from {1} to {2}"),
    QV_BOTH(30, "Index out of range"),
    QV_BOTH(31, "Illegal argument"),
    QV_BOTH(32, "Bad XLOPER type"),
    QV_BOTH(33, "Failed to convert {0} to any of the permitted types"),
    QV_BOTH(34, "XlElemTraits is not implemented for this type"),
    QV_BOTH(35, "Array is too large"),
    QV_BOTH(36, "Array is empty"),
    QV_BOTH(37, "String is too long"),
    QV_BOTH(38, "Extended {0} parameter index {1} for argument {2} is out of range"),
    QV_BOTH(39, "Right-hand side of cell assignment must be a scalar value"),
    QV_BOTH(40, "Parameter ignoreItems is out of range (maximum = {0})"),
    QV_BOTH(41, "Source must be a scalar value"),
    QV_BOTH(42, "Expected all items in the array to be empty"),
    QV_BOTH(43, "CXlOper instance is not initialized"),
    QV_BOTH(44, "{0} is not initialized"),
    QV_BOTH(45, "{0} is not initialized. Expected {1}."),
    QV_BOTH(46, "{0} is not initialized. Expected {1} vector."),
    QV_BOTH(47, "{0} is not initialized. Expected {1} matrix."),
    QV_BOTH(48, "Illegal value for result of common function. Must be 0, &xloResult or static."),
    // The built-in text has an empty line before the list, the resource has none.
    {49, "The following functions in {0} failed to register:\n\n"
         "{1}\nDo you wish to continue loading the add-in?",
     u"The following functions in {0} failed to register:\n"
     u"{1}\nDo you wish to continue loading the add-in?"},
    QV_BOTH(50, "Add-in Load Failure"),
    QV_BOTH(51, "Memory allocation failed"),
    QV_BOTH(52, "Excel API call failed"),
    QV_BOTH(53, "Excel API call {0} failed with error code {1}"),
    QV_BOTH(54, "'C' structured exception occurred"),
    QV_BOTH(55, "'C' exception {0}"),
    QV_BOTH(56, "Threw Excel error {0}"),
    QV_BOTH(57, "COM call failed"),
    QV_BOTH(58, "{0} failed with error code {1}"),
    QV_BOTH(59, "short integer"),
    QV_BOTH(60, "unsigned short integer"),
    QV_BOTH(61, "Expected at least 1 value for {0}"),
    QV_BOTH(62, "Expected at least 1 row for {0}"),
    QV_BOTH(63, "Expected at least 1 column for {0}"),
    QV_BOTH(64, "Expected one of {1} for {0}"),
    QV_BOTH(65, "handle to {0}"),
};
// clang-format on

#undef QV_BOTH

constexpr bool IsCounted() {
  for (unsigned i = 0; i < std::size(kRows); ++i) {
    if (kRows[i].number != i) return false;
  }
  return true;
}
static_assert(std::size(kRows) == kMessageCount && IsCounted(), "row i holds message i");

}  // namespace

const char* BuiltInMessage(unsigned number) { return kRows[number].built_in; }

const char16_t* ResourceMessage(unsigned number) { return kRows[number].resource; }

}  // namespace quantiverse
