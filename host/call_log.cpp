#include "host/call_log.h"

#include <cstring>
#include <mutex>
#include <utility>

namespace quantiverse::host {
namespace {

// Whether both are over and said the same, however many times.
bool are_alike(const LoggedCall& a, const LoggedCall& b) {
  return a.is_done && b.is_done && a.request == b.request && a.code == b.code &&
         a.arguments == b.arguments;
}

}  // namespace

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
  standing_.number = 0;
  LoggedCall& call = calls_.emplace_back();
  call.number = ++begun_;
  call.request = request;
  return call;
}

void CallLog::finish(LoggedCall& call, int code) {
  call.code = code;
  call.is_done = true;
  if (&calls_.back() != &call || calls_.size() < 2) return;
  LoggedCall& before = calls_[calls_.size() - 2];
  if (!are_alike(before, call)) return;
  before.times += call.times;
  calls_.pop_back();
}

void CallLog::end(LoggedCall& call, int code) {
  const Alone alone(*this);
  finish(call, code);
}

void CallLog::end(LoggedCall& call, CountedText argument, CountedText answer,
                  std::string_view operation) {
  const Alone alone(*this);
  const bool is_last = &calls_.back() == &call;
  const Request request = call.request;
  finish(call, kSuccess);
  if (!is_last) return;
  standing_ = {calls_.back().number, request, std::string(argument), std::string(answer),
               operation};
}

CallLog::Repeated CallLog::repeat(const Request& request, CountedText argument, Memory& memory) {
  Stripe& own = stripes_[stripe_of_thread()];
  const std::lock_guard lock(own.lock);
  const bool is_like_last =
      standing_.number != 0 && standing_.request == request && standing_.argument == argument;
  if (!is_like_last) return {};
  ++own.repeats;
  const std::size_t size = standing_.answer.size();
  auto* const answer = memory.allocate<char>(size);
  std::memcpy(answer, standing_.answer.data(), size);
  return {standing_.number, answer, standing_.operation};
}

std::deque<LoggedCall> CallLog::take() {
  const Alone alone(*this);
  standing_.number = 0;
  return std::exchange(calls_, {});
}

}  // namespace quantiverse::host
