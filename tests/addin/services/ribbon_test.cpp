#include "addin/services/ribbon.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace quantiverse {
namespace {

using Log = std::vector<std::u16string>;

class Ribbon : public testing::Test, public IXlpRibbonApp {
 protected:
  Ribbon() { current_ = this; }
  ~Ribbon() override { current_ = nullptr; }

  [[nodiscard]] bool IsExcel12() const override { return is_excel12; }
  [[nodiscard]] std::u16string DisplayName() const override { return u"Display"; }
  [[nodiscard]] std::u16string FilePath() const override { return file_name; }
  std::u16string* FindFunctionText(std::u16string_view name) override {
    return name == function_text ? &function_text : nullptr;
  }
  void RequestData(std::u16string_view server, std::u16string_view file, std::u16string_view topic1,
                   std::u16string_view topic2) override {
    EXPECT_EQ(server, u"XlpRibbonServer.XlpRtdRibbonServer");
    requests.push_back(std::u16string(file) + u" [" + std::u16string(topic1) + u"] [" +
                       std::u16string(topic2) + u"]");
  }
  static IXlpRibbonApp* Current() { return current_; }

  bool is_excel12 = true;
  std::u16string file_name = u"C:\\Add.Ins\\My tool.2.xll";
  std::u16string function_text = u"RibbonCallback";
  Log requests;
  CXlpRibbon ribbon{*this};

 private:
  static inline Ribbon* current_ = nullptr;
};

TEST_F(Ribbon, NoneAsksForNothing) {
  EXPECT_EQ(ribbon.Mode(), kRibbonNone);
  IXlpRibbonImpl& none = ribbon.Impl();
  EXPECT_FALSE(none.SetEnabled(true));
  EXPECT_FALSE(none.SetEnabled(false));
  ribbon.AddinOpened();
  ribbon.AddinClosed();
  for (int mode : {-2, 1}) EXPECT_FALSE(ribbon.SetRibbonMode(mode));
  EXPECT_EQ(&ribbon.Impl(), &none);
  none.AddinOpened();
  none.RefreshAll();
  none.RefreshControl(u"control");
  EXPECT_EQ(requests, Log{});
}

TEST_F(Ribbon, SharedSendsTopics) {
  EXPECT_TRUE(ribbon.SetRibbonMode(kRibbonShared));
  ribbon.AddinOpened();  // still off
  EXPECT_FALSE(ribbon.Impl().SetEnabled(true));
  EXPECT_TRUE(ribbon.Impl().SetEnabled(true));
  is_excel12 = false;
  ribbon.AddinOpened();
  EXPECT_EQ(requests, Log{});

  is_excel12 = true;
  ribbon.AddinOpened();
  ribbon.Impl().RefreshAll();
  ribbon.Impl().RefreshAddin();
  ribbon.Impl().RefreshControl(u"control");
  ribbon.AddinClosed();
  EXPECT_EQ(requests, (Log{u"My tool [<] []", u"My tool [] []", u"My tool [Display] []",
                           u"My tool [] [control]", u"My tool [>] []"}));
  EXPECT_TRUE(ribbon.SetRibbonMode(kRibbonNone));
  ribbon.AddinClosed();
  EXPECT_EQ(requests.size(), 5U);
}

TEST_F(Ribbon, TheMacroGetsTheNameOfTheFile) {
  CXlStaticObserverList<CXlEventArgs> list;
  CRibbonEventRegistrar registrar(list, &Current);
  EXPECT_EQ(list.first, &registrar);
  CXlEventArgs args;
  struct Case {
    const char16_t* file;
    const char16_t* name;
  };
  const Case cases[] = {
      {u"C:\\Add.Ins\\My tool.2.xll", u"My_tool.RibbonCallback"},
      {u"a_1-b", u"a_1_b.RibbonCallback"},
      {u"", u".RibbonCallback"},
  };
  for (const Case& c : cases) {
    file_name = c.file;
    function_text = u"RibbonCallback";
    registrar.Notify(args);
    EXPECT_EQ(function_text, c.name);
  }
  function_text = u"Other";
  registrar.Notify(args);
  EXPECT_EQ(function_text, u"Other");
  CRibbonEventRegistrar early(list, []() -> IXlpRibbonApp* { return nullptr; });
  early.Notify(args);
}

TEST(RibbonReply, IsTheDefaultOfTheCallback) {
  const std::pair<XlRibbonReply, std::vector<int>> cases[] = {
      {std::string_view(), {2, 4, 5, 6, 7, 9, 10, 17, 18, 19, 20, 21, 23, 27, 29, 30}},
      {false, {3, 11, 12, 13, 14}},
      {-1.0, {8, 15, 16, 22, 28}},
      {std::monostate(), {-1, 0, 1, 24, 25, 26, 31, 1000}},
  };
  for (const auto& [reply, callbacks] : cases) {
    for (const int callback : callbacks) EXPECT_EQ(DefaultRibbonReply(callback), reply) << callback;
  }
}

}  // namespace
}  // namespace quantiverse
