#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <variant>

#include "addin/services/events.h"

// The add-in's part in Excel's ribbon. A server apart from this library, shared by all add-ins,
// draws it; it is told by topics of real-time data what happens here, and calls back a macro.
namespace quantiverse {

// What the ribbon asks of the application.
class IXlpRibbonApp {
 public:
  virtual ~IXlpRibbonApp() = default;
  [[nodiscard]] virtual bool IsExcel12() const = 0;  // the first Excel with a ribbon
  [[nodiscard]] virtual std::u16string DisplayName() const = 0;
  // The path of the add-in's file as Excel tells it.
  [[nodiscard]] virtual std::u16string FilePath() const = 0;
  // The name under which a function is to be registered, to be changed in place. Null if no
  // function has that name.
  virtual std::u16string* FindFunctionText(std::u16string_view name) = 0;
  // Calls xlfRtd with the server, the missing value, and the three texts. What Excel answers is of
  // no interest.
  virtual void RequestData(std::u16string_view server, std::u16string_view file,
                           std::u16string_view topic1, std::u16string_view topic2) = 0;
};

class IXlpRibbonImpl {
 public:
  IXlpRibbonImpl() = default;
  IXlpRibbonImpl(const IXlpRibbonImpl&) = delete;
  IXlpRibbonImpl& operator=(const IXlpRibbonImpl&) = delete;
  virtual ~IXlpRibbonImpl() = default;

  [[nodiscard]] virtual bool IsEnabled() const = 0;
  virtual bool SetEnabled(bool enabled) = 0;          // gives the old value
  [[nodiscard]] virtual bool IsPossible() const = 0;  // Excel has a ribbon
  virtual void AddinOpened() = 0;
  virtual void AddinClosed() = 0;
  virtual void RefreshAll() = 0;
  virtual void RefreshAddin() = 0;
  virtual void RefreshControl(std::u16string_view control) = 0;
};

// No ribbon.
class CXlpRibbonImplNull final : public IXlpRibbonImpl {
 public:
  [[nodiscard]] bool IsEnabled() const override { return false; }
  bool SetEnabled(bool) override { return false; }
  [[nodiscard]] bool IsPossible() const override { return false; }
  void AddinOpened() override {}
  void AddinClosed() override {}
  void RefreshAll() override {}
  void RefreshAddin() override {}
  void RefreshControl(std::u16string_view) override {}
};

// The ribbon of the shared server; off until it is enabled.
class CXlpRibbonImplShared final : public IXlpRibbonImpl {
 public:
  explicit CXlpRibbonImplShared(IXlpRibbonApp& app) : app_(app) {}

  [[nodiscard]] bool IsEnabled() const override { return enabled_; }
  bool SetEnabled(bool enabled) override;
  [[nodiscard]] bool IsPossible() const override { return app_.IsExcel12(); }
  void AddinOpened() override { SendRibbonTopic(u"<", {}); }
  void AddinClosed() override { SendRibbonTopic(u">", {}); }
  void RefreshAll() override { SendRibbonTopic({}, {}); }
  void RefreshAddin() override { SendRibbonTopic(app_.DisplayName(), {}); }
  void RefreshControl(std::u16string_view control) override { SendRibbonTopic({}, control); }

 private:
  void SendRibbonTopic(std::u16string_view topic1, std::u16string_view topic2);

  IXlpRibbonApp& app_;
  bool enabled_ = false;
};

inline constexpr int kRibbonNone = -1;
inline constexpr int kRibbonShared = 0;

// The ribbon of an application, none at first.
class CXlpRibbon {
 public:
  explicit CXlpRibbon(IXlpRibbonApp& app);

  // false: there is no such mode; nothing has changed.
  bool SetRibbonMode(int mode);
  [[nodiscard]] int Mode() const { return mode_; }
  IXlpRibbonImpl& Impl() { return *impl_; }

  // The add-in was opened or closed: tells the server, if the ribbon is on and there is one.
  void AddinOpened();
  void AddinClosed();

 private:
  IXlpRibbonApp& app_;
  int mode_ = kRibbonNone;
  std::unique_ptr<IXlpRibbonImpl> impl_;
};

// A control of the ribbon calls back.
struct CXlRibbonCallback {
  std::int32_t callback = 0;  // which of a control's callbacks
  std::string id;             // of the control
  std::string tag;
  std::int32_t index = 0;  // of an item
  std::string text;
  std::string selected_id;
  bool pressed = false;
};

// Nothing, which is a value never assigned, or what the control gets.
using XlRibbonReply = std::variant<std::monostate, std::string_view, bool, double>;

// The reply of an add-in that has no ribbon of its own.
XlRibbonReply DefaultRibbonReply(std::int32_t callback);

using CXlRegisterFunctionsEventStaticObserver = CXlStaticEventObserver<CXlEventArgs>;

// Gives the macro "RibbonCallback" a name of its own in each add-in, as in
// "Quantiverse.RibbonCallback", since the server calls it by that name. A second registration in
// one load no longer finds the old name, and leaves the new one.
class CRibbonEventRegistrar final : public CXlRegisterFunctionsEventStaticObserver {
 public:
  // list: of CXlRegisterFunctionsEvent.
  // app:  asked at each notification, as this is older than the application. May give null.
  CRibbonEventRegistrar(CXlStaticObserverList<CXlEventArgs>& list, IXlpRibbonApp* (*app)())
      : CXlRegisterFunctionsEventStaticObserver(list), app_(app) {}
  void Notify(CXlEventArgs& args) override;

 private:
  IXlpRibbonApp* (*app_)();
};

}  // namespace quantiverse
