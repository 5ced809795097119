#include <cstdint>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "host/call.h"
#include "host/commands.h"
#include "host/entry_points.h"
#include "host/message_box.h"

// Commands that call into the library.
namespace quantiverse::host {
namespace {

constexpr int kMostThreads = 1000;
constexpr int kMostTimes = 100000000;
constexpr std::size_t kArgumentsOfEvent = 3;

void* find_entry(const Host& host, const char* name) {
  if (!host.library.is_loaded()) throw BadCommand("the library isn't loaded");
  void* const address = host.library.find(name);
  if (address == nullptr) throw BadCommand(std::string("the library exports no ") + name);
  return address;
}

Callee required_callee(const Host& host, const char* name, Letter result) {
  find_entry(host, name);  // says what is wrong
  return *find_callee(host, name, result);
}

Json life(Host& host, const char* name) {
  using Entry = int XLHOST_PASCAL();
  return {{"result", reinterpret_cast<Entry*>(find_entry(host, name))()}};
}

Json returned_to_json(const std::optional<Returned>& returned) {
  if (!returned) throw BadCommand("no record came back, or one that can't be read");
  return {{"value", to_json(returned->value)}, {"freed", returned->is_freed}};
}

Json unconverted() { return {{"value", to_json({Error{kErrorValue}})}, {"freed", false}}; }

Argument argument_from(const Json& json, const Sheet& sheet) {
  const bool is_pointer = json.is_object() && json.size() == 1 && json.contains("pointer");
  if (!is_pointer) return {from_json(json, sheet)};
  if (!json["pointer"].is_null()) throw BadCommand("the only pointer is null");
  return {{}, true};
}

// A registered function and the arguments of one call.
struct Plan {
  Callee callee;
  bool is_thread_safe = false;
  bool converts = false;
  PreparedArguments arguments;
};

void plan_call(Host& host, MacroType type, const Json& name, const Json& arguments,
               std::size_t first, Plan& plan) {
  const std::string text = text_of(name, "the name of a function");
  const Registration* const found = host.registry.find(text, type);
  if (found == nullptr) throw BadCommand("nothing is registered as " + text);
  if (!found->signature) throw BadCommand("the type text of " + text + " is beyond this host");
  const Signature& signature = *found->signature;
  if (arguments.size() - first > signature.arguments.size()) {
    throw BadCommand("too many arguments for " + text);
  }
  std::vector<Argument> given;
  for (std::size_t i = first; i < arguments.size(); ++i) {
    given.push_back(argument_from(arguments[i], host.sheet()));
  }
  plan.callee = required_callee(host, found->export_name.c_str(), signature.result);
  plan.is_thread_safe = signature.is_thread_safe;
  plan.converts = prepare(host, signature, given, plan.arguments);
}

Json call_registered(Host& host, MacroType type, const Json& arguments) {
  Plan plan;
  plan_call(host, type, arguments[0], arguments, 1, plan);
  if (!plan.converts) return unconverted();
  return returned_to_json(call_add_in(host, plan.callee, plan.arguments.slots()));
}

// Calls an export that isn't registered.
Json call_export(Host& host, const char* name, const Signature& signature,
                 const std::vector<Argument>& arguments) {
  const Callee callee = required_callee(host, name, signature.result);
  PreparedArguments prepared;
  if (!prepare(host, signature, arguments, prepared)) return unconverted();
  return returned_to_json(call_add_in(host, callee, prepared.slots()));
}

}  // namespace

Json load(Host& host, const Json&) {
  if (host.library.is_loaded()) throw BadCommand("the library is loaded");
  std::string error;
  return {{"result", host.library.load(host.options.library, error)}};
}

Json unload(Host& host, const Json&) {
  if (!host.library.is_loaded()) throw BadCommand("the library isn't loaded");
  return {{"result", host.library.unload()}};
}

Json open(Host& host, const Json&) { return life(host, "xlAutoOpen"); }
Json close(Host& host, const Json&) { return life(host, "xlAutoClose"); }
Json add(Host& host, const Json&) { return life(host, "xlAutoAdd"); }
Json remove(Host& host, const Json&) { return life(host, "xlAutoRemove"); }

Json info(Host& host, const Json& arguments) {
  const std::vector<Argument> given = {argument_from(arguments[0], host.sheet())};
  return host.is_form12() ? call_export(host, "xlAddInManagerInfo12", *read_type_text("QQ"), given)
                          : call_export(host, "xlAddInManagerInfo", *read_type_text("PP"), given);
}

Json set_entry_point(Host& host, const Json&) {
  using Entry = void XLHOST_PASCAL(void* callback);
  reinterpret_cast<Entry*>(find_entry(host, "SetExcel12EntryPt"))(
      reinterpret_cast<void*>(&XlHostCallBack12));
  return {{"result", 0}};
}

Json call_function(Host& host, const Json& arguments) {
  return call_registered(host, MacroType::kFunction, arguments);
}

Json call_command(Host& host, const Json& arguments) {
  return call_registered(host, MacroType::kCommand, arguments);
}

Json call_many(Host& host, const Json& arguments) {
  if (!host.is_form12()) throw BadCommand("this version of Excel calls on one thread");
  const int threads = whole_number(arguments[1], 1, kMostThreads);
  const int times = whole_number(arguments[2], 1, kMostTimes);
  Plan plan;
  plan_call(host, MacroType::kFunction, arguments[0], arguments, 3, plan);
  if (!plan.is_thread_safe) throw BadCommand("the function isn't registered as thread-safe");
  if (!plan.converts) return {{"calls", 0}, {"different", 0}};

  const auto model = call_add_in(host, plan.callee, plan.arguments.slots());
  std::vector<std::int64_t> different(static_cast<std::size_t>(threads));
  std::vector<std::thread> running;
  running.reserve(different.size());
  for (auto& count : different) {
    running.emplace_back([&host, &plan, &model, &count, times] {
      const BoxWatch boxes;
      std::int64_t unlike = 0;
      Returned returned;
      for (int i = 0; i < times; ++i) {
        const bool is_like = call_add_in(host, plan.callee, plan.arguments.slots(), returned) &&
                             model && returned.value == model->value;
        unlike += is_like ? 0 : 1;
      }
      count = unlike;
    });
  }
  for (auto& thread : running) thread.join();
  std::int64_t total = 0;
  for (const auto count : different) total += count;
  return {{"calls", std::int64_t{threads} * times}, {"different", total}};
}

Json event(Host& host, const Json& arguments) {
  std::vector<Argument> given(1 + kArgumentsOfEvent, {{Missing{}}});
  given[0] = {{Integer{whole_number(arguments[0])}}};
  for (std::size_t i = 1; i < arguments.size(); ++i) {
    given[i] = argument_from(arguments[i], host.sheet());
  }
  return host.is_form12()
             ? call_export(host, "CXlApp_ObserverEventHandler12", *read_type_text("QJQQQ"), given)
             : call_export(host, "CXlApp_ObserverEventHandler4", *read_type_text("PJPPP"), given);
}

}  // namespace quantiverse::host
