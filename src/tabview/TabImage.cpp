#include "tabview/TabImage.h"

#include <algorithm>
#include <exception>
#include <ostream>

#include "host/HostKeys.h"
#include "host/QuillmarV3Interface.h"
#include "resources/BitmapResourceMgr.h"
#include "tabview/TabImageCacheMgr.h"
#include "toolkit/Form.h"

namespace qx {
namespace {

constexpr float kThumbnailDuration = 0.2f;
constexpr float kDimDuration = 0.2f;
constexpr float kProgressDuration = 0.8f;
constexpr float kCloseDuration = 0.15f;
constexpr float kDragOffsetDuration = 0.15f;
constexpr float kLeftDuration = 0.3f;
constexpr float kBusyDim = 0.32f;
constexpr float kInactiveDim = 0.12f;

std::unique_ptr<TBitmap>& BlankSlot() {
  static std::unique_ptr<TBitmap> blank;
  return blank;
}

TImage* MakeLayer(TFmxObject* parent) {
  auto* layer = new TImage(parent);
  parent->AddObject(layer);
  layer->SetHitTest(false);
  return layer;
}

template <class TAni>
TAni* MakeAnimation(TFmxObject* parent, const char* property, float duration) {
  auto* animation = new TAni(parent);
  animation->PropertyName = property;
  animation->Duration = duration;
  parent->AddObject(animation);
  return animation;
}

}  // namespace

const TBitmap* TTabImage::BlankPicture() { return BlankSlot().get(); }
void TTabImage::ReleaseBlankPicture() { BlankSlot().reset(); }

TTabImage::TTabImage(TFmxObject* owner, TTabbarImageRes* imageRes, IServiceCoreWrap* serviceCore,
                     std::int32_t tabId)
    : TLayout(owner), FServiceCore(serviceCore), FTabId(tabId), FImageRes(imageRes) {
  SetBounds(0, 0, static_cast<float>(size().cx), static_cast<float>(size().cy));
  // Nothing of a tab leaves its frame, which lets the strip paint only the part of
  // a stacked tab that the tabs above it leave showing.
  SetClipChildren(true);
  BuildLayers();
}

TTabImage::~TTabImage() {
  FDestroying = true;
  // The layers and animations go while this tab is still whole, so no finish
  // handler of theirs reaches a tab that is half gone.
  FScrollBox = nullptr;
  DeleteChildren();
  // The strip hears of the tab's going while it is still a whole tab image, so
  // whoever keeps it may still tell it by its type.
  SetDestroying();
  if (TFmxObject* parent = Parent()) parent->RemoveObject(this);
}

void TTabImage::BuildLayers() {
  const float width = Width();
  const float height = Height();

  FContent = new TLayout(this);
  AddObject(FContent);
  FContent->SetAlign(TAlignLayout::Client);

  FThumbnail = MakeLayer(FContent);
  FThumbnail->SetWrapMode(TImageWrapMode::Stretch);
  FThumbnail->Margins().Set({1, 1, 1, 1});
  FThumbnail->SetAlign(TAlignLayout::Client);
  AssignBlankPicture();
  FThumbnailAnimation = MakeAnimation<TBitmapAnimation>(FThumbnail, "Bitmap", kThumbnailDuration);

  // The grey shows as a one-pixel frame around the picture and takes the presses.
  FBase = MakeLayer(FContent);
  FBase->SetBounds(0, 0, width, height);
  FBase->SetWrapMode(TImageWrapMode::Stretch);
  // One pixel stretched is the same solid picture, at a fraction of the memory per tab.
  FBase->SetBitmap(MakeSolidBitmap(kBaseColor, 1, 1).get());
  FBase->SetHitTest(true);
  FBase->SendToBack();
  FBase->OnMouseDown = [this](TFmxObject*, TMouseButton, TShiftState, float x, float y) {
    if (!FScrollBox) return;
    const TPointF p = ToScrollBox(FBase, x, y);
    FScrollBox->AniMouseDown(p.X, p.Y);
  };
  FBase->OnMouseMove = [this](TFmxObject*, TShiftState, float x, float y) {
    if (!FScrollBox) return;
    const TPointF p = ToScrollBox(FBase, x, y);
    FScrollBox->AniMouseMove(p.X, p.Y);
  };
  FBase->OnMouseUp = [this](TFmxObject*, TMouseButton, TShiftState, float x, float y) {
    if (!FScrollBox) return;
    const TPointF p = ToScrollBox(FBase, x, y);
    FScrollBox->AniMouseUp(p.X, p.Y);
  };
  FBase->OnMouseEnter = [this](TFmxObject*) { ProcessMouseEnter(false); };

  FHoverBound = MakeLayer(FContent);
  FHoverBound->SetWrapMode(TImageWrapMode::Original);
  FHoverBound->SetBounds(0, 0, width, height);
  if (FImageRes) FHoverBound->SetBitmap(FImageRes->TabBoundHovered());
  FHoverBound->SetVisible(false);

  FBadge = new TBadgeImage(FContent, FImageRes);
  FContent->AddObject(FBadge);
  FBadge->SetHitTest(false);
  FBadge->SetBounds(width - FBadge->Width() - 1, 1, FBadge->Width(), FBadge->Height());

  FDim = MakeLayer(FContent);
  FDim->SetBounds(0, 0, width, height);
  FDim->SetWrapMode(TImageWrapMode::Stretch);
  FDim->SetBitmap(MakeSolidBitmap(kDimColor, 1, 1).get());
  FDim->SetOpacity(0);
  FDimAnimation = MakeAnimation<TFloatAnimation>(FDim, "Opacity", kDimDuration);

  FProgress = MakeLayer(FContent);
  FProgress->SetWrapMode(TImageWrapMode::Original);
  FProgress->SetVisible(false);
  FProgressAnimation = MakeAnimation<TBitmapListAnimation>(FProgress, "Bitmap", kProgressDuration);
  FProgressAnimation->Loop = true;
  if (TBitmap* frames = FImageRes ? FImageRes->TabProgress() : nullptr) {
    // Square frames side by side: the first one gives the indicator's size.
    const int side = frames->Height();
    FProgressAnimation->AnimationBitmap().Assign(frames);
    FProgressAnimation->AnimationCount = side > 0 ? std::max(1, frames->Width() / side) : 1;
    const float w = static_cast<float>(std::min(side, frames->Width()));
    const float h = static_cast<float>(side);
    FProgress->SetBounds((width - w) / 2, (height - h) / 2, w, h);
  }

  FCloseButton = new TImageButton(FContent);
  FContent->AddObject(FCloseButton);
  FCloseButton->SetWrapMode(TImageWrapMode::Original);
  FCloseButton->SetBounds(width - kCloseButtonSize, 1, kCloseButtonSize, kCloseButtonSize);
  if (FImageRes)
    SetCloseButtonSet(FImageRes->TabClose(), FImageRes->TabCloseHovered(), FImageRes->TabClosePressed());
  FCloseButton->SetOpacity(0);
  FCloseAnimation = MakeAnimation<TFloatAnimation>(FCloseButton, "Opacity", kCloseDuration);

  FDragOffsetAnimation = MakeAnimation<TFloatAnimation>(this, "DragOffset", kDragOffsetDuration);
  FDragOffsetAnimation->StartFromCurrent = true;
  FDragOffsetAnimation->OnFinish = [this](TFmxObject*) {
    if (!FDestroying && OnDragOffsetAnimationFinish) OnDragOffsetAnimationFinish(this);
  };

  FLeftAnimation = MakeAnimation<TFloatAnimation>(this, "TabImageLeft", kLeftDuration);
  FLeftAnimation->StartFromCurrent = true;
  FLeftAnimation->OnFinish = [this](TFmxObject*) { LeftAnimationFinished(); };
}

void TTabImage::AssignBlankPicture() {
  std::unique_ptr<TBitmap>& blank = BlankSlot();
  if (!blank && FImageRes) {
    if (TBitmap* picture = FImageRes->TabBlank()) {
      auto made =
          std::make_unique<TBitmap>(static_cast<int>(kThumbnailWidth), static_cast<int>(kThumbnailHeight));
      TCanvas& canvas = made->Canvas();
      if (canvas.BeginScene()) {
        canvas.Clear(TAlphaColors::Null);
        const TRectF source(0, 0, static_cast<float>(picture->Width()),
                            static_cast<float>(picture->Height()));
        canvas.DrawBitmap(*picture, source, source, 1);
        canvas.EndScene();
      }
      blank = std::move(made);
    }
  }
  if (blank) FThumbnail->SetBitmap(blank.get());
}

bool TTabImage::HasTabGuid(std::u16string_view guid) {
  if (FTabGuid.empty()) TabGuid();
  return FTabGuid == guid;
}

std::u16string TTabImage::TabGuid() {
  if (FTabGuid.empty() && FTabId != 0 && FServiceCore) {
    ComPtr<IQxITab> tab;
    FServiceCore->TabById(FTabId, tab);
    if (tab) FTabGuid = FServiceCore->TabGuid(tab.get());
  }
  return FTabGuid;
}

IQxITab* TTabImage::HostTab(ComPtr<IQxITab>& holder) {
  holder = nullptr;
  if (FServiceCore && FTabId != 0) FServiceCore->TabById(FTabId, holder);
  return holder.get();
}

// ---- placement

void TTabImage::SetDragOffset(float value) {
  if (value == FDragOffset) return;
  FDragOffset = value;
  if (FScrollBox) FScrollBox->PerfectRefresh();
}

void TTabImage::SetAttributes(ITabViewLayoutAttributes* attributes) {
  FAttributes = attributes;
  if (!attributes) return;
  FSortPosition = attributes->GetZPosition();
  FFirstInSection = attributes->GetFirstInSection();
  FLastInSection = attributes->GetLastInSection();
  FOverlapsLeft = attributes->GetOverlapsLeft();
  FOverlapsRight = attributes->GetOverlapsRight();
}

void TTabImage::SetHorzPosition(bool animate, TInterpolationType interpolation, float duration, float left) {
  const bool animated = animate && FPositioned;
  FPositioned = true;
  if (FAttributes && !FAttributes->GetHidden()) SetVisible(true);
  if (animated) {
    if (FLeftAnimation->Running() && FLeftAnimation->StopValue == left) return;
    // A tab already in place has nothing to slide; only a covered tab still shown
    // keeps its slide, which hides it at the end.
    const bool hides = FAttributes && FAttributes->GetHidden() && Visible();
    if (!FLeftAnimation->Running() && TabImageLeft() == left && !hides) return;
    FLeftAnimation->Stop();
    FLeftAnimation->Interpolation = interpolation;
    FLeftAnimation->StopValue = left;
    FLeftAnimation->Duration = duration;
    FLeftAnimation->Start();
  } else {
    FLeftAnimation->Stop();
    SetTabImageLeft(left);
    if (FAttributes && FAttributes->GetHidden()) SetVisible(false);
  }
}

void TTabImage::LeftAnimationFinished() {
  // A covered tab slides under its neighbour first and vanishes only at the end.
  if (FDestroying) return;
  if (FAttributes && FAttributes->GetHidden()) SetVisible(false);
}

void TTabImage::StartDragOffsetAnimation() {
  FDragOffsetAnimation->Stop();
  FDragOffsetAnimation->StopValue = 0;
  FDragOffsetAnimation->Start();
}

void TTabImage::StopDragOffsetAnimation() { FDragOffsetAnimation->Stop(); }

// ---- hit tests

bool TTabImage::PtInCloseButton(TPointF point) { return FCloseButton->PointInObject(point.X, point.Y); }
bool TTabImage::PtInTabImage(TPointF point) { return FBase->PointInObject(point.X, point.Y); }
bool TTabImage::PtInTabImage(TPointF point, TPointF parentOrigin) const {
  const TPointF own = OffsetInParent(), base = FBase->PlaceInParent();
  return FBase->LocalRect().Contains(
      {point.X - (parentOrigin.X + own.X + base.X), point.Y - (parentOrigin.Y + own.Y + base.Y)});
}

// ---- painting

TRectF TTabImage::OpaqueRect() const {
  // The base is a solid opaque fill under the other layers; whatever lies over it
  // keeps its pixels opaque.
  if (!FContent->Visible() || FContent->Opacity() < 1 || !FBase->Visible() || FBase->Opacity() < 1) return {};
  const TBitmap& fill = FBase->Bitmap();
  const bool solid = FBase->WrapMode() == TImageWrapMode::Stretch && fill.Width() == 1 && fill.Height() == 1;
  if (!solid || (fill.Pixel(0, 0) >> 24) != 0xFF) return {};
  const TPointF content = FContent->PlaceInParent(), base = FBase->PlaceInParent();
  return FBase->LocalRect().Offset(content.X + base.X, content.Y + base.Y).Intersect(LocalRect());
}

bool TTabImage::PaintsInsideBounds() const { return ClipChildren() && !OnPainting && !OnPaint; }

bool TTabImage::CloseButtonVisible() const {
  return FCloseButton->Visible() && (FCloseButton->Opacity() > 0 || FCloseAnimation->Running());
}

// ---- rectangles

void TTabImage::TabImageAbsoluteRect(bool useFinalPosition, TRectF& rect) const {
  rect = FBase->AbsoluteRect();
  if (useFinalPosition && FLeftAnimation->Running()) {
    const float finalX = FLeftAnimation->StopValue + kContentInset;
    rect = rect.Offset(finalX - Position().X(), 0);
  }
}

TRectF TTabImage::TabImageParentedRect() const {
  return FBase->BoundsRect().Offset(Position().X(), Position().Y());
}

TRectD TTabImage::TabImageParentedRectD() const {
  const TRectF r = TabImageParentedRect();
  return TRectD(TPointD(r.Left, r.Top), TPointD(r.Right, r.Bottom));
}

TRectF TTabImage::TabImageScreenRect() const {
  const TRectF r = FBase->AbsoluteRect();
  const TPointF topLeft = TabImageScreenPosition();
  return TRectF::FromSize(topLeft.X, topLeft.Y, r.Width(), r.Height());
}

TPointF TTabImage::TabImageScreenPosition() const {
  const TRectF r = FBase->AbsoluteRect();
  const TPointF p(r.Left, r.Top);
  if (TCommonCustomForm* form = FBase->Form()) return form->ClientToScreen(p);
  return p;
}

TPointF TTabImage::TabImageRootScreenPosition() const {
  const TPointF p = LocalToAbsolute(TPointF(0, 0));
  if (TCommonCustomForm* form = Form()) return form->ClientToScreen(p);
  return p;
}

TPointF TTabImage::TabImageAbsoluteToLocal(TPointF point) const { return AbsoluteToLocal(point); }

TPointF TTabImage::OffsetInParent() const {
  const TPointF own = TLayout::OffsetInParent();
  if (!OnConvertLocalMatrix) return own;
  // The handler answers the place in the scroll box; the content's shift by the viewport
  // is taken back out, so the layout alone decides where a tab stands.
  const TControl* content = ParentControl();
  const float contentLeft = content ? content->Position().X() : 0;
  return {OnConvertLocalMatrix(const_cast<TTabImage*>(this), own.X) - contentLeft, own.Y};
}

TRectF TTabImage::AbsoluteRectNoDragOffset() const { return FBase->AbsoluteRect().Offset(FDragOffset, 0); }

TPointF TTabImage::ToScrollBox(TControl* control, float x, float y) const {
  const TPointF absolute = control->LocalToAbsolute(TPointF(x, y));
  TControl* box = FScrollBox ? FScrollBox->ScrollBoxControl() : nullptr;
  return box ? box->AbsoluteToLocal(absolute) : absolute;
}

float TTabImage::GetScrollLeft(float offset) const {
  return ToScrollBox(const_cast<TTabImage*>(this), 0, 0).X + offset;
}

float TTabImage::GetScrollRight(float offset) const {
  return ToScrollBox(const_cast<TTabImage*>(this), Width(), 0).X + offset;
}

// ---- picture

void TTabImage::UpdateTabImage(const TBitmap* bitmap, bool immediately) {
  if (immediately) {
    // A fade still under way would paint over the new picture on its next frame.
    FThumbnailAnimation->Stop();
    FThumbnail->SetBitmap(bitmap);
  } else {
    FThumbnailAnimation->Stop();
    FThumbnailAnimation->StartValue().Assign(&FThumbnail->Bitmap());
    FThumbnailAnimation->StopValue().Assign(bitmap);
    FThumbnailAnimation->Start();
  }
  FHasThumbnail = true;
}

void TTabImage::LoadCacheImage(TTabImageCacheMgr& cache) {
  if (FHasThumbnail || !FServiceCore) return;
  try {
    if (TBitmap* bitmap = cache.GetCache(TabGuid())) UpdateTabImage(bitmap, true);
  } catch (const std::exception&) {
    // The blank picture stays until a capture arrives.
  }
}

bool TTabImage::SaveImageToStream(std::ostream& stream) const {
  try {
    FThumbnail->Bitmap().SaveToStream(stream);
    return static_cast<bool>(stream);
  } catch (const std::exception&) {
    return false;
  }
}

// ---- state

float TTabImage::DimOpacity(bool hovered) const {
  if (FProgress && FProgressAnimation->Running()) return kBusyDim;
  if (!IsActive() && !hovered) return kInactiveDim;
  return 0;
}

void TTabImage::UpdateDimAndShadow(bool hovered, bool immediately) {
  if (FDestroying) return;
  if (immediately) {
    FDimAnimation->Stop();
    FDim->SetOpacity(DimOpacity(hovered));
  } else {
    FDimAnimation->Stop();
    // Already there: a fade between equal values would only keep the clock busy.
    if (FDim->Opacity() == DimOpacity(hovered)) return;
    FDimAnimation->StartValue = FDim->Opacity();
    FDimAnimation->StopValue = DimOpacity(hovered);
    FDimAnimation->Start();
  }
}

void TTabImage::StartCloseButtonAnimation(bool show, bool immediately) {
  if (FBadge->HasBadge()) {
    immediately = true;
    FBadge->SetVisible(!show);
  }
  const float target = show ? 1.0f : 0.0f;
  if (immediately) {
    FCloseAnimation->Stop();
    FCloseButton->SetOpacity(target);
  } else {
    FCloseAnimation->Stop();
    // A button fully shown stays so; a hidden one still runs its fade, which keeps
    // it counted as visible until the fade ends.
    if (!show || FCloseButton->Opacity() != target) {
      FCloseAnimation->StartValue = FCloseButton->Opacity();
      FCloseAnimation->StopValue = target;
      FCloseAnimation->Start();
    }
  }
  if (show && OnCloseButtonShown) OnCloseButtonShown(this);
}

void TTabImage::ProcessMouseEnter(bool immediately) {
  UpdateDimAndShadow(true, false);
  StartCloseButtonAnimation(true, immediately);
}

void TTabImage::ProcessMouseLeave(bool immediately) {
  if (FScrollBox && !FScrollBox->MouseInScrollBox()) FScrollBox->AniMouseLeave();
  UpdateDimAndShadow(false, false);
  StartCloseButtonAnimation(false, immediately);
}

void TTabImage::StartProgress(bool hovered) {
  FProgress->SetVisible(true);
  FProgressAnimation->Start();
  UpdateDimAndShadow(hovered, false);
}

void TTabImage::StopProgress(bool hovered) {
  FProgressAnimation->Stop();
  FProgress->SetVisible(false);
  UpdateDimAndShadow(hovered, false);
}

void TTabImage::SetHoverBoundVisible(bool value) { FHoverBound->SetVisible(value); }

void TTabImage::SetCloseButtonSet(TBitmap* normal, TBitmap* hover, TBitmap* pushed) {
  FCloseButton->SetNormalBitmap(normal);
  FCloseButton->SetHoverBitmap(hover);
  FCloseButton->SetPushedBitmap(pushed);
}

void TTabImage::UpdateTabStatus() {
  ComPtr<IQxITab> holder;
  IQxITab* tab = HostTab(holder);
  if (!tab) return;

  TString lock;
  FServiceCore->GetTabText(tab, tab_key::StatusNaviLock, lock);
  const bool isProtected = lock == u"locked";
  if (isProtected != FBadge->Pinned()) {
    FBadge->SetPinned(isProtected);
    if (isProtected) {
      SetCloseButtonSet(FImageRes ? FImageRes->TabBadgeProtectedReady() : nullptr,
                        FImageRes ? FImageRes->TabBadgeProtectedHovered() : nullptr,
                        FImageRes ? FImageRes->TabBadgeProtectedPressed() : nullptr);
    } else {
      SetCloseButtonSet(FImageRes ? FImageRes->TabClose() : nullptr,
                        FImageRes ? FImageRes->TabCloseHovered() : nullptr,
                        FImageRes ? FImageRes->TabClosePressed() : nullptr);
    }
  }

  // Applied second, so when both change in one call the bookmark decides the
  // button, even putting the plain close set back on a protected tab.
  const bool isBookmarked = OnGetBookmarked ? OnGetBookmarked(*this) : FBadge->Bookmarked();
  if (isBookmarked != FBadge->Bookmarked()) {
    FBadge->SetBookmarked(isBookmarked);
    if (isBookmarked) {
      SetCloseButtonSet(FImageRes ? FImageRes->TabBadgeBookmarkedReady() : nullptr,
                        FImageRes ? FImageRes->TabBadgeBookmarkedHovered() : nullptr,
                        FImageRes ? FImageRes->TabBadgeBookmarkedPressed() : nullptr);
    } else {
      SetCloseButtonSet(FImageRes ? FImageRes->TabClose() : nullptr,
                        FImageRes ? FImageRes->TabCloseHovered() : nullptr,
                        FImageRes ? FImageRes->TabClosePressed() : nullptr);
    }
  }
}

// ---- published properties

const TPropertyTable& TTabImage::ClassProperties() {
  static const TPropertyTable table = [] {
    auto T = [](TFmxObject* o) { return static_cast<TTabImage*>(o); };
    TPropertyTable t(&TLayout::ClassProperties());
    t.Float("TabImageLeft", {[T](TFmxObject* o) { return T(o)->TabImageLeft(); },
                             [T](TFmxObject* o, float v) { T(o)->SetTabImageLeft(v); }});
    t.Float("DragOffset", {[T](TFmxObject* o) { return T(o)->DragOffset(); },
                           [T](TFmxObject* o, float v) { T(o)->SetDragOffset(v); }});
    return t;
  }();
  return table;
}

}  // namespace qx
