#pragma once

// The strip's own scroll box as the tabs see it.

#include "tabview/TabImageScrollBox.h"
#include "tabview/TalvokScrollBox.h"

namespace qx {

class TTabImageScrollBoxAdapter final : public ITabImageScrollBox {
 public:
  // box isn't owned and must outlive the adapter.
  explicit TTabImageScrollBoxAdapter(TalvokScrollBoxUnit::TTalvokScrollBox* box) : FBox(box) {}

  TControl* ScrollBoxControl() override { return FBox; }
  bool MouseInScrollBox() override;
  void PerfectRefresh() override { FBox->PerfectRefresh(); }
  void AniMouseDown(float x, float y) override { FBox->AniCalculations().MouseDown(x, y); }
  void AniMouseMove(float x, float y) override { FBox->AniCalculations().MouseMove(x, y); }
  void AniMouseUp(float x, float y) override { FBox->AniCalculations().MouseUp(x, y); }
  void AniMouseLeave() override { FBox->AniCalculations().MouseLeave(); }

 private:
  TalvokScrollBoxUnit::TTalvokScrollBox* FBox;
};

}  // namespace qx
