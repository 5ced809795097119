#include "addin/xlapp.h"

#include <algorithm>
#include <utility>

#include "addin/addin_state.h"
#include "addin/com_impl.h"
#include "addin/excel_call.h"
#include "addin/messages.h"
#include "addin/workspace.h"

namespace quantiverse {
namespace {

// Of a message box: yes and no buttons and an exclamation mark, and the number of the yes button.
constexpr unsigned kAskWithExclamation = 52;
constexpr int kYes = 6;

constexpr int kWorkspaceListSeparator = 4;  // among Excel's locale settings

// An Excel that doesn't tell leaves the mark as it is.
void ReadMark(int index, char& mark) {
  CXlOper item;
  if (!GetWorkspaceItem(index, item) || !item.IsString()) return;
  const std::string text = item.ToText();
  if (!text.empty()) mark = text.front();
}

}  // namespace

CXllApp::CXllApp() { State().app.app = this; }

CXllApp::~CXllApp() {
  if (Instance() == this) State().app.app = nullptr;
}

CXllApp* CXllApp::Instance() { return State().app.app; }

bool CXllApp::OnAttach(const std::string& path) {
  module_path_ = path;
  events_.AddEarlyStaticObservers(State().static_observers);
  return true;
}

void CXllApp::OnDetach() {
  events_.RemoveAllObservers();
  functions_.Clear();
  if (com_ != nullptr) com_->Term();
  com_.reset();
  is_started_ = false;
}

int CXllApp::Open() {
  FindFile();
  const int result = OpenInOrder();
  ribbon_.AddinOpened();
  if (result != 0) {
    events_.AddStaticObservers(State().static_observers);
    ReadLocaleMarks();
  }
  is_started_ = true;
  return result;
}

// The part that ends where somebody cancels.
int CXllApp::OpenInOrder() {
  OnBeforeOpen();
  const int result = OnOpen();
  if (result == 0) return 0;
  CXllOpenEventArgs args;
  events_.Get<CXllOpenEvent>().Fire(args);
  if (args.cancel) return 0;
  ConnectWizard();
  return RegisterAllFunctions() ? result : 0;
}

void CXllApp::FindFile() {
  file_name_ = FileName();
  const std::size_t end = file_name_.find_last_of("\\/");
  folder_ = end != std::string::npos ? file_name_.substr(0, end) : "";
}

void CXllApp::ConnectWizard() {
  if (wizard_registry_ == nullptr) return;
  if (!wizard_registry_->IsEnabled() || !wizard_registry_->WantsWizard()) return;
  if (wizard_hook_ == nullptr) wizard_hook_ = PlatformWizardHook();
  if (wizard_hook_ == nullptr) return;
  wizard_hook_->Connect(*wizard_registry_);
  wizard_hook_->Install();
}

// An opening that failed and is tried again finds the function there.
void CXllApp::AddObserverFunction() {
  const std::u16string name = ObserverFunctionName(FilePath());
  events_.Forwarding().SetObserverFunction(name);
  if (FindFunctionText(name) != nullptr) return;
  XlFunctionRecord observer;
  observer.export4 = "CXlApp_ObserverEventHandler4";
  observer.export12 = "CXlApp_ObserverEventHandler12";
  observer.types4 = "RJPPP";
  observer.types12 = "RJQQQ";  // R in this one too: see the handler
  observer.name = name.c_str();
  observer.wide_arguments = u"EventNumber,Arg1,Arg2,Arg3";
  observer.macro_type = 2;
  observer.wide_category = u"User Defined";
  observer.help_id = 1;
  functions_.Add(CXlFunctionRegistration(observer));
}

bool CXllApp::RegisterAllFunctions() {
  constexpr std::size_t kEnding = 3;
  if (help_file_.empty() && file_name_.size() > kEnding) {
    help_file_ = file_name_.substr(0, file_name_.size() - kEnding) + "chm";
  }

  AddObserverFunction();
  if (functions_.RegisterFunctions() || OnFailedFunctions()) return true;
  functions_.UnregisterFunctions();
  return false;
}

bool CXllApp::OnFailedFunctions() {
  std::u16string names;
  for (const CXlFunctionRegistration& function : functions_.All()) {
    if (!function.registered) names += function.name + u'\n';
  }
  if (names.empty()) return true;
  const std::u16string text =
      FormatMessage<char16_t>(kMessageFailedFunctions, display_name_.Wide(), names.c_str());
  const std::u16string title = FormatMessage<char16_t>(kMessageLoadFailure);
  return Host().ShowMessageBox(text.c_str(), title.c_str(), kAskWithExclamation) == kYes;
}

void CXllApp::ReadLocaleMarks() {
  ReadMark(kWorkspaceListSeparator, locale_marks_.list_separator);
  ReadMark(kWorkspaceRow, locale_marks_.row);
  ReadMark(kWorkspaceColumn, locale_marks_.column);
}

void CXllApp::Close() {
  if (wizard_hook_ != nullptr && wizard_hook_->IsConnected()) wizard_hook_->Uninstall();
  if (State().app.is_opened) {
    CXlEventArgs args;
    events_.Get<CXllCloseEvent>().Fire(args);
    // An observer may have said otherwise.
    if (State().app.is_opened) OnClose();
  }
  ribbon_.AddinClosed();
  if (wizard_registry_ != nullptr) wizard_registry_->Forget();
}

void CXllApp::Remove() {
  if (!State().app.is_opened) return;
  OnBeforeRemove();
  functions_.UnregisterFunctions();
}

void CXllApp::OnException(CXlOper& result, const CXlRuntimeException& exception) {
  ExceptionToValue(result, exception);
}

bool CXllApp::OnExcelEvent(int number, std::span<const XlEventArgument> arguments) {
  return events_.Forwarding().CallEventMacro(number, arguments);
}

CXlOper CXllApp::OnRibbonCallback(const CXlRibbonCallback& callback) {
  return std::visit(
      []<typename Reply>(const Reply& reply) {
        if constexpr (std::same_as<Reply, std::monostate>) {
          return CXlOper();
        } else {
          return CXlOper(reply);
        }
      },
      DefaultRibbonReply(callback.callback));
}

int CXllApp::FetchFileName(CXlOper& name) { return Excel(name, xlGetName); }

std::string CXllApp::FileName() {
  CXlOper name;
  return FetchFileName(name) == xlretSuccess ? name.ToText() : "";
}

std::string CXllApp::NameForMessages() {
  std::string name = display_name_.Narrow();
  if (name.empty()) name = FileName();
  if (name.empty()) name = module_path_;
  return name.empty() ? "Add-in" : name;
}

void CXllApp::NotifyRegisterFunctions() {
  CXlEventArgs args;
  events_.Get<CXlRegisterFunctionsEvent>().Fire(args);
}

// An attachment that failed is tried anew by the next who wants it. One that lacks the flow of
// events alone is kept.
IXllCom* CXllApp::AttachCom() {
  const auto check = [](bool is_done, const XlComFailure& failure) {
    if (is_done) return;
    if (ComFailed(failure.result)) throw CXlComException(failure.text, failure.result);
    throw CXlComException(failure.text);
  };
  XlComFailure failure;
  if (com_ == nullptr) {
    std::unique_ptr<IXllCom> com = MakeCom();
    if (com == nullptr) return nullptr;
    check(com->Init(failure), failure);
    com_ = std::move(com);
  }
  check(com_->Connect(true, failure), failure);
  return com_.get();
}

bool CXllApp::IsExcel12() const { return quantiverse::IsExcel12(); }
std::u16string CXllApp::FilePath() const { return WideText(file_name_); }

std::u16string* CXllApp::FindFunctionText(std::u16string_view name) {
  auto& all = functions_.All();
  const auto found = std::find_if(all.begin(), all.end(),
                                  [name](const auto& function) { return function.name == name; });
  return found != all.end() ? &found->name : nullptr;
}

void CXllApp::RequestData(std::u16string_view server, std::u16string_view file,
                          std::u16string_view topic1, std::u16string_view topic2) {
  XlCommand(xlfRtd, server, XlMissing{}, file, topic1, topic2);
}

}  // namespace quantiverse
