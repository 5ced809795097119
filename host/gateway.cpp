#include "host/gateway.h"

#include <cstdint>
#include <span>
#include <type_traits>
#include <utility>

#include "host/operations.h"

namespace quantiverse::host {
namespace {

// What the script wants of this call instead of its work, if anything.
const Override* take_override(Host& host, int function) {
  if (host.overrides.empty()) return nullptr;
  const std::lock_guard lock(host.mutex);
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

// Puts an answer into the ledger, if it has memory, and gives it to the add-in.
template <class Form>
void lend(Host& host, std::string_view operation, std::int64_t number, const Record<Form>& record,
          Memory&& memory, Record<Form>& result) {
  if (memory_of(record) != nullptr) {
    host.ledger.hand_out(record, std::move(memory), operation, number);
  }
  result = record;
}

// The code of the call in the end: a result that the generation can't hold is a failure.
template <class Form>
int hand_out(Host& host, const LoggedCall& call, const Outcome& outcome, Record<Form>* result) {
  if (outcome.code != kSuccess || result == nullptr) return outcome.code;
  Memory memory;
  Record<Form> record{};
  if (!write_record(outcome.value, record, memory)) return kFailed;
  const Operation* const operation = find_operation(call.request.function);
  lend(host, operation != nullptr ? operation->name : "an operation of no name", call.number,
       record, std::move(memory), *result);
  return kSuccess;
}

// The code of a call that is in the log by now.
template <class Form>
int answer(Host& host, LoggedCall& call, Record<Form>* result, int count,
           Record<Form>** arguments) {
  if (!read_arguments(count, arguments, call.arguments)) return kBadRecord;
  const int function = call.request.function;
  return hand_out(host, call, carry_out(host, function, call.arguments, Form::kNumber), result);
}

// The text of a record; empty for what is none.
template <class Form>
CountedText counted_text(const Record<Form>* record) {
  if (record == nullptr || (record->type & kTypeMask) != kTypeText) return {};
  const auto* const text = record->value.text;
  if (text == nullptr) return {};
  const auto length = static_cast<std::make_unsigned_t<typename Form::Char>>(text[0]);
  return {reinterpret_cast<const char*>(text), (std::size_t{length} + 1) * sizeof *text};
}

// The way of most calls: one that the last one was too, and whose answer stands. It takes no lock
// that other threads want.
// false: this isn't such a call, and nothing has been done.
template <class Form>
bool answer_once_more(Host& host, const Request& request, Record<Form>* result, int count,
                      Record<Form>** arguments) {
  if (result == nullptr || count > 1 || !host.overrides.empty()) return false;
  const CountedText argument = count == 1 ? counted_text(arguments[0]) : CountedText();
  if (count == 1 && argument.empty()) return false;
  Memory memory;
  const CallLog::Repeated repeated = host.calls.repeat(request, argument, memory);
  if (repeated.number == 0) return false;
  Record<Form> record{};
  record.value.text = static_cast<typename Form::Char*>(repeated.answer);
  record.type = kTypeText;
  lend(host, repeated.operation, repeated.number, record, std::move(memory), *result);
  return true;
}

// Ends a call in the log, with its answer if that stands.
template <class Form>
void end(Host& host, LoggedCall& call, int code, const Record<Form>* result, int count,
         Record<Form>** arguments) {
  const Operation* const operation = find_operation(call.request.function);
  const bool may_stand = operation != nullptr && operation->is_constant && code == kSuccess &&
                         count <= 1 && host.overrides.empty();
  const CountedText answer = may_stand ? counted_text(result) : CountedText();
  const CountedText argument = may_stand && count == 1 ? counted_text(arguments[0]) : CountedText();
  if (answer.empty() || (count == 1 && argument.empty())) {
    host.calls.end(call, code);
  } else {
    host.calls.end(call, argument, answer, operation->name);
  }
}

}  // namespace

template <class Form>
int call_host(Host& host, EntryPoint entry, int function, Record<Form>* result, int count,
              Record<Form>** arguments) {
  constexpr bool is_form12 = Form::kNumber == kFirstOfForm12;
  constexpr int kMostArguments = is_form12 ? kMostArguments12 : kMostArguments4;
  if (is_form12 && !host.is_form12()) return kFailed;
  const bool is_count_good =
      count >= 0 && count <= kMostArguments && (count == 0 || arguments != nullptr);
  const Request request = {function & ~kIntl, entry, (function & kIntl) != 0};
  if (request.function == kFreeOperation) {
    return is_count_good ? take_back(host, count, arguments) : kBadCount;
  }
  if (is_count_good && answer_once_more(host, request, result, count, arguments)) return kSuccess;

  const std::lock_guard lock(host.mutex);
  // In the log from the start, ahead of the calls that it leads to.
  LoggedCall& call = host.calls.begin(request);
  const int code = is_count_good ? answer(host, call, result, count, arguments) : kBadCount;
  end(host, call, code, result, count, arguments);
  return code;
}

template int call_host(Host&, EntryPoint, int, Record<Form4>*, int, Record<Form4>**);
template int call_host(Host&, EntryPoint, int, Record<Form12>*, int, Record<Form12>**);

}  // namespace quantiverse::host
