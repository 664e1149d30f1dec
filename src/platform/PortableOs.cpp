#include "platform/PortableOs.h"

#include <stdexcept>

namespace qx {

IPortableOs& PortableOs() {
  IPortableOs* os = Platform().Portable();
  if (!os) throw std::logic_error("The platform is not the portable emulation");
  return *os;
}

}  // namespace qx
