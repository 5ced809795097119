#pragma once

#include "addin/menu.h"
#include "addin/xlapp.h"

namespace quantiverse {

// This add-in: the base with a name, the functions of the static records, and a menu.
class CQuantiverseApp final : public CXllApp {
 public:
  bool OnAttach(const std::string& path) override;

 protected:
  int OnOpen() override;
  void OnClose() override;

 private:
  CXlMenu menu_;
};

}  // namespace quantiverse
