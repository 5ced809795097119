#pragma once

#include <memory>
#include <span>
#include <string>

#include "addin/dual_string.h"
#include "addin/exceptions.h"
#include "addin/platform_services.h"
#include "addin/registration.h"
#include "addin/services/com.h"
#include "addin/services/events.h"
#include "addin/services/ribbon.h"
#include "addin/services/wizard.h"
#include "addin/xloper.h"

namespace quantiverse {

// The characters that separate list items and name rows and columns where the user is.
struct XlLocaleMarks {
  char list_separator = ',';
  char row = 'R';
  char column = 'C';
};

// The application that an add-in is: a static object of the library, one at most. It makes itself
// known when it is constructed, and the entry points reach everything else through it.
//
// Its life: attached when the library has been loaded, opened and closed by Excel, detached before
// the library goes. A derived class has its say where operations are virtual.
//
// All on Excel's main thread, but for OnException.
class CXllApp : public IXlRegistrationSite,
                public IXlEventApp,
                public IXlEventReceiver,
                public IXlpRibbonApp {
 public:
  CXllApp();
  ~CXllApp() override;

  // Null as long as there is none.
  static CXllApp* Instance();

  // The library has been loaded or is about to go. Excel can't be called.
  // path: of the library's file, as the system knows it.
  // false: the library is of no use.
  virtual bool OnAttach(const std::string& path);
  virtual void OnDetach();

  // What Excel asks for.
  // 0: the opening was cancelled. Throws what goes wrong.
  int Open();
  virtual void OnOpened() {}  // behind an opening that went well
  void Close();
  void Remove();

  // The user adds the add-in to Excel's list, or removes it. OnAdd gives 0 to refuse.
  virtual void OnBeforeAdd() {}
  virtual int OnAdd() { return 1; }
  virtual void OnBeforeRemove() {}

  // A caught exception becomes the value that a cell shows. Any thread.
  virtual void OnException(CXlOper& result, const CXlRuntimeException& exception);

  // Excel's object model tells of an event.
  bool OnExcelEvent(int number, std::span<const XlEventArgument> arguments) override;

  // A control of the ribbon wants to know something; a value never assigned is no answer.
  virtual CXlOper OnRibbonCallback(const CXlRibbonCallback& callback);

  // The file of the add-in as Excel names it: into `name`, giving the code of the call, and as
  // text, which is empty if the call fails.
  virtual int FetchFileName(CXlOper& name);
  std::string FileName() override;

  // What to call this add-in in a message, whatever else is missing.
  std::string NameForMessages();

  CXlFunctions& Functions() { return functions_; }
  CXllEvents& Events() { return events_; }
  CXlpRibbon& Ribbon() { return ribbon_; }
  [[nodiscard]] bool IsStarted() const { return is_started_; }
  [[nodiscard]] const std::string& Folder() const { return folder_; }
  [[nodiscard]] const XlLocaleMarks& LocaleMarks() const { return locale_marks_; }

  void SetDisplayName(std::string name) { display_name_ = CXlDualString(std::move(name)); }
  // To be set before the add-in is opened; otherwise it is the file beside the library that has
  // the ending ".chm".
  void SetHelpFile(std::string file) { help_file_ = std::move(file); }
  // Before the add-in is opened.
  void SetWizardRegistry(std::unique_ptr<CXlWizExUIFunctionRegistry> registry) {
    wizard_registry_ = std::move(registry);
  }
  // For a hook other than the system's, which comes of itself when the registry wants it.
  void SetWizardHook(std::unique_ptr<IXlWizardHook> hook) { wizard_hook_ = std::move(hook); }
  // Null where Excel has no such dialog.
  [[nodiscard]] const IXlFormulaWizardDetector* WizardDetector() const {
    return wizard_detector_.get();
  }

  // For registering and for the services.
  void NotifyRegisterFunctions() override;
  std::string HelpFile() override { return help_file_; }
  IXllCom* AttachCom() override;
  [[nodiscard]] bool IsExcel12() const override;
  [[nodiscard]] std::u16string DisplayName() const override { return display_name_.Wide(); }
  [[nodiscard]] std::u16string FilePath() const override;
  std::u16string* FindFunctionText(std::u16string_view name) override;
  void RequestData(std::u16string_view server, std::u16string_view file, std::u16string_view topic1,
                   std::u16string_view topic2) override;

 protected:
  // The opening begins; what it needs to know of Excel is known.
  virtual void OnBeforeOpen() {}
  // 0 cancels the opening.
  virtual int OnOpen() { return 1; }
  virtual void OnClose() {}

  // Excel has refused functions: asks the user whether to go on without them.
  virtual bool OnFailedFunctions();

 private:
  void FindFile();
  int OpenInOrder();
  void AddObserverFunction();
  bool RegisterAllFunctions();
  void ConnectWizard();
  void ReadLocaleMarks();

  CXlDualString display_name_;
  std::string module_path_;
  std::string file_name_;  // as Excel told it when the opening began
  std::string folder_;     // of that, without the last backslash
  std::string help_file_;
  CXlFunctions functions_{*this};
  bool is_started_ = false;
  std::unique_ptr<IXllCom> com_;
  CXllEvents events_{*this};
  CXlpRibbon ribbon_{*this};
  std::unique_ptr<IXlFormulaWizardDetector> wizard_detector_ = PlatformWizardDetector();
  XlLocaleMarks locale_marks_;
  std::unique_ptr<CXlWizExUIFunctionRegistry> wizard_registry_;
  // Knows the registry. Null until it is wanted, and where Excel's dialogs can't be extended.
  std::unique_ptr<IXlWizardHook> wizard_hook_;
};

}  // namespace quantiverse
