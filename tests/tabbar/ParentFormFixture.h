#pragma once

// The tab strip's parent form embedded in a host window, over a fake browser with
// six tab groups (the second one active), on the manual clock.

#include "resources/CustomCtrlToolTip2.h"
#include "resources/ImageButton.h"
#include "tabbar/FrameFixture.h"
#include "tabbar/TabbarParentForm.h"

namespace qx {

class ParentFormTest : public FrameTest {
 protected:
  static constexpr int kHostX = 100, kHostY = 50;

  ParentFormTest() {
    for (int i = 1; i < 6; ++i) host_.Model().AddGroup(u"group" + FromUtf8(std::to_string(i)));
    host_.Model().SwitchGroup(host_.Model().Groups()[1].get());
    os_->RegisterClassW(u"QxTestHost", &HostProc);
    HostMessages() = {};
    hostWindow_ = os_->CreateWindowExW(0, u"QxTestHost", u"host", win::WS_POPUP | win::WS_VISIBLE, kHostX,
                                       kHostY, 1200, 200, nullptr, nullptr);
  }
  ~ParentFormTest() override {
    form_.reset();
    os_->DestroyWindow(hostWindow_);
  }

  TTabbarParentForm& MakeForm(int width = 828) {
    form_ = std::make_unique<TTabbarParentForm>(nullptr, imageRes_.get(), wrap_.get(), hostWindow_);
    EmbedChildForm(*form_, hostWindow_);
    form_->SetBounds(0, 0, width, 54);
    form_->Show();
    os_->ShowWindow(form_->FormHandle(), win::SW_SHOWNA);
    return *form_;
  }

  // Client point of the form to the screen.
  static TPoint Screen(TPointF client) {
    return {kHostX + static_cast<int>(client.X), kHostY + static_cast<int>(client.Y)};
  }
  static TPointF Centre(TControl* control) {
    const TRectF r = control->AbsoluteRect();
    return {(r.Left + r.Right) / 2, (r.Top + r.Bottom) / 2};
  }
  void Click(TControl* control, bool right = false) {
    const TPoint at = Screen(Centre(control));
    os_->InjectMouseAtScreen(right ? win::WM_RBUTTONDOWN : win::WM_LBUTTONDOWN, at,
                             right ? win::MK_RBUTTON : win::MK_LBUTTON);
    os_->InjectMouseAtScreen(right ? win::WM_RBUTTONUP : win::WM_LBUTTONUP, at, 0);
  }
  LResult HitTest(TPointF client) {
    const TPoint at = Screen(client);
    return os_->SendMessageW(form_->FormHandle(), win::WM_NCHITTEST, 0,
                             static_cast<LParam>((at.Y << 16) | (at.X & 0xFFFF)));
  }
  std::int32_t ActiveGroupIndex() { return host_.Model().GroupIndex(host_.Model().ActiveGroup()); }

  static std::vector<std::uint32_t>& HostMessages() {
    static std::vector<std::uint32_t> messages;
    return messages;
  }
  static LResult QX_STDCALL HostProc(HWnd hwnd, std::uint32_t msg, WParam wParam, LParam lParam) {
    HostMessages().push_back(msg);
    return Platform().DefWindowProcW(hwnd, msg, wParam, lParam);
  }

  HWnd hostWindow_ = nullptr;
  std::unique_ptr<TTabbarParentForm> form_;
};

}  // namespace qx
