#pragma once

#include <cstddef>
#include <cstdint>

// The published interface between Excel and an add-in, as Excel sees it. One template makes the
// records of both generations; they are laid out as documented for 32 and 64 bit.
namespace quantiverse::host {

#if defined(_WIN32)
#define XLHOST_PASCAL __stdcall
#define XLHOST_EXPORT __declspec(dllexport)
#else
#define XLHOST_PASCAL
#define XLHOST_EXPORT __attribute__((visibility("default")))
#endif

// Excel 4 to 11: texts in the system's code page.
struct Form4 {
  using Char = char;
  using Row = std::uint16_t;
  using Column = std::uint8_t;
  using Extent = std::uint16_t;
  using Code = std::uint16_t;
  using Integer = std::int16_t;
  using Type = std::uint16_t;
  static constexpr int kNumber = 4;
  static constexpr std::size_t kLongestText = 255;
  static constexpr int kMostRows = 65535;
  static constexpr int kMostColumns = 256;
};

// Excel 12 and later: texts in UTF-16.
struct Form12 {
  using Char = char16_t;
  using Row = std::int32_t;
  using Column = std::int32_t;
  using Extent = std::int32_t;
  using Code = std::int32_t;
  using Integer = std::int32_t;
  using Type = std::uint32_t;
  static constexpr int kNumber = 12;
  static constexpr std::size_t kLongestText = 65535;
  static constexpr int kMostRows = 1048576;
  static constexpr int kMostColumns = 16384;
};

// Rows and columns count from 0; both ends belong to the area.
template <class Form>
struct AreaRecord {
  typename Form::Row first_row, last_row;
  typename Form::Column first_column, last_column;
};

template <class Form>
struct AreaTable {
  std::uint16_t count;
  AreaRecord<Form> areas[1];  // in truth `count` of them
};

template <class Form>
struct Record {
  union alignas(8) {
    double number;
    typename Form::Char* text;  // behind a character that is its length
    typename Form::Code boolean;
    typename Form::Code error;
    typename Form::Integer integer;
    struct {
      std::uint16_t count;  // always 1
      AreaRecord<Form> area;
    } single;
    struct {
      AreaTable<Form>* areas;
      std::uintptr_t sheet;  // 0 is the current one
    } reference;
    struct {
      Record* elements;  // row by row
      typename Form::Extent rows, columns;
    } array;
  } value;
  typename Form::Type type;
};

using Record4 = Record<Form4>;
using Record12 = Record<Form12>;
static_assert(sizeof(Record4) == (sizeof(void*) == 8 ? 24 : 16));
static_assert(offsetof(Record4, type) == (sizeof(void*) == 8 ? 16 : 8));
static_assert(sizeof(AreaTable<Form4>) == 8 && offsetof(AreaTable<Form4>, areas) == 2);
static_assert(offsetof(Record4, value.array.columns) == sizeof(void*) + 2);
static_assert(offsetof(Record4, value.single.area) == 2);
static_assert(sizeof(Record12) == 32 && offsetof(Record12, type) == 24);
static_assert(sizeof(AreaTable<Form12>) == 20 && offsetof(AreaTable<Form12>, areas) == 4);
static_assert(offsetof(Record12, value.array.columns) == sizeof(void*) + 4);
static_assert(offsetof(Record12, value.single.area) == 4);

// What a record holds.
inline constexpr unsigned kTypeNumber = 0x0001;
inline constexpr unsigned kTypeText = 0x0002;
inline constexpr unsigned kTypeBool = 0x0004;
inline constexpr unsigned kTypeReference = 0x0008;
inline constexpr unsigned kTypeError = 0x0010;
inline constexpr unsigned kTypeArray = 0x0040;
inline constexpr unsigned kTypeMissing = 0x0080;
inline constexpr unsigned kTypeNil = 0x0100;
inline constexpr unsigned kTypeSingle = 0x0400;
inline constexpr unsigned kTypeInteger = 0x0800;

// Who frees what a record holds.
inline constexpr unsigned kExcelFrees = 0x1000;
inline constexpr unsigned kAddInFrees = 0x4000;
inline constexpr unsigned kTypeMask = ~(kExcelFrees | kAddInFrees) & 0xFFFF;

// What a call of Excel comes back with.
inline constexpr int kSuccess = 0;
inline constexpr int kBadFunction = 2;
inline constexpr int kBadCount = 4;
inline constexpr int kBadRecord = 8;
inline constexpr int kFailed = 32;

// Error values of cells.
inline constexpr int kErrorValue = 15;
inline constexpr int kErrorName = 29;
inline constexpr int kErrorNotAvailable = 42;

// Set in an operation's code: texts as the user's locale writes them.
inline constexpr int kIntl = 0x2000;

inline constexpr int kMostArguments4 = 30;
inline constexpr int kMostArguments12 = 255;

extern "C" {
using Callback12 = int XLHOST_PASCAL(int function, int count, Record12** arguments,
                                     Record12* result);
}

}  // namespace quantiverse::host
