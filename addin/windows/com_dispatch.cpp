#include "addin/windows/com_dispatch.h"

#include <vector>

#include "addin/windows/com_sink.h"

namespace quantiverse {
namespace {

VARIANT_BOOL BoolOfVariant(bool flag) { return flag ? VARIANT_TRUE : VARIANT_FALSE; }

IDispatch* DispatchOf(const XlDispatchPtr& object);

// Fills an empty variant.
struct VariantFiller {
  VARIANT& variant;

  void operator()(std::monostate) const {}
  void operator()(std::int32_t number) const {
    V_VT(&variant) = VT_I4;
    V_I4(&variant) = number;
  }
  void operator()(bool flag) const {
    V_VT(&variant) = VT_BOOL;
    V_BOOL(&variant) = BoolOfVariant(flag);
  }
  void operator()(const std::u16string& text) const {
    V_VT(&variant) = VT_BSTR;
    V_BSTR(&variant) = SysAllocStringLen(AsWide(text.data()), static_cast<UINT>(text.size()));
  }
  void operator()(const XlDispatchPtr& object) const {
    V_VT(&variant) = VT_DISPATCH;
    V_DISPATCH(&variant) = DispatchOf(object);
    if (V_DISPATCH(&variant) != nullptr) V_DISPATCH(&variant)->AddRef();
  }
};

XlComValue ValueOf(const VARIANT& variant) {
  switch (V_VT(&variant)) {
    case VT_I4:
      return std::int32_t{V_I4(&variant)};
    case VT_BOOL:
      return V_BOOL(&variant) != VARIANT_FALSE;
    case VT_BSTR:
      return TextOfBstr(V_BSTR(&variant));
    case VT_DISPATCH:
      return MakeDispatch(ComPointer<IDispatch>::Share(V_DISPATCH(&variant)));
    default:
      return {};
  }
}

// The arguments as IDispatch wants them: the last one first.
class Arguments {
 public:
  explicit Arguments(std::span<const XlComValue> values) : variants_(values.size()) {
    for (VARIANT& variant : variants_) VariantInit(&variant);
    auto next = variants_.rbegin();
    for (const XlComValue& value : values) std::visit(VariantFiller{*next++}, value);
  }
  Arguments(const Arguments&) = delete;
  Arguments& operator=(const Arguments&) = delete;
  ~Arguments() {
    for (VARIANT& variant : variants_) VariantClear(&variant);
  }
  DISPPARAMS Parameters(XlComUse use) {
    DISPPARAMS parameters{variants_.data(), nullptr, static_cast<UINT>(variants_.size()), 0};
    if (use != XlComUse::kPut) return parameters;
    parameters.rgdispidNamedArgs = &put_;
    parameters.cNamedArgs = 1;
    return parameters;
  }

 private:
  std::vector<VARIANT> variants_;
  DISPID put_ = DISPID_PROPERTYPUT;
};

class CXlDispatch final : public IXlDispatch {
 public:
  explicit CXlDispatch(ComPointer<IDispatch> object) : object_(std::move(object)) {}

  XlComResult GetIdOfName(const char16_t* name, std::uint32_t locale,
                          std::int32_t& member) override {
    // The interface takes texts that it may write to; nobody does.
    auto* text = const_cast<wchar_t*>(AsWide(name));
    DISPID id = DISPID_UNKNOWN;
    const HRESULT result = object_->GetIDsOfNames(IID_NULL, &text, 1, locale, &id);
    member = id;
    return static_cast<XlComResult>(result);
  }
  XlComResult Invoke(const XlComInvocation& invocation, XlComValue* answer) override;
  XlComStep Advise(IXlEventReceiver& receiver,
                   std::unique_ptr<IXlComConnection>& connection) override {
    return AdviseSink(*object_.Get(), receiver, connection);
  }
  [[nodiscard]] std::uintptr_t Address() const override {
    return reinterpret_cast<std::uintptr_t>(object_.Get());
  }
  [[nodiscard]] IDispatch* Get() const { return object_.Get(); }

 private:
  ComPointer<IDispatch> object_;
};

IDispatch* DispatchOf(const XlDispatchPtr& object) {
  // All there are here come from MakeDispatch.
  return object != nullptr ? static_cast<const CXlDispatch&>(*object).Get() : nullptr;
}

XlComResult CXlDispatch::Invoke(const XlComInvocation& invocation, XlComValue* answer) {
  Arguments arguments(invocation.arguments);
  DISPPARAMS parameters = arguments.Parameters(invocation.use);
  Variant variant;
  HRESULT result = object_->Invoke(invocation.member, IID_NULL, invocation.locale,
                                   static_cast<WORD>(invocation.use), &parameters,
                                   answer != nullptr ? &variant.value : nullptr, nullptr, nullptr);
  if (SUCCEEDED(result) && invocation.wants_bool) {
    result = VariantChangeType(&variant.value, &variant.value, 0, VT_BOOL);
  }
  if (SUCCEEDED(result) && answer != nullptr) *answer = ValueOf(variant.value);
  return static_cast<XlComResult>(result);
}

}  // namespace

XlDispatchPtr MakeDispatch(ComPointer<IDispatch> object) {
  return object ? std::make_shared<CXlDispatch>(std::move(object)) : nullptr;
}

}  // namespace quantiverse
