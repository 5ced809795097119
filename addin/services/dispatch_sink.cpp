#include "addin/services/dispatch_sink.h"

#include <algorithm>
#include <cstring>
#include <deque>
#include <exception>
#include <iterator>
#include <string_view>
#include <vector>

#include "addin/services/com_objects.h"
#include "addin/services/event_forwarding.h"

namespace quantiverse {
namespace {

// Windows and their sizes: Excel tells of these as well.
constexpr std::int32_t kOfNoInterest[] = {1554, 1556, 1557};

bool IsOfType(const XlSinkArgument& argument, char letter) {
  return argument.type == (letter == 'F' ? kVariantBool : kVariantObject);
}

// The arguments in the order of the code, behind them what tells of cancelling.
using InOrder = std::vector<XlSinkArgument>;

XlComResult CheckArguments(const XlEventRow& row, const InOrder& arguments) {
  const std::string_view code = row.code;
  if (arguments.size() != code.size() + (row.wants_result ? 1 : 0)) return kWrongCount;
  for (std::size_t i = 0; i < code.size(); ++i) {
    if (!IsOfType(arguments[i], code[i])) return kWrongType;
  }
  if (!row.wants_result) return kComDone;
  const XlSinkArgument& last = arguments.back();
  return last.type == kVariantBoolByReference && last.cancel != nullptr ? kComDone : kWrongType;
}

// Whether the event is cancelled.
bool Tell(IXlEventReceiver& receiver, const XlEventRow& row, const InOrder& arguments) {
  const std::size_t count = std::strlen(row.code);
  std::deque<CXlComObject> objects;
  std::vector<XlEventArgument> values;
  values.reserve(count);
  for (std::size_t i = 0; i < count; ++i) {
    if (row.code[i] == 'F') {
      values.emplace_back(arguments[i].flag);
    } else {
      const bool is_null = arguments[i].object == nullptr;
      values.emplace_back(is_null ? nullptr : &objects.emplace_back(arguments[i].object));
    }
  }
  return receiver.OnExcelEvent(row.number, values);
}

bool TellGuarded(IXlEventReceiver& receiver, const XlEventRow& row, const InOrder& arguments) {
  try {
    return Tell(receiver, row, arguments);
  } catch (const std::exception&) {
    return false;
  }
}

}  // namespace

XlComResult InvokeSink(IXlEventReceiver& receiver, std::int32_t dispatch_id,
                       const std::span<const XlSinkArgument>* arguments) {
  if (arguments == nullptr) return kNoParameters;
  const XlEventRow* const row = FindEventRowOfDispatchId(dispatch_id);
  if (row == nullptr) {
    const bool is_known =
        std::count(std::begin(kOfNoInterest), std::end(kOfNoInterest), dispatch_id) != 0;
    return is_known ? kComDone : kUnknownMember;
  }
  const InOrder in_order(arguments->rbegin(), arguments->rend());
  const XlComResult checked = CheckArguments(*row, in_order);
  if (ComFailed(checked)) return checked;
  const bool is_cancelled = TellGuarded(receiver, *row, in_order);
  constexpr std::int16_t kTrue = -1;
  if (row->wants_result) *in_order.back().cancel = is_cancelled ? kTrue : std::int16_t{0};
  return kComDone;
}

}  // namespace quantiverse
