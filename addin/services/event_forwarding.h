#pragma once

#include <array>
#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <utility>

#include "addin/services/com.h"
#include "addin/services/event_receiver.h"

// The road of an event that Excel's object model tells of: from the native notification to a macro,
// or to the add-in's own observer function, which fires the event object (events.h). Observers are
// told from within a macro because only there may they call Excel.
namespace quantiverse {

inline constexpr int kXlEventNumbers = 22;

// An event as Excel's AppEvents interface knows it.
struct XlEventRow {
  int number;
  int dispatch_id;   // the interface's member
  const char* code;  // a letter per argument: B workbook, S sheet, R range, F bool
  bool wants_result;
};

// Null if there is no such event.
const XlEventRow* FindEventRow(int number);
const XlEventRow* FindEventRowOfDispatchId(int dispatch_id);

// What the events ask of the application.
class IXlEventApp {
 public:
  virtual ~IXlEventApp() = default;
  // The attachment to Excel's object model, made, initialised and connected at first need. Null
  // where the system has no such thing. Throws CXlComException where it has one and that fails.
  virtual IXllCom* AttachCom() = 0;
};

class CXlEventForwarding {
 public:
  explicit CXlEventForwarding(IXlEventApp& app) : app_(app) {}

  // The function that gets events which have no macro of their own. Without it they go nowhere.
  void SetObserverFunction(std::u16string name) { observer_function_ = std::move(name); }
  [[nodiscard]] const std::u16string& ObserverFunction() const { return observer_function_; }

  // The numbers below are those of events, from 0 to kXlEventNumbers - 1.

  // A macro that gets the event in the observer function's place; the empty name takes it back.
  void SetMacro(int number, std::u16string name) { MacroOf(number) = std::move(name); }

  // Whether the observer function gets the event. Switching on attaches to Excel first, and throws
  // what that throws; where there is nothing to attach to, others may still call the function.
  void SwitchOn(int number);
  void SwitchOff(int number) { IsOnFlag(number) = false; }
  [[nodiscard]] bool IsOn(int number) const { return on_.at(static_cast<std::size_t>(number)); }

  // Passes a notification on, with Excel's alerts off meanwhile.
  // arguments: as the code of the event says.
  // true: the event wants a result and the macro gave true. Nobody to call, or a failed call, is
  //       false, and Excel does what it does by default.
  bool CallEventMacro(int number, std::span<const XlEventArgument> arguments);

 private:
  std::u16string& MacroOf(int number) { return macros_.at(static_cast<std::size_t>(number)); }
  bool& IsOnFlag(int number) { return on_.at(static_cast<std::size_t>(number)); }

  IXlEventApp& app_;
  std::u16string observer_function_;
  std::array<std::u16string, kXlEventNumbers> macros_;
  std::array<bool, kXlEventNumbers> on_{};
};

// The name of the observer function of an add-in: "xll_Name_observer".
// path: of the add-in's file, with an extension.
std::u16string ObserverFunctionName(std::u16string_view path);

}  // namespace quantiverse
