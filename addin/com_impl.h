#pragma once

#include <memory>
#include <string>

#include "addin/com_macros.h"
#include "addin/com_search.h"
#include "addin/services/com.h"
#include "addin/services/com_system.h"

// The attachment to Excel's object model. How it finds the Application object, and how it hears of
// events, depends on the version of Excel; what it asks of the system goes through IXlComSystem.
namespace quantiverse {

class CXllComImpl final : public IXllCom {
 public:
  explicit CXllComImpl(IXlComSystem& system) : system_(system) {}
  ~CXllComImpl() override;

  bool Init(XlComFailure& failure) override;
  bool Connect(bool on, XlComFailure& failure) override;
  void Term() override;
  bool GetDisplayAlerts(bool& shown) override;
  bool SetDisplayAlerts(bool shown) override;
  bool Run(const std::u16string& macro, std::span<const XlMacroArgument> arguments,
           bool* answer) override;

  // Excel has called an export of the add-in.
  void OnCheckInstance();
  void OnOldStyleMacro(XlOldStyleEvent event);

 private:
  bool FindApplication(XlComFailure& failure);
  bool FindByWindow(XlComFailure& failure);
  bool GetApplicationOf(std::uintptr_t workbook_window, XlComFailure& failure);
  bool SearchAll(XlComFailure& failure);
  bool ConnectSink(XlComFailure& failure);
  void Disconnect();

  IXlComSystem& system_;
  CXllApp* app_ = nullptr;
  CXlInstanceSearch* search_ = nullptr;  // while one is on
  XlDispatchPtr application_;            // null as long as nothing is attached
  bool is_connected_ = false;
  std::unique_ptr<IXlComConnection> connection_;  // the sink's
  CXlOldStyleMacros macros_;
};

// Null where the system has no object model to attach to.
std::unique_ptr<IXllCom> MakeCom();

}  // namespace quantiverse
