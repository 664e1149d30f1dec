#include "platform/portable/PortableOs.h"

#include <stdexcept>

namespace qx {

IPortableOs& PortableOs() {
  auto* os = dynamic_cast<IPortableOs*>(&Platform());
  if (!os) throw std::logic_error("The platform is not the portable emulation");
  return *os;
}

}  // namespace qx
