#include "addin/excel_call.h"

#include <cstdarg>
#include <vector>

#include "addin/addin_state.h"
#include "addin/xloper_convert.h"

namespace quantiverse {
namespace {

int CallExcel(int function, XLOPER* result, int count, XLOPER** arguments) {
  return Excel4v(function, result, count, arguments);
}
int CallExcel(int function, XLOPER12* result, int count, XLOPER12** arguments) {
  return Excel12v(function, result, count, arguments);
}

bool ConvertToForm(const CXlOper& argument, XLOPER& record) {
  return ConvertRecord(*argument.Get<XLOPER12>(), record);
}
bool ConvertToForm(const CXlOper& argument, XLOPER12& record) {
  return ConvertRecord(*argument.Get<XLOPER>(), record);
}

// The records of a call: those of the arguments, and what had to be made for it.
template <XlRecord Record>
class CallRecords {
 public:
  explicit CallRecords(std::size_t count) : count_(count) {
    if (count > kFew) many_.resize(count);
  }
  CallRecords(const CallRecords&) = delete;
  CallRecords& operator=(const CallRecords&) = delete;
  ~CallRecords() {
    for (Record& record : made_) FreeContents(record);
  }

  int Add(const CXlOper* argument) {
    if (argument == nullptr) return xlretInvXloper;
    if (const auto* record = argument->Get<Record>()) {
      // Excel reads arguments only. NOLINTNEXTLINE(*-const-cast)
      AddPointer(const_cast<Record*>(record));
      return xlretSuccess;
    }
    if (argument->Type() == 0) return xlretInvXloper;
    made_.reserve(count_);  // the records must not move
    if (!ConvertToForm(*argument, made_.emplace_back())) return kCannotCall;
    AddPointer(&made_.back());
    return xlretSuccess;
  }
  int Call(int function, Record* result) {
    return CallExcel(function, result, static_cast<int>(added_), Pointers());
  }

 private:
  static constexpr std::size_t kFew = 4;  // as most calls have; these take no memory

  Record** Pointers() { return count_ > kFew ? many_.data() : few_; }
  void AddPointer(Record* record) { Pointers()[added_++] = record; }

  std::size_t count_;
  std::size_t added_ = 0;
  Record* few_[kFew];
  std::vector<Record*> many_;
  std::vector<Record> made_;
};

template <XlRecord Record>
int CallInForm(CXlOper& result, int function, std::span<const CXlOper* const> arguments) {
  CallRecords<Record> records(arguments.size());
  for (const CXlOper* const argument : arguments) {
    const int code = records.Add(argument);
    if (code != xlretSuccess) return code;
  }
  Record answer{};
  const int code = records.Call(function, &answer);
  if (code == xlretSuccess) result.TakeFromExcel(answer);
  return code;
}

MdCallBack12Entry* FindMdCallBack12() {
  std::atomic<MdCallBack12Entry*>& known = State().excel.md_callback12;
  MdCallBack12Entry* entry = known;
  if (entry == nullptr) {
    entry = Host().FindMdCallBack12();
    if (entry != nullptr) known = entry;
  }
  return entry;
}

}  // namespace

int ExcelV(CXlOper& result, XlMode mode, int function, std::span<const CXlOper* const> arguments) {
  if (mode == XlMode::kRunning) mode = IsExcel12() ? XlMode::k12 : XlMode::k4;
  if (mode == XlMode::k12) {
    return IsExcel12() ? CallInForm<XLOPER12>(result, function, arguments) : kCannotCall;
  }
  if (arguments.size() > kMaxArguments4) return kCannotCall;
  return CallInForm<XLOPER>(result, function, arguments);
}

int RegisterExcel(CXlOper& result, XlMode mode, int function, std::span<const CXlOper> arguments) {
  std::vector<const CXlOper*> pointers;
  pointers.reserve(arguments.size());
  for (const CXlOper& argument : arguments) pointers.push_back(&argument);
  return ExcelV(result, mode, function, pointers);
}

bool XlAlert(const CXlOper& text, int type) {
  CXlOper answer;
  if (Excel(answer, xlcAlert, text, static_cast<double>(type)) != xlretSuccess) return false;
  return answer.ToBool();
}

int Excel4v(int function, XLOPER* result, int count, XLOPER** arguments) {
  Excel4vEntry* const entry = Host().Excel4v();
  return entry != nullptr ? entry(function, result, count, arguments) : xlretFailed;
}

int Excel12v(int function, XLOPER12* result, int count, XLOPER12** arguments) {
  MdCallBack12Entry* const entry = FindMdCallBack12();
  return entry != nullptr ? entry(function, count, arguments, result) : xlretFailed;
}

int Excel12(int function, XLOPER12* result, int count, ...) {
  if (count < 0 || count > kMaxArguments12) return xlretInvCount;
  XLOPER12* arguments[kMaxArguments12];
  va_list list;
  va_start(list, count);
  for (int i = 0; i < count; ++i) arguments[i] = va_arg(list, XLOPER12*);
  va_end(list);
  return Excel12v(function, result, count, arguments);
}

void FreeExcelResult(XLOPER& result) {
  Excel4Entry* const entry = Host().Excel4();
  if (entry != nullptr) entry(xlFree, nullptr, 1, &result);
}

void FreeExcelResult(XLOPER12& result) {
  XLOPER12* argument = &result;
  Excel12v(xlFree, nullptr, 1, &argument);
}

void SetMdCallBack12(MdCallBack12Entry* entry) {
  if (FindMdCallBack12() == nullptr) State().excel.md_callback12 = entry;
}

// Through the older generation's entry, since which one there is beside it is what we want to
// know. Excel answers with a text, and turns that into an integer itself.
void FindExcelVersion() {
  ExcelState& excel = State().excel;
  Excel4Entry* const entry = Host().Excel4();
  if (excel.version != 0 || entry == nullptr) return;

  XLOPER item{};
  XLOPER text{};
  MakeInteger(2, item);
  if (entry(xlfGetWorkspace | xlIntl, &text, 1, &item) != xlretSuccess) return;
  XLOPER type{};
  XLOPER version{};
  MakeInteger(xltypeInt, type);
  const int code = entry(xlCoerce | xlIntl, &version, 2, &text, &type);
  entry(xlFree, nullptr, 1, &text);
  if (code != xlretSuccess) return;
  if (TypeOf(version) != xltypeInt) {
    FreeExcelResult(version);
    return;
  }
  excel.version = version.val.w;
  excel.is_excel12 = excel.version >= 12;
}

}  // namespace quantiverse
