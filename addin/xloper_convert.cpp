#include "addin/xloper_convert.h"

#include <string>
#include <string_view>

#include "addin/host.h"

namespace quantiverse {
namespace {

bool FitsArea(const XLREF12& area) {
  const auto fits = [](std::int32_t index, int limit) { return index >= 0 && index < limit; };
  using Form = XlForm<XLOPER>;
  return fits(area.rwFirst, Form::kMaxRows) && fits(area.rwLast, Form::kMaxRows) &&
         fits(area.colFirst, Form::kMaxColumns) && fits(area.colLast, Form::kMaxColumns);
}

bool ConvertArea(const XLREF12& from, XLREF& to) {
  if (!FitsArea(from)) return false;
  to.rwFirst = static_cast<std::uint16_t>(from.rwFirst);
  to.rwLast = static_cast<std::uint16_t>(from.rwLast);
  to.colFirst = static_cast<std::uint8_t>(from.colFirst);
  to.colLast = static_cast<std::uint8_t>(from.colLast);
  return true;
}

bool ConvertArea(const XLREF& from, XLREF12& to) {
  to = {from.rwFirst, from.rwLast, from.colFirst, from.colLast};
  return true;
}

bool FitsArray(XlSize size, const XLOPER&) {
  return size.rows <= XlForm<XLOPER>::kMaxRows && size.columns <= XlForm<XLOPER>::kMaxColumns;
}
bool FitsArray(XlSize, const XLOPER12&) { return true; }

std::string OtherText(std::u16string_view text) { return NarrowText(text); }
std::u16string OtherText(std::string_view text) { return WideText(text); }

// Contents that nothing refers to yet are freed on every way out by the guard.
template <XlRecord From, XlRecord To>
bool ConvertArray(const From& from, To& to) {
  const XlSize size = SizeOf(from);
  if (!FitsArray(size, to)) return false;
  RecordGuard<To> made;
  MakeArray(size, made.record);
  for (std::size_t i = 0; i < ElementCount(from); ++i) {
    if (!ConvertRecord(from.val.array.lparray[i], made.record.val.array.lparray[i])) return false;
  }
  to = made.Release();
  return true;
}

template <XlRecord From, XlRecord To>
bool ConvertAreas(const From& from, To& to) {
  const auto* const areas = from.val.mref.lpmref;
  const std::uint16_t count = areas != nullptr ? areas->count : std::uint16_t{0};
  RecordGuard<To> made;
  MakeAreas(count, from.val.mref.idSheet, made.record);
  if (count != 0) {
    const typename XlForm<From>::Area* const source = areas->reflct;
    typename XlForm<To>::Area* const target = made.record.val.mref.lpmref->reflct;
    for (std::uint16_t i = 0; i < count; ++i) {
      if (!ConvertArea(source[i], target[i])) return false;
    }
  }
  to = made.Release();
  return true;
}

// Types that are alike in both forms.
template <XlRecord From, XlRecord To>
bool ConvertPlain(const From& from, To& to) {
  SetType(to, TypeOf(from));
  switch (TypeOf(from)) {
    case xltypeNum:
      MakeNumber(from.val.num, to);
      return true;
    case xltypeBool:
      MakeBool(from.val.xbool != 0, to);
      return true;
    case xltypeErr:
      to.val.err = static_cast<decltype(to.val.err)>(from.val.err);
      return true;
    case xltypeInt:
      MakeInteger(from.val.w, to);
      return true;
    case xltypeBigData:
      to.val.bigdata.h.hdata = from.val.bigdata.h.hdata;
      to.val.bigdata.cbData = from.val.bigdata.cbData;
      return true;
    case xltypeMissing:
    case xltypeNil:
      return true;
    default:
      to = {};
      return false;
  }
}

template <XlRecord From, XlRecord To>
bool Convert(const From& from, To& to) {
  to = {};
  switch (TypeOf(from)) {
    case xltypeStr:
      MakeText(OtherText(TextOf(from)), to);
      return true;
    case xltypeMulti:
      return ConvertArray(from, to);
    case xltypeRef:
      return ConvertAreas(from, to);
    case xltypeSRef:
      if (!ConvertArea(from.val.sref.ref, to.val.sref.ref)) return false;
      to.val.sref.count = 1;
      SetType(to, xltypeSRef);
      return true;
    default:
      return ConvertPlain(from, to);
  }
}

}  // namespace

bool ConvertRecord(const XLOPER12& from, XLOPER& to) { return Convert(from, to); }

bool ConvertRecord(const XLOPER& from, XLOPER12& to) {
  if (!Convert(from, to)) MakeError(XlError::kValue, to);
  return true;
}

}  // namespace quantiverse
