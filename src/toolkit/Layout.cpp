#include "toolkit/Layout.h"

namespace qx {

void TStyledControl::ApplyStyleLookup() {
  if (FStyleApplied) FreeStyle();
  ApplyStyle();
  FStyleApplied = true;
}

void TStyledControl::Paint(TCanvas& canvas, float opacity) {
  if (!FStyleApplied) ApplyStyleLookup();
  TControl::Paint(canvas, opacity);
}

}  // namespace qx
