#include "addin/services/events.h"

#include <gtest/gtest.h>

#include <functional>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace quantiverse {
namespace {

using Log = std::vector<std::string>;

std::string Plain(const std::u16string& text) { return {text.begin(), text.end()}; }

template <typename Args>
std::string Show(const Args& args) {
  std::string text;
  if constexpr (requires { args.workbook; }) text += " book " + Plain(args.workbook);
  if constexpr (requires { args.sheet; }) text += " sheet " + Plain(args.sheet);
  if constexpr (requires { args.range; }) text += " range " + Plain(args.range);
  if constexpr (requires { args.save_as; }) text += args.save_as ? " as" : " same";
  if constexpr (requires { args.success; }) text += args.success ? " saved" : " failed";
  return text;
}

// Writes down what it is told, and may do more.
template <typename Event>
class Recorder : public CXlEventObserver<typename Event::Args> {
 public:
  Recorder(std::string name, Log& log) : name_(std::move(name)), log_(log) {}
  void Notify(typename Event::Args& args) override {
    log_.push_back(name_ + Show(args));
    if constexpr (requires { args.cancel; }) args.cancel = true;
    if (then) then();
  }
  std::function<void()> then;

 private:
  std::string name_;
  Log& log_;
};

template <typename Event>
class StaticRecorder : public CXlStaticEventObserver<typename Event::Args> {
 public:
  StaticRecorder(std::string name, CXlStaticObservers& observers, Log& log)
      : CXlStaticEventObserver<typename Event::Args>(observers.Of<Event>()),
        recorder_(std::move(name), log) {}
  void Notify(typename Event::Args& args) override { recorder_.Notify(args); }

 private:
  Recorder<Event> recorder_;
};

// An Excel with an object model, in which every operation can fail.
class FakeCom : public IXllCom {
 public:
  explicit FakeCom(Log& log) : log_(log) {}
  bool Init(XlComFailure&) override { return true; }
  bool Connect(bool, XlComFailure&) override { return true; }
  void Term() override {}
  bool GetDisplayAlerts(bool& shown) override {
    shown = alerts.value_or(false);
    return alerts.has_value();
  }
  bool SetDisplayAlerts(bool shown) override {
    log_.emplace_back(shown ? "alerts on" : "alerts off");
    alerts = shown;
    return true;
  }
  bool Run(const std::u16string& macro, std::span<const XlMacroArgument> arguments,
           bool* answer) override {
    std::string call = Plain(macro);
    for (const XlMacroArgument& argument : arguments) {
      if (const auto* number = std::get_if<int>(&argument)) call += ' ' + std::to_string(*number);
      if (const auto* flag = std::get_if<bool>(&argument)) call += *flag ? " true" : " false";
      if (const auto* text = std::get_if<std::u16string>(&argument)) {
        call += " '" + Plain(*text) + "'";
      }
    }
    log_.push_back(call);
    if (answer != nullptr) *answer = true;
    return run_works;
  }

  std::optional<bool> alerts = false;  // nothing: Excel doesn't tell
  bool run_works = true;

 private:
  Log& log_;
};

class FakeObject : public IXlComObject {
 public:
  [[nodiscard]] std::u16string Name() const override { return u"Name"; }
  [[nodiscard]] std::u16string AddressLocal() const override { return u"$A$1"; }
};

class Events : public testing::Test, public IXlEventApp {
 protected:
  IXllCom* AttachCom() override {
    if (!attaches) throw std::runtime_error("no way");
    return com;
  }
  Log TakeLog() { return std::exchange(log, {}); }

