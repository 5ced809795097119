#include "addin/windows/wizard_function_name.h"

#include <oleacc.h>
#include <oleauto.h>

#include <memory>

#include "addin/host.h"

namespace quantiverse {
namespace {

// The elements that show the name: a version of Excel has it in the one or the other.
constexpr long kNameElements[] = {18, 20};

struct Release {
  void operator()(IUnknown* object) const { object->Release(); }
};
using Accessible = std::unique_ptr<IAccessible, Release>;

VARIANT ElementNumber(long number) {
  VARIANT element;
  VariantInit(&element);
  element.vt = VT_I4;
  element.lVal = number;
  return element;
}

std::optional<std::string> ValueOf(IAccessible& parent, long number) {
  BSTR value = nullptr;
  if (parent.get_accValue(ElementNumber(number), &value) != S_OK || value == nullptr) {
    return std::nullopt;
  }
  const std::string text = NarrowText({AsUtf16(value), SysStringLen(value)});
  SysFreeString(value);
  return text;
}

// An element is an object of its own, or just a number.
Accessible ElementObject(IAccessible& dialog, long number) {
  IDispatch* object = nullptr;
  if (dialog.get_accChild(ElementNumber(number), &object) != S_OK || object == nullptr) return {};
  IAccessible* accessible = nullptr;
  if (FAILED(object->QueryInterface(IID_IAccessible, reinterpret_cast<void**>(&accessible)))) {
    accessible = nullptr;
  }
  object->Release();
  return Accessible(accessible);
}

std::optional<std::string> NameFrom(IAccessible& dialog, long number) {
  const Accessible object = ElementObject(dialog, number);
  return object != nullptr ? ValueOf(*object, CHILDID_SELF) : ValueOf(dialog, number);
}

}  // namespace

std::optional<std::string> FunctionNameIn(HWND dialog) {
  void* found = nullptr;
  const HRESULT result =
      AccessibleObjectFromWindow(dialog, static_cast<DWORD>(OBJID_WINDOW), IID_IAccessible, &found);
  if (FAILED(result) || found == nullptr) return std::nullopt;
  const Accessible accessible(static_cast<IAccessible*>(found));
  for (const long number : kNameElements) {
    if (const auto name = NameFrom(*accessible, number)) return name;
  }
  return std::nullopt;
}

}  // namespace quantiverse
