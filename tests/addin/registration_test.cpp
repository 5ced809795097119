#include "addin/registration.h"

#include <memory>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "addin/resource_text.h"
#include "addin/services/wizard_registry.h"
#include "fake_host.h"

namespace quantiverse {
namespace {

using Calls = std::vector<std::string>;

class Site : public IXlRegistrationSite {
 public:
  void NotifyRegisterFunctions() override { XlCommand(xlfInfo); }
  std::string FileName() override {
    XlCommand(xlGetName);
    return R"(C:\a\q.xll)";
  }
  std::string HelpFile() override { return "q.chm"; }
};

class Registration : public ExcelTest {
 protected:
  Registration() { host.answers[xlfRegister] = {{1.0}, {2.0}, {3.0}, {4.0}}; }

  void Add(const XlFunctionRecord& record) { functions.Add(CXlFunctionRegistration(record)); }
  // Registers them and gives the calls of xlfRegister.
  Calls Register(bool expected = true) {
    EXPECT_EQ(functions.RegisterFunctions(), expected);
    const std::string entry = IsExcel12() ? "MdCallBack12 " : "Excel4v ";
    Calls calls = host.TakeCalls();
    EXPECT_EQ(Calls(calls.begin(), calls.begin() + 2), (Calls{entry + "244", entry + "16393"}));
    return {calls.begin() + 2, calls.end()};
  }

