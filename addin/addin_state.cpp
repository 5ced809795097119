#include "addin/addin_state.h"

namespace quantiverse {
namespace {

// Ready before any constructor runs, since static records of other sources link into it. All that
// changes is in here. NOLINTNEXTLINE(cppcoreguidelines-avoid-non-const-global-variables)
constinit AddinState state;

}  // namespace

AddinState& State() { return state; }

}  // namespace quantiverse
