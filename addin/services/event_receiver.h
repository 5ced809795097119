#pragma once

#include <span>
#include <variant>

#include "addin/services/com.h"

namespace quantiverse {

// An argument of a native notification. A null object has no name.
using XlEventArgument = std::variant<const IXlComObject*, bool>;

// Where the notifications of Excel's object model arrive.
class IXlEventReceiver {
 public:
  virtual ~IXlEventReceiver() = default;
  // number: of the event, see event_forwarding.h.
  // true: the event is cancelled.
  virtual bool OnExcelEvent(int number, std::span<const XlEventArgument> arguments) = 0;
};

}  // namespace quantiverse
