#include "host/gateway.h"

#include <utility>

#include "host/operations.h"

namespace quantiverse::host {
namespace {

// What the script wants of this call instead of its work, if anything.
const Override* take_override(Host& host, int function) {
  if (host.overrides.empty()) return nullptr;
  for (const int key : {function, kAnyOperation}) {
    const auto found = host.overrides.find(key);
    const bool is_for_it = key == function || function != kFreeOperation;
    if (found == host.overrides.end() || !is_for_it || found->second.times == 0) continue;
    --found->second.times;
    return &found->second;
  }
  return nullptr;
}

template <class Form>
int take_back(Host& host, int count, Record<Form>** arguments) {
  if (const Override* const wanted = take_override(host, kFreeOperation)) return wanted->code;
  int code = kSuccess;
  for (int i = 0; i < count; ++i) {
    if (arguments[i] != nullptr && !host.ledger.take_back(*arguments[i])) code = kBadRecord;
  }
  return code;
}

// false: one of them can't be read.
template <class Form>
bool read_arguments(int count, Record<Form>** arguments, std::vector<Value>& values) {
  values.resize(static_cast<std::size_t>(count));
  bool are_good = true;
  for (int i = 0; i < count; ++i) {
    const bool is_good =
        arguments[i] != nullptr && read_record(*arguments[i], values[static_cast<std::size_t>(i)]);
    are_good = are_good && is_good;
  }
  return are_good;
}

Outcome carry_out(Host& host, int function, const std::vector<Value>& values, int form) {
  if (const Override* const wanted = take_override(host, function)) {
    return {wanted->code, wanted->reply.value_or(Value{})};
  }
  const Operation* const operation = find_operation(function);
  if (operation == nullptr) return {kBadFunction};
  return operation->handler(host, Arguments(values), form);
}

// The code of the call in the end: a result that the generation can't hold is a failure.
template <class Form>
int hand_out(Host& host, int function, const Outcome& outcome, Record<Form>* result) {
  if (outcome.code != kSuccess || result == nullptr) return outcome.code;
  Memory memory;
  Record<Form> record{};
  if (!write_record(outcome.value, record, memory)) return kFailed;
  if (memory_of(record) != nullptr) {
    const Operation* const operation = find_operation(function);
    const auto name = operation != nullptr ? operation->name : "an operation of no name";
    host.ledger.hand_out(record, std::move(memory), name);
  }
  *result = record;
  return kSuccess;
}

void merge_last_two(Host& host) {
  auto& calls = host.calls;
  if (calls.size() < 2 || !calls.back().is_like(calls[calls.size() - 2])) return;
  host.spare = std::move(calls.back().arguments);
  host.spare.clear();
  calls.pop_back();
  ++calls.back().times;
}

}  // namespace

template <class Form>
int call_host(Host& host, std::string_view entry, int function, Record<Form>* result, int count,
              Record<Form>** arguments) {
  constexpr bool is_form12 = Form::kNumber == kFirstOfForm12;
  constexpr int kMostArguments = is_form12 ? kMostArguments12 : kMostArguments4;
  const std::lock_guard lock(host.mutex);
  if (is_form12 && !host.is_form12()) return kFailed;
  const bool is_count_good =
      count >= 0 && count <= kMostArguments && (count == 0 || arguments != nullptr);
  const int operation = function & ~kIntl;
  if (operation == kFreeOperation) {
    return is_count_good ? take_back(host, count, arguments) : kBadCount;
  }

  // In the log from the start, ahead of the calls that it leads to.
  LoggedCall& call = host.calls.emplace_back(
      LoggedCall{operation, entry, (function & kIntl) != 0, std::move(host.spare)});
  if (!is_count_good) {
    call.code = kBadCount;
  } else if (!read_arguments(count, arguments, call.arguments)) {
    call.code = kBadRecord;
  } else {
    const Outcome outcome = carry_out(host, operation, call.arguments, Form::kNumber);
    call.code = hand_out(host, operation, outcome, result);
  }
  const int code = call.code;
  if (&host.calls.back() == &call) merge_last_two(host);
  return code;
}

template int call_host(Host&, std::string_view, int, Record<Form4>*, int, Record<Form4>**);
template int call_host(Host&, std::string_view, int, Record<Form12>*, int, Record<Form12>**);

}  // namespace quantiverse::host
