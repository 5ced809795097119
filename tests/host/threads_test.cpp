// What the host keeps of calls that come on many threads at once.
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>
#include <utility>
#include <vector>

#include "host/call_log.h"
#include "host/ledger.h"

namespace quantiverse::host {
namespace {

constexpr std::size_t kThreads = 20;  // some share a stripe
constexpr int kTimes = 500;
constexpr std::int64_t kCalls = kThreads * kTimes;

void on_threads(const std::function<void(std::size_t)>& work) {
  std::vector<std::thread> running;
  for (std::size_t i = 0; i < kThreads; ++i) running.emplace_back(work, i);
  for (std::thread& thread : running) thread.join();
}

// As the host does for an operation that succeeds with the same text again and again, or fails.
void log(CallLog& calls, const Request& request, const std::string& argument, int code) {
  const std::string answer = "answer to " + argument;
  Memory memory;
  const CallLog::Repeated repeated = calls.repeat(request, argument, memory);
  if (repeated.number != 0) {
    EXPECT_EQ(std::string_view(static_cast<const char*>(repeated.answer), answer.size()), answer);
    EXPECT_EQ(repeated.operation, "xlfInfo");
    return;
  }
  LoggedCall& call = calls.begin(request);
  call.arguments = {{argument}};
  if (code == kSuccess) {
    calls.end(call, argument, answer, "xlfInfo");
  } else {
    calls.end(call, code);
  }
}

std::string shown(const std::deque<LoggedCall>& calls) {
  std::string text;
  for (const LoggedCall& call : calls) {
    text += std::to_string(call.request.function) + ':' + constant_text(call.arguments.at(0)) +
            '=' + std::to_string(call.code) + '*' + std::to_string(call.times) + ' ';
  }
  return text;
}

TEST(CallLog, CountsEqualCallsInARow) {
  const Request one{1};
  const Request two{2};
  const Request through_another{1, EntryPoint::kMdCallBack12};
  CallLog calls;
  log(calls, one, "a", kSuccess);
  on_threads([&](std::size_t) {
    for (int i = 0; i < kTimes; ++i) log(calls, one, "a", kSuccess);
  });
  log(calls, one, "b", kSuccess);
  log(calls, two, "b", kFailed);
  log(calls, two, "b", kFailed);
  log(calls, one, "b", kFailed);
  log(calls, one, "a", kSuccess);
  log(calls, through_another, "a", kSuccess);
  EXPECT_EQ(shown(calls.take()), "1:a=0*10001 1:b=0*1 2:b=32*2 1:b=32*1 1:a=0*1 1:a=0*1 ");
  EXPECT_TRUE(calls.take().empty());
  log(calls, through_another, "a", kSuccess);  // not like a last one: there is none
  EXPECT_EQ(shown(calls.take()), "1:a=0*1 ");
}

TEST(CallLog, LosesNoCallWhenTheyChange) {
  CallLog calls;
  std::mutex one_at_a_time;
  on_threads([&](std::size_t thread) {
    for (int i = 0; i < kTimes; ++i) {
      const Request request{static_cast<int>(thread % 3)};
      const std::string argument = i % 10 == 0 ? "x" : "y";
      Memory memory;
      if (calls.repeat(request, argument, memory).number != 0) continue;
      const std::lock_guard lock(one_at_a_time);
      log(calls, request, argument, kSuccess);
    }
  });
  std::int64_t count = 0;
  for (const LoggedCall& call : calls.take()) count += call.times;
  EXPECT_EQ(count, kCalls);
}

TEST(CallLog, KeepsACallAheadOfThoseItLeadsTo) {
  CallLog calls;
  LoggedCall& outer = calls.begin(Request{1});
  outer.arguments = {{"a"}};
  log(calls, Request{1}, "a", kSuccess);  // alike, but the outer one isn't over
  log(calls, Request{1}, "a", kSuccess);
  calls.end(outer, 0);
  EXPECT_EQ(shown(calls.take()), "1:a=0*1 1:a=0*2 ");
}

Record12 lent(Ledger& ledger, const char* operation, std::int64_t number) {
  Record12 record{};
  Memory memory;
  EXPECT_TRUE(write_record<Form12>({"text"}, record, memory));
  ledger.hand_out(record, std::move(memory), operation, number);
  return record;
}

TEST(Ledger, KnowsWhatEveryThreadLentAndGaveBack) {
  Ledger ledger;
  std::vector<std::vector<Record12>> out(kThreads);
  on_threads([&](std::size_t thread) {
    for (int i = 0; i < kTimes; ++i) out[thread].push_back(lent(ledger, "xlfInfo", 1));
  });
  EXPECT_EQ(ledger.handed_out(), kCalls);
  EXPECT_EQ(ledger.leaks().size(), kThreads * kTimes);
  // On another thread than the one that it was lent to.
  on_threads([&](std::size_t thread) {
    for (const Record12& record : out[(thread + 1) % kThreads]) {
      EXPECT_TRUE(ledger.take_back(record));
    }
  });
  EXPECT_EQ(ledger.returned(), kCalls);
  EXPECT_TRUE(ledger.leaks().empty());
  EXPECT_TRUE(ledger.faults().empty());
  on_threads([&](std::size_t thread) { EXPECT_FALSE(ledger.take_back(out[thread][7])); });
  EXPECT_EQ(ledger.faults(),
            std::vector<std::string>(
                kThreads, "double free: the text that xlfInfo gave came back once more"));
}

// Memory that came back is given to other threads.
TEST(Ledger, KnowsTheLastOfLoansAtOneAddress) {
  char16_t text[] = u"\1x";
  Record12 record{};
  record.value.text = text;
  record.type = kTypeText;
  Ledger ledger;
  ledger.hand_out(record, Memory(), "xlfInfo", 1);
  EXPECT_TRUE(ledger.take_back(record));
  std::thread([&] { ledger.hand_out(record, Memory(), "xlGetName", 2); }).join();
  Record4 older{};
  older.value.text = reinterpret_cast<char*>(text);
  older.type = kTypeText;
  EXPECT_FALSE(ledger.take_back(older));
  EXPECT_TRUE(ledger.take_back(record));
  EXPECT_FALSE(ledger.take_back(record));
  EXPECT_EQ(ledger.faults(),
            (std::vector<std::string>{
                "foreign free: the text that xlGetName gave came back as the other generation's",
                "double free: the text that xlGetName gave came back once more"}));
}

TEST(Ledger, TellsOfLeaksInTheOrderOfLending) {
  Ledger ledger;
  const std::string names[] = {"a", "b", "c", "d", "e", "f", "g", "h", "i", "j"};
  std::vector<std::string> expected;
  std::int64_t number = 0;
  for (const std::string& name : names) {
    lent(ledger, name.c_str(), ++number);
    expected.push_back("leak: the text that " + name + " gave never came back");
  }
  EXPECT_EQ(ledger.leaks(), expected);
  ledger.clear();
  EXPECT_TRUE(ledger.leaks().empty());
  EXPECT_EQ(ledger.handed_out(), 0);
}

}  // namespace
}  // namespace quantiverse::host
