// Excel calculates on as many threads as it likes. These are for the thread sanitizer above all.
#include <gtest/gtest.h>

#include <atomic>
#include <barrier>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "addin/entry_points.h"
#include "fake_host.h"

namespace quantiverse {
namespace {

constexpr int kThreads = 16;
constexpr int kRounds = 25;

// An Excel that any number of threads may call, and that wants its texts back.
class ThreadedHost : public CXlHost {
 public:
  Excel4Entry* Excel4() override { return nullptr; }
  Excel4vEntry* Excel4v() override { return nullptr; }
  MdCallBack12Entry* FindMdCallBack12() override {
    ++searches;
    return Answer;
  }
  int ShowMessageBox(const char16_t*, const char16_t*, unsigned) override { return 0; }

  std::atomic<int> searches = 0;
  static inline std::atomic<int> out = 0;

 private:
  static int XLCALL_PASCAL Answer(int function, int, XLOPER12** arguments, XLOPER12* result) {
    if (function == xlFree) {
      FreeContents(*arguments[0]);
      --out;
    } else {
      MakeText(u"15.0", *result);
      ++out;
    }
    return xlretSuccess;
  }
};

std::string Convert(double value, const std::pair<const char16_t*, const char16_t*>& units) {
  XLOPER12* const record = Quantiverse_12(value, units.first, units.second);
  std::string shown = Show(*record);
  if ((record->xltype & xlbitDLLFree) != 0) xlAutoFree12(record);
  return shown;
}

using Threads = ExcelTest;

TEST_F(Threads, ConvertAtOnceAsOneWould) {
  ThreadedHost threaded;
  State().excel.host = &threaded;
  const std::pair<const char16_t*, const char16_t*> conversions[] = {
      {u"ft", u"m"},
      {u"km/hr", u"mile/hr"},
      {u"atm", u"psi"},
      {u"x = 3 m\nx", u"cm"},  // variables and units of a text stay within its call
      {u"x", u"cm"},           // undefined
      {u"m\nDefUnit pace 2 ft", u"m"},
      {u"pace", u"m"},  // undefined
      {u"ft", u"kg"},   // incompatible
      {u"m\n;", u""},
      {nullptr, nullptr},
  };
  std::vector<std::string> expected;
  for (int thread = 0; thread < kThreads; ++thread) {
    for (const auto& units : conversions) expected.push_back(Convert(thread, units));
  }

  State().excel.md_callback12 = nullptr;  // all of them look for it
  std::atomic<int> wrong = 0;
  const auto convert = [&](int thread, std::barrier<>& start) {
    start.arrive_and_wait();
    for (int round = 0; round < kRounds; ++round) {
      // At any moment each is somewhere else in the table.
      for (std::size_t i = 0; i < std::size(conversions); ++i) {
        const std::size_t row = (i + static_cast<std::size_t>(thread)) % std::size(conversions);
        const std::size_t shown = static_cast<std::size_t>(thread) * std::size(conversions) + row;
        if (Convert(thread, conversions[row]) != expected[shown]) ++wrong;
      }
    }
    EndThread();
  };
  // Threads come and go.
  for (int wave = 0; wave < 3; ++wave) {
    std::barrier start(kThreads);
    std::vector<std::thread> threads;
    for (int i = 0; i < kThreads; ++i) threads.emplace_back([&, i] { convert(i, start); });
    for (std::thread& thread : threads) thread.join();
  }
  EXPECT_EQ(wrong, 0);
  EXPECT_GE(threaded.searches, 2);
  EXPECT_EQ(ThreadedHost::out, 0);
  EXPECT_EQ(State().return_blocks.first, &ReturnBlock());
  EXPECT_EQ(ReturnBlock().next, nullptr);  // theirs have gone with them
}

}  // namespace
}  // namespace quantiverse
