#include "ApngWriter.h"

namespace qx {

// The Windows build encodes PNG through the system, which writes no animation chunks.
bool WriteApng(const std::filesystem::path&, const std::vector<const TBitmap*>&, std::uint16_t) {
  return false;
}

}  // namespace qx
