#pragma once

#include <cstdint>
#include <deque>
#include <span>
#include <vector>

#include "host/stripes.h"
#include "host/value.h"

namespace quantiverse::host {

// The entry that a call came through.
enum class EntryPoint { kExcel4, kExcel4v, kMdCallBack12 };

// What a call asks, but for its arguments.
struct Request {
  int function = 0;  // without the intl bit
  EntryPoint entry = EntryPoint::kExcel4;
  bool is_intl = false;

  bool operator==(const Request&) const = default;
};

struct LoggedCall {
  std::int64_t number = 0;  // counts calls that began
  Request request;
  std::vector<Value> arguments;
  int code = 0;
  std::int64_t times = 1;
  bool is_done = false;

  // Whether it is over and said the same, however many times.
  [[nodiscard]] bool is_like(const Request& asked, std::span<const Value> with, int answer) const;
};

// What add-ins asked of the host, in order. Equal calls in a row are one entry. An add-in asks the
// same again and again on all of its threads, so each thread counts how often it repeated the last
// call, under a lock of its own; whatever else changes the log keeps all threads out.
class CallLog {
 public:
  // Enters a call ahead of those that it leads to. Until its end() nobody else looks at it.
  LoggedCall& begin(const Request& request);
  void end(LoggedCall& call, int code);
  // Enters a call that is over, if it is like the last one, and gives the number of that. 0: it
  // isn't.
  [[nodiscard]] std::int64_t repeat(const Request& request, std::span<const Value> arguments,
                                    int code);

  // The log so far, which begins anew.
  std::deque<LoggedCall> take();

 private:
  struct alignas(kCacheLine) Stripe {
    BriefLock lock;
    std::int64_t repeats = 0;  // of the last call
  };
  class Alone;

  Stripes<Stripe> stripes_;
  std::deque<LoggedCall> calls_;
  std::int64_t begun_ = 0;
};

}  // namespace quantiverse::host
