#pragma once

#include <functional>
#include <initializer_list>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "addin/services/com_objects.h"
#include "fake_host.h"

namespace quantiverse {

using Log = std::vector<std::string>;

inline constexpr XlComResult kRefused = 0x80004005;

inline std::string Show(const XlComValue& value) {
  if (const auto* number = std::get_if<std::int32_t>(&value)) return std::to_string(*number);
  if (const auto* flag = std::get_if<bool>(&value)) return *flag ? "true" : "false";
  if (const auto* text = std::get_if<std::u16string>(&value)) return '"' + NarrowText(*text) + '"';
  return std::holds_alternative<XlDispatchPtr>(value) ? "object" : "nothing";
}

// One log of all that is asked of the system, its objects and Excel. What is to fail is told by its
// line there.
struct Record {
  explicit Record(FakeHost& excel) : host(excel) {}
  XlComResult Add(const std::string& line) {
    for (const std::string& call : host.TakeCalls()) {
      lines.push_back(call.substr(call.find(' ') + 1));
    }
    lines.push_back(line);
    return failing.contains(line) ? kRefused : kComDone;
  }
  XlComStep Steps(std::initializer_list<const char16_t*> calls) {
    XlComStep step{u"", kComDone};
    for (const char16_t* call : calls) {
      step = {call, Add(NarrowText(call))};
      if (step.Failed()) break;
    }
    return step;
  }
  Log Take() {
    Add("");
    lines.pop_back();
    return std::exchange(lines, {});
  }

  FakeHost& host;
  Log lines;
  std::set<std::string> failing;
  IXlEventReceiver* receiver = nullptr;
};

class FakeConnection final : public IXlComConnection {
 public:
  explicit FakeConnection(Record& record) : record_(record) {}
  ~FakeConnection() override { record_.Add("Unadvise"); }

 private:
  Record& record_;
};

class FakeObject final : public IXlDispatch {
 public:
  FakeObject(std::string name, Record& record) : name_(std::move(name)), record_(record) {}

  XlComResult GetIdOfName(const char16_t* name, std::uint32_t, std::int32_t& member) override {
    member = static_cast<std::int32_t>(names_.size());
    names_.emplace_back(name);
    return record_.failing.contains("find " + NarrowText(name)) ? kRefused : kComDone;
  }
  XlComResult Invoke(const XlComInvocation& call, XlComValue* answer) override {
    const std::u16string member = names_.at(static_cast<std::size_t>(call.member));
    std::string line = name_ + ' ' + NarrowText(member) + ' ' + std::to_string(call.locale) + ' ' +
                       std::to_string(static_cast<int>(call.use));
    for (const XlComValue& argument : call.arguments) line += ' ' + Show(argument);
    if (call.wants_bool) line += " bool";
    const XlComResult result = record_.Add(line);
    if (ComFailed(result)) return result;
    if (call.use == XlComUse::kPut) members[member] = call.arguments[0];
    if (answer != nullptr) *answer = members[member];
    if (member == u"ExecuteExcel4Macro" && on_macro) on_macro();
    return kComDone;
  }
  XlComStep Advise(IXlEventReceiver& receiver,
                   std::unique_ptr<IXlComConnection>& connection) override {
    const XlComStep step = record_.Steps({u"CreateInstance", u"QueryInterface", u"AtlAdvise"});
    record_.receiver = &receiver;
    if (!step.Failed()) connection = std::make_unique<FakeConnection>(record_);
    return step;
  }
  [[nodiscard]] std::uintptr_t Address() const override { return 0xAB01; }

  std::map<std::u16string, XlComValue> members;
  std::function<void()> on_macro;

 private:
  std::string name_;
  Record& record_;
  std::vector<std::u16string> names_;
};

class FakeRunningObjects final : public IXlRunningObjects {
 public:
  explicit FakeRunningObjects(std::vector<XlDispatchPtr> objects) : objects_(std::move(objects)) {}
  bool Next(XlDispatchPtr& object) override {
    if (next_ == objects_.size()) return false;
    object = objects_[next_++];
    return true;
  }

 private:
  std::vector<XlDispatchPtr> objects_;
  std::size_t next_ = 0;
};

class FakeSystem final : public IXlComSystem {
 public:
  explicit FakeSystem(Record& record) : record_(record) {}

  XlComResult Initialize() override { return record_.Add("CoInitialize"); }
  void Uninitialize() override { record_.Add("CoUninitialize"); }
  std::uintptr_t FindMainWindow(std::uint16_t low_word) override {
    record_.Add("main window " + std::to_string(low_word));
    return 77;
  }
  std::uintptr_t FindWorkbookWindow(std::uintptr_t main_window) override {
    record_.Add("workbook window of " + std::to_string(main_window));
    return looks_without_window-- > 0 ? 0 : 78;
  }
  XlComResult ObjectOfWindow(std::uintptr_t window, XlDispatchPtr& object) override {
    object = active;
    return record_.Add("object of " + std::to_string(window));
  }
  XlComResult ClassOfProgram(const char16_t* program, XlClassId& id) override {
    id.bytes[0] = 9;
    return record_.Add("class of " + NarrowText(program));
  }
  XlComStep ActiveObject(const XlClassId& id, XlDispatchPtr& object) override {
    EXPECT_EQ(id.bytes[0], 9);
    object = active;
    return record_.Steps({u"GetActiveObject", u"QueryInterface"});
  }
  XlComStep RunningObjects(std::unique_ptr<IXlRunningObjects>& objects) override {
    objects = std::make_unique<FakeRunningObjects>(running);
    return record_.Steps({u"CreateBindCtx", u"GetRunningObjectTable", u"EnumRunning", u"Reset"});
  }
  void Trace(const std::u16string& text) override { traces.push_back(NarrowText(text)); }

  int looks_without_window = 0;
  XlDispatchPtr active;
  std::vector<XlDispatchPtr> running;
  Log traces;

 private:
  Record& record_;
};

}  // namespace quantiverse
