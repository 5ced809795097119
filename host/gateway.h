#pragma once

#include "host/host.h"

namespace quantiverse::host {

// One call of Excel by an add-in, whichever entry it came through: what is asked is logged and
// done, or what the script wants instead, and the result handed out.
// result: may be null; untouched unless the code is 0.
template <class Form>
int call_host(Host& host, EntryPoint entry, int function, Record<Form>* result, int count,
              Record<Form>** arguments);

}  // namespace quantiverse::host
