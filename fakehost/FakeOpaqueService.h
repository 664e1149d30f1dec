#pragma once

#include "base/ComObject.h"

namespace qx {

// A host service whose operations the module does not call yet: it exists and answers
// QueryInterface for its identity, nothing more.
template <class I>
class TFakeOpaqueService : public TInterfacedObject<I> {};

}  // namespace qx
