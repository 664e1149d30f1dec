#include "runtime/MMTimerFMX.h"

namespace qx {

TMMTimer::TMMTimer(TFmxObject* owner) : TTimer(owner) { FServiceScope.Restore(); }

}  // namespace qx
