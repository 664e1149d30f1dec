// The popup's size, its composed pictures and its place beside the selection.

#include <cmath>

#include "resources/CustomCtrlToolTip2.h"
#include "resources/SmartSearchImageRes.h"
#include "smartsearch/ComposeThreeSlice.h"
#include "smartsearch/SmartSearchForm.h"

namespace qx {
namespace {

constexpr float kDefaultTextWidth = 20;
constexpr std::int32_t kToolTipWidth = 400;
constexpr std::uint32_t kFirstEngineToolId = 401;
constexpr std::uint32_t kPageSearchToolId = 301;

TRect Rounded(const TRectF& r) {
  return {static_cast<int>(std::lround(r.Left)), static_cast<int>(std::lround(r.Top)),
          static_cast<int>(std::lround(r.Right)), static_cast<int>(std::lround(r.Bottom))};
}

}  // namespace

void TSmartSearchForm::UpdateFormWidth() {
  FFirstShow = false;
  const float textWidth = lbSearch_->Text.empty() ? kDefaultTextWidth : lbSearch_->TextSize(0).cx;
  const float buttonWidth = imgLupe_->Margins().Left() + imgLupe_->Width() + lbSearch_->Margins().Left() +
                            textWidth + 4 + lbSearch_->Margins().Right();
  if (buttonWidth != FLastDefaultSearchButtonWidth) {
    FLastDefaultSearchButtonWidth = buttonWidth;
    DefaultSearchButton_->SetWidth(buttonWidth);
  }
  float width = DefaultSearchButton_->Margins().Left() + DefaultSearchButton_->Width() +
                SearchButtonsLayout_->Margins().Left() +
                static_cast<float>(FSearchButtons.size()) * kSearchButtonWidth +
                (MoreButton_->Visible() ? MoreButton_->Width() : 0) + SearchButtonsLayout_->Margins().Right();
  if (!FPageSearchRequest.empty()) width += kPageSearchWidth;
  if (width != FLastFormSize) {
    FLastFormSize = width;
    FBackGroundInit = false;
    SetWidth(static_cast<int>(std::lround(width)));
  }
}

void TSmartSearchForm::UpdateBackground(TPoint pt) {
  const TRect area = FServiceCore->BrowserAreaRect();
  const bool upward = Height() + pt.Y - 5 > area.Bottom;
  const bool pageSearch = !FPageSearchRequest.empty();
  if (FBackGroundInit && upward == FShowingUpword && pageSearch == FShowPageSearchButton) return;
  FBackGroundInit = true;
  FShowingUpword = upward;
  FShowPageSearchButton = pageSearch;
  if (!FImageRes) return;
  // One right piece serves both directions.
  TBitmap* right = pageSearch ? FImageRes->SmartSearchExtendedBackgroundUpwardRight()
                              : FImageRes->SmartSearchBackgroundUpwardRight();
  TBitmap* left =
      upward ? FImageRes->SmartSearchBackgroundUpwardLeft() : FImageRes->SmartSearchBackgroundDownwardLeft();
  TBitmap* fill =
      upward ? FImageRes->SmartSearchBackgroundUpwardFill() : FImageRes->SmartSearchBackgroundDownwardFill();
  auto picture = ComposeThreeSliceBitmap(left, fill, Height(), Width(), right);
  imgBackground_->SetBitmap(picture.get());
}

void TSmartSearchForm::UpdateDefaultButtonBitmaps() {
  const float width = DefaultSearchButton_->Width();
  if (width == FLastDefaultSearchButtonBitmapWidth || !FImageRes) return;
  FLastDefaultSearchButtonBitmapWidth = width;
  const int w = static_cast<int>(std::lround(width));
  TSmartSearchImageRes& res = *FImageRes;
  auto normal = ComposeThreeSliceBitmap(res.SmartSearchButtonLeft(), res.SmartSearchButtonFill(),
                                        kSearchButtonHeight, w, res.SmartSearchButtonRight());
  auto hovered =
      ComposeThreeSliceBitmap(res.SmartSearchButtonHoveredLeft(), res.SmartSearchButtonHoveredFill(),
                              kSearchButtonHeight, w, res.SmartSearchButtonHoveredRight());
  auto pressed =
      ComposeThreeSliceBitmap(res.SmartSearchButtonPressedLeft(), res.SmartSearchButtonPressedFill(),
                              kSearchButtonHeight, w, res.SmartSearchButtonPressedRight());
  DefaultSearchButton_->SetNormalBitmap(normal.get());
  DefaultSearchButton_->SetHoverBitmap(hovered.get());
  DefaultSearchButton_->SetPushedBitmap(pressed.get());
}

void TSmartSearchForm::UpdateFormPosition(TPoint pt) {
  const TRect area = FServiceCore->BrowserAreaRect();
  int left = pt.X - 32;
  int top = FShowingUpword ? pt.Y - Height() : pt.Y;
  if (left < area.Left) left = area.Left;
  if (top < area.Top) top = area.Top;
  if (left + Width() > area.Right) left = area.Right - Width();
  if (top + Height() > area.Bottom) top = area.Bottom - Height();
  SetBounds(left, top, Width(), Height());
}

void TSmartSearchForm::UpdateToolTips() {
  const bool apply = !FSearchButtons.empty() || (FShowPageSearchButton && FPageSearchButton);
  if (!apply) {
    FToolTip.reset();
    return;
  }
  const HWnd window = FormHandle();
  if (!FToolTip) FToolTip = std::make_unique<TCustomControlToolTip>(window, kToolTipWidth);
  FToolTip->ClearTools();
  for (std::size_t i = 0; i < FSearchButtons.size(); ++i)
    FToolTip->UpdateTool(kFirstEngineToolId + static_cast<std::uint32_t>(i), FSearchButtons[i]->FDisplayName,
                         window, Rounded(FSearchButtons[i]->AbsoluteRect()));
  if (FShowPageSearchButton && FPageSearchButton)
    FToolTip->UpdateTool(kPageSearchToolId,
                         FServiceCore->TranslateText(u"このサイトで検索") + u"\r" + FPageSearchRequest,
                         window, Rounded(FPageSearchButton->AbsoluteRect()));
}

// A popup that refuses activation gets no hover tracking of its own.
void TSmartSearchForm::UpdateHovered() {
  TPoint cursor;
  if (!Platform().GetCursorPos(&cursor)) return;
  const TPointF client = ScreenToClient(TPointF{static_cast<float>(cursor.X), static_cast<float>(cursor.Y)});
  MouseMove({}, client.X, client.Y);
}

}  // namespace qx
