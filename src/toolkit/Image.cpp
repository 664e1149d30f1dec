#include "toolkit/Image.h"

#include <cmath>

namespace qx {

TImage::TImage(TFmxObject* owner) : TControl(owner) {
  FBitmap.OnChange = [this] { Repaint(); };
}

void TImage::SetWrapMode(TImageWrapMode mode) {
  if (mode == FWrapMode) return;
  FWrapMode = mode;
  Repaint();
}

TRectF TImage::ImageRect() const {
  float bw = static_cast<float>(FBitmap.Width()), bh = static_cast<float>(FBitmap.Height());
  switch (FWrapMode) {
    case TImageWrapMode::Original:
    case TImageWrapMode::Tile:
      return {0, 0, bw, bh};
    case TImageWrapMode::Stretch:
      return LocalRect();
    case TImageWrapMode::Center:
      return TRectF::FromSize(std::round((Width() - bw) / 2), std::round((Height() - bh) / 2), bw, bh);
    case TImageWrapMode::Fit:
    case TImageWrapMode::Place: {
      if (bw <= 0 || bh <= 0) return {};
      float scale = std::min(Width() / bw, Height() / bh);
      if (FWrapMode == TImageWrapMode::Place) scale = std::min(scale, 1.0f);
      float w = bw * scale, h = bh * scale;
      return TRectF::FromSize((Width() - w) / 2, (Height() - h) / 2, w, h);
    }
  }
  return {};
}

void TImage::Paint(TCanvas& canvas, float opacity) {
  if (FBitmap.IsEmpty()) return;
  TRectF src(0, 0, static_cast<float>(FBitmap.Width()), static_cast<float>(FBitmap.Height()));
  if (FWrapMode == TImageWrapMode::Tile) {
    TCanvas::TState saved = canvas.SaveState();
    canvas.IntersectClipRect(LocalRect());
    for (float y = 0; y < Height(); y += src.Bottom)
      for (float x = 0; x < Width(); x += src.Right) canvas.DrawBitmap(FBitmap, src, src.Offset(x, y), opacity);
    canvas.RestoreState(saved);
    return;
  }
  if (FWrapMode == TImageWrapMode::Original) {
    // The picture at its size, cut at the control's edges.
    TRectF shown = src.Intersect(LocalRect());
    canvas.DrawBitmap(FBitmap, shown, shown, opacity);
    return;
  }
  canvas.DrawBitmap(FBitmap, src, ImageRect(), opacity, DisableInterpolation);
}

const TPropertyTable& TImage::ClassProperties() {
  static const TPropertyTable table = [] {
    auto I = [](TFmxObject* o) { return static_cast<TImage*>(o); };
    TPropertyTable t(&TControl::ClassProperties());
    t.Bitmap("Bitmap", {[I](TFmxObject* o) { return &I(o)->Bitmap(); },
                        [I](TFmxObject* o, const TBitmap* b) { I(o)->SetBitmap(b); }});
    t.Stored("WrapMode", [I](TFmxObject* o, const TStoredValue& v) {
      static const std::pair<const char*, TImageWrapMode> kNames[] = {
          {"Original", TImageWrapMode::Original}, {"Fit", TImageWrapMode::Fit},
          {"Stretch", TImageWrapMode::Stretch},   {"Tile", TImageWrapMode::Tile},
          {"Center", TImageWrapMode::Center},     {"Place", TImageWrapMode::Place},
          {"iwOriginal", TImageWrapMode::Original}, {"iwFit", TImageWrapMode::Fit},
          {"iwStretch", TImageWrapMode::Stretch}, {"iwTile", TImageWrapMode::Tile}};
      std::string id = StoredIdentifier(v, "WrapMode");
      for (auto& [name, mode] : kNames)
        if (id == name) return I(o)->SetWrapMode(mode);
      throw EPropertyError("Unknown WrapMode value " + id);
    });
    t.Stored("DisableInterpolation", [I](TFmxObject* o, const TStoredValue& v) {
      I(o)->DisableInterpolation = StoredBool(v, "DisableInterpolation");
    });
    return t;
  }();
  return table;
}

}  // namespace qx
