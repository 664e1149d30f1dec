#include "base/Unknown.h"

#include "base/ComPtr.h"

namespace qx {

bool SameInterface(IUnknown* a, IUnknown* b) {
  if (!a || !b) return a == b;
  ComPtr<IUnknown> ia, ib;
  if (Failed(a->QueryInterface(IUnknown::IID, ia.put_void()))) return false;
  if (Failed(b->QueryInterface(IUnknown::IID, ib.put_void()))) return false;
  return ia.get() == ib.get();
}

}  // namespace qx
