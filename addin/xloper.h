#pragma once

#include <concepts>
#include <cstdint>
#include <string>
#include <string_view>

#include "addin/xl_record.h"

namespace quantiverse {

struct XlMissing {};  // an argument that is left out
struct XlNil {};      // an empty cell

// What a value can be made from. Other whole numbers are cast: in which type is no small matter.
template <typename Value>
concept XlPlain = std::same_as<Value, double> || std::same_as<Value, std::int32_t> ||
    std::same_as<Value, bool> || std::same_as<Value, XlError> || std::same_as<Value, XlMissing> ||
    std::same_as<Value, XlNil> || std::convertible_to<const Value&, std::string_view> ||
    std::convertible_to<const Value&, std::u16string_view>;

// The one value type of the add-in: what travels to and from Excel, in either generation's form.
// It is made in the form of the running Excel and converted when it meets a call of the other.
//
// It holds a record of each form, and flags that say which of them is valid and who frees its
// contents: nobody (borrowed, or there are none), the add-in, or Excel through xlFree. Never
// assigned, all flags are clear.
//
// An alias stands for one element of an array of the add-in: assigned to, it replaces the element,
// in the form of the array. It is of no use once its array is assigned to or gone.
class CXlOper {
 public:
  CXlOper() = default;
  // A value as in the assignments below.
  template <XlPlain Value>
  CXlOper(const Value& value) {  // not explicit: plain values stand among arguments of calls
    Assign(value);
  }
  // Deep, of each valid form; the copy owns its contents.
  CXlOper(const CXlOper& other);
  CXlOper& operator=(const CXlOper& other);
  ~CXlOper();

  // A value of Excel's, such as an argument of a registered function. The record is copied, its
  // contents aren't: they have to outlive the result. A null pointer gives a value never assigned.
  static CXlOper Borrow(const XLOPER* record);
  static CXlOper Borrow(const XLOPER12* record);

  // Each assignment makes the new value, then releases the old one.
  template <XlPlain Value>
  CXlOper& operator=(const Value& value) {
    Assign(value);
    return *this;
  }
  void Assign(double number);
  void Assign(std::int32_t number);
  void Assign(std::same_as<bool> auto value) { AssignBool(value); }
  void Assign(XlError error);
  void Assign(XlMissing);
  void Assign(XlNil);
  // Texts change their width as the form asks for it, and are cut to 255 characters in an XLOPER.
  // More than 65535 throw CXlStringTooLongException. Null pointers are the empty text.
  void Assign(std::string_view text);
  void Assign(std::u16string_view text);
  void Assign(const char* text);
  void Assign(const char16_t* text);

  // Makes the value a row of two, each as in the assignments.
  void AssignPair(double first, std::string_view second) { PutPair(first, second); }
  void AssignPair(std::string_view first, std::string_view second) { PutPair(first, second); }

  // Makes the value an array, each element a copy of `init`, which has to be a scalar, an error or
  // nil; else this throws CXlIllegalArgumentException.
  // false: the size is 0 or beyond the limits of the form; the value is as it was.
  bool Resize(int rows, int columns, const CXlOper& init = XlNil{});

  // One element of an array; a scalar is its own element (0,0).
  // Throws CXlOutOfRangeException, CXlBadOperTypeException for other types, and
  // CXlIllegalArgumentException for a value never assigned.
  // The first gives an alias. An array that isn't the add-in's is made so by copying it before.
  // The second gives a value that borrows from this one.
  CXlOper Element(int row, int column);
  [[nodiscard]] CXlOper Element(int row, int column) const;
  // The element of an array of one row or one column. Throws CXlOutOfRangeException for others.
  [[nodiscard]] CXlOper ItemOfVector(int index) const;

  // Rows and columns of an array, or of a reference's first area.
  // false: the value has none; both are 0.
  bool GetDimensions(int& rows, int& columns, bool scalars_count_as_one = true) const;

