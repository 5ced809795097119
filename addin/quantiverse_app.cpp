#include "addin/quantiverse_app.h"

namespace quantiverse {

bool CQuantiverseApp::OnAttach(const std::string& path) {
  CXllApp::OnAttach(path);
  SetDisplayName("Quantiverse");
  Functions().BuildRegistrations();
  return true;
}

// A menu that Excel refuses is no reason not to open.
int CQuantiverseApp::OnOpen() {
  menu_.Init("Quantiverse", "Quantiverse add-in menu");
  menu_.AddItem("Quantiverse", "Quantiverse_Macro", "Quantiverse Function");
  menu_.Create(nullptr, "Quantiverse", 0);
  return 1;
}

void CQuantiverseApp::OnClose() { static_cast<void>(menu_.Delete()); }

}  // namespace quantiverse
