#include "tabbar/TitleForm.h"

#include <algorithm>
#include <cmath>

namespace qx {

namespace {

constexpr TAlphaColor kTitleColour = 0xFF3E3E3E;
constexpr TAlphaColor kShadowColour = 0xFFDEDEDE;
constexpr std::uint32_t kInsertAfterFlags = 531;

TImage* MakePlate(TFmxObject* parent, TAlignLayout align, float width) {
  auto* image = new TImage(parent);
  parent->AddObject(image);
  image->SetHitTest(false);
  image->SetAlign(align);
  if (width > 0) image->SetWidth(width);
  return image;
}

TLabel* MakeLabel(TFmxObject* parent, TAlphaColor colour) {
  auto* label = new TLabel(parent);
  parent->AddObject(label);
  label->SetBounds(43, 2, 300, 20);
  label->TextSettings.Font.Family = u"\u30e1\u30a4\u30ea\u30aa";
  label->TextSettings.FontColor = colour;
  label->TextSettings.WordWrap = false;
  return label;
}

}  // namespace

TTitleForm::TTitleForm(TFmxObject* owner, IServiceCoreWrap* serviceCore, TTabbarImageRes* imageRes,
                       HWnd parentHandle, ICabinetIconBar* cabinetIconBar)
    : TBaseFormXE7(owner),
      FImageRes(imageRes),
      FServiceCore(serviceCore),
      FParentHandle(parentHandle),
      FCabinetIconBar(cabinetIconBar) {
  BorderStyle = TFmxFormBorderStyle::None;
  Transparency = true;
  FormStyle = TFormStyle::Popup;
  SetBounds(0, 0, 381, kHeight);
  FRootLayout = new TLayout(this);
  AddObject(FRootLayout);
  FRootLayout->SetAlign(TAlignLayout::Client);
  FRootLayout->SetOpacity(0);
  FimgLeft = MakePlate(FRootLayout, TAlignLayout::Left, 36);
  FimgRight = MakePlate(FRootLayout, TAlignLayout::Right, 36);
  FimgCenter = MakePlate(FRootLayout, TAlignLayout::Client, 0);
  FimgCenter->SetWrapMode(TImageWrapMode::Tile);
  FimgFavicon = MakePlate(FRootLayout, TAlignLayout::None, 0);
  FimgFavicon->SetBounds(17, 4, 16, 16);
  FlbTitleShadow = MakeLabel(FRootLayout, kShadowColour);
  FlbTitle = MakeLabel(FRootLayout, kTitleColour);
  FRootlayoutOpacityAnimation = new TFloatAnimation(FRootLayout);
  FRootLayout->AddObject(FRootlayoutOpacityAnimation);
  FRootlayoutOpacityAnimation->Duration = 0.2f;
  FRootlayoutOpacityAnimation->PropertyName = "Opacity";
  FRootlayoutOpacityAnimation->StartFromCurrent = true;
  FRootlayoutOpacityAnimation->OnFinish = [this](TFmxObject*) { RootlayoutOpacityAnimationFinish(); };
  // The form is layered: each step of the fade repaints it whole.
  FRootlayoutOpacityAnimation->OnProcess = [this](TFmxObject*) { Invalidate(ClientRect()); };
}

void TTitleForm::SetTitleColor(std::int32_t groupIndex) {
  if (groupIndex == FGroupIndex || groupIndex < 0 || groupIndex > 5 || !FImageRes) return;
  TTabbarImageRes& res = *FImageRes;
  TBitmap *left = nullptr, *fill = nullptr, *right = nullptr;
  switch (groupIndex) {
#define QX_PLATE(n, key)      \
  case n:                     \
    left = res.key##Left();   \
    fill = res.key##Fill();   \
    right = res.key##Right(); \
    break;
    QX_PLATE(0, TabNameBackground1)
    QX_PLATE(1, TabNameBackground2)
    QX_PLATE(2, TabNameBackground3)
    QX_PLATE(3, TabNameBackground4)
    QX_PLATE(4, TabNameBackground5)
    default:
      left = res.TabNameBackground6Left();
      fill = res.TabNameBackground6Fill();
      right = res.TabNameBackground6Right();
      break;
#undef QX_PLATE
  }
  FimgLeft->SetBitmap(left);
  FimgCenter->SetBitmap(fill);
  FimgRight->SetBitmap(right);
  FGroupIndex = groupIndex;
}

void TTitleForm::ShowTitle(const TBitmap* favicon, const std::u16string& title, std::int32_t groupIndex,
                           float x, float y, bool animated, const std::u16string& tabId) {
  HandleNeed();
  FCurrentTabId = tabId;
  SetTitleColor(groupIndex);
  if (!FFontInit) {
    FlbTitleShadow->TextSettings.Font = FlbTitle->TextSettings.Font;
    FFontInit = true;
  }
  FlbTitle->SetText(title);
  FlbTitleShadow->SetText(title);
  FFirstShow = false;
  FitTitleForm();
  UpdateFavicon(favicon);
  const float faviconWidth = std::round(FimgFavicon->Width());
  const float content = faviconWidth + 4 + std::round(FlbTitle->Width());
  const int width = std::max(kMinWidth, static_cast<int>(content) + 66);
  const float left = std::round((static_cast<float>(width) - content) / 2);
  FimgFavicon->Position().SetX(left);
  FlbTitle->Position().SetX(faviconWidth + left + 4);
  FlbTitle->Position().SetY((FimgFavicon->Height() - FlbTitle->Height()) / 2 + FimgFavicon->Position().Y() +
                            1);
  FlbTitleShadow->SetBounds(FlbTitle->Position().X(), FlbTitle->Position().Y() + 1, FlbTitle->Width(),
                            FlbTitle->Height());
  SetBounds(static_cast<int>(std::lround(x - static_cast<float>(width) / 2)),
            static_cast<int>(std::lround(y)), width, kHeight);
  Invalidate(ClientRect());
  if (!Visible()) PlaceOnScreen();

  TFloatAnimation& fade = *FRootlayoutOpacityAnimation;
  fade.Stop();
  fade.Duration = 0.1f;
  // The active tab's title shows at full strength at once; a hovered one fades in from where it is.
  fade.StartFromCurrent = !animated;
  if (animated) fade.StartValue = 1;
  fade.StopValue = 1;
  fade.Start();
}

void TTitleForm::FitTitleForm() {
  const TSizeF size = FlbTitle->TextSize(0);
  const float width = size.cx >= kMaxTitleWidth ? kMaxTitleWidth : size.cx;
  FlbTitle->SetBounds(FlbTitle->Position().X(), FlbTitle->Position().Y(), width,
                      std::max(FlbTitle->Height(), size.cy));
}

void TTitleForm::PlaceOnScreen() {
  IPlatform& os = Platform();
  const HWnd window = FormHandle();
  if (window && FParentHandle && os.GetParent(window) != FParentHandle) os.SetParent(window, FParentHandle);
  if (!FMoorLandingSearched) {
    FMoorLandingWindow = FindProcessWindowByClassName(u"MoorLandingWindow");
    FMoorLandingSearched = true;
  }
  if (window && FMoorLandingWindow)
    os.SetWindowPos(window, FMoorLandingWindow, 0, 0, 0, 0, kInsertAfterFlags);
  if (window) os.ShowWindow(window, win::SW_SHOWNA);
  SetVisible(true);
}

void TTitleForm::HideAnimation(float duration) {
  TFloatAnimation& fade = *FRootlayoutOpacityAnimation;
  if (fade.Running()) return;
  fade.Stop();
  fade.Duration = duration;
  fade.StartFromCurrent = true;
  fade.StopValue = 0;
  fade.Start();
}

void TTitleForm::RootlayoutOpacityAnimationFinish() {
  if (FRootLayout->Opacity() <= 0) Hide();
}

bool TTitleForm::IsHidingOrHidden() const {
  return !Visible() ||
         (FRootlayoutOpacityAnimation->Running() && FRootlayoutOpacityAnimation->StopValue == 0);
}

void TTitleForm::UpdatePosition(float x, float y) {
  SetBounds(static_cast<int>(std::lround(x - static_cast<float>(Width()) / 2)),
            static_cast<int>(std::lround(y)), Width(), Height());
}

void TTitleForm::UpdateFavicon(const TBitmap* favicon) {
  FimgFavicon->SetBitmap(favicon);
  Invalidate(ClientRect());
}

void TTitleForm::MouseMove(TShiftState shift, float x, float y) {
  TBaseFormXE7::MouseMove(shift, x, y);
  if (FCabinetIconBar && FCabinetIconBar->MouseInCabinetBar()) Hide();
}

}  // namespace qx
