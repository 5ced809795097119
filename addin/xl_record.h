#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "addin/xlcall.h"

// What the add-in does with the plain records of either generation: limits, making, copying and
// freeing contents. "Contents" is the memory behind a record: a text, an array, a table of areas.
// Contents that the add-in makes are freed by FreeContents alone, contents of Excel's never are.
namespace quantiverse {

// The two generations, as far as they differ.
template <typename Record>
struct XlForm;

template <>
struct XlForm<XLOPER> {
  using Char = char;
  using Text = std::string_view;
  using Area = XLREF;
  using Areas = XLMREF;
  static constexpr std::size_t kMaxText = 255;
  static constexpr int kMaxRows = 65536;
  static constexpr int kMaxColumns = 256;
  static constexpr std::uint16_t kOwned = 1;  // flags of a CXlOper
  static constexpr std::uint16_t kExcels = 2;
  static constexpr std::uint16_t kValid = 4;
};

template <>
struct XlForm<XLOPER12> {
  using Char = char16_t;
  using Text = std::u16string_view;
  using Area = XLREF12;
  using Areas = XLMREF12;
  static constexpr std::size_t kMaxText = 65535;
  static constexpr int kMaxRows = 1048576;
  static constexpr int kMaxColumns = 16384;
  static constexpr std::uint16_t kOwned = 16;
  static constexpr std::uint16_t kExcels = 32;
  static constexpr std::uint16_t kValid = 64;
};

template <typename Record>
concept XlRecord = std::same_as<Record, XLOPER> || std::same_as<Record, XLOPER12>;

// The type without the flags beside it.
template <XlRecord Record>
unsigned TypeOf(const Record& record) {
  return record.xltype & 0xDFFU;
}

template <XlRecord Record>
void SetType(Record& record, unsigned type) {
  record.xltype = static_cast<decltype(record.xltype)>(type);
}

constexpr bool HasContents(unsigned type) {
  return type == xltypeStr || type == xltypeMulti || type == xltypeRef;
}
constexpr bool IsScalarType(unsigned type) {
  return type == xltypeNum || type == xltypeStr || type == xltypeBool || type == xltypeInt;
}

// The errors that a cell can show.
enum class XlError : std::uint8_t {
  kNull = 0,
  kDivisionBy0 = 7,
  kValue = 15,
  kReference = 23,
  kName = 29,
  kNumber = 36,
  kNotAvailable = 42,
};

// The text of a record. A null one is empty.
// REQUIRES: its type is xltypeStr.
std::string_view TextOf(const XLOPER& record);
std::u16string_view TextOf(const XLOPER12& record);

struct XlSize {
  int rows = 0;
  int columns = 0;
};

// The size of an array. The rows of an XLOPER are 16 bits wide and 65536 is a legal number, so
// there 0 stands for it. An array without memory, rows or columns has no size at all.
// REQUIRES: its type is xltypeMulti.
XlSize SizeOf(const XLOPER& record);
XlSize SizeOf(const XLOPER12& record);

template <XlRecord Record>
std::size_t ElementCount(const Record& array) {
  const XlSize size = SizeOf(array);
  return static_cast<std::size_t>(size.rows) * static_cast<std::size_t>(size.columns);
}

// The makers overwrite `record`, whatever it held. All memory can fail as `new` does.

template <XlRecord Record>
void MakeError(XlError error, Record& record) {
  record = {};
  record.val.err = static_cast<decltype(record.val.err)>(error);
  SetType(record, xltypeErr);
}

template <XlRecord Record>
void MakeNumber(double number, Record& record) {
  record = {};
  record.val.num = number;
  SetType(record, xltypeNum);
}

template <XlRecord Record>
void MakeBool(bool value, Record& record) {
  record = {};
  record.val.xbool = value ? 1 : 0;
  SetType(record, xltypeBool);
}

// A number where the 16 bits of an XLOPER are too few.
template <XlRecord Record>
void MakeInteger(std::int32_t value, Record& record) {
  record = {};
  record.val.w = static_cast<decltype(record.val.w)>(value);
  SetType(record, xltypeInt);
  if (record.val.w != value) MakeNumber(value, record);
}

// The text is cut to 255 characters in an XLOPER. Throws CXlStringTooLongException where the
// length doesn't fit an XLOPER12.
void MakeText(std::string_view text, XLOPER& record);
void MakeText(std::u16string_view text, XLOPER12& record);
// The same for a text of ASCII, which takes no code page to become wide.
// false: it isn't, and nothing has been done.
bool MakeAsciiText(std::string_view text, XLOPER12& record);

// All elements are of type 0, which holds nothing; they are to be filled.
// REQUIRES: the size is within the limits of the form and not 0.
template <XlRecord Record>
void MakeArray(XlSize size, Record& record);

// Areas with room for `count`, all zero.
template <XlRecord Record>
void MakeAreas(std::uint16_t count, IDSHEET sheet, Record& record);

// A copy that shares nothing with `from`.
template <XlRecord Record>
void CopyRecord(const Record& from, Record& to);

// Frees the contents, those of elements first, and zeroes the record.
// REQUIRES: the contents were made by the above.
template <XlRecord Record>
void FreeContents(Record& record);

// A record under construction: frees what it holds unless it is released.
template <XlRecord Record>
class RecordGuard {
 public:
  RecordGuard() = default;
  RecordGuard(const RecordGuard&) = delete;
  RecordGuard& operator=(const RecordGuard&) = delete;
  ~RecordGuard() { FreeContents(record); }

  Record Release() {
    const Record released = record;
    record = {};
    return released;
  }

  Record record{};
};

}  // namespace quantiverse
