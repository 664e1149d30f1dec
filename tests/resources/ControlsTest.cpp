#include <vector>

#include "ResourcesFixture.h"
#include "resources/BadgeImage.h"
#include "resources/CustomCtrlToolTip2.h"
#include "resources/ImageButton.h"
#include "toolkit/Layout.h"

namespace qx::test {
namespace {

constexpr TAlphaColor kNormal = TAlphaColors::Red;
constexpr TAlphaColor kHover = TAlphaColors::Lime;
constexpr TAlphaColor kPushed = TAlphaColors::Blue;
constexpr TAlphaColor kYellow = 0xFFFFFF00u;

std::unique_ptr<TBitmap> Solid(TAlphaColor colour, int size = 4) {
  auto bitmap = std::make_unique<TBitmap>(size, size);
  bitmap->Clear(colour);
  return bitmap;
}

class ImageButtonTest : public ResourcesTest {
 protected:
  ImageButtonTest() {
    button_ = new TImageButton(&parent_);
    parent_.AddObject(button_);
    button_->SetBounds(0, 0, 22, 22);
    button_->SetNormalBitmap(Solid(kNormal).get());
    button_->SetHoverBitmap(Solid(kHover).get());
    button_->SetPushedBitmap(Solid(kPushed).get());
    TAnimation::AniThread()->SetInterval(10);
  }
  TAlphaColor Shown() { return button_->Bitmap().PixelColor(1, 1); }

