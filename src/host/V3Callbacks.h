#pragma once

#include <functional>

#include "base/Text.h"
#include "host/QuillmarV3Interface.h"

namespace qx {

// Method and closure forms of the same callbacks; where both are set, the method wins.
using TQxIEventProc = std::function<HResult(const TString& cpEventId, IQxIEvent* ipEvent)>;
using TQxIEventProcedure = std::function<HResult(const TString& cpEventId, IQxIEvent* ipEvent)>;
using TQxIActionProc = std::function<HResult(IQxIStringDictionary* parameters)>;
using TQxIActionProcedure = std::function<HResult(IQxIStringDictionary* parameters)>;

}  // namespace qx
