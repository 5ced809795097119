#include "addin/services/event_forwarding.h"

#include <algorithm>
#include <iterator>
#include <vector>

#include "addin/services/names.h"

namespace quantiverse {
namespace {

// clang-format off
constexpr XlEventRow kEvents[] = {
    { 0, 1565, "B",  false},  // new workbook
    { 1, 1558, "SR", false},  // selection changed
    { 2, 1559, "SR", true},   // before a double click
    { 3, 1560, "SR", true},   // before a right click
    { 4, 1561, "S",  false},  // sheet activated
    { 5, 1562, "S",  false},  // sheet deactivated
    { 6, 1563, "S",  false},  // sheet calculated
    { 7, 1564, "SR", false},  // sheet changed
    { 8, 1567, "B",  false},  // workbook opened
    { 9, 1568, "B",  false},  // workbook activated
    {10, 1569, "B",  false},  // workbook deactivated
    {11, 1570, "B",  true},   // before a workbook closes
    {12, 1571, "BF", true},   // before a workbook is saved
    {13, 1572, "B",  true},   // 13, 15 and 16 can only be had by a macro
    {14, 1573, "BS", false},  // new sheet in a workbook
    {15, 1574, "B",  false},
    {16, 1575, "B",  false},
    {20, 2612, "",   false},  // calculation is over
    {21, 2911, "BF", false},  // after a workbook was saved
};
// clang-format on

constexpr bool NumbersAscendBelow(int limit) {
  int least = 0;
  for (const XlEventRow& row : kEvents) {
    if (row.number < least || row.number >= limit) return false;
    least = row.number + 1;
  }
  return true;
}
static_assert(NumbersAscendBelow(kXlEventNumbers));

template <typename Predicate>
const XlEventRow* FindRow(Predicate is_sought) {
  const auto* const found = std::find_if(std::begin(kEvents), std::end(kEvents), is_sought);
  return found != std::end(kEvents) ? found : nullptr;
}

XlMacroArgument MacroArgument(char letter, const XlEventArgument& argument) {
  if (const bool* flag = std::get_if<bool>(&argument)) return *flag;
  const IXlComObject* const object = std::get<const IXlComObject*>(argument);
  if (object == nullptr) return std::u16string();
  return letter == 'R' ? object->AddressLocal() : object->Name();
}

// Alerts of the macro's own doing would stand in the way of what Excel is about to do.
class AlertsOff {
 public:
  explicit AlertsOff(IXllCom& com) : com_(com) {
    bool shown = false;
    if (com_.GetDisplayAlerts(shown) && shown) switched_off_ = com_.SetDisplayAlerts(false);
  }
  AlertsOff(const AlertsOff&) = delete;
  AlertsOff& operator=(const AlertsOff&) = delete;
  ~AlertsOff() {
    if (switched_off_) com_.SetDisplayAlerts(true);
  }

 private:
  IXllCom& com_;
  bool switched_off_ = false;
};

}  // namespace

const XlEventRow* FindEventRow(int number) {
  return FindRow([number](const XlEventRow& row) { return row.number == number; });
}

const XlEventRow* FindEventRowOfDispatchId(int dispatch_id) {
  return FindRow([dispatch_id](const XlEventRow& row) { return row.dispatch_id == dispatch_id; });
}

void CXlEventForwarding::SwitchOn(int number) {
  app_.AttachCom();
  IsOnFlag(number) = true;
}

bool CXlEventForwarding::CallEventMacro(int number, std::span<const XlEventArgument> arguments) {
  const XlEventRow* const row = FindEventRow(number);
  if (row == nullptr) return false;
  std::vector<XlMacroArgument> values;
  std::u16string macro = MacroOf(number);
  if (macro.empty()) {
    if (observer_function_.empty() || !IsOn(number)) return false;
    macro = observer_function_;
    values.emplace_back(number);
  }
  const char* letter = row->code;
  for (const XlEventArgument& argument : arguments) {
    if (*letter == '\0') break;
    values.push_back(MacroArgument(*letter++, argument));
  }

  IXllCom* const com = app_.AttachCom();
  if (com == nullptr) return false;
  const AlertsOff alerts_off(*com);
  bool answer = false;
  const bool called = com->Run(macro, values, row->wants_result ? &answer : nullptr);
  return called && answer;
}

std::u16string ObserverFunctionName(std::u16string_view path) {
  return u"xll_" + MacroBaseName(path) + u"_observer";
}

}  // namespace quantiverse
