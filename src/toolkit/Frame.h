#pragma once

// A composite control built from a stored layout.

#include "toolkit/Control.h"
#include "toolkit/StoredLayout.h"

namespace qx {

class TFrame : public TControl {
 public:
  explicit TFrame(TFmxObject* owner = nullptr) : TControl(owner) { SetHitTest(false); }
  // Builds the frame from a layout at once; subclasses that publish properties
  // of their own call LoadLayout from their constructor instead.
  TFrame(TFmxObject* owner, const std::string& layout, const TStoredLayoutOptions& options = {}) : TFrame(owner) {
    LoadLayout(layout, options);
  }
  std::string ClassName() const override { return "TFrame"; }
  void LoadLayout(const std::string& layout, const TStoredLayoutOptions& options = {}) {
    LoadStoredLayout(this, layout, options);
  }
};

}  // namespace qx
