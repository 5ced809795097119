#include "addin/platform_services.h"

// Object models and dialogs are Excel's and Windows's own.
namespace quantiverse {

IXlComSystem* PlatformComSystem() { return nullptr; }
std::unique_ptr<IXlWizardHook> PlatformWizardHook() { return nullptr; }
std::unique_ptr<IXlFormulaWizardDetector> PlatformWizardDetector() { return nullptr; }

}  // namespace quantiverse
