#include "addin/com_search.h"

#include "addin/addin_state.h"
#include "addin/excel_call.h"
#include "addin/messages.h"
#include "addin/services/com_objects.h"
#include "addin/xlapp.h"

namespace quantiverse {
namespace {

constexpr const char16_t* kCheckInstance = u"xlCheckInstance";

// Excel's code of a request, or of the error value that is its answer.
int CodeOf(int code, const CXlOper& answer) {
  if (code != xlretSuccess || !answer.IsError()) return code;
  const auto* const record = answer.Get<XLOPER12>();
  return record != nullptr ? record->val.err : answer.Get<XLOPER>()->val.err;
}

// Sets the failure of a request of Excel. Its code is none of the system's.
bool FailExcel(const char16_t* format, int code, XlComFailure& failure) {
  const auto shown = HexText<char16_t>(static_cast<std::uint32_t>(code));
  failure = {Format(format, shown.c_str()), static_cast<XlComResult>(code)};
  return false;
}

bool FailStep(XlComStep step, XlComFailure& failure) {
  const auto shown = HexText<char16_t>(step.result);
  failure = {Format(u"{0}() failed with error {1}", step.call, shown.c_str()), step.result};
  return false;
}

// Of a debugger's text: hexadecimal digits alone, small ones.
std::u16string TraceHex(std::uintptr_t number) {
  std::u16string digits;
  do {
    digits.insert(digits.begin(), u"0123456789abcdef"[number % 16]);
    number /= 16;
  } while (number != 0);
  return digits;
}

CXlFunctionRegistration CheckInstanceRegistration() {
  XlFunctionRecord record;
  record.export4 = "xlCheckInstance";
  record.types4 = "J";
  record.name = kCheckInstance;
  record.macro_type = 2;
  record.category = "Private Macros";
  record.help = "Implementation function used by library initialisation routines";
  record.help_id = 3;
  return CXlFunctionRegistration(record);
}

// Excel's program, as the system's registry names it.
const char16_t* ApplicationProgram() {
  constexpr int kLastWithNumber = 7;
  return State().excel.version > kLastWithNumber ? u"Excel.Application" : u"Excel.Application.5";
}

}  // namespace

bool CXlInstanceSearch::Find(XlDispatchPtr& application, XlComFailure& failure) {
  bool is_found =
      InitCheckInstance(failure) && InitExcelOleFix(failure) && IterateRot(application, failure);
  if (!TermExcelOleFix(failure)) is_found = false;
  app_.Functions().Remove(kCheckInstance);
  return is_found;
}

bool CXlInstanceSearch::InitCheckInstance(XlComFailure& failure) {
  if (app_.Functions().AddAndRegister(CheckInstanceRegistration())) return true;
  failure = {u"InitCheckInstance() failed to register callback", kComDone};
  return false;
}

// An Excel without a workbook doesn't stand in the running object table. The user needn't see the
// one that it gets.
bool CXlInstanceSearch::InitExcelOleFix(XlComFailure& failure) {
  int code = XlCommand(xlcEcho, false);
  if (code != xlretSuccess) {
    return FailExcel(u"InitExcelOleFix() failed to switch off workbook echo with error {0}", code,
                     failure);
  }
  has_no_echo_ = true;
  constexpr double kOfOneSheet = 6.0;
  CXlOper answer;
  code = Excel(answer, xlcNew, kOfOneSheet);
  has_workbook_ = code == xlretSuccess && !answer.IsError();
  return has_workbook_ ||
         FailExcel(u"InitExcelOleFix() failed to create new workbook with error {0}",
                   CodeOf(code, answer), failure);
}

bool CXlInstanceSearch::TermExcelOleFix(XlComFailure& failure) {
  bool is_done = true;
  if (has_workbook_) {
    const int code = XlCommand(xlcClose, false);
    if (code != xlretSuccess) {
      is_done = FailExcel(u"TermExcelOleFix() failed to close temporary workbook with error {0}",
                          code, failure);
    }
  }
  if (has_no_echo_) {
    const int code = XlCommand(xlcEcho, true);
    // The text is what it is: nothing takes the place of this "%d".
    if (code != xlretSuccess) {
      is_done = FailExcel(u"TermExcelOleFix() failed to restore echo with error %d", code, failure);
    }
  }
  has_workbook_ = false;
  has_no_echo_ = false;
  return is_done;
}

// The active object is Excel's oldest instance: the right one where there is but one.
bool CXlInstanceSearch::IterateRot(XlDispatchPtr& application, XlComFailure& failure) {
  if (TryActiveObject(application, failure) || TryRunningObjects(application, failure)) return true;
  if (failure.text.empty()) failure.text = u"Failed to find running application";
  return false;
}

bool CXlInstanceSearch::TryActiveObject(XlDispatchPtr& application, XlComFailure& failure) {
  const std::u16string program = ApplicationProgram();
  const auto fail = [&](const char16_t* format, XlComResult result) {
    const auto shown = HexText<char16_t>(result);
    failure = {Format(format, program.c_str(), shown.c_str()), result};
    return false;
  };
  system_.Trace(u"XlpComImpl: IterateRot: Looking for application string '" + program + u"'\n");
  XlClassId id;
  const XlComResult known = system_.ClassOfProgram(program.c_str(), id);
  system_.Trace(u"XlpComImpl: IterateRot: CLSIDFromProgID(" + program + u") returned " +
                TraceHex(known) + u'\n');
  if (ComFailed(known)) return fail(u"CLSIDFromProgID(\"{0}\", ...) failed with error {1}", known);

  XlDispatchPtr candidate;
  const XlComStep step = system_.ActiveObject(id, candidate);
  if (step.Failed()) {
    const bool is_active = step.call != std::u16string_view(u"GetActiveObject");
    return fail(is_active ? u"QueryInterface(IID_IDispatch) failed with error {1}"
                          : u"GetActiveObject(\"{0}\") failed with error {1}",
                step.result);
  }
  return TryCandidate(*candidate, application);
}

bool CXlInstanceSearch::TryRunningObjects(XlDispatchPtr& application, XlComFailure& failure) {
  std::unique_ptr<IXlRunningObjects> objects;
  const XlComStep step = system_.RunningObjects(objects);
  if (step.Failed()) return FailStep(step, failure);
  XlDispatchPtr candidate;
  while (objects->Next(candidate)) {
    if (candidate != nullptr && TryCandidate(*candidate, application)) return true;
  }
  return false;
}

bool CXlInstanceSearch::TryCandidate(IXlDispatch& candidate, XlDispatchPtr& application) {
  system_.Trace(u"XlpComImpl: IterateRot: Attempting GetApplicationDispID with pDispAnyApp=" +
                TraceHex(candidate.Address()) + u'\n');
  XlComValue value;
  const XlComStep step = GetComProperty(candidate, u"Application", kUserLocale, value);
  if (step.call == std::u16string_view(u"Invoke")) {
    system_.Trace(u"XlpComImpl: IterateRot: InvokeApplication returned " + TraceHex(step.result) +
                  u'\n');
  }
  const XlDispatchPtr object = ObjectOf(value);
  if (step.Failed() || object == nullptr || !CallCheckInstance(*object)) return false;
  application = object;
  return true;
}

// In another process CALL reaches another copy of this library, whose flags are its own. The "%" in
// front of the file belongs to the text, odd as it is.
bool CXlInstanceSearch::CallCheckInstance(IXlDispatch& application) {
  const std::u16string file = app_.FilePath();
  const std::u16string text = Format(u"CALL(\"%{0}\",\"{1}\",\"j\")", file.c_str(), kCheckInstance);
  system_.Trace(u"XlpComImpl: CallCheckInstance: about to RunExcelMacroFromDisp(" + text + u")\n");
  found_ = false;
  in_progress_ = true;
  XlComValue dropped;
  RunExcelMacroFromDisp(application, text, dropped);
  in_progress_ = false;
  return found_;
}

}  // namespace quantiverse
