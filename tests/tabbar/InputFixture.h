#pragma once

// A strip in its parent form, fed mouse and touch as window messages of that form,
// so that hit testing, capture and the scroll box take part as they do for a person.

#include <optional>
#include <vector>

#include "runtime/MMTimerService.h"
#include "tabbar/ParentFormFixture.h"

namespace qx {

class InputTest : public ParentFormTest {
 protected:
  static constexpr TAlphaColor kIconColour = 0xFF2080C0;

  // The toolkit's timers run on the system's clock, as they do in the module.
  InputTest() {
    CurrentTimerService();
    timers_.emplace();
  }
  ~InputTest() override {
    form_.reset();
    timers_.reset();
  }
  // Tabs titled "Site <n>"; the first firstSection of them in one section, the rest in a second.
  TTabbarFrame& Strip(int tabs, int firstSection = -1) {
    group_ = host_.Model().Groups()[1].get();
    // The host always has its default icon; without any icon the title popup stays away.
    TBitmap icon(16, 16);
    icon.Clear(kIconColour);
    std::filesystem::create_directories(host_.Favicons().DefaultPath().parent_path());
    icon.SaveToFile(host_.Favicons().DefaultPath().u16string());
    for (int i = 0; i < tabs; ++i) {
      TFakeOpenTab how;
      how.Group = group_;
      how.Activate = i == 0;
      if (firstSection >= 0) how.Section = i < firstSection ? 0 : 1;
      how.Title = u"Site " + FromUtf8(std::to_string(i));
      host_.Model().OpenTab(u"https://site" + FromUtf8(std::to_string(i)) + u".example/", how);
    }
    MakeForm();
    host_.Events().FireFromHost(u"Client.Initialized", {});
    TTabbarFrame& frame = *form_->TabbarChildFrame();
    frame.layoutSubviews(false);
    return frame;
  }
  TPoint At(TTabImage* tab, float dx = 0) {
    TPointF c = Centre(tab->Base());
    return Screen({c.X + dx, c.Y});
  }
  void Send(std::uint32_t msg, TPoint at, WParam keys) { os_->InjectMouseAtScreen(msg, at, keys); }
  void Press(TPoint at) { Send(win::WM_LBUTTONDOWN, at, win::MK_LBUTTON); }
  void MoveTo(TPoint at) { Send(win::WM_MOUSEMOVE, at, win::MK_LBUTTON); }
  void Release(TPoint at) { Send(win::WM_LBUTTONUP, at, 0); }
  void Hover(TPoint at) { Send(win::WM_MOUSEMOVE, at, 0); }

  // A finger as the system reports it: raw touch to the form's window, then the mouse
  // message it synthesizes from it, marked as made from touch.
  void Touch(std::uint32_t flags, TPoint at) {
    TouchInput input;
    input.x = at.X * 100;
    input.y = at.Y * 100;
    input.dwID = 1;
    input.dwFlags = flags | win::TOUCHEVENTF_PRIMARY;
    os_->InjectTouch(form_->FormHandle(), std::vector<TouchInput>{input});
    const std::uint32_t msg = (flags & win::TOUCHEVENTF_DOWN) ? win::WM_LBUTTONDOWN
                              : (flags & win::TOUCHEVENTF_UP) ? win::WM_LBUTTONUP
                                                              : win::WM_MOUSEMOVE;
    os_->InjectMouseAtScreen(msg, at, (flags & win::TOUCHEVENTF_UP) ? 0 : win::MK_LBUTTON,
                             static_cast<LParam>(win::MI_WP_TOUCH));
    os_->ProcessMessages();
  }
  void Tap(TPoint at) {
    Touch(win::TOUCHEVENTF_DOWN, at);
    Touch(win::TOUCHEVENTF_UP, at);
  }

  std::vector<TFakeEventRecord> Sent(std::u16string_view id) {
    std::vector<TFakeEventRecord> out;
    for (const auto& e : host_.Events().EventLog())
      if (e.Id == id && !e.FromHost) out.push_back(e);
    return out;
  }

  std::optional<TMMTimerServiceScope> timers_;
};

}  // namespace qx
