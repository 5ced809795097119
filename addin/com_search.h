#pragma once

#include <string>

#include "addin/services/com_system.h"

// The Excel that has loaded this add-in, sought among all that are running. It is the one in which
// a macro call of the add-in's own export arrives here.
namespace quantiverse {

class CXllApp;

class CXlInstanceSearch {
 public:
  CXlInstanceSearch(IXlComSystem& system, CXllApp& app) : system_(system), app_(app) {}
  CXlInstanceSearch(const CXlInstanceSearch&) = delete;
  CXlInstanceSearch& operator=(const CXlInstanceSearch&) = delete;
  ~CXlInstanceSearch() = default;

  // The whole route, after which Excel is as it was: a registered macro and a temporary workbook
  // come and go.
  // false: `failure` tells why; `application` isn't null if it is the end that has failed.
  bool Find(XlDispatchPtr& application, XlComFailure& failure);

  // The export has been called. Outside of a call by this search that says nothing.
  void OnCheckInstance() { found_ = found_ || in_progress_; }

 private:
  // In the order in which they are taken; those before Iterate leave something to be undone.
  bool InitCheckInstance(XlComFailure& failure);
  bool InitExcelOleFix(XlComFailure& failure);
  bool IterateRot(XlDispatchPtr& application, XlComFailure& failure);
  bool TermExcelOleFix(XlComFailure& failure);

  bool TryActiveObject(XlDispatchPtr& application, XlComFailure& failure);
  bool TryRunningObjects(XlDispatchPtr& application, XlComFailure& failure);
  bool TryCandidate(IXlDispatch& candidate, XlDispatchPtr& application);
  bool CallCheckInstance(IXlDispatch& application);

  IXlComSystem& system_;
  CXllApp& app_;
  bool in_progress_ = false;
  bool found_ = false;
  bool has_workbook_ = false;  // a temporary one is open
  bool has_no_echo_ = false;   // the screen isn't updated
};

}  // namespace quantiverse
