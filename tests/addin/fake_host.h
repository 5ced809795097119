#pragma once

#include <gtest/gtest.h>

#include <cstdarg>
#include <deque>
#include <functional>
#include <initializer_list>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "addin/addin_state.h"
#include "addin/return_block.h"
#include "addin/xl_record.h"
#include "addin/xlcall.h"

namespace quantiverse {

// A thread of a test is about to end. Windows tells a library's entry of that, and a test has none.
inline void EndThread() {
#if defined(_WIN32)
  DetachThreadsReturnBlock();
#endif
}

// Values as text: a record, and a value with the generation of its form in front.
template <typename Area>
std::string ShowArea(const Area& area) {
  return "R" + std::to_string(area.rwFirst) + ":" + std::to_string(area.rwLast) + "C" +
         std::to_string(area.colFirst) + ":" + std::to_string(area.colLast);
}

template <XlRecord Record>
std::string Show(const Record& record) {
  std::string text;
  switch (TypeOf(record)) {
    case xltypeNum:
      return std::to_string(record.val.num);
    case xltypeStr:
      if constexpr (std::same_as<Record, XLOPER>) {
        return '"' + std::string(TextOf(record)) + '"';
      } else {
        return '"' + NarrowText(TextOf(record)) + '"';
      }
    case xltypeBool:
      return record.val.xbool != 0 ? "true" : "false";
    case xltypeErr:
      return '#' + std::to_string(record.val.err);
    case xltypeInt:
      return std::to_string(record.val.w);
    case xltypeMissing:
      return "missing";
    case xltypeNil:
      return "nil";
    case xltypeSRef:
      return "sref " + ShowArea(record.val.sref.ref);
    case xltypeRef:
      text = "ref " + std::to_string(record.val.mref.idSheet);
      for (std::uint16_t i = 0; i < record.val.mref.lpmref->count; ++i) {
        const typename XlForm<Record>::Area* const areas = record.val.mref.lpmref->reflct;
        text += ' ' + ShowArea(areas[i]);
      }
      return text;
    case xltypeMulti:
      for (std::size_t i = 0; i < ElementCount(record); ++i) {
        text += (i == 0 ? "" : ", ") + Show(record.val.array.lparray[i]);
      }
      return "{" + text + "}";
    default:
      return "type " + std::to_string(record.xltype);
  }
}

inline std::string Show(const CXlOper& value) {
  if (const auto* record = value.Get<XLOPER12>()) return "12 " + Show(*record);
  if (const auto* record = value.Get<XLOPER>()) return "4 " + Show(*record);
  return "none";
}

// Values that the add-in itself never makes.
inline CXlOper SingleRef(XLREF12 area) {
  XLOPER12 record{};
  record.val.sref.count = 1;
  record.val.sref.ref = area;
  SetType(record, xltypeSRef);
  return CXlOper::Borrow(&record);
}

inline CXlOper Ref(XLREF12 area) {
  RecordGuard<XLOPER12> guard;
  MakeAreas(1, 0, guard.record);
  guard.record.val.mref.lpmref->reflct[0] = area;
  CXlOper owner;
  owner = CXlOper::Borrow(&guard.record);
  return owner;
}

inline CXlOper Row(std::initializer_list<CXlOper> elements) {
  CXlOper row;
  row.Resize(1, static_cast<int>(elements.size()));
  int column = 0;
  for (const CXlOper& element : elements) row.Element(0, column++) = element;
  return row;
}

// An Excel that writes down what it is asked, answers what it is told to, and keeps a ledger: what
// it hands out has to come back through xlFree, once.
class FakeHost : public CXlHost {
 public:
  struct Answer {
    CXlOper value;
    int code = xlretSuccess;
  };

  FakeHost() { current_ = this; }
  ~FakeHost() {
    EXPECT_TRUE(out_.empty()) << out_.size() << " results were never freed";
    current_ = nullptr;
  }

