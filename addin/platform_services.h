#pragma once

#include <memory>

#include "addin/services/wizard.h"

// The services that only some platforms have: null where there is none.
namespace quantiverse {

class IXlComSystem;

// The way to other programs' objects. It lives as long as the library.
IXlComSystem* PlatformComSystem();

// Extensions of the Function Arguments dialog.
std::unique_ptr<IXlWizardHook> PlatformWizardHook();
std::unique_ptr<IXlFormulaWizardDetector> PlatformWizardDetector();

}  // namespace quantiverse
