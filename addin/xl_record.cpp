#include "addin/xl_record.h"

#include <algorithm>
#include <limits>
#include <memory>
#include <new>

#include "addin/exceptions.h"

namespace quantiverse {
namespace {

// The characters behind a new length.
template <XlRecord Record, typename Text>
void MakeCounted(Text text, Record& record) {
  using Char = typename XlForm<Record>::Char;
  if (text.size() > XlForm<Record>::kMaxText) throw CXlStringTooLongException();
  auto counted = std::make_unique_for_overwrite<Char[]>(text.size() + 1);
  counted[0] = static_cast<Char>(text.size());
  std::copy(text.begin(), text.end(), counted.get() + 1);
  record = {};
  record.val.str = counted.release();
  SetType(record, xltypeStr);
}

template <XlRecord Record>
void CopyAreas(const Record& from, Record& to) {
  const auto* const areas = from.val.mref.lpmref;
  MakeAreas(areas != nullptr ? areas->count : std::uint16_t{0}, from.val.mref.idSheet, to);
  if (areas == nullptr) return;
  const typename XlForm<Record>::Area* const first = areas->reflct;
  std::copy(first, first + areas->count,
            static_cast<typename XlForm<Record>::Area*>(to.val.mref.lpmref->reflct));
}

}  // namespace

std::string_view TextOf(const XLOPER& record) {
  const char* const text = record.val.str;
  if (text == nullptr) return {};
  return {text + 1, static_cast<unsigned char>(text[0])};
}

std::u16string_view TextOf(const XLOPER12& record) {
  const char16_t* const text = record.val.str;
  if (text == nullptr) return {};
  return {text + 1, text[0]};
}

XlSize SizeOf(const XLOPER& record) {
  const auto& array = record.val.array;
  if (array.lparray == nullptr || array.columns == 0) return {};
  return {array.rows != 0 ? array.rows : XlForm<XLOPER>::kMaxRows, array.columns};
}

XlSize SizeOf(const XLOPER12& record) {
  const auto& array = record.val.array;
  if (array.lparray == nullptr || array.rows <= 0 || array.columns <= 0) return {};
  return {array.rows, array.columns};
}

void MakeText(std::string_view text, XLOPER& record) {
  MakeCounted(text.substr(0, XlForm<XLOPER>::kMaxText), record);
}

void MakeText(std::u16string_view text, XLOPER12& record) { MakeCounted(text, record); }

bool MakeAsciiText(std::string_view text, XLOPER12& record) {
  if (text.size() > XlForm<XLOPER12>::kMaxText) throw CXlStringTooLongException();
  auto counted = std::make_unique_for_overwrite<char16_t[]>(text.size() + 1);
  char16_t* place = counted.get();
  *place++ = static_cast<char16_t>(text.size());
  unsigned all_bits = 0;
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    all_bits |= byte;
    *place++ = byte;
  }
  if (all_bits >= 0x80) return false;
  record = {};
  record.val.str = counted.release();
  SetType(record, xltypeStr);
  return true;
}

template <XlRecord Record>
void MakeArray(XlSize size, Record& record) {
  const auto count =
      static_cast<std::uint64_t>(size.rows) * static_cast<std::uint64_t>(size.columns);
  // The limits of an XLOPER12 are beyond 32 bits.
  if (count > std::numeric_limits<std::size_t>::max()) throw std::bad_alloc();
  auto elements = std::make_unique<Record[]>(static_cast<std::size_t>(count));
  record = {};
  auto& array = record.val.array;
  array.lparray = elements.release();
  array.rows = static_cast<decltype(array.rows)>(size.rows);
  array.columns = static_cast<decltype(array.columns)>(size.columns);
  SetType(record, xltypeMulti);
}

template <XlRecord Record>
void MakeAreas(std::uint16_t count, IDSHEET sheet, Record& record) {
  using Areas = typename XlForm<Record>::Areas;
  const std::size_t bytes = std::max(
      sizeof(Areas), offsetof(Areas, reflct) + count * sizeof(typename XlForm<Record>::Area));
  auto memory = std::make_unique<unsigned char[]>(bytes);
  record = {};
  record.val.mref.lpmref = reinterpret_cast<Areas*>(memory.release());
  record.val.mref.lpmref->count = count;
  record.val.mref.idSheet = sheet;
  SetType(record, xltypeRef);
}

template <XlRecord Record>
void CopyRecord(const Record& from, Record& to) {
  switch (TypeOf(from)) {
    case xltypeStr:
      MakeText(TextOf(from), to);
      return;
    case xltypeRef:
      CopyAreas(from, to);
      return;
    case xltypeMulti: {
      RecordGuard<Record> copy;
      MakeArray(SizeOf(from), copy.record);
      const std::size_t count = ElementCount(from);
      for (std::size_t i = 0; i < count; ++i) {
        CopyRecord(from.val.array.lparray[i], copy.record.val.array.lparray[i]);
      }
      to = copy.Release();
      return;
    }
    default:
      to = from;
      SetType(to, TypeOf(from));
  }
}

template <XlRecord Record>
void FreeContents(Record& record) {
  switch (TypeOf(record)) {
    case xltypeStr:
      std::unique_ptr<typename XlForm<Record>::Char[]>(record.val.str).reset();
      break;
    case xltypeRef:
      std::unique_ptr<unsigned char[]>(reinterpret_cast<unsigned char*>(record.val.mref.lpmref))
          .reset();
      break;
    case xltypeMulti: {
      const std::size_t count = ElementCount(record);
      for (std::size_t i = 0; i < count; ++i) FreeContents(record.val.array.lparray[i]);
      std::unique_ptr<Record[]>(record.val.array.lparray).reset();
      break;
    }
    default:
      break;
  }
  record = {};
}

template void MakeArray(XlSize, XLOPER&);
template void MakeArray(XlSize, XLOPER12&);
template void MakeAreas(std::uint16_t, IDSHEET, XLOPER&);
template void MakeAreas(std::uint16_t, IDSHEET, XLOPER12&);
template void CopyRecord(const XLOPER&, XLOPER&);
template void CopyRecord(const XLOPER12&, XLOPER12&);
template void FreeContents(XLOPER&);
template void FreeContents(XLOPER12&);

}  // namespace quantiverse
