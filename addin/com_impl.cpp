#include "addin/com_impl.h"

#include <vector>

#include "addin/addin_state.h"
#include "addin/excel_call.h"
#include "addin/services/com_objects.h"
#include "addin/xlapp.h"

namespace quantiverse {
namespace {

constexpr int kFirstWithWindows = 8;  // whose windows lead to the Application object
constexpr int kLastWithoutEvents = 5;

bool Fail(const char16_t* text, XlComResult result, XlComFailure& failure) {
  failure = {text, result};
  return false;
}

// Where no workbook is open there is no window to ask: opens one, and closes it again.
class TemporaryWorkbook {
 public:
  TemporaryWorkbook() = default;
  TemporaryWorkbook(const TemporaryWorkbook&) = delete;
  TemporaryWorkbook& operator=(const TemporaryWorkbook&) = delete;
  ~TemporaryWorkbook() {
    if (is_open_) XlCommand(xlcClose, false);
  }
  void Open() {
    constexpr double kWorksheet = 1.0;
    CXlOper answer;
    is_open_ = Excel(answer, xlcNew, kWorksheet) == xlretSuccess && !answer.IsError();
  }

 private:
  bool is_open_ = false;
};

}  // namespace

CXllComImpl::~CXllComImpl() {
  Term();
  CXllComImpl*& instance = State().com.instance;
  if (instance == this) instance = nullptr;
}

bool CXllComImpl::Init(XlComFailure& failure) {
  CXllComImpl*& instance = State().com.instance;
  if (instance != nullptr) {  // be it this one
    return Fail(u"An instance of CXllCom has already been created", kComDone, failure);
  }
  // An Init that has failed may have got as far as that.
  if (application_ != nullptr) return Fail(u"Init() has already been called", kComDone, failure);
  app_ = CXllApp::Instance();
  if (app_ == nullptr) return Fail(u"No CXllApp instance found", kComDone, failure);
  const XlComResult initialized = system_.Initialize();
  if (ComFailed(initialized)) return Fail(u"CoInitialize", initialized, failure);
  // The exports that Excel calls meanwhile find their way by this.
  instance = this;
  if (FindApplication(failure)) return true;
  instance = nullptr;
  return false;
}

bool CXllComImpl::FindApplication(XlComFailure& failure) {
  return State().excel.version >= kFirstWithWindows ? FindByWindow(failure) : SearchAll(failure);
}

// What Initialize began stays: the object that is found here belongs to Excel's own thread.
bool CXllComImpl::FindByWindow(XlComFailure& failure) {
  CXlOper handle;
  Excel(handle, xlGetHwnd);
  const std::uintptr_t main_window =
      system_.FindMainWindow(static_cast<std::uint16_t>(handle.ToInt()));
  TemporaryWorkbook workbook;
  std::uintptr_t window = system_.FindWorkbookWindow(main_window);
  if (window == 0) {
    workbook.Open();
    window = system_.FindWorkbookWindow(main_window);
  }
  if (window == 0) return Fail(u"EnumChildWindows", kComDone, failure);
  return GetApplicationOf(window, failure);
}

bool CXllComImpl::GetApplicationOf(std::uintptr_t workbook_window, XlComFailure& failure) {
  XlDispatchPtr object;
  const XlComResult result = system_.ObjectOfWindow(workbook_window, object);
  if (ComFailed(result)) return Fail(u"AccessibleObjectFromWindow", result, failure);
  XlComValue value;
  const XlComStep step = GetComProperty(*object, u"Application", kSystemLocale, value);
  application_ = ObjectOf(value);
  return application_ != nullptr || Fail(step.call, step.result, failure);
}

bool CXllComImpl::SearchAll(XlComFailure& failure) {
  CXlInstanceSearch search(system_, *app_);
  search_ = &search;
  const bool is_found = search.Find(application_, failure);
  search_ = nullptr;
  system_.Uninitialize();
  return is_found;
}

bool CXllComImpl::Connect(bool on, XlComFailure& failure) {
  if (on == is_connected_) return true;
  if (!on) {
    Disconnect();
    return true;
  }
  if (application_ == nullptr) return Fail(u"Init", kComDone, failure);
  is_connected_ = State().excel.version > kLastWithoutEvents
                      ? ConnectSink(failure)
                      : macros_.Connect(*app_, *application_, failure);
  return is_connected_;
}

bool CXllComImpl::ConnectSink(XlComFailure& failure) {
  const XlComStep step = application_->Advise(*app_, connection_);
  return !step.Failed() || Fail(step.call, step.result, failure);
}

void CXllComImpl::Disconnect() {
  if (connection_ != nullptr) {
    connection_.reset();
  } else {
    macros_.Disconnect(*application_);
  }
  is_connected_ = false;
}

void CXllComImpl::Term() {
  if (is_connected_) Disconnect();
  application_ = nullptr;
}

bool CXllComImpl::GetDisplayAlerts(bool& shown) {
  XlComValue value;
  if (application_ == nullptr) return false;
  if (GetComProperty(*application_, u"DisplayAlerts", kUserLocale, value).Failed()) return false;
  shown = BoolOf(value);
  return true;
}

bool CXllComImpl::SetDisplayAlerts(bool shown) {
  return application_ != nullptr &&
         !PutComProperty(*application_, u"DisplayAlerts", shown).Failed();
}

bool CXllComImpl::Run(const std::u16string& macro, std::span<const XlMacroArgument> arguments,
                      bool* answer) {
  if (application_ == nullptr) return false;
  std::vector<XlComValue> values = {macro};
  for (const XlMacroArgument& argument : arguments) {
    values.push_back(std::visit([](const auto& plain) -> XlComValue { return plain; }, argument));
  }
  return !CallComMethod(*application_, u"Run", values, answer).Failed();
}

void CXllComImpl::OnCheckInstance() {
  if (search_ != nullptr) search_->OnCheckInstance();
}

void CXllComImpl::OnOldStyleMacro(XlOldStyleEvent event) {
  if (app_ == nullptr) return;
  // Excel is asked for the name at every such entry; nothing below depends on the answer.
  CXlOper name;
  app_->FetchFileName(name);
  if (application_ != nullptr && is_connected_) macros_.OnMacro(*app_, *application_, event);
}

std::unique_ptr<IXllCom> MakeCom() {
  IXlComSystem* const system = State().com.find_system();
  return system != nullptr ? std::make_unique<CXllComImpl>(*system) : nullptr;
}

}  // namespace quantiverse
