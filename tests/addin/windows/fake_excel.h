#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <iterator>
#include <map>
#include <string>
#include <variant>
#include <vector>

#include "addin/windows/com_pointer.h"
#include "addin/windows/com_sink.h"

namespace quantiverse {

using Property = std::variant<std::monostate, bool, std::u16string, IDispatch*>;

// An object of Excel's, with properties that it holds no references for; as an Application it
// also runs macros and tells of events.
class FakeObject final : public IDispatch,
                         public IConnectionPointContainer,
                         public IConnectionPoint {
 public:
  ~FakeObject() { EXPECT_EQ(references, 1U); }

  std::map<std::u16string, Property> properties;
  std::function<void(const std::u16string& text)> on_macro_text = [](const std::u16string&) {};
  std::function<bool(DISPPARAMS& parameters)> on_run = [](DISPPARAMS&) { return false; };
  HRESULT advise_result = S_OK;
  ULONG references = 1;
  ComPointer<IDispatch> sink;

  // IUnknown
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
    *object = nullptr;
    if (iid == IID_IUnknown || iid == IID_IDispatch) *object = static_cast<IDispatch*>(this);
    if (iid == IID_IConnectionPointContainer)
      *object = static_cast<IConnectionPointContainer*>(this);
    if (*object == nullptr) return E_NOINTERFACE;
    AddRef();
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references; }
  ULONG STDMETHODCALLTYPE Release() override { return --references; }

  // IDispatch
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID,
                                          DISPID* id) override {
    const std::u16string name = AsUtf16(*names);
    if (!properties.contains(name)) return DISP_E_UNKNOWNNAME;
    *id = static_cast<DISPID>(std::distance(properties.begin(), properties.find(name)));
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* parameters,
                                   VARIANT* result, EXCEPINFO*, UINT*) override {
    auto& [name, value] = *std::next(properties.begin(), id);
    if (name == u"Run") return AnswerBool(on_run(*parameters), result);
    if (name == u"ExecuteExcel4Macro") {
      on_macro_text(TextOfBstr(V_BSTR(&parameters->rgvarg[0])));
      return S_OK;
    }
    if (flags == DISPATCH_PROPERTYGET) return Get(value, *result);
    EXPECT_EQ(flags, DISPATCH_PROPERTYPUT);
    if (parameters->cNamedArgs != 1) return DISP_E_PARAMNOTOPTIONAL;
    EXPECT_EQ(parameters->rgdispidNamedArgs[0], DISPID_PROPERTYPUT);
    return Put(parameters->rgvarg[0], value);
  }

  // The way of the sink.
  HRESULT STDMETHODCALLTYPE EnumConnectionPoints(IEnumConnectionPoints**) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE FindConnectionPoint(REFIID iid, IConnectionPoint** point) override {
    if (iid != kAppEvents) return E_NOINTERFACE;
    AddRef();
    *point = this;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetConnectionInterface(IID*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetConnectionPointContainer(IConnectionPointContainer**) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE EnumConnections(IEnumConnections**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE Advise(IUnknown* unknown, DWORD* cookie) override {
    if (FAILED(advise_result)) return advise_result;
    *cookie = 42;
    return unknown->QueryInterface(kAppEvents, sink.ReceiveVoid());
  }
  HRESULT STDMETHODCALLTYPE Unadvise(DWORD cookie) override {
    EXPECT_EQ(cookie, 42U);
    sink = {};
    return S_OK;
  }

 private:
  static HRESULT AnswerBool(bool answer, VARIANT* result) {
    if (result == nullptr) return S_OK;
    V_VT(result) = VT_I4;  // to be coerced
    V_I4(result) = answer ? 5 : 0;
    return S_OK;
  }
  static HRESULT Get(const Property& value, VARIANT& result) {
    if (const auto* flag = std::get_if<bool>(&value)) {
      V_VT(&result) = VT_BOOL;
      V_BOOL(&result) = *flag ? VARIANT_TRUE : VARIANT_FALSE;
    } else if (const auto* text = std::get_if<std::u16string>(&value)) {
      V_VT(&result) = VT_BSTR;
      V_BSTR(&result) = SysAllocString(AsWide(text->c_str()));
    } else if (const auto* object = std::get_if<IDispatch*>(&value)) {
      V_VT(&result) = VT_DISPATCH;
      V_DISPATCH(&result) = *object;
      (*object)->AddRef();
    }
    return S_OK;
  }
  static HRESULT Put(const VARIANT& variant, Property& value) {
    if (V_VT(&variant) == VT_BOOL) value = V_BOOL(&variant) == VARIANT_TRUE;
    if (V_VT(&variant) == VT_BSTR) value = TextOfBstr(V_BSTR(&variant));
    return S_OK;
  }
};

// Arguments of an event or a macro, the first one first.
class Variants {
 public:
  void Add(IDispatch* object) {
    VARIANT& variant = Front(VT_DISPATCH);
    V_DISPATCH(&variant) = object;
  }
  void Add(bool flag) {
    VARIANT& variant = Front(VT_BOOL);
    V_BOOL(&variant) = flag ? VARIANT_TRUE : VARIANT_FALSE;
  }
  void Add(VARIANT_BOOL* flag) {
    VARIANT& variant = Front(VT_BOOL | VT_BYREF);
    V_BOOLREF(&variant) = flag;
  }
  DISPPARAMS Parameters() {
    return {variants_.data(), nullptr, static_cast<UINT>(variants_.size()), 0};
  }

 private:
  VARIANT& Front(int type) {
    VARIANT& variant = *variants_.insert(variants_.begin(), VARIANT{});
    V_VT(&variant) = static_cast<VARTYPE>(type);
    return variant;
  }
  std::vector<VARIANT> variants_;
};

inline IUnknown* Plain(FakeObject& object) { return static_cast<IDispatch*>(&object); }

}  // namespace quantiverse