  TLayout parent_;
  TImageButton* button_ = nullptr;
};

TEST_F(ImageButtonTest, HoverFadesInAndOut) {
  ASSERT_NE(button_->BitmapAnimation(), nullptr);
  EXPECT_EQ(button_->BitmapAnimation()->Duration, 0.2f);
  EXPECT_EQ(Shown(), kNormal);
  button_->DoMouseEnter();
  EXPECT_TRUE(button_->IsHovered());
  EXPECT_TRUE(button_->BitmapAnimation()->Running());
  Clock().Advance(100);
  const TAlphaColor half = Shown();
  EXPECT_NEAR(static_cast<int>((half >> 16) & 0xFF), 128, 10);  // red going
  EXPECT_NEAR(static_cast<int>((half >> 8) & 0xFF), 128, 10);   // green coming
  Clock().Advance(150);
  EXPECT_EQ(Shown(), kHover);
  button_->DoMouseLeave();
  Clock().Advance(100);
  EXPECT_NEAR(static_cast<int>((Shown() >> 16) & 0xFF), 128, 10);
  Clock().Advance(150);
  EXPECT_EQ(Shown(), kNormal);
}

TEST_F(ImageButtonTest, PressDuringAFadeShowsThePushedPictureAtOnce) {
  button_->DoMouseEnter();
  Clock().Advance(100);
  button_->MouseDown(TMouseButton::mbLeft, ss::Left, 5, 5);
  EXPECT_TRUE(button_->IsPressed());
  EXPECT_FALSE(button_->BitmapAnimation()->Running());
  EXPECT_EQ(Shown(), kPushed);
  Clock().Advance(300);
  EXPECT_EQ(Shown(), kPushed);
  // Release goes straight back to hover: the pushed picture never fades.
  button_->MouseUp(TMouseButton::mbLeft, 0, 5, 5);
  EXPECT_EQ(Shown(), kHover);
}

TEST_F(ImageButtonTest, WithoutAnimationHoverIsImmediate) {
  button_->SetAnimate(false);
  button_->DoMouseEnter();
  EXPECT_EQ(Shown(), kHover);
}

TEST_F(ImageButtonTest, ChangedPictureShowsAtOnce) {
  button_->SetNormalBitmap(Solid(TAlphaColors::White).get());
  EXPECT_EQ(Shown(), TAlphaColors::White);
}

TEST_F(ImageButtonTest, StripIsCutIntoThreeCells) {
  TBitmap strip(12, 4);
  strip.Canvas().FillRect(TRectF(0, 0, 4, 4), TAlphaColors::White, 1);
  strip.Canvas().FillRect(TRectF(4, 0, 8, 4), kYellow, 1);
  strip.Canvas().FillRect(TRectF(8, 0, 12, 4), TAlphaColors::Black, 1);
  button_->SetBitmapList(&strip);
  EXPECT_EQ(button_->BitmapList(), &strip);
  EXPECT_EQ(button_->NormalBitmap().Width(), 4);
  EXPECT_EQ(button_->HoverBitmap().PixelColor(0, 0), kYellow);
  EXPECT_EQ(button_->PushedBitmap().PixelColor(3, 3), TAlphaColors::Black);
  EXPECT_EQ(Shown(), TAlphaColors::White);
}

TEST_F(ImageButtonTest, RightClickOnlyWhenEnabledAndFlaggedInTheHandler) {
  std::vector<bool> clicks;
  button_->OnClick = [&](TFmxObject*) { clicks.push_back(button_->RightClick()); };
  button_->MouseDown(TMouseButton::mbRight, ss::Right, 5, 5);
  button_->MouseUp(TMouseButton::mbRight, 0, 5, 5);
  EXPECT_TRUE(clicks.empty());
  button_->SetEnableRightClick(true);
  button_->MouseDown(TMouseButton::mbRight, ss::Right, 5, 5);
  EXPECT_FALSE(button_->IsPressed());  // a right press never shows the pushed picture
  button_->MouseUp(TMouseButton::mbRight, 0, 5, 5);
  ASSERT_EQ(clicks.size(), 1u);
  EXPECT_TRUE(clicks[0]);
  EXPECT_FALSE(button_->RightClick());
  button_->MouseDown(TMouseButton::mbLeft, ss::Left, 5, 5);
  button_->MouseUp(TMouseButton::mbLeft, 0, 5, 5);
  ASSERT_EQ(clicks.size(), 2u);
  EXPECT_FALSE(clicks[1]);
  // Released outside: no click.
  button_->MouseDown(TMouseButton::mbRight, ss::Right, 5, 5);
  button_->MouseUp(TMouseButton::mbRight, 0, 50, 50);
  EXPECT_EQ(clicks.size(), 2u);
}

TEST_F(ImageButtonTest, NoAnimationBeforeTheButtonHasAParent) {
  TImageButton loose;
  EXPECT_EQ(loose.BitmapAnimation(), nullptr);
  loose.SetNormalBitmap(Solid(kNormal).get());
  loose.SetHoverBitmap(Solid(kHover).get());
  loose.DoMouseEnter();
  EXPECT_EQ(loose.Bitmap().PixelColor(0, 0), kHover);
}

using BadgeImageTest = ResourcesTest;

TEST_F(BadgeImageTest, BadgeFollowsTheFlags) {
  WritePng(StripFolder() / "TabBadgeProtected.png", 22, 20, kNormal);
  WritePng(StripFolder() / "TabBadgeBookmarked.png", 22, 20, kHover);
  WritePng(StripFolder() / "TabBadgeBookmarkedProtected.png", 22, 20, kPushed);
  TTabbarImageRes res(wrap_.get());
  TLayout parent;
  auto* badge = new TBadgeImage(&parent, &res);
  parent.AddObject(badge);
  TAnimation::AniThread()->SetInterval(10);
  EXPECT_EQ(badge->Width(), 22);
  EXPECT_EQ(badge->Height(), 20);
  EXPECT_EQ(badge->WrapMode(), TImageWrapMode::Original);
  EXPECT_FALSE(badge->HasBadge());

  badge->SetPinned(true);
  EXPECT_TRUE(badge->HasBadge());
  EXPECT_EQ(badge->CurrentBadgeBitmap(), res.TabBadgeProtected());
  EXPECT_EQ(badge->Bitmap().PixelColor(1, 1), kNormal);  // from nothing: at once

  badge->SetBookmarked(true);
  EXPECT_EQ(badge->CurrentBadgeBitmap(), res.TabBadgeBookmarkedProtected());
  EXPECT_TRUE(badge->BitmapAnimation()->Running());
  Clock().Advance(100);
  EXPECT_NEAR(static_cast<int>(badge->Bitmap().PixelColor(1, 1) & 0xFF), 128, 10);
  Clock().Advance(150);
  EXPECT_EQ(badge->Bitmap().PixelColor(1, 1), kPushed);

  badge->SetPinned(false);
  Clock().Advance(250);
  EXPECT_EQ(badge->Bitmap().PixelColor(1, 1), kHover);
  badge->SetBookmarked(false);
  EXPECT_FALSE(badge->HasBadge());
  EXPECT_EQ(badge->CurrentBadgeBitmap(), nullptr);
  EXPECT_TRUE(badge->Bitmap().IsEmpty());
}

TEST_F(BadgeImageTest, MissingPicturesLeaveTheBadgeEmpty) {
  TTabbarImageRes res(wrap_.get());
  TBadgeImage badge(nullptr, &res);
  badge.SetPinned(true);
  badge.SetBookmarked(true);
  EXPECT_TRUE(badge.HasBadge());
  EXPECT_EQ(badge.CurrentBadgeBitmap(), nullptr);
  EXPECT_TRUE(badge.Bitmap().IsEmpty());
}

// ---- tooltips

struct TSent {
  std::uint32_t message;
  WParam wParam;
  ToolInfoW info;
  std::u16string text;
};
std::vector<TSent>* gSent = nullptr;
HWnd gTooltip = nullptr;

LResult QX_STDCALL RecordSent(std::int32_t code, WParam wParam, LParam lParam) {
  const auto* cwp = reinterpret_cast<const CwpStruct*>(lParam);
  if (gSent && cwp && cwp->hwnd == gTooltip && cwp->message >= win::WM_USER) {
    TSent sent{cwp->message, cwp->wParam, {}, {}};
    const bool tool = cwp->message == win::TTM_ADDTOOLW || cwp->message == win::TTM_DELTOOLW ||
                      cwp->message == win::TTM_NEWTOOLRECTW || cwp->message == win::TTM_UPDATETIPTEXTW;
    if (tool) {
      sent.info = *reinterpret_cast<const ToolInfoW*>(cwp->lParam);
      if (sent.info.lpszText) sent.text = sent.info.lpszText;
    }
    gSent->push_back(sent);
  }
  return Platform().CallNextHookEx(nullptr, code, wParam, lParam);
}

class ToolTipTest : public ResourcesTest {
 protected:
  ToolTipTest() {
    Platform().RegisterClassW(u"ToolTipTestParent", Platform().DefWindowProcAddress());
    parent_ = Platform().CreateWindowExW(0, u"ToolTipTestParent", u"", win::WS_VISIBLE, 0, 0, 400, 100,
                                         nullptr, nullptr);
    gSent = &sent_;
    hook_ = Platform().SetWindowsHookExW(win::WH_CALLWNDPROC, &RecordSent, nullptr, 0);
  }
  ~ToolTipTest() override {
    Platform().UnhookWindowsHookEx(hook_);
    gSent = nullptr;
    gTooltip = nullptr;
  }
  // Creates the window and starts recording from there.
  void Attach(TCustomControlToolTip& tip) {
    gTooltip = tip.Handle();
    sent_.clear();
  }
  TTooltipState State(TCustomControlToolTip& tip) {
    TTooltipState state;
    EXPECT_TRUE(os_->ReadTooltip(tip.Handle(), &state));
    return state;
  }

