#pragma once

#include <string>
#include <utility>

#include "addin/services/com_system.h"

// What is done with Excel's objects: two calls each, GetIDsOfNames and Invoke, of which the steps
// tell the last.
namespace quantiverse {

XlComStep GetComProperty(IXlDispatch& object, const char16_t* name, std::uint32_t locale,
                         XlComValue& value);
XlComStep PutComProperty(IXlDispatch& object, const char16_t* name, const XlComValue& value);
// As above; one that is no bool, no text or no object is what doesn't convert: false, the empty
// text, null.
bool BoolOf(const XlComValue& value);
std::u16string TextOf(const XlComValue& value);
XlDispatchPtr ObjectOf(const XlComValue& value);

// answer: null for one that nobody wants; else it is coerced to a bool, and one that can't be is a
//         failed Invoke.
XlComStep CallComMethod(IXlDispatch& object, const char16_t* name,
                        std::span<const XlComValue> arguments, bool* answer);

// Has an application run a text of the macro language.
XlComStep RunExcelMacroFromDisp(IXlDispatch& application, const std::u16string& text,
                                XlComValue& result);

// A workbook, a sheet or a range of Excel's.
class CXlComObject final : public IXlComObject {
 public:
  explicit CXlComObject(XlDispatchPtr object) : object_(std::move(object)) {}

  [[nodiscard]] std::u16string Name() const override { return Text(u"Name"); }
  [[nodiscard]] std::u16string AddressLocal() const override { return Text(u"AddressLocal"); }

 private:
  [[nodiscard]] std::u16string Text(const char16_t* property) const;

  XlDispatchPtr object_;
};

}  // namespace quantiverse
