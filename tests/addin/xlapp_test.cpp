#include "addin/xlapp.h"

#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "addin/entry_points.h"
#include "addin/library_entry.h"
#include "addin/menu.h"
#include "fake_host.h"

namespace quantiverse {
namespace {

using Log = std::vector<std::string>;

template <typename Args>
class Observer final : public CXlEventObserver<Args> {
 public:
  explicit Observer(std::function<void(Args&)> action) : action_(std::move(action)) {}
  void Notify(Args& args) override { action_(args); }

 private:
  std::function<void(Args&)> action_;
};

class Hook final : public IXlWizardHook {
 public:
  explicit Hook(Log& log) : log_(log) {}
  void Connect(const IXlWizExUIFunctionRegistry&) override { is_connected_ = true; }
  [[nodiscard]] bool IsConnected() const override { return is_connected_; }
  void Install() override { log_.emplace_back("install hook"); }
  void Uninstall() override { log_.emplace_back("uninstall hook"); }

 private:
  Log& log_;
  bool is_connected_ = false;
};

class WizardFunction final : public IXlWizExUIFunction {
 public:
  [[nodiscard]] bool HasExtensions() const override { return true; }
};

class TestApp final : public CXllApp {
 public:
  void OnBeforeAdd() override {
    log.emplace_back("before add");
    if (throws) throw CXlOutOfRangeException();
  }
  int OnAdd() override { return add_result; }
  void OnBeforeRemove() override {
    log.emplace_back("before remove");
    if (throws) throw CXlOutOfRangeException();
  }
  void OnOpened() override { log.emplace_back("opened"); }
  IXllCom* AttachCom() override { return nullptr; }  // there is no Excel to attach to
  CXlOper OnRibbonCallback(const CXlRibbonCallback& callback) override {
    if (callback.text == "error") throw CXlErrorException(XlError::kNotAvailable);
    if (callback.text == "text") throw CXlRuntimeException(std::u16string(u"Tem\u00E9 \u03A9"));
    return callback.id + '|' + callback.tag + '|' + std::to_string(callback.index) + '|' +
           callback.selected_id + (callback.pressed ? "|pressed" : "");
  }

  Log log;
  int add_result = 1;
  int open_result = 1;
  bool throws = false;

 protected:
  void OnBeforeOpen() override { log.emplace_back("before open"); }
  int OnOpen() override {
    log.emplace_back("open");
    if (throws) throw CXlOutOfRangeException();
    return open_result;
  }
  void OnClose() override {
    log.emplace_back("close");
    if (throws) throw CXlOutOfRangeException();
  }
};

// An Excel that registers functions and shows message boxes.
class BoxHost final : public FakeHost {
 public:
  int ShowMessageBox(const char16_t* text, const char16_t* title, unsigned flags) override {
    boxes.push_back(NarrowText(title) + '|' + NarrowText(text) + '|' + std::to_string(flags));
    return answer;
  }
  std::vector<std::string> boxes;
  int answer = 0;
};

class XllApp : public ExcelTest {
 protected:
  XllApp() {
    State().excel.host = &host;
    host.answers[xlGetName] = {{"C:\\AddIns\\My file.xll"}};
    host.answers[xlfRegister] = {{7.0}};
    host.answers[xlfGetWorkspace] = {{Row({1.0, 1.0, ".", ",", ";", "Z", "S"})}};
    auto registry = std::make_unique<CXlWizExUIFunctionRegistry>();
    registry->Add("f", std::make_shared<WizardFunction>());
    app->SetWizardRegistry(std::move(registry));
    app->SetWizardHook(std::make_unique<Hook>(app->log));
    app->Events().Get<CXllOpenEvent>().AddObserver(open_observer);
    app->Events().Get<CXllCloseEvent>().AddObserver(close_observer);
    app->Events().Get<CXlRegisterFunctionsEvent>().AddObserver(register_observer);
  }
  ~XllApp() override { State().app.is_opened = false; }

  // How often Excel was asked for an operation since the last time.
  int CountCalls(int function) {
    int count = 0;
    for (const std::string& call : host.TakeCalls()) {
      if (call.find(' ' + std::to_string(function)) != std::string::npos) ++count;
    }
    return count;
  }

