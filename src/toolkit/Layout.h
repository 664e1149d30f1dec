#pragma once

// Controls that only hold others: TLayout, TContent, TPaintBox, TStyledControl.

#include "toolkit/Control.h"

namespace qx {

class TLayout : public TControl {
 public:
  explicit TLayout(TFmxObject* owner = nullptr) : TControl(owner) { SetHitTest(false); }
  std::string ClassName() const override { return "TLayout"; }
};

// The content area of a scrolling or styled control.
class TContent : public TControl {
 public:
  explicit TContent(TFmxObject* owner = nullptr) : TControl(owner) { SetHitTest(false); }
  std::string ClassName() const override { return "TContent"; }
};

// Painting left to the OnPaint handler.
class TPaintBox : public TControl {
 public:
  explicit TPaintBox(TFmxObject* owner = nullptr) : TControl(owner) {}
  std::string ClassName() const override { return "TPaintBox"; }
};

// A control whose look comes from a style: the style is applied once, before
// the first paint or when asked.
class TStyledControl : public TControl {
 public:
  explicit TStyledControl(TFmxObject* owner = nullptr) : TControl(owner) {}
  std::string ClassName() const override { return "TStyledControl"; }
  std::u16string StyleLookup;
  void ApplyStyleLookup();
  void NeedStyleLookup() { FStyleApplied = false; }
  bool StyleApplied() const { return FStyleApplied; }

 protected:
  virtual void ApplyStyle() {}
  virtual void FreeStyle() {}
  void Paint(TCanvas& canvas, float opacity) override;

 private:
  bool FStyleApplied = false;
};

}  // namespace qx
