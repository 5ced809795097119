#include "addin/windows/com_sink.h"

#include <new>
#include <vector>

#include "addin/services/dispatch_sink.h"
#include "addin/windows/com_dispatch.h"

namespace quantiverse {
namespace {

XlSinkArgument SinkArgument(const VARIANT& variant) {
  XlSinkArgument argument;
  argument.type = V_VT(&variant);
  switch (argument.type) {
    case kVariantObject:
      argument.object = MakeDispatch(ComPointer<IDispatch>::Share(V_DISPATCH(&variant)));
      break;
    case kVariantBool:
      argument.flag = V_BOOL(&variant) != VARIANT_FALSE;
      break;
    case kVariantBoolByReference:
      argument.cancel = V_BOOLREF(&variant);
      break;
    default:
      break;
  }
  return argument;
}

// Implements AppEvents by its numbers alone. Excel may keep it longer than it is advised.
class CDispatchSink final : public IDispatch {
 public:
  explicit CDispatchSink(IXlEventReceiver& receiver) : receiver_(&receiver) {}
  CDispatchSink(const CDispatchSink&) = delete;
  CDispatchSink& operator=(const CDispatchSink&) = delete;

  // From now on nothing arrives.
  void Forget() { receiver_ = nullptr; }

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
    if (object == nullptr) return E_POINTER;
    const bool is_known = iid == IID_IUnknown || iid == IID_IDispatch || iid == kAppEvents;
    *object = is_known ? static_cast<IDispatch*>(this) : nullptr;
    if (is_known) AddRef();
    return is_known ? S_OK : E_NOINTERFACE;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++count_; }
  ULONG STDMETHODCALLTYPE Release() override {
    const ULONG count = --count_;
    if (count == 0) delete this;
    return count;
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
    if (count == nullptr) return E_POINTER;
    *count = 0;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo** info) override {
    if (info != nullptr) *info = nullptr;
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID member, REFIID, LCID, WORD, DISPPARAMS* parameters,
                                   VARIANT*, EXCEPINFO*, UINT*) override {
    if (receiver_ == nullptr) return S_OK;
    try {
      if (parameters == nullptr) return Answer(InvokeSink(*receiver_, member, nullptr));
      std::vector<XlSinkArgument> arguments;
      for (UINT i = 0; i < parameters->cArgs; ++i) {
        arguments.push_back(SinkArgument(parameters->rgvarg[i]));
      }
      const std::span<const XlSinkArgument> all = arguments;
      return Answer(InvokeSink(*receiver_, member, &all));
    } catch (const std::bad_alloc&) {
      return E_OUTOFMEMORY;
    }
  }

 private:
  ~CDispatchSink() = default;
  static HRESULT Answer(XlComResult result) { return static_cast<HRESULT>(result); }

  ULONG count_ = 1;  // of references, the maker's first
  IXlEventReceiver* receiver_;
};

class Connection final : public IXlComConnection {
 public:
  Connection(ComPointer<IConnectionPoint> point, DWORD cookie, ComPointer<CDispatchSink> sink)
      : point_(std::move(point)), cookie_(cookie), sink_(std::move(sink)) {}
  ~Connection() override {
    point_->Unadvise(cookie_);
    sink_->Forget();
  }

 private:
  ComPointer<IConnectionPoint> point_;
  DWORD cookie_;
  ComPointer<CDispatchSink> sink_;
};

HRESULT AtlAdvise(IUnknown& application, IUnknown& sink, ComPointer<IConnectionPoint>& point,
                  DWORD& cookie) {
  ComPointer<IConnectionPointContainer> container;
  HRESULT result =
      application.QueryInterface(IID_IConnectionPointContainer, container.ReceiveVoid());
  if (SUCCEEDED(result)) result = container->FindConnectionPoint(kAppEvents, point.Receive());
  return SUCCEEDED(result) ? point->Advise(&sink, &cookie) : result;
}

XlComStep Step(const char16_t* call, HRESULT result) {
  return {call, static_cast<XlComResult>(result)};
}

}  // namespace

XlComStep AdviseSink(IUnknown& application, IXlEventReceiver& receiver,
                     std::unique_ptr<IXlComConnection>& connection) {
  ComPointer<CDispatchSink> sink(new (std::nothrow) CDispatchSink(receiver));
  if (!sink) return Step(u"CreateInstance", E_OUTOFMEMORY);
  ComPointer<IUnknown> unknown;
  HRESULT result = sink->QueryInterface(IID_IUnknown, unknown.ReceiveVoid());
  if (FAILED(result)) return Step(u"QueryInterface", result);
  ComPointer<IConnectionPoint> point;
  DWORD cookie = 0;
  result = AtlAdvise(application, *unknown.Get(), point, cookie);
  if (SUCCEEDED(result)) {
    connection = std::make_unique<Connection>(std::move(point), cookie, std::move(sink));
  }
  return Step(u"AtlAdvise", result);
}

}  // namespace quantiverse