  HWnd parent_ = nullptr;
  HHook hook_ = nullptr;
  std::vector<TSent> sent_;
};

TEST_F(ToolTipTest, WindowIsTheNativeTooltipMadeOnFirstNeed) {
  TCustomControlToolTip tip(parent_, 300);
  EXPECT_FALSE(tip.HandleAllocated());
  HWnd handle = tip.Handle();
  ASSERT_NE(handle, nullptr);
  EXPECT_EQ(Platform().GetWindowLongW(handle, win::GWL_STYLE), static_cast<std::int32_t>(0x80000003u));
  EXPECT_EQ(Platform().GetWindowLongW(handle, win::GWL_EXSTYLE), 136);
  EXPECT_EQ(State(tip).maxWidth, 300);
}

TEST_F(ToolTipTest, ToolsSendAddUpdateAndRectMessagesOnlyOnChange) {
  TCustomControlToolTip tip(parent_, 0);
  Attach(tip);
  tip.UpdateTool(7, u"Close tab", nullptr, TRect{10, 0, 30, 20});
  ASSERT_EQ(sent_.size(), 1u);
  EXPECT_EQ(sent_[0].message, 1074u);
  EXPECT_EQ(sent_[0].info.uFlags, 16u);
  EXPECT_EQ(sent_[0].info.hwnd, parent_);
  EXPECT_EQ(sent_[0].info.uId, 7u);
  EXPECT_EQ(sent_[0].info.rect.Left, 10);
  EXPECT_EQ(sent_[0].info.rect.Right, 30);
  EXPECT_EQ(sent_[0].text, u"Close tab");
  EXPECT_EQ(sent_[0].info.cbSize, sizeof(ToolInfoW));

  tip.UpdateTool(7, u"Close tab", nullptr, TRect{10, 0, 30, 20});
  EXPECT_EQ(sent_.size(), 1u);
  tip.UpdateTool(7, u"Close this tab", nullptr, TRect{10, 0, 30, 20});
  ASSERT_EQ(sent_.size(), 2u);
  EXPECT_EQ(sent_[1].message, 1081u);
  EXPECT_EQ(sent_[1].text, u"Close this tab");
  tip.UpdateTool(7, u"Close this tab", nullptr, TRect{40, 0, 60, 20});
  ASSERT_EQ(sent_.size(), 3u);
  EXPECT_EQ(sent_[2].message, 1076u);
  EXPECT_EQ(sent_[2].info.rect.Left, 40);

  tip.UpdateTool(3, u"New tab", nullptr, TRect{0, 0, 5, 5});
  EXPECT_EQ(tip.FindTool(3), 0);  // sorted by id
  EXPECT_EQ(tip.FindTool(7), 1);
  EXPECT_EQ(tip.FindTool(99), -1);
  const TTooltipState state = State(tip);
  ASSERT_EQ(state.tools.size(), 2u);
  EXPECT_EQ(state.tools[0].text, u"Close this tab");
  EXPECT_EQ(state.tools[0].rect.Left, 40);
}

TEST_F(ToolTipTest, DeleteActivateAndDestroy) {
  auto tip = std::make_unique<TCustomControlToolTip>(parent_, 0);
  Attach(*tip);
  tip->UpdateTool(1, u"a", nullptr, TRect{0, 0, 1, 1});
  tip->UpdateTool(2, u"b", nullptr, TRect{0, 0, 1, 1});
  sent_.clear();
  tip->DeleteTool(42);
  EXPECT_TRUE(sent_.empty());
  tip->DeleteTool(1);
  ASSERT_EQ(sent_.size(), 1u);
  EXPECT_EQ(sent_[0].message, 1075u);
  EXPECT_EQ(sent_[0].info.uId, 1u);
  EXPECT_EQ(tip->ToolCount(), 1);
  EXPECT_EQ(tip->GetTools(0)->HintText(), u"b");

  sent_.clear();
  tip->SetActive(true);  // already active
  EXPECT_TRUE(sent_.empty());
  tip->SetActive(false);
  ASSERT_EQ(sent_.size(), 2u);
  EXPECT_EQ(sent_[0].message, 1052u);
  EXPECT_EQ(sent_[1].message, 1025u);
  EXPECT_EQ(sent_[1].wParam, 0u);
  EXPECT_FALSE(State(*tip).active);
  tip->SetActive(true);
  EXPECT_EQ(sent_.back().message, 1025u);
  EXPECT_EQ(sent_.back().wParam, 1u);

  HWnd handle = tip->Handle();
  sent_.clear();
  tip.reset();
  ASSERT_EQ(sent_.size(), 1u);
  EXPECT_EQ(sent_[0].message, 1075u);
  EXPECT_FALSE(Platform().IsWindow(handle));
}

}  // namespace
}  // namespace qx::test
