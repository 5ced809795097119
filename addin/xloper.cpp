#include "addin/xloper.h"

#include <algorithm>
#include <type_traits>

#include "addin/addin_state.h"
#include "addin/excel_call.h"
#include "addin/exceptions.h"
#include "addin/xloper_convert.h"
#include "addin/xloper_scalar.h"

namespace quantiverse {
namespace {

template <XlRecord Record>
using OtherForm = std::conditional_t<std::same_as<Record, XLOPER>, XLOPER12, XLOPER>;

void MakeAnyText(std::string_view text, XLOPER& record) { MakeText(text, record); }
void MakeAnyText(std::string_view text, XLOPER12& record) {
  // Nearly all texts are, and need no code page.
  if (!MakeAsciiText(text, record)) MakeText(WideText(text), record);
}
void MakeAnyText(std::u16string_view text, XLOPER& record) { MakeText(NarrowText(text), record); }
void MakeAnyText(std::u16string_view text, XLOPER12& record) { MakeText(text, record); }

template <XlRecord Record>
void MakePlain(double number, Record& record) {
  MakeNumber(number, record);
}
template <XlRecord Record>
void MakePlain(std::string_view text, Record& record) {
  MakeAnyText(text, record);
}

// false: never assigned, or it has no place in this form.
template <XlRecord Record>
bool CopyInForm(const CXlOper& from, Record& to) {
  if (const auto* same = from.Get<Record>()) return ConvertRecord(*same, to);
  const auto* const other = from.Get<OtherForm<Record>>();
  return other != nullptr && ConvertRecord(*other, to);
}

template <XlRecord Record>
const Record& FindElement(const Record* value, int row, int column) {
  if (value == nullptr) throw CXlIllegalArgumentException();
  const bool is_array = TypeOf(*value) == xltypeMulti;
  if (!is_array && !IsScalarType(TypeOf(*value))) throw CXlBadOperTypeException();
  const XlSize size = is_array ? SizeOf(*value) : XlSize{1, 1};
  using Form = XlForm<Record>;
  if (row < 0 || row >= size.rows || row >= Form::kMaxRows || column < 0 ||
      column >= size.columns || column >= Form::kMaxColumns) {
    throw CXlOutOfRangeException();
  }
  if (!is_array) return *value;
  return value->val.array
      .lparray[static_cast<std::size_t>(row) * static_cast<std::size_t>(size.columns) +
               static_cast<std::size_t>(column)];
}

template <XlRecord Record>
XlSize SizeOfArea(const typename XlForm<Record>::Area& area) {
  using Form = XlForm<Record>;
  const auto is_range = [](int first, int last, int limit) {
    return first >= 0 && first <= last && last < limit;
  };
  if (!is_range(area.rwFirst, area.rwLast, Form::kMaxRows)) return {};
  if (!is_range(area.colFirst, area.colLast, Form::kMaxColumns)) return {};
  return {area.rwLast - area.rwFirst + 1, area.colLast - area.colFirst + 1};
}

}  // namespace

// Records and flags

template <XlRecord Record>
CXlOper::CXlOper(const Record& record, unsigned flags) : flags_(static_cast<std::uint16_t>(flags)) {
  RecordOf<Record>() = record;
}

template <XlRecord Record>
CXlOper::CXlOper(Record* alias) : flags_(XlForm<Record>::kValid | XlForm<Record>::kOwned) {
  if constexpr (std::same_as<Record, XLOPER>) {
    alias4_ = alias;
  } else {
    alias12_ = alias;
  }
}

template <XlRecord Record>
const Record& CXlOper::RecordOf() const {
  if constexpr (std::same_as<Record, XLOPER>) {
    return alias4_ != nullptr ? *alias4_ : record4_;
  } else {
    return alias12_ != nullptr ? *alias12_ : record12_;
  }
}

template <XlRecord Record>
Record& CXlOper::RecordOf() {
  return const_cast<Record&>(static_cast<const CXlOper*>(this)->RecordOf<Record>());
}

template <XlRecord Record>
const Record* CXlOper::Get() const {
  return (flags_ & XlForm<Record>::kValid) != 0 ? &RecordOf<Record>() : nullptr;
}

bool CXlOper::Makes12() const { return IsAlias() ? alias12_ != nullptr : IsExcel12(); }

template <typename Action>
auto CXlOper::Visit(Action action) const {
  if (const auto* record = Get<XLOPER12>()) return action(record);
  return action(Get<XLOPER>());
}

template <XlRecord Record>
void CXlOper::ReleaseForm() {
  if ((flags_ & XlForm<Record>::kExcels) != 0) {
    FreeExcelResult(RecordOf<Record>());
  } else if ((flags_ & XlForm<Record>::kOwned) != 0) {
    FreeContents(RecordOf<Record>());
  }
}

void CXlOper::Release() {
  constexpr unsigned kHasToBeFreed = XlForm<XLOPER>::kOwned | XlForm<XLOPER>::kExcels |
                                     XlForm<XLOPER12>::kOwned | XlForm<XLOPER12>::kExcels;
  if ((flags_ & kHasToBeFreed) != 0) {
    ReleaseForm<XLOPER>();
    ReleaseForm<XLOPER12>();
  }
  flags_ = 0;
}

template <XlRecord Record>
void CXlOper::Put(const Record& record) {
  using Form = XlForm<Record>;
  Release();
  RecordOf<Record>() = record;
  // Another alias of the same element may put a text in its place, so each owns what it finds.
  const bool owns = IsAlias() || HasContents(TypeOf(record));
  flags_ = owns ? Form::kValid | Form::kOwned : Form::kValid;
}

// An alias isn't the home of its element.
CXlOper::~CXlOper() {
  if (!IsAlias()) Release();
}

// Making values

CXlOper CXlOper::Borrow(const XLOPER* record) {
  if (record == nullptr) return {};
  return {*record, XlForm<XLOPER>::kValid};
}

CXlOper CXlOper::Borrow(const XLOPER12* record) {
  if (record == nullptr) return {};
  return {*record, XlForm<XLOPER12>::kValid};
}

CXlOper::CXlOper(const CXlOper& other) { *this = other; }

template <XlRecord Record>
void CXlOper::PutCopy(const CXlOper& other) {
  Record copy{};
  if (!CopyInForm(other, copy)) throw CXlBadOperTypeException();
  Put(copy);
}

CXlOper& CXlOper::operator=(const CXlOper& other) {
  if (this == &other) return *this;
  if (other.Type() == 0) {
    if (IsAlias()) return *this = XlNil{};  // an element can't be nothing
    Release();
  } else if (IsAlias() ? Makes12() : other.Get<XLOPER12>() != nullptr) {
    PutCopy<XLOPER12>(other);
  } else {
    PutCopy<XLOPER>(other);
  }
  return *this;
}

template <typename Make>
void CXlOper::Fill(Make make) {
  if (Makes12()) {
    XLOPER12 record{};
    make(record);
    Put(record);
  } else {
    XLOPER record{};
    make(record);
    Put(record);
  }
}

void CXlOper::Assign(double number) {
  Fill([number](auto& record) { MakeNumber(number, record); });
}

void CXlOper::Assign(std::int32_t number) {
  Fill([number](auto& record) { MakeInteger(number, record); });
}

void CXlOper::AssignBool(bool value) {
  Fill([value](auto& record) { MakeBool(value, record); });
}

void CXlOper::Assign(XlError error) {
  Fill([error](auto& record) { MakeError(error, record); });
}

void CXlOper::Assign(XlMissing) {
  Fill([](auto& record) { SetType(record, xltypeMissing); });
}

void CXlOper::Assign(XlNil) {
  Fill([](auto& record) { SetType(record, xltypeNil); });
}

void CXlOper::Assign(std::string_view text) {
  Fill([text](auto& record) { MakeAnyText(text, record); });
}

void CXlOper::Assign(std::u16string_view text) {
  Fill([text](auto& record) { MakeAnyText(text, record); });
}

void CXlOper::Assign(const char* text) {
  Assign(text != nullptr ? std::string_view(text) : std::string_view());
}

void CXlOper::Assign(const char16_t* text) {
  Assign(text != nullptr ? std::u16string_view(text) : std::u16string_view());
}

// Arrays

template <typename First>
void CXlOper::PutPair(First first, std::string_view second) {
  Fill([=]<XlRecord Record>(Record& record) {
    RecordGuard<Record> row;
    MakeArray({1, 2}, row.record);
    MakePlain(first, row.record.val.array.lparray[0]);
    MakePlain(second, row.record.val.array.lparray[1]);
    record = row.Release();
  });
}
template void CXlOper::PutPair(double, std::string_view);
template void CXlOper::PutPair(std::string_view, std::string_view);

template <XlRecord Record>
bool CXlOper::PutArray(XlSize size, const CXlOper& init) {
  using Form = XlForm<Record>;
  if (size.rows < 1 || size.rows > Form::kMaxRows) return false;
  if (size.columns < 1 || size.columns > Form::kMaxColumns) return false;
  RecordGuard<Record> array;
  MakeArray(size, array.record);
  const std::size_t count = ElementCount(array.record);
  for (std::size_t i = 0; i < count; ++i) {
    CopyInForm(init, array.record.val.array.lparray[i]);
  }
  Put(array.Release());
  return true;
}

bool CXlOper::Resize(int rows, int columns, const CXlOper& init) {
  if (!IsScalarType(init.Type()) && !init.IsError() && !init.IsNil()) {
    throw CXlIllegalArgumentException(kMessageSourceNotScalar);
  }
  const XlSize size{rows, columns};
  return Makes12() ? PutArray<XLOPER12>(size, init) : PutArray<XLOPER>(size, init);
}

// The element can only be given its own contents if the whole array is the add-in's. The owner's
// flag is set for a scalar too, since its alias may put a text in its place.
template <XlRecord Record>
CXlOper CXlOper::AliasOf(int row, int column) {
  using Form = XlForm<Record>;
  if ((flags_ & Form::kOwned) == 0) {
    FindElement(Get<Record>(), row, column);
    *this = CXlOper(*this);
  }
  flags_ |= Form::kOwned;
  // The record is this value's own or in its array. NOLINTNEXTLINE(*-const-cast)
  return CXlOper(const_cast<Record*>(&FindElement(Get<Record>(), row, column)));
}

CXlOper CXlOper::Element(int row, int column) {
  return Get<XLOPER12>() != nullptr ? AliasOf<XLOPER12>(row, column) : AliasOf<XLOPER>(row, column);
}

CXlOper CXlOper::Element(int row, int column) const {
  return Visit([=](const auto* record) { return Borrow(&FindElement(record, row, column)); });
}

CXlOper CXlOper::ItemOfVector(int index) const {
  int rows = 0;
  int columns = 0;
  GetDimensions(rows, columns);
  if (rows != 1 && columns != 1) throw CXlOutOfRangeException();
  return rows == 1 ? Element(0, index) : Element(index, 0);
}

bool CXlOper::GetDimensions(int& rows, int& columns, bool scalars_count_as_one) const {
  const XlSize size = Visit([=]<XlRecord Record>(const Record* record) -> XlSize {
    if (record == nullptr) return {};
    switch (TypeOf(*record)) {
      case xltypeMulti:
        return SizeOf(*record);
      case xltypeSRef:
        return SizeOfArea<Record>(record->val.sref.ref);
      case xltypeRef: {
        const auto* const areas = record->val.mref.lpmref;
        return areas != nullptr && areas->count != 0 ? SizeOfArea<Record>(areas->reflct[0])
                                                     : XlSize{};
      }
      default:
        return scalars_count_as_one && IsScalarType(TypeOf(*record)) ? XlSize{1, 1} : XlSize{};
    }
  });
  rows = size.rows;
  columns = size.columns;
  return rows != 0 && columns != 0;
}

unsigned CXlOper::Type() const {
  return Visit([](const auto* record) { return record != nullptr ? TypeOf(*record) : 0U; });
}

bool CXlOper::IsScalarOrVector() const {
  int rows = 0;
  int columns = 0;
  return GetDimensions(rows, columns) && (rows == 1 || columns == 1);
}

// Plain values

template <typename Plain>
Plain CXlOper::ConvertTo(unsigned type_message, bool throwing) const {
  Plain plain{};
  const bool converted =
      Visit([&plain](const auto* record) { return record != nullptr && ToPlain(*record, plain); });
  if (!converted && throwing) throw CXlConversionException(type_message);
  return plain;
}

double CXlOper::ToDouble(bool throwing) const {
  return ConvertTo<double>(kMessageNumber, throwing);
}
bool CXlOper::ToBool(bool throwing) const { return ConvertTo<bool>(kMessageBoolean, throwing); }
std::int32_t CXlOper::ToInt(bool throwing) const {
  return ConvertTo<std::int32_t>(kMessageNumber, throwing);
}
std::string CXlOper::ToText(bool throwing) const {
  return ConvertTo<std::string>(kMessageString, throwing);
}
std::u16string CXlOper::ToWideText(bool throwing) const {
  return ConvertTo<std::u16string>(kMessageString, throwing);
}

// Passing on

template <XlRecord Record>
void CXlOper::TakeFromExcel(const Record& result) {
  using Form = XlForm<Record>;
  if (IsAlias()) {
    // Excel's contents can't stand in an array of ours.
    *this = CXlOper(result, Form::kValid | Form::kExcels);
    return;
  }
  Release();
  RecordOf<Record>() = result;
  flags_ = Form::kValid | Form::kExcels;
}

template <XlRecord Record>
bool CXlOper::HandOver(Record& record) {
  using Form = XlForm<Record>;
  if (Get<Record>() == nullptr) {
    if (!CopyInForm(*this, record)) MakeError(XlError::kValue, record);
    return HasContents(TypeOf(record));
  }
  if ((flags_ & Form::kExcels) != 0 || IsAlias()) {
    CopyRecord(*Get<Record>(), record);
    return HasContents(TypeOf(record));
  }
  record = *Get<Record>();
  SetType(record, TypeOf(record));
  const bool owned = (flags_ & Form::kOwned) != 0;
  flags_ &= static_cast<std::uint16_t>(~Form::kOwned);
  return owned && HasContents(TypeOf(record));
}

template const XLOPER* CXlOper::Get() const;
template const XLOPER12* CXlOper::Get() const;
template void CXlOper::TakeFromExcel(const XLOPER&);
template void CXlOper::TakeFromExcel(const XLOPER12&);
template bool CXlOper::HandOver(XLOPER&);
template bool CXlOper::HandOver(XLOPER12&);

}  // namespace quantiverse
