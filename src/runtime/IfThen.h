#pragma once

// Two-way choice by a Boolean, for text and for floats.

#include <string>

namespace qx {

inline std::u16string IfThen(bool AValue, const std::u16string& ATrue, const std::u16string& AFalse = {}) {
  return AValue ? ATrue : AFalse;
}

inline double IfThen(bool AValue, double ATrue, double AFalse = 0.0) { return AValue ? ATrue : AFalse; }

}  // namespace qx