  Site site;
  CXlFunctions functions{site};
};

const XlFunctionRecord kFull{.export4 = "f4",
                             .export12 = "f12",
                             .types4 = "RB",
                             .types12 = "UB",
                             .name = u"F",
                             .wide_arguments = u"x"};

TEST_F(Registration, TellsExcelOfEveryRecord) {
  const std::string head = R"("C:\a\q.xll", )";
  for (const int version : {11, 15}) {
    SetVersion(version);
    functions.Clear();
    ASSERT_EQ(functions.BuildRegistrations(), 3);
    const bool is12 = version >= 12;
    const std::string entry = is12 ? "MdCallBack12 149: " : "Excel4v 149: ";
    const std::string form = is12 ? "_12" : "_4";
    const Calls calls = {
        entry + head + "\"RibbonCallback" + form + "\", " +
            (is12 ? "\"UJC%C%JC%C%A\"" : "\"RJCCJCCA\"") +
            ", \"RibbonCallback\", \"callback,id,tag,index,text,selectedId,pressed\", \"2\", "
            "14.000000, \"\", \"q.chm!4\", \"Handles all calls redirected from the ribbonX "
            "manager\", \"is the identifier of the callback which invoked this function\", \"is "
            "the id attribute of the control raising the event\", \"is the tag attribute of the "
            "control raising the event\", \"is the index of an item\", \"is the changed value of "
            "the text\", \"is the id of the selected item\", \"is true if the toggleButton is "
            "pressed..\"",
        entry + head + "\"Quantiverse_Macro" + form + "\", " + (is12 ? "\"U$\"" : "\"R\"") +
            ", \"Quantiverse_Macro\", \"\", \"2\", 14.000000, \"\", \"q.chm!1002\", \"Calls the "
            "Quantiverse() function..\"",
        entry + head + "\"Quantiverse" + form + "\", " + (is12 ? "\"UBC%C%$\"" : "\"RBCC\"") +
            ", \"Quantiverse\", \"Val,InUnits,OutUnits\", \"1\", \"Quantiverse\", \"\", "
            "\"q.chm!1001\", \"Converts Val from InUnits to OutUnits\", \"Input value expressed "
            "in InUnits to be converted to Outunits (number)\", \"Units of the input value "
            "(text)\", \"Units to convert input value to (text)..\""};
    EXPECT_EQ(Register(), calls);
  }
}

// Splits a list in braces at the commas between its fields.
Calls Fields(const std::string& list) {
  Calls fields(1);
  int depth = 0;
  for (const char c : list.substr(1, list.size() - 2)) {
    depth += c == '{' ? 1 : c == '}' ? -1 : 0;
    if (c == ',' && depth == 0) {
      fields.emplace_back();
    } else {
      fields.back() += c;
    }
  }
  return fields;
}

TEST_F(Registration, DescriptorsAgreeWithTheirRecords) {
  const auto type_word = [](char letter) {
    return letter == 'B' ? "Double" : letter == 'C' ? "String" : letter == 'J' ? "Int" : "Boolean";
  };
  functions.BuildRegistrations();
  for (const CXlFunctionRegistration& registration : functions.All()) {
    const std::string name = NarrowText(registration.name);
    const Calls names =
        registration.arguments.empty() ? Calls() : Fields("{" + registration.arguments + "}");
    const bool threads = registration.types12.ends_with('$');
    std::string arguments;
    for (std::size_t i = 0; i < names.size(); ++i) {
      arguments += (i == 0 ? "{0,{" : ",{0,{") + names[i] + "," +
                   type_word(registration.types4.at(i + 1)) + ",0,," +
                   registration.argument_help.at(i) + ",,,,}}";
    }
    EXPECT_EQ(Fields(NarrowText(registration.descriptor)),
              (Calls{name, "", "", registration.help, registration.category,
                     std::to_string(registration.macro_type), threads ? "1" : "0", "U",
                     "{" + arguments + "}", "{}", "3", "", "0", "0", "", "", "", "0", "0"}));
  }
}

TEST_F(Registration, ChoosesTheForm) {
  struct Case {
    XlFunctionRecord record;
    const char* in_15;
    const char* in_11;
  };
  const auto with = [](auto change) {
    XlFunctionRecord record = kFull;
    change(record);
    return record;
  };
  const Case cases[] = {
      {kFull, "f12", "f4"},
      {with([](auto& r) { r.export12 = ""; }), "f4", "f4"},
      {with([](auto& r) { r.types4 = nullptr; }), "f12", ""},
      {with([](auto& r) { r.wide_arguments = nullptr; }), "f12", "f4"},
      {with([](auto& r) { r.wide_arguments = nullptr, r.arguments = "x"; }), "f4", "f4"},
      {with([](auto& r) { r.export4 = nullptr, r.types12 = nullptr; }), "", ""},
      {with([](auto& r) { r.minimum_version = 15; }), "f12", ""},
      {with([](auto& r) { r.minimum_version = 16; }), "", ""},
      {with([](auto& r) { r.maximum_version = 11; }), "", "f4"},
      {with([](auto& r) { r.maximum_version = 10; }), "", ""},
  };
  for (const Case& c : cases) {
    for (const auto& [version, expected] : {std::pair(15, c.in_15), {11, c.in_11}}) {
      SetVersion(version);
      functions.Clear();
      Add(c.record);
      const Calls calls = Register();
      const std::string wanted = expected;
      ASSERT_EQ(calls.size(), wanted.empty() ? 0U : 1U);
      EXPECT_EQ(functions.All()[0].registered, !wanted.empty());
      if (wanted.empty()) continue;
      EXPECT_NE(calls[0].find('"' + wanted + '"'), std::string::npos) << calls[0];
      EXPECT_EQ(calls[0].starts_with("Excel4v"), wanted == "f4");
    }
  }
}

TEST_F(Registration, ClosesAndCutsHelpTexts) {
  struct Case {
    const char* types;
    std::string help;
    std::u16string argument_help;
    std::string tail;
  };
  const std::string longest(255, 'x');
  const Case cases[] = {
      {"U", "", u"", "\"..\""},
      {"U$", "help", u"", "\"help..\""},
      {"U", "help.", u"", "\"help..\""},
      {"U", "help..", u"", "\"help..\""},
      {"U", "help...", u"", "\"help...\""},
      {"U", longest, u"", '"' + longest + '"'},
      {"U", longest.substr(1), u"", '"' + longest.substr(1) + ".\""},
      {"U", "help", u"a", "\"help..\", \"a\""},
      {"UC%%", "help", u"a", "\"help\", \"a..\""},
      {"UB", "help", u"", "\"help\""},
      {"UB", longest + "y", u"", '"' + longest + '"'},
      {"UBB", "help", std::u16string(u"a.\0b.", 5), "\"help\", \"a.\", \"b..\""},
  };
  for (const Case& c : cases) {
    functions.Clear();
    XlFunctionRecord record = kFull;
    const std::u16string help = WideText(c.help);
    const std::u16string list = c.argument_help + u'\0';
    record.types12 = c.types;
    record.wide_help = help.c_str();
    record.wide_argument_help = list.c_str();
    Add(record);
    const std::string call = Register().at(0);
    EXPECT_TRUE(call.ends_with("\"q.chm!1001\", " + c.tail)) << call;
  }
}

TEST_F(Registration, WritesCategoriesAndKinds) {
  for (const auto& [category, macro_type, shown] : {std::tuple(u"14", 2, "\"2\", 14.000000"),
                                                    {u"", 1, "\"1\", \"\""},
                                                    {u"14x", 3, "\"1\", \"14x\""},
                                                    {u"-1", 0, "\"0\", \"-1\""}}) {
    functions.Clear();
    XlFunctionRecord record = kFull;
    record.wide_category = category;
    record.macro_type = macro_type;
    Add(record);
    EXPECT_NE(Register().at(0).find(shown), std::string::npos);
  }
}

TEST_F(Registration, AssignsHelpIds) {
  struct Function {
    const char16_t* name;
    std::uint16_t id;
    const char16_t* topic;
    std::u16string help_topic;
  };
  const Function sources[] = {
      {u"zeta", 0, nullptr, u"q.chm!1009"},       {u"Beta", 0, nullptr, u"q.chm!1008"},
      {u"alphaAsync", 0, nullptr, u"q.chm!1006"}, {u"Alpha", 0, u"about.htm", u"q.chm!about.htm"},
      {u"set", 1004, nullptr, u"q.chm!1004"},     {u"setAsync", 0, nullptr, u"q.chm!1004"},
      {u"BetaAsync", 0, nullptr, u"q.chm!1008"},  {u"Async", 0, nullptr, u"q.chm!1007"},
      {u"low", 7, nullptr, u"q.chm!7"},
  };
  for (const Function& source : sources) {
    XlFunctionRecord record = kFull;
    record.name = source.name;
    record.help_id = source.id;
    record.help_topic = source.topic;
    Add(record);
  }
  EXPECT_EQ(functions.HelpTopicOf(functions.All()[0]), u"");  // not yet
  Register();
  for (std::size_t i = 0; i < std::size(sources); ++i) {
    EXPECT_EQ(functions.HelpTopicOf(functions.All()[i]), sources[i].help_topic);
    EXPECT_EQ(functions.All()[i].help_id, sources[i].id);
  }
}

TEST_F(Registration, IsTakenBack) {
  functions.BuildRegistrations();
  XlFunctionRecord later = kFull;
  later.minimum_version = 16;
  Add(later);
  host.answers[xlfRegister] = {{7.0}, {8.0, 32}, {XlError::kValue}};
  EXPECT_EQ(Register(false).size(), 3U);
  std::string registered;
  for (const CXlFunctionRegistration& registration : functions.All()) {
    registered += registration.registered ? '1' : '0';
  }
  EXPECT_EQ(registered, "1000");

  functions.UnregisterFunctions();
  Calls expected = {"MdCallBack12 16393", "MdCallBack12 201: 7.000000"};
  for (const std::string name : {"RibbonCallback", "Quantiverse_Macro", "Quantiverse", "F"}) {
    expected.push_back("MdCallBack12 88: \"" + name + "\"");
    expected.push_back(R"(MdCallBack12 149: "C:\a\q.xll", "xlAutoRemove", "J", ")" + name +
                       R"(", missing, 0.000000)");
  }
  EXPECT_EQ(host.TakeCalls(), expected);
  EXPECT_FALSE(functions.All()[0].registered);
  functions.UnregisterFunctions();
  expected.erase(expected.begin() + 1);
  EXPECT_EQ(host.TakeCalls(), expected);
}

class ResourceText : public ExcelTest {
 protected:
  ResourceText() { State().resources.rows = kRows; }
  ~ResourceText() override {
    State().resources = {};
    State().registration.excels_language.reset();
  }

