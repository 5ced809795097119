// The static objects that make the add-in's library what it is. They are no part of qv_addin, so
// that tests can have an application of their own.
#include "addin/addin_state.h"
#include "addin/quantiverse_app.h"

// Static, as all that asks for them is: they are there when the library has been loaded.
// NOLINTBEGIN(cppcoreguidelines-avoid-non-const-global-variables)
namespace quantiverse {
namespace {

CQuantiverseApp app;

CRibbonEventRegistrar ribbon_registrar(State().static_observers.Of<CXlRegisterFunctionsEvent>(),
                                       [] {
                                         return static_cast<IXlpRibbonApp*>(CXllApp::Instance());
                                       });

}  // namespace
}  // namespace quantiverse
// NOLINTEND(cppcoreguidelines-avoid-non-const-global-variables)