  Excel4Entry* Excel4() override { return EntryExcel4; }
  Excel4vEntry* Excel4v() override { return EntryExcel4v; }
  MdCallBack12Entry* FindMdCallBack12() override {
    return exports_callback12 ? EntryMdCallBack12 : nullptr;
  }
  int ShowMessageBox(const char16_t*, const char16_t*, unsigned) override { return 0; }

  // Answers by operation without xlIntl, first come first served; the last one stays. What has
  // none fails with xlretFailed.
  std::map<int, std::deque<Answer>> answers;
  bool exports_callback12 = true;
  // Told of every call but xlFree before it is answered.
  std::function<void(int operation)> on_call = [](int) {};

  // Calls but xlFree since the last time, such as 'Excel4v 16386 intl: "12", 2048'.
  std::vector<std::string> TakeCalls() { return std::exchange(calls_, {}); }
  [[nodiscard]] std::size_t Out() const { return out_.size(); }

  // Hands a value out in a record, as the result of a call or as an argument.
  template <XlRecord Record>
  void Give(CXlOper value, Record& record) {
    if (value.HandOver(record)) out_.insert(record.val.str);
  }
  template <XlRecord Record>
  void TakeBack(Record& record) {
    if (!HasContents(TypeOf(record))) return;
    ASSERT_EQ(out_.erase(record.val.str), 1U) << "freed twice, or not Excel's";
    FreeContents(record);
  }

 private:
  static int EntryExcel4(int function, XLOPER* result, int count, ...) {
    std::vector<XLOPER*> arguments(static_cast<std::size_t>(count));
    va_list list;
    va_start(list, count);
    for (XLOPER*& argument : arguments) argument = va_arg(list, XLOPER*);
    va_end(list);
    return current_->Call("Excel4", function, count, arguments.data(), result);
  }
  static int XLCALL_PASCAL EntryExcel4v(int function, XLOPER* result, int count,
                                        XLOPER** arguments) {
    return current_->Call("Excel4v", function, count, arguments, result);
  }
  static int XLCALL_PASCAL EntryMdCallBack12(int function, int count, XLOPER12** arguments,
                                             XLOPER12* result) {
    return current_->Call("MdCallBack12", function, count, arguments, result);
  }

  template <XlRecord Record>
  int Call(const char* entry, int function, int count, Record** arguments, Record* result) {
    if (function == xlFree) {
      for (int i = 0; i < count; ++i) TakeBack(*arguments[i]);
      return xlretSuccess;
    }
    const int operation = function & ~xlIntl;
    std::string call = std::string(entry) + ' ' + std::to_string(operation);
    if (operation != function) call += " intl";
    for (int i = 0; i < count; ++i) call += (i == 0 ? ": " : ", ") + Show(*arguments[i]);
    calls_.push_back(call);
    on_call(operation);

    std::deque<Answer>& queue = answers[operation];
    if (queue.empty()) return xlretFailed;
    const Answer answer = queue.front();
    if (queue.size() > 1) queue.pop_front();
    if (answer.code == xlretSuccess) Give(answer.value, *result);
    return answer.code;
  }

  static inline FakeHost* current_ = nullptr;
  std::vector<std::string> calls_;
  std::set<void*> out_;
};

// A test within that Excel, version 15 unless it says otherwise.
class ExcelTest : public testing::Test {
 protected:
  ExcelTest() {
    State().excel.host = &host;
    SetVersion(15);
    EXPECT_TRUE(AttachReturnBlocks());
  }
  ~ExcelTest() override {
    DetachReturnBlocks();
    State().excel.host = nullptr;
    State().excel.md_callback12 = nullptr;
    SetVersion(0);
  }
  static void SetVersion(int version) {
    State().excel.version = version;
    State().excel.is_excel12 = version >= 12;
  }

  FakeHost host;
};

}  // namespace quantiverse
