#pragma once

#include <memory>

#include "addin/services/com_system.h"
#include "addin/windows/com_pointer.h"

namespace quantiverse {

// Excel's application events: {00024413-0000-0000-C000-000000000046}.
inline constexpr IID kAppEvents = {0x00024413, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};

// IXlDispatch::Advise, for the object of an Application.
XlComStep AdviseSink(IUnknown& application, IXlEventReceiver& receiver,
                     std::unique_ptr<IXlComConnection>& connection);

}  // namespace quantiverse
