#include "tabbar/TabGroupbarControls.h"

#include "resources/ImageButton.h"
#include "toolkit/StoredLayout.h"

namespace qx {

void TGroupLayout::MouseUp(TMouseButton button, TShiftState shift, float x, float y) {
  TLayout::MouseUp(button, shift, x, y);
  if (button == TMouseButton::mbRight && OnContextMenu) OnContextMenu(this);
}

void TTitleInplaceEdit::KeyDown(int& key, char16_t& keyChar, TShiftState shift) {
  if (OnKeyDown) OnKeyDown(key, keyChar, shift);
  if (key == 0 && keyChar == 0) return;
  TEdit::KeyDown(key, keyChar, shift);
}

void TTitleInplaceEdit::DoExit() {
  TEdit::DoExit();
  if (OnExit) OnExit();
}

void RegisterTabGroupbarClasses() {
  if (!TComponentRegistry::IsRegistered("TImageButton"))
    TComponentRegistry::RegisterClass("TImageButton", [](TFmxObject* o) { return new TImageButton(o); });
  TComponentRegistry::RegisterClass("TGroupColorImage",
                                    [](TFmxObject* o) { return new TGroupColorImage(o); });
  TComponentRegistry::RegisterClass("TGroupLayout", [](TFmxObject* o) { return new TGroupLayout(o); });
  TComponentRegistry::RegisterClass("TTitleInplaceEdit",
                                    [](TFmxObject* o) { return new TTitleInplaceEdit(o); });
}

}  // namespace qx