  Log log;
  FakeCom fake_com{log};
  bool attaches = true;
  IXllCom* com = nullptr;  // as where there is no object model
  CXllEvents events{*this};
  CXlEventForwarding& forwarding = events.Forwarding();
};

TEST_F(Events, ObserversAreToldInOrder) {
  auto& event = events.Get<CXllOpenEvent>();
  CXllOpenEventArgs args;
  event.Fire(args);
  EXPECT_FALSE(args.cancel);
  Recorder<CXllOpenEvent> first("first", log);
  Recorder<CXllOpenEvent> second("second", log);
  event.RemoveObserver(first);
  event.AddObserver(first);
  event.AddObserver(second);
  event.Fire(args);
  EXPECT_TRUE(args.cancel);
  EXPECT_EQ(TakeLog(), (Log{"first", "second"}));

  second.then = [&] { event.RemoveAllObservers(); };
  event.Fire(args);
  event.Fire(args);
  EXPECT_EQ(TakeLog(), (Log{"first", "second"}));
}

TEST_F(Events, ExcelIsAskedWhileSomebodyWantsToKnow) {
  auto& event = events.Get<CXlSheetChangeEvent>();
  Recorder<CXlSheetChangeEvent> a("a", log);
  Recorder<CXlSheetChangeEvent> b("b", log);
  attaches = false;
  EXPECT_THROW(event.AddObserver(a), std::runtime_error);
  EXPECT_FALSE(forwarding.IsOn(7));
  EXPECT_FALSE(events.FireObserved({7, u"", u"", false}));
  EXPECT_EQ(TakeLog(), Log{});

  attaches = true;
  event.AddObserver(a);
  event.AddObserver(b);
  event.RemoveObserver(a);
  EXPECT_TRUE(forwarding.IsOn(7));
  event.RemoveObserver(a);
  EXPECT_TRUE(forwarding.IsOn(7));
  event.RemoveObserver(b);
  EXPECT_FALSE(forwarding.IsOn(7));
}

TEST_F(Events, StaticObserversComeInTwoLots) {
  CXlStaticObservers observers;
  const StaticRecorder<CXlRegisterFunctionsEvent> registering("registering", observers, log);
  const StaticRecorder<CXllCloseEvent> closing("closing", observers, log);
  const StaticRecorder<CXlAfterCalculateEvent> oldest("oldest", observers, log);
  const StaticRecorder<CXlAfterCalculateEvent> older("older", observers, log);
  {
    const StaticRecorder<CXlAfterCalculateEvent> gone("gone", observers, log);
    const StaticRecorder<CXlAfterCalculateEvent> youngest("youngest", observers, log);
  }
  std::optional<StaticRecorder<CXlAfterCalculateEvent>> middle(std::in_place, "", observers, log);
  const StaticRecorder<CXlAfterCalculateEvent> youngest("youngest", observers, log);
  middle.reset();

  const auto fire_all = [&] {
    CXlEventArgs args;
    events.Get<CXlRegisterFunctionsEvent>().Fire(args);
    events.Get<CXllCloseEvent>().Fire(args);
    events.FireObserved({20, u"", u"", false});
    return TakeLog();
  };
  events.AddEarlyStaticObservers(observers);
  EXPECT_EQ(fire_all(), Log{"registering"});
  EXPECT_FALSE(forwarding.IsOn(20));
  events.AddStaticObservers(observers);
  EXPECT_EQ(fire_all(), (Log{"registering", "closing", "youngest", "older", "oldest"}));
  EXPECT_TRUE(forwarding.IsOn(20));
  events.RemoveAllObservers();
  EXPECT_EQ(fire_all(), Log{});
  EXPECT_FALSE(forwarding.IsOn(20));
}

TEST_F(Events, ObservedEventsReachTheirObservers) {
  Recorder<CXlNewWorkbookEvent> r0("new", log);
  Recorder<CXlSelectionChangeEvent> r1("selection", log);
  Recorder<CXlBeforeDoubleClickEvent> r2("double", log);
  Recorder<CXlBeforeRightClickEvent> r3("right", log);
  Recorder<CXlCalculateEvent> r6("calculate", log);
  Recorder<CXlWorkbookBeforeCloseEvent> r11("close", log);
  Recorder<CXlWorkbookBeforeSaveEvent> r12("save", log);
  Recorder<CXlWorkbookNewSheetEvent> r14("sheet", log);
  Recorder<CXlWorkbookAfterSaveEvent> r21("after", log);
  events.Get<CXlNewWorkbookEvent>().AddObserver(r0);
  events.Get<CXlSelectionChangeEvent>().AddObserver(r1);
  events.Get<CXlBeforeDoubleClickEvent>().AddObserver(r2);
  events.Get<CXlBeforeRightClickEvent>().AddObserver(r3);
  events.Get<CXlCalculateEvent>().AddObserver(r6);
  events.Get<CXlWorkbookBeforeCloseEvent>().AddObserver(r11);
  events.Get<CXlWorkbookBeforeSaveEvent>().AddObserver(r12);
  events.Get<CXlWorkbookNewSheetEvent>().AddObserver(r14);
  events.Get<CXlWorkbookAfterSaveEvent>().AddObserver(r21);

  struct Case {
    int number;
    const char* told;
    bool cancelled;
  };
  const Case cases[] = {
      {0, "new book One", false},
      {1, "selection sheet One range Two", false},
      {2, "double sheet One range Two", true},
      {3, "right sheet One range Two", true},
      {6, "calculate sheet One", false},
      {11, "close book One", true},
      {12, "save book One as", true},
      {14, "sheet book One sheet Two", false},
      {21, "after book One saved", false},
      {4, "", false},   // nobody listens
      {13, "", false},  // not an event of this function
      {22, "", false},  // nor these
      {-1, "", false},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(events.FireObserved({c.number, u"One", u"Two", true}), c.cancelled) << c.number;
    EXPECT_EQ(TakeLog(), *c.told != '\0' ? Log{c.told} : Log{}) << c.number;
  }
}

TEST_F(Events, NotificationsBecomeCallsOfMacros) {
  const FakeObject object;
  const auto call = [&](int number, std::vector<XlEventArgument> arguments) {
    return forwarding.CallEventMacro(number, arguments);
  };
  const auto before_save = [&] { return call(12, {&object, true}); };
  com = &fake_com;
  EXPECT_FALSE(before_save());  // no macro, no observer function
  forwarding.SetObserverFunction(u"observer");
  EXPECT_FALSE(before_save());  // no observer
  EXPECT_EQ(TakeLog(), Log{});

  forwarding.SwitchOn(12);
  EXPECT_TRUE(before_save());
  EXPECT_EQ(TakeLog(), Log{"observer 12 'Name' true"});
  forwarding.SetMacro(12, u"macro");
  EXPECT_TRUE(before_save());
  EXPECT_EQ(TakeLog(), Log{"macro 'Name' true"});

  forwarding.SetMacro(7, u"changed");
  EXPECT_FALSE(call(7, {&object, &object}));  // the answer isn't wanted
  forwarding.SetMacro(20, u"calculated");
  EXPECT_FALSE(call(20, {}));
  forwarding.SetMacro(4, u"activated");
  EXPECT_FALSE(call(4, {static_cast<const IXlComObject*>(nullptr)}));
  EXPECT_EQ(TakeLog(), (Log{"changed 'Name' '$A$1'", "calculated", "activated ''"}));

  fake_com.alerts = true;
  fake_com.run_works = false;
  EXPECT_FALSE(before_save());
  EXPECT_EQ(TakeLog(), (Log{"alerts off", "macro 'Name' true", "alerts on"}));
  fake_com.alerts.reset();
  fake_com.run_works = true;
  EXPECT_TRUE(before_save());
  EXPECT_EQ(TakeLog(), Log{"macro 'Name' true"});

  com = nullptr;
  EXPECT_FALSE(before_save());
  EXPECT_FALSE(call(17, {}));
  EXPECT_FALSE(call(-1, {}));
}

TEST(ObserverFunctionName, IsMadeOfTheFile) {
  const char16_t* const cases[][2] = {
      {u"C:\\AddIns\\Quantiverse.xll", u"xll_Quantiverse_observer"},
      {u"/opt/add.ins/My tools-2.1.xll", u"xll_My_tools_2_1_observer"},
      {u"Gr\u00F6\u00DFen", u"xll_Gr__en_observer"},
      {u"", u"xll__observer"},
  };
  for (const auto& [path, name] : cases) EXPECT_EQ(ObserverFunctionName(path), name);
}

}  // namespace
}  // namespace quantiverse
