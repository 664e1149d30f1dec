#pragma once

// The stored layout of the smart search popup.

#include <string>

namespace qx {

const std::string& SmartSearchFormDesign();

}  // namespace qx
