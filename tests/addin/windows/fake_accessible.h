#pragma once

// The second needs the first.
// clang-format off
#include "addin/windows/windows.h"
#include <oleacc.h>
// clang-format on

#include <functional>
#include <string>

namespace quantiverse {

// An accessible object that knows values of numbered elements and nothing else.
class FakeAccessible : public IAccessible {
 public:
  // Null for an element without a value, or without an object of its own.
  std::function<const wchar_t*(long)> value = [](long) { return nullptr; };
  std::function<IAccessible*(long)> child = [](long) { return nullptr; };
  long references = 1;  // this is no object on the heap

  HRESULT WINAPI QueryInterface(REFIID id, void** object) override {
    const bool is_known = id == IID_IUnknown || id == IID_IDispatch || id == IID_IAccessible;
    *object = is_known ? this : nullptr;
    if (is_known) AddRef();
    return is_known ? S_OK : E_NOINTERFACE;
  }
  ULONG WINAPI AddRef() override { return static_cast<ULONG>(++references); }
  ULONG WINAPI Release() override { return static_cast<ULONG>(--references); }

  HRESULT WINAPI get_accValue(VARIANT element, BSTR* text) override {
    const wchar_t* const known = value(element.lVal);
    *text = known != nullptr ? SysAllocString(known) : nullptr;
    return known != nullptr ? S_OK : DISP_E_MEMBERNOTFOUND;
  }
  HRESULT WINAPI get_accChild(VARIANT element, IDispatch** object) override {
    IAccessible* const known = child(element.lVal);
    *object = known;
    if (known != nullptr) known->AddRef();
    return known != nullptr ? S_OK : S_FALSE;
  }

  // What nobody asks for.
  using Text = BSTR*;
  HRESULT WINAPI GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
  HRESULT WINAPI GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  HRESULT WINAPI GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
    return E_NOTIMPL;
  }
  HRESULT WINAPI Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*,
                        UINT*) override {
    return E_NOTIMPL;
  }
  HRESULT WINAPI get_accParent(IDispatch**) override { return E_NOTIMPL; }
  HRESULT WINAPI get_accChildCount(long*) override { return E_NOTIMPL; }
  HRESULT WINAPI get_accName(VARIANT, Text) override { return E_NOTIMPL; }
  HRESULT WINAPI get_accDescription(VARIANT, Text) override { return E_NOTIMPL; }
  HRESULT WINAPI get_accRole(VARIANT, VARIANT*) override { return E_NOTIMPL; }
  HRESULT WINAPI get_accState(VARIANT, VARIANT*) override { return E_NOTIMPL; }
  HRESULT WINAPI get_accHelp(VARIANT, Text) override { return E_NOTIMPL; }
  HRESULT WINAPI get_accHelpTopic(Text, VARIANT, long*) override { return E_NOTIMPL; }
  HRESULT WINAPI get_accKeyboardShortcut(VARIANT, Text) override { return E_NOTIMPL; }
  HRESULT WINAPI get_accFocus(VARIANT*) override { return E_NOTIMPL; }
  HRESULT WINAPI get_accSelection(VARIANT*) override { return E_NOTIMPL; }
  HRESULT WINAPI get_accDefaultAction(VARIANT, Text) override { return E_NOTIMPL; }
  HRESULT WINAPI accSelect(long, VARIANT) override { return E_NOTIMPL; }
  HRESULT WINAPI accLocation(long*, long*, long*, long*, VARIANT) override { return E_NOTIMPL; }
  HRESULT WINAPI accNavigate(long, VARIANT, VARIANT*) override { return E_NOTIMPL; }
  HRESULT WINAPI accHitTest(long, long, VARIANT*) override { return E_NOTIMPL; }
  HRESULT WINAPI accDoDefaultAction(VARIANT) override { return E_NOTIMPL; }
  HRESULT WINAPI put_accName(VARIANT, BSTR) override { return E_NOTIMPL; }
  HRESULT WINAPI put_accValue(VARIANT, BSTR) override { return E_NOTIMPL; }
};

}  // namespace quantiverse
