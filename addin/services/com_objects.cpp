#include "addin/services/com_objects.h"

namespace quantiverse {
namespace {

XlComStep InvokeByName(IXlDispatch& object, const char16_t* name, XlComInvocation invocation,
                       XlComValue* answer) {
  const XlComResult found = object.GetIdOfName(name, invocation.locale, invocation.member);
  if (ComFailed(found)) return {u"GetIDsOfNames", found};
  return {u"Invoke", object.Invoke(invocation, answer)};
}

}  // namespace

XlComStep GetComProperty(IXlDispatch& object, const char16_t* name, std::uint32_t locale,
                         XlComValue& value) {
  return InvokeByName(object, name,
                      {.member = 0, .locale = locale, .use = XlComUse::kGet, .arguments = {}},
                      &value);
}

XlComStep PutComProperty(IXlDispatch& object, const char16_t* name, const XlComValue& value) {
  return InvokeByName(
      object, name,
      {.member = 0, .locale = kUserLocale, .use = XlComUse::kPut, .arguments = {&value, 1}},
      nullptr);
}

bool BoolOf(const XlComValue& value) {
  const bool* const flag = std::get_if<bool>(&value);
  return flag != nullptr && *flag;
}

std::u16string TextOf(const XlComValue& value) {
  const auto* const text = std::get_if<std::u16string>(&value);
  return text != nullptr ? *text : std::u16string();
}

XlDispatchPtr ObjectOf(const XlComValue& value) {
  const auto* const object = std::get_if<XlDispatchPtr>(&value);
  return object != nullptr ? *object : nullptr;
}

XlComStep CallComMethod(IXlDispatch& object, const char16_t* name,
                        std::span<const XlComValue> arguments, bool* answer) {
  XlComValue value;
  const XlComStep step = InvokeByName(object, name,
                                      {.member = 0,
                                       .locale = kUserLocale,
                                       .use = XlComUse::kMethod,
                                       .arguments = arguments,
                                       .wants_bool = answer != nullptr},
                                      answer != nullptr ? &value : nullptr);
  if (answer != nullptr && !step.Failed()) *answer = BoolOf(value);
  return step;
}

XlComStep RunExcelMacroFromDisp(IXlDispatch& application, const std::u16string& text,
                                XlComValue& result) {
  const XlComValue argument = text;
  // The flag is that of a property, though it is a method: Excel takes either.
  return InvokeByName(
      application, u"ExecuteExcel4Macro",
      {.member = 0, .locale = kEnglishLocale, .use = XlComUse::kGet, .arguments = {&argument, 1}},
      &result);
}

std::u16string CXlComObject::Text(const char16_t* property) const {
  XlComValue value;
  if (object_ == nullptr) return {};
  return GetComProperty(*object_, property, kUserLocale, value).Failed() ? std::u16string()
                                                                         : TextOf(value);
}

}  // namespace quantiverse
