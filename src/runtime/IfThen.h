#pragma once

// Two-way choice by a Boolean, for text and for floats.

#include <string>

namespace qx {

inline std::u16string IfThen(bool value, const std::u16string& whenTrue,
                             const std::u16string& whenFalse = {}) {
  return value ? whenTrue : whenFalse;
}

inline double IfThen(bool value, double whenTrue, double whenFalse = 0.0) {
  return value ? whenTrue : whenFalse;
}

}  // namespace qx