  BoxHost host;
  std::unique_ptr<TestApp> app = std::make_unique<TestApp>();
  bool cancels = false;
  bool ends_opening = false;
  Observer<CXllOpenEventArgs> open_observer{[this](CXllOpenEventArgs& args) {
    app->log.emplace_back("open event");
    args.cancel = cancels;
  }};
  Observer<CXlEventArgs> close_observer{[this](CXlEventArgs&) {
    app->log.emplace_back("close event");
    if (ends_opening) State().app.is_opened = false;
  }};
  Observer<CXlEventArgs> register_observer{
      [this](CXlEventArgs&) { app->log.emplace_back("register event"); }};
};

TEST_F(XllApp, OpensAndClosesInOrder) {
  EXPECT_EQ(xlAutoOpen(), 1);
  EXPECT_EQ(app->log,
            (Log{"before open", "open", "open event", "install hook", "register event", "opened"}));
  EXPECT_TRUE(app->IsStarted());
  EXPECT_EQ(app->Folder(), "C:\\AddIns");
  EXPECT_EQ(app->HelpFile(), "C:\\AddIns\\My file.chm");
  EXPECT_EQ(app->LocaleMarks().list_separator, ';');
  EXPECT_EQ(app->LocaleMarks().row, 'Z');
  EXPECT_EQ(State().letters.column, 'S');
  ASSERT_EQ(app->Functions().All().size(), 1U);
  EXPECT_EQ(app->Functions().All()[0].name, u"xll_My_file_observer");

  host.TakeCalls();
  app->log.clear();
  EXPECT_EQ(xlAutoOpen(), 0);
  EXPECT_EQ(host.TakeCalls(), Log());
  EXPECT_EQ(xlAutoClose(), 1);
  EXPECT_EQ(app->log, (Log{"uninstall hook", "close event", "close"}));
  EXPECT_EQ(xlAutoOpen(), 0);  // closed, but still opened

  app->log.clear();
  ends_opening = true;
  EXPECT_EQ(xlAutoClose(), 1);
  EXPECT_EQ(app->log, (Log{"uninstall hook", "close event"}));
  EXPECT_EQ(xlAutoRemove(), 1);
  EXPECT_EQ(CountCalls(xlfUnregister), 0);
}

TEST_F(XllApp, OpeningEndsWhereItIsCancelled) {
  struct Case {
    int open_result;
    bool cancels;
    bool refused;  // Excel refuses the functions
    int answer;
    int result;
    Log log;
    int unregistered;
  };
  const Case cases[] = {
      {0, false, false, 0, 0, {"before open", "open"}, 0},
      {1, true, false, 0, 0, {"before open", "open", "open event"}, 0},
      {1,
       false,
       true,
       7,
       0,
       {"before open", "open", "open event", "install hook", "register event"},
       1},
      {1,
       false,
       true,
       6,
       1,
       {"before open", "open", "open event", "install hook", "register event", "opened"},
       0},
  };
  for (const Case& c : cases) {
    app->open_result = c.open_result;
    cancels = c.cancels;
    host.answers[xlfRegister].front().code = c.refused ? xlretFailed : xlretSuccess;
    host.answer = c.answer;
    host.boxes.clear();
    app->log.clear();
    EXPECT_EQ(xlAutoOpen(), c.result);
    EXPECT_EQ(app->log, c.log);
    EXPECT_EQ(CountCalls(xlfSetName), c.unregistered);
    EXPECT_EQ(host.boxes, c.refused ? Log{"Add-in Load Failure|The following functions in  failed "
                                          "to register:\nxll_My_file_observer\n\nDo you wish to "
                                          "continue loading the add-in?|52"}
                                    : Log());
    EXPECT_TRUE(app->IsStarted());
  }
  EXPECT_EQ(app->Functions().All().size(), 1U);  // not one for each opening
}

TEST_F(XllApp, FailureToOpenIsTold) {
  struct Case {
    const char* display_name;
    bool has_file;
    const char* path;
    const char* told;
  };
  const Case cases[] = {{"My add-in", true, "/my.so", "My add-in"},
                        {"", true, "/my.so", "C:\\AddIns\\My file.xll"},
                        {"", false, "/my.so", "/my.so"},
                        {"", false, "", "Add-in"}};
  app->throws = true;
  const auto expect_alert = [this](const std::string& failure, const std::string& told) {
    EXPECT_EQ(xlAutoOpen(), 0);
    EXPECT_EQ(host.TakeCalls().back(),
              "MdCallBack12 32886: \"Unexpected error during "
              "initialization:\n" +
                  failure + '\n' + told + " will not be opened\", 3.000000");
  };
  for (const Case& c : cases) {
    app->SetDisplayName(c.display_name);
    app->OnAttach(c.path);
    host.answers[xlGetName].front().code = c.has_file ? xlretSuccess : xlretFailed;
    expect_alert("Index out of range", c.told);
  }
  EXPECT_FALSE(app->IsStarted());
  app.reset();
  expect_alert("No instance of CXllApp has been instantiated.", "Add-in");
  EXPECT_EQ(xlAutoClose(), 1);
  EXPECT_EQ(xlAutoAdd(), 0);
  EXPECT_EQ(xlAutoRemove(), 1);
  EXPECT_EQ(Show(*RibbonCallback_12(1, nullptr, nullptr, 0, nullptr, nullptr, 0)), "#15");
}

TEST_F(XllApp, ShortFileNameHasNoHelpFile) {
  host.answers[xlGetName] = {{"xll"}};
  EXPECT_EQ(xlAutoOpen(), 1);
  EXPECT_EQ(app->HelpFile(), "");
  EXPECT_EQ(app->Folder(), "");
}

TEST_F(XllApp, RibbonIsToldIfItIsOn) {
  xlAutoOpen();
  xlAutoClose();
  EXPECT_EQ(CountCalls(xlfRtd), 0);
  State().app.is_opened = false;
  app->Ribbon().SetRibbonMode(kRibbonShared);
  app->Ribbon().Impl().SetEnabled(true);
  xlAutoOpen();
  EXPECT_EQ(host.TakeCalls().back().substr(0, 16), "MdCallBack12 186");  // the locale's marks
  xlAutoClose();
  EXPECT_EQ(
      host.TakeCalls().back(),
      "MdCallBack12 379: \"XlpRibbonServer.XlpRtdRibbonServer\", missing, \"My file\", \">\", "
      "\"\"");
}

TEST_F(XllApp, AddAndRemove) {
  for (const int result : {1, 5, 0, -1}) {
    app->add_result = result;
    EXPECT_EQ(xlAutoAdd(), result > 0 ? 1 : 0);
  }
  xlAutoRemove();
  EXPECT_EQ(app->log, Log(4, "before add"));
  xlAutoOpen();
  xlAutoRemove();
  EXPECT_EQ(app->log.back(), "before remove");
  EXPECT_EQ(CountCalls(xlfUnregister), 1);
}

TEST_F(XllApp, NothingThrownLeavesIntoExcel) {
  xlAutoOpen();
  app->throws = true;
  app->log.clear();
  EXPECT_EQ(xlAutoAdd(), 0);
  EXPECT_EQ(xlAutoRemove(), 1);
  EXPECT_EQ(xlAutoClose(), 1);
  EXPECT_EQ(app->log,
            (Log{"before add", "before remove", "uninstall hook", "close event", "close"}));
}

TEST_F(XllApp, DetachForgetsWithoutExcel) {
  xlAutoOpen();
  host.TakeCalls();
  app->OnDetach();
  EXPECT_EQ(host.TakeCalls(), Log());
  EXPECT_TRUE(app->Functions().All().empty());
  EXPECT_FALSE(app->IsStarted());
  app->log.clear();
  xlAutoClose();
  EXPECT_EQ(app->log, (Log{"uninstall hook", "close"}));
}

TEST_F(XllApp, LibraryEntryIsNotReentered) {
  State().app.entry_depth = 1;
  EXPECT_TRUE(LibraryEntry(XlLibraryReason::kDetach));
  EXPECT_TRUE(State().return_blocks.slot.allocated);
  State().app.entry_depth = 0;
  ReturnBlock();
  EXPECT_TRUE(LibraryEntry(XlLibraryReason::kThreadDetach));
  EXPECT_EQ(State().return_blocks.first, nullptr);
  EXPECT_TRUE(LibraryEntry(XlLibraryReason::kDetach));
  EXPECT_FALSE(State().return_blocks.slot.allocated);
  EXPECT_TRUE(LibraryEntry(XlLibraryReason::kAttach, "/my.so"));
  EXPECT_EQ(State().app.entry_depth, 0);
}

TEST_F(XllApp, ExceptionsAndNullPointersBecomeValues) {
  const auto ribbon12 = [](const char16_t* text) {
    return Show(*RibbonCallback_12(1, u"id", nullptr, 4, text, u"\u03A9", -1));
  };
  EXPECT_EQ(ribbon12(nullptr), "\"id||4|?|pressed\"");
  EXPECT_EQ(ribbon12(u"error"), "#42");
  EXPECT_EQ(ribbon12(u"text"), "\"#ERROR: Tem\xE9 ?\"");
  SetVersion(11);
  EXPECT_EQ(Show(*RibbonCallback_4(1, "id", "tag", 4, "text", nullptr, 0)),
            "\"#ERROR: Tem\xE9 ?\"");
  // Without an Excel to ask, nothing can be told about a name.
  EXPECT_EQ(Show(*xlAddInManagerInfo(nullptr)), "#15");
  EXPECT_EQ(Show(*xlAddInManagerInfo12(nullptr)), "#15");
  xlAutoFree(nullptr);
  xlAutoFree12(nullptr);
}

TEST_F(XllApp, ObserverFunctionTellsObservers) {
  std::string told;
  Observer<CXlCancellableRangeEventArgs> observer([&told](CXlCancellableRangeEventArgs& args) {
    told = NarrowText(args.sheet) + '|' + NarrowText(args.range);
    args.cancel = args.range == u"A1";
  });
  app->Events().Get<CXlBeforeDoubleClickEvent>().AddObserver(observer);
  const CXlOper sheet = "Sheet1";
  const CXlOper range = "A1";
  const auto& handler = CXlApp_ObserverEventHandler12;
  const auto* const sheet12 = sheet.Get<XLOPER12>();
  const auto* const range12 = range.Get<XLOPER12>();
  XLOPER12* result = handler(2, sheet12, range12, nullptr);
  EXPECT_EQ(told, "Sheet1|A1");
  EXPECT_EQ(Show(*result), "true");
  XLOPER older{};
  std::memcpy(&older, result, sizeof older);
  EXPECT_EQ(Show(older), "true");
  EXPECT_EQ(Show(*handler(2, nullptr, nullptr, nullptr)), "false");
  EXPECT_EQ(told, "|");
  for (const int number : {-1, 3, 13, 22, 2147483647}) {
    EXPECT_EQ(Show(*handler(number, sheet12, range12, nullptr)), "false");
  }
  SetVersion(11);
  const CXlOper old_range = "A1";
  EXPECT_EQ(Show(*CXlApp_ObserverEventHandler4(2, nullptr, old_range.Get<XLOPER>(), nullptr)),
            "true");
  app->Events().Get<CXlBeforeDoubleClickEvent>().RemoveObserver(observer);
}

TEST_F(ExcelTest, Menu) {
  CXlMenu menu;
  menu.Init("&Tools of mine", "status");
  EXPECT_TRUE(menu.AddItem("#53255", "#53255", "#53255"));
  const std::string table =
      "{\"&Tools of mine\", \"\", \"\", \"status\", \"\", \"string\", \"#53255\", \"\", "
      "\"string\", \"\"}";
  const std::string bar = "MdCallBack12 152: 10.000000, ";
  const auto expect_calls = [this](const Log& calls) { EXPECT_EQ(host.TakeCalls(), calls); };

  EXPECT_FALSE(menu.Create(nullptr, "Help", 3));  // Excel refuses
  expect_calls({bar + table + ", \"Help\"", bar + table});
  host.answers[xlfAddMenu] = {{true}};
  EXPECT_TRUE(menu.Create(nullptr, "", 3));
  expect_calls({bar + table + ", 3.000000"});
  EXPECT_TRUE(menu.Create(nullptr, "", 0));
  expect_calls({bar + table});
  EXPECT_FALSE(menu.AddItem("&late", "macro", "status"));
  expect_calls({"MdCallBack12 153: 10.000000, \"Tools of mine\", {\"&late\", \"macro\"}"});

  CXlMenu child;
  child.Init("&Child", "");
  EXPECT_TRUE(child.Create(&menu, "", 0));
  expect_calls({bar + "{\"&Child\", \"\", \"\", \"\", \"\"}, \"Tools of mine\", missing"});
  child.AddItem("late", "macro", "");
  expect_calls(
      {"MdCallBack12 153: 10.000000, \"Tools of mine\", {\"late\", \"macro\"}, \"Child\", \"\""});
  CXlMenu grandchild;
  EXPECT_FALSE(grandchild.Create(&child, "", 0));
  expect_calls({});
  EXPECT_FALSE(child.Delete());
  host.answers[xlfDeleteMenu] = {{true}};
  EXPECT_TRUE(menu.Delete());
  expect_calls({"MdCallBack12 158: 10.000000, \"Tools of mine\", \"Child\"",
                "MdCallBack12 158: 10.000000, \"Tools of mine\""});
}

}  // namespace
}  // namespace quantiverse
