#pragma once

namespace quantiverse {

class CXllApp;
class IXlWizardHook;

// What the entry points know of the application.
struct AppState {
  CXllApp* app = nullptr;  // the one there is; it writes itself in here
  bool is_opened = false;  // the last opening went well; closing leaves this as it is
  int entry_depth = 0;     // calls of the library's entry that aren't over
  // The one that is installed.
  IXlWizardHook* wizard_hook = nullptr;
};

}  // namespace quantiverse