  static constexpr StringResource kRows[] = {
      {kEnglish, 7, u"seven"}, {0x0C07, 7, u"sieben#8"},       {0x040C, 7, u"sept"},
      {0x0407, 8, u"acht"},    {kNeutralLanguage, 8, u"VIII"}, {kNeutralLanguage, 31, u"\u20AC"},
  };
};

TEST_F(ResourceText, ReplacesReferences) {
  struct Case {
    double country;
    std::u16string text, expanded;
    bool found;
  };
  const Case cases[] = {
      {43, u"", u"", true},
      {43, u"a#7b#8#", u"asevenbVIII#", true},
      {43, u"#@7", u"sieben#8", true},
      {43, u"#@8-#@31", u"acht-\u20AC", true},  // related, neutral
      {33, u"#@7 #@8", u"sept VIII", true},
      {49, u"#@7", u"sieben#8", true},
      {1, u"#@7", u"seven", true},
      {999, u"#@7", u"seven", true},  // no such language: the thread's
      {0, u"#@7", u"seven", true},    // a language without one isn't it
      {43, u"#0x1F#0X1F#0x#x#@#@x##7", u"\u20AC#0X1F#0x#x#@#@x#seven", false},
      {43, u"#9#7#4294967303#99999999999999999999", u"#9seven#4294967303#99999999999999999999",
       false},
      {43, u"#53285", u"String is too long", true},
  };
  for (const Case& c : cases) {
    State().registration.excels_language.reset();
    host.answers[xlfGetWorkspace] = {{Row({c.country})}};
    std::u16string wide = c.text;
    std::string narrow;
    EXPECT_EQ(ExpandResourceText(wide, wide), c.found);
    EXPECT_EQ(ExpandResourceText(NarrowText(c.text), narrow), c.found);
    EXPECT_EQ(NarrowText(wide), NarrowText(c.expanded));
    EXPECT_EQ(narrow, NarrowText(c.expanded));
    const bool asks =
        c.text.find(u"#@") != std::u16string::npos && c.text.find(u"@x") == c.text.npos;
    EXPECT_EQ(host.TakeCalls().size(), asks ? 1U : 0U);  // once for all
  }
}

TEST_F(ResourceText, GoesIntoRegistrations) {
  Site site;
  CXlFunctions functions(site);
  XlFunctionRecord record = kFull;
  record.wide_arguments = u"#7";
  record.wide_category = u"#8";
  record.wide_help = u"#9";
  record.wide_argument_help = u"#31\0";
  functions.Add(CXlFunctionRegistration(record));
  host.answers[xlfRegister] = {{1.0}};
  EXPECT_TRUE(functions.RegisterFunctions());
  const std::string call = host.TakeCalls().back();
  EXPECT_TRUE(
      call.ends_with("\"F\", \"seven\", \"1\", \"VIII\", \"\", \"q.chm!1001\", \"#9\", \"\x80..\""))
      << call;
}

TEST(WizardRegistry, KnowsTheFunctionsWithExtensions) {
  struct Function : IXlWizExUIFunction {
    [[nodiscard]] bool HasExtensions() const override { return has_extensions; }
    bool has_extensions = false;
  };
  CXlWizExUIFunctionRegistry registry;
  const auto function = std::make_shared<Function>();
  registry.Add("F", function);
  EXPECT_FALSE(registry.WantsWizard());
  function->has_extensions = true;
  EXPECT_TRUE(registry.WantsWizard());
  EXPECT_EQ(registry.Find("F"), function.get());
  registry.Forget();
  EXPECT_FALSE(registry.WantsWizard() || registry.Find("F") != nullptr);
}

}  // namespace
}  // namespace quantiverse
