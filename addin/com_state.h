#pragma once

#include "addin/platform_services.h"

namespace quantiverse {

class CXllComImpl;

// What is known of Excel's object model.
struct ComState {
  // What there is to attach with; gives null where there is nothing.
  IXlComSystem* (*find_system)() = PlatformComSystem;
  CXllComImpl* instance = nullptr;  // the one whose Init is under way or went well
};

}  // namespace quantiverse