  // The type word's code, such as xltypeNum; 0 for a value never assigned.
  [[nodiscard]] unsigned Type() const;
  [[nodiscard]] bool IsError() const { return Type() == xltypeErr; }
  [[nodiscard]] bool IsNil() const { return Type() == xltypeNil; }
  [[nodiscard]] bool IsRef() const { return Type() == xltypeRef || Type() == xltypeSRef; }
  [[nodiscard]] bool IsString() const { return Type() == xltypeStr; }
  [[nodiscard]] bool IsScalarOrVector() const;

  // As plain values; the rules stand in xloper_scalar.h. What doesn't convert throws
  // CXlConversionException, or gives 0.0, false, 0 or the empty text.
  [[nodiscard]] double ToDouble(bool throwing = false) const;
  [[nodiscard]] bool ToBool(bool throwing = false) const;
  [[nodiscard]] std::int32_t ToInt(bool throwing = false) const;
  [[nodiscard]] std::string ToText(bool throwing = false) const;
  [[nodiscard]] std::u16string ToWideText(bool throwing = false) const;

  // Asks Excel to convert to a type, such as xltypeRef, and gives the code of the call. An answer
  // of another type is xlretFailed.
  // into: may be this value itself, or null for the code alone.
  int Coerce(unsigned type, CXlOper* into) const;

  // The active cell as a reference. false: there is none, or it can't be told.
  bool GetActiveCell();

  // The formula in the cell that this refers to, or its constant as text.
  // local_text:  as the user's locale writes it.
  // array_flag:  the cell is part of an array formula.
  // to_a1:       A1 notation in place of R1C1.
  // false: this is no reference, or a call failed.
  bool GetFormula(bool local_text, CXlOper& formula, bool& array_flag, bool to_a1) const;
  // Writes a formula into the cells that this refers to.
  [[nodiscard]] bool SetFormula(bool local_text, const CXlOper& formula, bool as_array,
                                bool from_a1) const;

  // For those who pass values on.

  // The record of a form, null if that form isn't valid.
  template <XlRecord Record>
  [[nodiscard]] const Record* Get() const;
  // Takes over the result of a call of Excel, which is freed through xlFree.
  template <XlRecord Record>
  void TakeFromExcel(const Record& result);
  // Overwrites `record` with the value, converted if it is of the other form alone. Contents of
  // the add-in move over, and this value borrows them from then on; others are copied. What can't
  // be converted, or was never assigned, becomes the error #VALUE!.
  // true: `record` has contents, and whoever has `record` frees them.
  template <XlRecord Record>
  bool HandOver(Record& record);

 private:
  template <XlRecord Record>
  CXlOper(const Record& record, unsigned flags);
  template <XlRecord Record>
  explicit CXlOper(Record* alias);

  void AssignBool(bool value);
  // Calls `make` with an empty record of the form in which this value is made, and takes it.
  template <typename Make>
  void Fill(Make make);
  template <XlRecord Record>
  [[nodiscard]] const Record& RecordOf() const;
  template <XlRecord Record>
  Record& RecordOf();
  [[nodiscard]] bool IsAlias() const { return alias4_ != nullptr || alias12_ != nullptr; }
  [[nodiscard]] bool Makes12() const;

  // Gives contents back to where they came from. The value is then as if never assigned.
  void Release();
  template <XlRecord Record>
  void ReleaseForm();
  // Releases the old value; owns the contents of the new.
  template <XlRecord Record>
  void Put(const Record& record);
  template <XlRecord Record>
  void PutCopy(const CXlOper& other);
  template <typename First>
  void PutPair(First first, std::string_view second);
  template <XlRecord Record>
  bool PutArray(XlSize size, const CXlOper& init);
  template <XlRecord Record>
  CXlOper AliasOf(int row, int column);
  // Calls `action` with the record of the valid form, with null if there is none.
  template <typename Action>
  auto Visit(Action action) const;
  template <typename Plain>
  Plain ConvertTo(unsigned type_message, bool throwing) const;

  XLOPER record4_{};
  XLOPER12 record12_{};
  XLOPER* alias4_ = nullptr;  // in place of the record, in an alias
  XLOPER12* alias12_ = nullptr;
  std::uint16_t flags_ = 0;
};

}  // namespace quantiverse
