#include "cabinet/CabinetBarIcon.h"

#include <algorithm>

#include "resources/CabinetIconBarImageRes.h"
#include "toolkit/TextLayout.h"

namespace qx {
namespace {

template <class T>
T* Part(TFmxObject* parent, const char16_t* name) {
  auto* part = new T(parent);
  part->Name = name;
  part->SetParent(parent);
  part->SetHitTest(false);
  return part;
}

void Show(TImage* image, TBitmap* bitmap) {
  if (bitmap)
    image->SetBitmap(bitmap);
  else
    image->Bitmap().SetSize(0, 0);
}

float PictureWidth(TBitmap* bitmap) { return bitmap ? static_cast<float>(bitmap->Width()) : 0.0f; }
float PictureHeight(TBitmap* bitmap) { return bitmap ? static_cast<float>(bitmap->Height()) : 0.0f; }

}  // namespace

TCabinetIcon2::TCabinetIcon2(TFmxObject* owner, std::u16string tabId, IQxITab* tab,
                             IServiceCoreWrap* serviceCore, TCabinetIconBarImageRes* imageRes)
    : TCabinetIconLayout(owner),
      FServiceCore(serviceCore),
      FImageRes(imageRes),
      FTabId(std::move(tabId)),
      FTab(tab) {
  SetHitTest(false);
  BuildParts();
}

TCabinetIcon2::~TCabinetIcon2() { SetNextIcon(nullptr); }

void TCabinetIcon2::BuildParts() {
  TCabinetIconBarImageRes* res = FImageRes;
  FLeftLineLayout = Part<TLayout>(this, u"LeftLineLayout");
  FLeftLineLayout->SetAlign(TAlignLayout::Left);
  FLeftLineImage = Part<TImage>(FLeftLineLayout, u"LeftLineImage");
  FLeftLineFillImage = Part<TImage>(FLeftLineLayout, u"LeftLineFillImage");
  FLeftLineFillImage->SetWrapMode(TImageWrapMode::Tile);
  FRightLineLayout = Part<TLayout>(this, u"RightLineLayout");
  FRightLineLayout->SetAlign(TAlignLayout::Right);
  FRightLineImage = Part<TImage>(FRightLineLayout, u"RightLineImage");
  FRightLineFillImage = Part<TImage>(FRightLineLayout, u"RightLineFillImage");
  FRightLineFillImage->SetWrapMode(TImageWrapMode::Tile);

  FIconTextLayout = Part<TCabinetIconLayout>(this, u"IconTextLayout");
  FIconTextLayout->SetAlign(TAlignLayout::Client);
  FIconTextLayout->SetHitTest(true);
  FIconTextLayout->OnChangeStatus = [this](TFmxObject*) { IconTextLayoutChangeStatus(); };
  FIconTextLayout->OnClick = [this](TFmxObject*) { Click(); };
  FIconTextBackLayout = Part<TLayout>(FIconTextLayout, u"IconTextBackLayout");
  FIconTextBackLayout->SetAlign(TAlignLayout::Client);
  FIconTextBackImageFill = Part<TImage>(FIconTextBackLayout, u"IconTextBackImageFill");
  FIconTextBackImageFill->SetWrapMode(TImageWrapMode::Stretch);
  FIconTextBackImageLeft = Part<TImage>(FIconTextBackLayout, u"IconTextBackImageLeft");
  FIconTextBackImageRight = Part<TImage>(FIconTextBackLayout, u"IconTextBackImageRight");
  FIconTextInternalLayout = Part<TLayout>(FIconTextBackLayout, u"IconTextInternalLayout");
  FIconBaseImage = Part<TImage>(FIconTextInternalLayout, u"IconBaseImage");
  FIconBaseImage->SetWrapMode(TImageWrapMode::Original);
  FIconBaseImageInside = Part<TImage>(FIconBaseImage, u"IconBaseImageInside");
  FIconBaseImageInside->SetAlign(TAlignLayout::Client);
  FIconImage = Part<TImage>(FIconBaseImage, u"IconImage");
  FIconImage->SetAlign(TAlignLayout::Client);
  FIconImage->Margins().Set({2, 2, 2, 2});
  FIconImage->SetWrapMode(TImageWrapMode::Stretch);
  FTextBox = Part<TTextPaintBox>(FIconTextInternalLayout, u"TextBox");

  if (res) {
    Show(FLeftLineImage, res->CabinetbarTabWireLeft());
    Show(FLeftLineFillImage, res->CabinetbarTabWireFill());
    Show(FRightLineImage, res->CabinetbarTabWireRight());
    Show(FRightLineFillImage, res->CabinetbarTabWireFill());
    Show(FIconBaseImage, res->FaviconBase());
  }
  FHorzPositionAnimation = new TFloatAnimation(this);
  FHorzPositionAnimation->SetParent(this);
  FHorzPositionAnimation->PropertyName = "Position.X";
  FWidthAnimation = new TFloatAnimation(this);
  FWidthAnimation->SetParent(this);
  FWidthAnimation->PropertyName = "Width";
}

// ---- look

void TCabinetIcon2::SetFavicon(ISharedFMXBitmap* favicon) {
  if (favicon == FFavicon.get()) return;
  FFavicon = favicon;
  Show(FIconImage, favicon ? favicon->GetBitmap() : nullptr);
}

const std::u16string& TCabinetIcon2::Title() const { return FTextBox->Title(); }

void TCabinetIcon2::SetTitle(const std::u16string& title) {
  if (title == Title()) return;
  FTextBox->SetTitle(title);
  UpdateLayout();
}

void TCabinetIcon2::SetFont(const std::u16string& name, float size) {
  FTextBox->SetFontName(name);
  FTextBox->SetFontSize(size);
}

float TCabinetIcon2::TextWidth() const {
  if (Title().empty()) return 0;
  // Measured once per title and font: every layout pass asks several times per icon.
  TTextWidthCache& c = FTextWidthCache;
  if (!c.Valid || c.Title != Title() || c.FontName != FTextBox->FontName() ||
      c.FontSize != FTextBox->FontSize()) {
    c.Title = Title();
    c.FontName = FTextBox->FontName();
    c.FontSize = FTextBox->FontSize();
    c.Width = TTextLayout::MeasureWidth(FTextBox->TitleFont(), Title());
    c.Valid = true;
  }
  return c.Width;
}

float TCabinetIcon2::IconBaseWidth() const {
  return FImageRes ? PictureWidth(FImageRes->FaviconBase()) : 0.0f;
}

// ---- areas

void TCabinetIcon2::IncludeVisibleArea(const TRectF& rect) {
  TRectF& c = FcompoundVisibleArea;
  c = {std::min(c.Left, rect.Left), std::min(c.Top, rect.Top), std::max(c.Right, rect.Right),
       std::max(c.Bottom, rect.Bottom)};
}

float TCabinetIcon2::FirstTabWidth() const {
  const float target = FvisibleArea.Width();
  // Most icons of a pass never had their width animated: their animation is not read.
  if (FWidthAnimating && FLastFirstTabWidthSet) {
    if (FWidthAnimation->Running())
      return FLastFirstTabWidth +
             static_cast<float>(FWidthAnimation->NormalizedTime()) * (target - FLastFirstTabWidth);
    FWidthAnimating = false;
  }
  return target;
}

void TCabinetIcon2::SetLastFirstTabWidth(float value) {
  FLastFirstTabWidth = value;
  FLastFirstTabWidthSet = true;
}

void TCabinetIcon2::KeepWidthFloor(bool growRight) {
  const float floor = IconBaseWidth() + 4;
  TRectF& c = FcompoundVisibleArea;
  if (c.Width() >= floor) return;
  if (growRight)
    c.Right = c.Left + floor;
  else
    c.Left = c.Right - floor;
}

void TCabinetIcon2::LimitVisibleToCompound() {
  FvisibleArea.Right = std::min(FvisibleArea.Right, FcompoundVisibleArea.Right);
  FvisibleArea.Left = FcompoundVisibleArea.Left;
}

void TCabinetIcon2::UpdateAreaWithMinLeft(float minLeft) {
  for (TRectF* r : {&FcompoundVisibleArea, &FvisibleArea}) {
    r->Left = std::max(r->Left, minLeft);
    r->Right = std::max(r->Right, r->Left);
  }
  KeepWidthFloor(true);
}

void TCabinetIcon2::UpdateAreaWithMaxRight(float maxRight) {
  TRectF& c = FcompoundVisibleArea;
  c.Right = std::min(c.Right, maxRight);
  c.Left = std::min(c.Left, c.Right);
  // The block's least width, not its width of the last pass: a stale, wide block
  // would push every icon of a stacked end far to the left.
  const float least = std::min(FIconTextLayout->Width(), IconBaseWidth() + 4);
  if (c.Width() < least) c.Left = c.Right - least;
  LimitVisibleToCompound();
}

void TCabinetIcon2::ShrinkAreaFromRight(float rightValue) {
  TRectF& c = FcompoundVisibleArea;
  c.Right = std::min(c.Right, rightValue);
  c.Left = std::min(c.Left, c.Right);
  KeepWidthFloor(false);
  LimitVisibleToCompound();
}

void TCabinetIcon2::ShrinkAreaFromLeft(float leftValue) {
  TRectF& c = FcompoundVisibleArea;
  c.Left = std::max(c.Left, leftValue);
  c.Right = std::max(c.Right, c.Left);
  KeepWidthFloor(true);
  LimitVisibleToCompound();
}

// ---- what fits

bool TCabinetIcon2::CanDrawTitle(float width) const {
  return !Title().empty() &&
         kIconTextMargin + IconBaseWidth() + kIconTextGap + kMinTextWidth + kIconTextMargin <= width;
}

float TCabinetIcon2::GetAlignedWidth(float maxWidth) const {
  return kIconTextMargin + IconBaseWidth() + kIconTextGap + kMinTextWidth + kIconTextMargin <= maxWidth
             ? maxWidth
             : IconBaseWidth();
}

bool TCabinetIcon2::CanDrawLines(float width) const {
  const bool title = CanDrawTitle(width);
  const float block = title ? kIconTextMargin + IconBaseWidth() + kIconTextGap + TextWidth()
                            : kIconTextMargin + IconBaseWidth();
  const float offset = title ? 0 : kLineOffset;
  return kIconTextMargin + block + offset + kIconEdge + offset + kIconEdge + 2 <= width;
}

TRectF TCabinetIcon2::IconRect(float width, bool drawLines, bool drawText) const {
  const float block = drawText
                          ? kIconTextMargin + IconBaseWidth() + kIconTextGap + TextWidth() + kIconTextMargin
                          : IconBaseWidth();
  const float left =
      std::max(static_cast<float>(static_cast<int>((width - block) / 2)), drawLines ? kIconEdge : 0.0f);
  TRectF rect = TRectF::FromSize(left, 0, block, Height());
  // The title's own margin is part of the back picture, not of the gap to a neighbour.
  if (drawText) rect.Left += kIconTextMargin;
  return rect;
}

float TCabinetIcon2::LeftMargin(bool drawLines, bool drawText) const {
  const float width = FcompoundVisibleArea.Width();
  if (drawLines || width < kMinIconWidth) return 0;
  return IconRect(width, drawLines, drawText).Left;
}

float TCabinetIcon2::RightMargin(bool drawLines, bool drawText) const {
  const float width = FcompoundVisibleArea.Width();
  if (drawLines || width < kMinIconWidth) return 0;
  return width - IconRect(width, drawLines, drawText).Right;
}

float TCabinetIcon2::GetRequiredLeftMargin(const TCabinetIcon2* prev) const {
  if (!prev) return 0;
  const float width = FcompoundVisibleArea.Width();
  const float prevWidth = prev->FcompoundVisibleArea.Width();
  const bool title = CanDrawTitle(width), lines = CanDrawLines(width);
  const bool prevTitle = prev->CanDrawTitle(prevWidth), prevLines = prev->CanDrawLines(prevWidth);
  const float gap = std::max(0.0f, FcompoundVisibleArea.Left - prev->FcompoundVisibleArea.Right);
  const float required = lines && prevLines ? 2.0f : 4.0f;
  const float missing = required - (LeftMargin(lines, title) + prev->RightMargin(prevLines, prevTitle) + gap);
  return std::max(0.0f, missing);
}

// ---- placement

void TCabinetIcon2::Animate(TFloatAnimation& animation, bool& once, bool animated, float duration,
                            std::int32_t type, float value, void (TCabinetIcon2::*write)(float)) {
  if (!once) {
    once = true;
    animation.Stop();
    (this->*write)(value);
    return;
  }
  if (animated) {
    if (animation.Running() && animation.StopValue == value) return;
    animation.Stop();
    animation.Duration = duration;
    animation.StopValue = value;
    animation.AnimationType = static_cast<TAnimationType>(std::clamp(type, 0, 2));
    animation.Interpolation = TInterpolationType::Linear;
    animation.StartFromCurrent = true;
    animation.Enabled = true;
    animation.Start();
    return;
  }
  animation.Stop();
  (this->*write)(value);
}

void TCabinetIcon2::AnimationSetLeft(bool animated, float duration, std::int32_t animationType, float value) {
  Animate(*FHorzPositionAnimation, FHorzPosSet, animated, duration, animationType, value,
          &TCabinetIcon2::WriteLeft);
}

void TCabinetIcon2::AnimationSetWidth(bool animated, float duration, std::int32_t animationType,
                                      float value) {
  Animate(*FWidthAnimation, FWidthSet, animated, duration, animationType, value, &TCabinetIcon2::WriteWidth);
  if (FWidthAnimation->Running()) FWidthAnimating = true;
}

bool TCabinetIcon2::LeftLineVisible() const { return FLeftLineLayout->Visible(); }
bool TCabinetIcon2::RightLineVisible() const { return FRightLineLayout->Visible(); }
bool TCabinetIcon2::TitleVisible() const { return FTextBox->Visible(); }

void TCabinetIcon2::Resize() {
  TCabinetIconLayout::Resize();
  UpdateLayout();
}

float TCabinetIcon2::LeftLineWidth() const { return LeftLineVisible() ? FLeftLineLayout->Width() : 0.0f; }
float TCabinetIcon2::RightLineWidth() const { return RightLineVisible() ? FRightLineLayout->Width() : 0.0f; }

TCabinetIcon2::TLayoutInputs TCabinetIcon2::LayoutInputs() const {
  TLayoutInputs in{
      Width(),     Height(),         FirstTabWidth(), FvisibleArea.Left, FcompoundVisibleArea.Right,
      TextWidth(), !Title().empty(), FForceHideLines};
  if (FImageRes)
    in.Pictures = {FImageRes->FaviconBase(), FImageRes->CabinetbarTabWireLeft(),
                   FImageRes->CabinetbarTabWireRight(), FImageRes->CabinetbarItemHoveredLeft()};
  return in;
}

void TCabinetIcon2::UpdateLayout() {
  if (FInLayout) return;
  // Every pass lays out every shown icon, most of them as they already are.
  const TLayoutInputs inputs = LayoutInputs();
  if (FLaidOutValid && FLaidOut == inputs) return;
  FLaidOut = inputs;
  FLaidOutValid = true;
  FInLayout = true;
  const float w = Width(), h = Height();
  const bool title = CanDrawTitle(w);
  const bool lines = CanDrawLines(w);
  const bool wires = lines && !FForceHideLines;
  const float base = IconBaseWidth();
  const float block = title ? kIconTextMargin + base + kIconTextGap + TextWidth() + kIconTextMargin
                            : (lines ? base + 2 * kIconTextMargin : base);

  // Wires: the left one reaches from the run's start to the icon over the first tab.
  float left = 0;
  if (wires) {
    left = std::max((FirstTabWidth() - kIconEdge) / 2, kIconEdge);
    left -= std::max(0.0f, FvisibleArea.Left + left + kIconEdge - FcompoundVisibleArea.Right);
    // Both wires keep their least length, so a wide title never swallows the right one.
    left = std::clamp(left, 0.0f, std::max(0.0f, w - block - kIconEdge));
  }
  const float right = wires ? std::max(0.0f, w - left - block) : 0.0f;
  FLeftLineLayout->SetVisible(wires);
  FRightLineLayout->SetVisible(wires);
  FLeftLineLayout->SetWidth(left);
  FRightLineLayout->SetWidth(right);
  if (FImageRes) {
    auto placeWire = [h](TImage* end, TImage* fill, float width, TBitmap* endPicture, bool endAtLeft) {
      const float ew = std::min(PictureWidth(endPicture), width), ph = PictureHeight(endPicture);
      const float top = static_cast<float>(static_cast<int>((h - ph) / 2));
      end->SetBounds(endAtLeft ? 0 : width - ew, top, ew, ph);
      fill->SetBounds(endAtLeft ? ew : 0, top, std::max(0.0f, width - ew), ph);
    };
    placeWire(FLeftLineImage, FLeftLineFillImage, left, FImageRes->CabinetbarTabWireLeft(), true);
    placeWire(FRightLineImage, FRightLineFillImage, right, FImageRes->CabinetbarTabWireRight(), false);
  }
  Realign();

  // The block: margins from the icon rectangle when it has the whole width.
  const float inner = FIconTextLayout->Width();
  float blockLeft = wires ? 0 : std::max(0.0f, (inner - block) / 2);
  if (!wires && w < kMinIconWidth) blockLeft = 0;
  FIconTextInternalLayout->SetBounds(blockLeft, 0, std::min(block, std::max(inner, block)), h);
  const float baseH = FImageRes ? PictureHeight(FImageRes->FaviconBase()) : 0.0f;
  const float baseLeft = title || lines ? kIconTextMargin : 0;
  FIconBaseImage->SetBounds(baseLeft, static_cast<float>(static_cast<int>((h - baseH) / 2)), base, baseH);
  FTextBox->SetVisible(title);
  const float textLeft = baseLeft + base + kIconTextGap;
  FTextBox->SetBounds(textLeft, 0, std::max(0.0f, block - textLeft - kIconTextMargin), h);
  const float backLeft = blockLeft,
              thirds = FImageRes ? PictureWidth(FImageRes->CabinetbarItemHoveredLeft()) : 0;
  FIconTextBackImageLeft->SetBounds(backLeft, 0, thirds, h);
  FIconTextBackImageFill->SetBounds(backLeft + thirds, 0, std::max(0.0f, block - 2 * thirds), h);
  FIconTextBackImageRight->SetBounds(backLeft + block - thirds, 0, thirds, h);
  FInLayout = false;
  IconTextLayoutChangeStatus();
}

void TCabinetIcon2::IconTextLayoutChangeStatus() {
  TCabinetIconBarImageRes* res = FImageRes;
  const bool pressed = FIconTextLayout->IsPressed(), hovered = FIconTextLayout->IsHovered();
  if (res) {
    TBitmap* inside = pressed   ? res->CabinetbarItemMinPressed()
                      : hovered ? res->CabinetbarItemMinHovered()
                                : nullptr;
    TBitmap* base = pressed   ? res->FaviconBasePressed()
                    : hovered ? res->FaviconBaseHovered()
                              : res->FaviconBase();
    // Every layout pass comes here; copying the same pictures again would only cost.
    if (!FBaseLookShown || inside != FShownInside || base != FShownBase) {
      if (pressed || hovered)
        Show(FIconBaseImageInside, inside);
      else
        FIconBaseImageInside->Bitmap().Clear(0x00FFFFFFu);
      Show(FIconBaseImage, base);
      FShownInside = inside;
      FShownBase = base;
      FBaseLookShown = true;
    }
  }
  TIconTextBackStatus status = TIconTextBackStatus::itbsNone;
  if (TitleVisible() && pressed)
    status = TIconTextBackStatus::itbsPressed;
  else if (TitleVisible() && hovered)
    status = TIconTextBackStatus::itbsHover;
  if (status == FIconTextBackStatus) return;
  FIconTextBackStatus = status;
  FTextBox->SetIconTextBackStatus(status);
  TBitmap *l = nullptr, *f = nullptr, *r = nullptr;
  if (res && status == TIconTextBackStatus::itbsPressed) {
    l = res->CabinetbarItemPressedLeft(), f = res->CabinetbarItemPressedFill(),
    r = res->CabinetbarItemPressedRight();
  } else if (res && status == TIconTextBackStatus::itbsHover) {
    l = res->CabinetbarItemHoveredLeft(), f = res->CabinetbarItemHoveredFill(),
    r = res->CabinetbarItemHoveredRight();
  }
  Show(FIconTextBackImageLeft, l);
  Show(FIconTextBackImageFill, f);
  Show(FIconTextBackImageRight, r);
}

void TCabinetIcon2::Click() {
  TCabinetIconLayout::Click();
  if (Enabled() && OnIconClick) OnIconClick(this);
}

void TCabinetIcon2::SetNextIcon(TCabinetIcon2* icon) {
  if (icon == FNextIcon) return;
  if (FNextIcon) FNextIcon->RemoveFreeNotify(this);
  FNextIcon = icon;
  if (FNextIcon) FNextIcon->AddFreeNotify(this);
}

void TCabinetIcon2::Notification(TFmxObject* object) {
  TCabinetIconLayout::Notification(object);
  if (object == FNextIcon) FNextIcon = nullptr;
}

}  // namespace qx
