#include "addin/library_entry.h"

#include "addin/addin_state.h"
#include "addin/return_block.h"
#include "addin/xlapp.h"

namespace quantiverse {
namespace {

bool HandleReason(XlLibraryReason reason, const std::string& path) {
  CXllApp* const app = CXllApp::Instance();
  switch (reason) {
    case XlLibraryReason::kAttach:
      return AttachReturnBlocks() && (app == nullptr || app->OnAttach(path));
    case XlLibraryReason::kThreadDetach:
      DetachThreadsReturnBlock();
      return true;
    case XlLibraryReason::kDetach:
      if (app != nullptr) app->OnDetach();
      DetachReturnBlocks();
      return true;
  }
  return true;
}

}  // namespace

// What a call brings about may load or end things, and so come back in here.
bool LibraryEntry(XlLibraryReason reason, const std::string& path) {
  int& depth = State().app.entry_depth;
  if (depth > 0) return true;
  ++depth;
  const bool is_done = HandleReason(reason, path);
  --depth;
  return is_done;
}

}  // namespace quantiverse
