#pragma once

#include <cstdint>
#include <deque>
#include <string_view>
#include <vector>

#include "host/record.h"
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
};

// The bytes of a text as records hold it, with the character ahead that counts the others.
using CountedText = std::string_view;

// What add-ins asked of the host, in order. Equal calls in a row are one entry. An add-in asks the
// same again and again on all of its threads, so each thread counts how often it repeated the last
// call, under a lock of its own; whatever else changes the log keeps all threads out.
class CallLog {
 public:
  // Enters a call ahead of those that it leads to. Until its end() nobody else looks at it.
  LoggedCall& begin(const Request& request);
  void end(LoggedCall& call, int code);
  // The same for one that succeeded with a text, and always will.
  // argument:  its only one; empty if there is none.
  // operation: what gave it; a text that lives on.
  void end(LoggedCall& call, CountedText argument, CountedText answer, std::string_view operation);

  struct Repeated {
    std::int64_t number = 0;  // of the last call
    void* answer = nullptr;
    std::string_view operation;
  };
  // Enters a call that is like the last one, if that ended in the second way, and copies its answer
  // into `memory`. No number: it isn't, and nothing has been done.
  [[nodiscard]] Repeated repeat(const Request& request, CountedText argument, Memory& memory);

  // The log so far, which begins anew.
  std::deque<LoggedCall> take();

 private:
  struct alignas(kApart) Stripe {
    BriefLock lock;
    std::int64_t repeats = 0;  // of the last call
  };
  // What the last call was answered, and will be.
  struct Standing {
    std::int64_t number = 0;  // of that call; 0 if there is none
    Request request;
    std::string argument;
    std::string answer;
    std::string_view operation;
  };
  class Alone;

  void finish(LoggedCall& call, int code);

  Stripes<Stripe> stripes_;
  // The rest is looked at under any stripe's lock, and changed under all of them.
  Standing standing_;
  std::deque<LoggedCall> calls_;
  std::int64_t begun_ = 0;
};

}  // namespace quantiverse::host
