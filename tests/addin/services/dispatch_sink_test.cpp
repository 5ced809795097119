#include "addin/services/dispatch_sink.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

namespace quantiverse {
namespace {

// An object whose name is known, and nothing else.
class NamedObject final : public IXlDispatch {
 public:
  explicit NamedObject(std::u16string name) : name_(std::move(name)) {}
  XlComResult GetIdOfName(const char16_t* name, std::uint32_t, std::int32_t&) override {
    return name == std::u16string_view(u"Name") ? kComDone : kUnknownMember;
  }
  XlComResult Invoke(const XlComInvocation&, XlComValue* answer) override {
    *answer = name_;
    return kComDone;
  }
  XlComStep Advise(IXlEventReceiver&, std::unique_ptr<IXlComConnection>&) override {
    return {u"", kUnknownMember};
  }
  [[nodiscard]] std::uintptr_t Address() const override { return 0; }

 private:
  std::u16string name_;
};

class Receiver final : public IXlEventReceiver {
 public:
  bool OnExcelEvent(int number, std::span<const XlEventArgument> arguments) override {
    if (throws) throw std::runtime_error("no");
    told = std::to_string(number);
    for (const XlEventArgument& argument : arguments) {
      const auto* const object = std::get_if<const IXlComObject*>(&argument);
      if (object == nullptr) {
        told += std::get<bool>(argument) ? " true" : " false";
      } else if (*object == nullptr) {
        told += " null";
      } else {
        const std::u16string name = (*object)->Name() + (*object)->AddressLocal();
        told += ' ' + std::string(name.begin(), name.end());
      }
    }
    return cancels;
  }
  std::string told;
  bool throws = false;
  bool cancels = false;
};

class DispatchSink : public testing::Test {
 protected:
  // A letter for each argument, in the order of the event: a, b objects, n none, T, F bools, c what
  // tells of cancelling, 0 the same without a place to do so, ? anything else.
  XlComResult Invoke(int id, const std::string& letters) {
    std::vector<XlSinkArgument> arguments;
    for (auto letter = letters.rbegin(); letter != letters.rend(); ++letter) {
      XlSinkArgument& argument = arguments.emplace_back();
      const bool is_object = *letter == 'a' || *letter == 'b' || *letter == 'n';
      if (is_object) argument.type = 9;
      if (is_object && *letter != 'n') {
        argument.object =
            std::make_shared<NamedObject>(std::u16string(1, static_cast<char16_t>(*letter)));
      }
      if (*letter == 'T' || *letter == 'F') argument.type = 11;
      argument.flag = *letter == 'T';
      if (*letter == 'c' || *letter == '0') argument.type = 16395;
      if (*letter == 'c') argument.cancel = &cancel;
      if (*letter == '?') argument.type = 8;
    }
    receiver.told.clear();
    const std::span<const XlSinkArgument> all = arguments;
    return InvokeSink(receiver, id, &all);
  }

  Receiver receiver;
  std::int16_t cancel = 0;
};

TEST_F(DispatchSink, EventsArriveWithTheirArguments) {
  struct Case {
    int id;
    const char* arguments;
    const char* told;
  };
  const Case cases[] = {
      {1565, "a", "0 a"},
      {1558, "ab", "1 a b"},
      {1559, "abc", "2 a b"},
      {1560, "anc", "3 a null"},
      {1561, "a", "4 a"},
      {1562, "n", "5 null"},
      {1563, "a", "6 a"},
      {1564, "ab", "7 a b"},
      {1567, "a", "8 a"},
      {1568, "a", "9 a"},
      {1569, "a", "10 a"},
      {1570, "ac", "11 a"},
      {1571, "aTc", "12 a true"},
      {1572, "ac", "13 a"},
      {1573, "ab", "14 a b"},
      {1574, "a", "15 a"},
      {1575, "a", "16 a"},
      {2612, "", "20"},
      {2911, "aF", "21 a false"},
      {1554, "ab?", ""},
      {1556, "", ""},
      {1557, "a", ""},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(Invoke(c.id, c.arguments), 0U) << c.id;
    EXPECT_EQ(receiver.told, c.told);
  }
}

TEST_F(DispatchSink, WhatIsWrongIsToldInOrder) {
  struct Case {
    int id;
    const char* arguments;
    XlComResult result;
  };
  const Case cases[] = {
      {1555, "", 0x80020003},    {0, "?", 0x80020003},     {1566, "a", 0x80020003},
      {1565, "", 0x8002000E},    {1565, "ab", 0x8002000E}, {1570, "a", 0x8002000E},
      {1570, "??c", 0x8002000E}, {2612, "a", 0x8002000E},  {1565, "T", 0x80020005},
      {1558, "a?", 0x80020005},  {1558, "?b", 0x80020005}, {1571, "aac", 0x80020005},
      {1570, "aT", 0x80020005},  {1570, "a0", 0x80020005}, {2911, "ac", 0x80020005},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(Invoke(c.id, c.arguments), c.result) << c.id << c.arguments;
    EXPECT_EQ(receiver.told, "");
  }
  EXPECT_EQ(InvokeSink(receiver, 1565, nullptr), 0x80020004);
  EXPECT_EQ(InvokeSink(receiver, 1, nullptr), 0x80020004);
}

TEST_F(DispatchSink, CancellingIsWrittenBack) {
  receiver.cancels = true;
  cancel = 7;
  Invoke(1565, "a");
  Invoke(1570, "?c");
  EXPECT_EQ(cancel, 7);
  Invoke(1570, "ac");
  EXPECT_EQ(cancel, -1);
  receiver.cancels = false;
  Invoke(1571, "aTc");
  EXPECT_EQ(cancel, 0);
  cancel = -1;
  receiver.throws = true;
  EXPECT_EQ(Invoke(1559, "abc"), 0U);
  EXPECT_EQ(cancel, 0);
}

}  // namespace
}  // namespace quantiverse
