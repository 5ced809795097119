#include "host/call_log.h"

#include <algorithm>
#include <mutex>
#include <utility>

namespace quantiverse::host {

bool LoggedCall::is_like(const Request& asked, std::span<const Value> with, int answer) const {
  return is_done && request == asked && code == answer &&
         std::equal(arguments.begin(), arguments.end(), with.begin(), with.end());
}

// Keeps all threads out of the log, whose last call then says how often it was repeated.
class CallLog::Alone {
 public:
  explicit Alone(CallLog& log) : log_(log) {
    for (Stripe& stripe : log_.stripes_) {
      stripe.lock.lock();
      if (!log_.calls_.empty()) log_.calls_.back().times += std::exchange(stripe.repeats, 0);
    }
  }
  Alone(const Alone&) = delete;
  Alone& operator=(const Alone&) = delete;
  ~Alone() {
    for (Stripe& stripe : log_.stripes_) stripe.lock.unlock();
  }

 private:
  CallLog& log_;
};

LoggedCall& CallLog::begin(const Request& request) {
  const Alone alone(*this);
  LoggedCall& call = calls_.emplace_back();
  call.number = ++begun_;
  call.request = request;
  return call;
}

void CallLog::end(LoggedCall& call, int code) {
  const Alone alone(*this);
  call.code = code;
  call.is_done = true;
  if (&calls_.back() != &call || calls_.size() < 2) return;
  LoggedCall& before = calls_[calls_.size() - 2];
  if (!before.is_like(call.request, call.arguments, code)) return;
  before.times += call.times;
  calls_.pop_back();
}

std::int64_t CallLog::repeat(const Request& request, std::span<const Value> arguments, int code) {
  Stripe& own = stripes_[stripe_of_thread()];
  const std::lock_guard lock(own.lock);
  if (calls_.empty() || !calls_.back().is_like(request, arguments, code)) return 0;
  ++own.repeats;
  return calls_.back().number;
}

std::deque<LoggedCall> CallLog::take() {
  const Alone alone(*this);
  return std::exchange(calls_, {});
}

}  // namespace quantiverse::host
