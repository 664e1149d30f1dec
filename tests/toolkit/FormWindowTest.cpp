// Forms on the platform's windows: made on demand, re-parented into a host window,
// and still reached by mouse, wheel and touch there; sized and moved from both
// sides; painted into the window's pixels.

#include <gtest/gtest.h>

#include <map>
#include <stdexcept>
#include <string>
#include <vector>

#include "MouseLog.h"
#include "ToolkitFixture.h"
#include "platform/portable/ScopedPortableOs.h"
#include "toolkit/Application.h"
#include "toolkit/Form.h"
#include "toolkit/Image.h"
#include "toolkit/Layout.h"

namespace qx {
namespace {

// The host's window: counts what reaches it.
struct THostProc {
  static inline std::map<std::uint32_t, int> Seen;
  static LResult QX_STDCALL Proc(HWnd hwnd, std::uint32_t msg, WParam wParam, LParam lParam) {
    ++Seen[msg];
    return Platform().DefWindowProcW(hwnd, msg, wParam, lParam);
  }
};

constexpr TPoint kHostOrigin{100, 200};

class ToolkitFormWindow : public test::ToolkitTest {
 protected:
  void SetUp() override {
    test::ToolkitTest::SetUp();
    THostProc::Seen.clear();
    os_->RegisterClassW(u"QxHostWindow", &THostProc::Proc);
    host = os_->CreateWindowExW(0, u"QxHostWindow", u"host", win::WS_POPUP | win::WS_VISIBLE, kHostOrigin.X,
                                kHostOrigin.Y, 800, 100, nullptr, nullptr);
    form = std::make_unique<TForm>();
    form->SetBounds(0, 0, 200, 50);
    a = Make("a", 0);
    b = Make("b", 100);
  }
  void TearDown() override {
    form.reset();
    if (os_->IsWindow(host)) os_->DestroyWindow(host);
    test::ToolkitTest::TearDown();
  }
  TImage* Make(const std::string& n, float x) {
    auto* c = new TImage(form.get());
    c->SetBounds(x, 0, 100, 50);
    c->Bitmap().SetSize(1, 1);
    form->AddObject(c);
    test::LogMouseEvents(c, n, log);
    return c;
  }
  // What a plug-in does with its form: child style, then into the host's window.
  HWnd Embed(int left, int top) {
    form->HandleNeed();
    HWnd hwnd = form->Handle();
    auto style = static_cast<std::uint32_t>(os_->GetWindowLongW(hwnd, win::GWL_STYLE));
    os_->SetWindowLongW(hwnd, win::GWL_STYLE,
                        static_cast<std::int32_t>((style | win::WS_CHILD) & ~win::WS_POPUP));
    os_->SetParent(hwnd, host);
    os_->SetWindowPos(hwnd, nullptr, left, top, form->Width(), form->Height(), win::SWP_NOZORDER);
    form->Show();
    return hwnd;
  }
  // Mouse input at a point of the host's client area, as the system would route it.
  void Mouse(std::uint32_t msg, int x, int y, WParam keys = 0) {
    os_->InjectMouseAtScreen(msg, TPoint{kHostOrigin.X + x, kHostOrigin.Y + y}, keys);
  }

  TScopedPortableOs os_;
  HWnd host = nullptr;
  std::unique_ptr<TForm> form;
  TImage* a = nullptr;
  TImage* b = nullptr;
  std::vector<std::string> log;
};

TEST_F(ToolkitFormWindow, HandleNeedMakesOneHiddenPopupOwnedByTheApplicationWindow) {
  Application().SetApplicationWindowCallback([this] { return reinterpret_cast<std::uintptr_t>(host); });
  form->SetBounds(10, 20, 300, 40);
  EXPECT_EQ(form->Handle(), nullptr);
  form->HandleNeed();
  HWnd hwnd = form->Handle();
  ASSERT_NE(hwnd, nullptr);
  form->HandleNeed();
  EXPECT_EQ(form->Handle(), hwnd);

  char16_t name[32] = {};
  os_->GetClassNameW(hwnd, name, 32);
  EXPECT_EQ(std::u16string(name), TCommonCustomForm::kWindowClassName);
  auto style = static_cast<std::uint32_t>(os_->GetWindowLongW(hwnd, win::GWL_STYLE));
  EXPECT_TRUE(style & win::WS_POPUP);
  EXPECT_EQ(os_->GetWindow(hwnd, win::GW_OWNER), host);
  TRect r;
  os_->GetWindowRect(hwnd, &r);
  EXPECT_EQ(r, (TRect{10, 20, 310, 60}));
  EXPECT_FALSE(os_->IsWindowVisible(hwnd));

  form->Show();
  EXPECT_TRUE(os_->IsWindowVisible(hwnd));
  form->Hide();
  EXPECT_FALSE(os_->IsWindowVisible(hwnd));

  // The form's own bounds reach the window.
  form->SetBounds(15, 25, 320, 44);
  os_->GetWindowRect(hwnd, &r);
  EXPECT_EQ(r, (TRect{15, 25, 335, 69}));
}

TEST_F(ToolkitFormWindow, BorderAndFormStylesShapeTheWindow) {
  form->BorderStyle = TFmxFormBorderStyle::None;
  form->FormStyle = TFormStyle::Popup;
  form->HandleNeed();
  auto style = static_cast<std::uint32_t>(os_->GetWindowLongW(form->Handle(), win::GWL_STYLE));
  auto exStyle = static_cast<std::uint32_t>(os_->GetWindowLongW(form->Handle(), win::GWL_EXSTYLE));
  EXPECT_FALSE(style & win::WS_CAPTION);
  EXPECT_TRUE(exStyle & win::WS_EX_NOACTIVATE);

  TForm framed;
  framed.HandleNeed();
  style = static_cast<std::uint32_t>(os_->GetWindowLongW(framed.Handle(), win::GWL_STYLE));
  EXPECT_EQ(style & win::WS_CAPTION, win::WS_CAPTION);
  EXPECT_TRUE(style & win::WS_THICKFRAME);
}

TEST_F(ToolkitFormWindow, ReparentedFormKeepsReceivingTheMouse) {
  HWnd hwnd = Embed(50, 10);
  EXPECT_EQ(os_->GetParent(hwnd), host);
  EXPECT_EQ(form->Left(), 50);
  EXPECT_EQ(form->Top(), 10);

  Mouse(win::WM_MOUSEMOVE, 60, 20);                      // over a
  Mouse(win::WM_MOUSEMOVE, 170, 20);                     // over b
  Mouse(win::WM_LBUTTONDOWN, 175, 25, win::MK_LBUTTON);  // press b
  Mouse(win::WM_LBUTTONUP, 175, 25);                     // release on b
  Mouse(win::WM_MOUSEMOVE, 400, 80);                     // out of the form, into the host
  os_->ProcessMessages();                                // the posted leave
  std::vector<std::string> expected = {"a.enter",      "a.move 10", "a.leave", "b.enter", "b.move 20",
                                       "b.down 25,15", "b.up",      "b.click", "b.leave"};
  EXPECT_EQ(log, expected);
  EXPECT_GE(THostProc::Seen[win::WM_MOUSEMOVE], 1);
}

TEST_F(ToolkitFormWindow, APressedControlFollowsTheMouseOutOfTheWindow) {
  Embed(50, 10);
  Mouse(win::WM_LBUTTONDOWN, 60, 20, win::MK_LBUTTON);
  EXPECT_EQ(os_->GetCapture(), form->Handle());
  log.clear();
  // Far outside the form: the capture brings the moves and the release back to a.
  Mouse(win::WM_MOUSEMOVE, 600, 20, win::MK_LBUTTON);
  Mouse(win::WM_LBUTTONUP, 600, 20);
  std::vector<std::string> expected = {"a.leave", "a.move 550", "a.up"};
  EXPECT_EQ(log, expected);  // released elsewhere: no click
  EXPECT_EQ(os_->GetCapture(), nullptr);
  EXPECT_EQ(form->Captured(), nullptr);
}

TEST_F(ToolkitFormWindow, AnotherWindowTakingTheMouseReleasesTheCapturedControl) {
  Embed(0, 0);
  Mouse(win::WM_LBUTTONDOWN, 10, 10, win::MK_LBUTTON);
  EXPECT_EQ(form->Captured(), a);
  os_->SetCapture(host);  // a menu of the host's, say
  EXPECT_EQ(form->Captured(), nullptr);
}

TEST_F(ToolkitFormWindow, TwoQuickPressesMakeADoubleClick) {
  Embed(0, 0);
  auto click = [&] {
    Mouse(win::WM_LBUTTONDOWN, 10, 10, win::MK_LBUTTON);
    Mouse(win::WM_LBUTTONUP, 10, 10);
  };
  auto doubles = [&] { return std::count(log.begin(), log.end(), "a.dblclick"); };
  click();
  os_->AdvanceClock(100);
  click();
  EXPECT_EQ(doubles(), 1);
  os_->AdvanceClock(100);
  click();  // a third press starts a new pair
  EXPECT_EQ(doubles(), 1);
  os_->AdvanceClock(os_->GetDoubleClickTime() + 1);
  click();  // too late
  EXPECT_EQ(doubles(), 1);
}

TEST_F(ToolkitFormWindow, WheelGoesToTheHoveredControlOrOnToTheParent) {
  HWnd hwnd = Embed(0, 0);
  int turned = 0;
  b->OnMouseWheel = [&](TFmxObject*, TShiftState shift, int delta, bool& handled) {
    turned += (shift & ss::Horizontal) ? -delta : delta;
    handled = true;
  };
  Mouse(win::WM_MOUSEMOVE, 150, 10);
  os_->InjectMouse(hwnd, win::WM_MOUSEWHEEL, 150, 10, MakeWParam(0, 120));
  EXPECT_EQ(turned, 120);
  os_->InjectMouse(hwnd, win::WM_MOUSEHWHEEL, 150, 10, MakeWParam(0, 120));
  EXPECT_EQ(turned, 0);
  EXPECT_EQ(THostProc::Seen[win::WM_MOUSEWHEEL], 0);
  // Nobody over a answers the wheel: the host gets it.
  Mouse(win::WM_MOUSEMOVE, 50, 10);
  os_->InjectMouse(hwnd, win::WM_MOUSEWHEEL, 50, 10, MakeWParam(0, -120));
  EXPECT_EQ(THostProc::Seen[win::WM_MOUSEWHEEL], 1);
}

TEST_F(ToolkitFormWindow, TouchOnARegisteredWindowDrivesThePanGesture) {
  HWnd hwnd = Embed(50, 10);
  ASSERT_TRUE(os_->RegisterTouchWindow(hwnd, 0));
  auto* pad = new TLayout(form.get());
  pad->SetBounds(0, 0, 200, 50);
  pad->Touch().InteractiveGestures = GestureBit(TInteractiveGesture::Pan);
  form->AddObject(pad);
  std::vector<std::pair<int, TInteractiveGestureFlags>> gestures;
  float lastX = 0;
  pad->OnGesture = [&](TFmxObject*, const TGestureEventInfo& info, bool& handled) {
    gestures.emplace_back(info.GestureID, info.Flags);
    lastX = info.Location.X;
    handled = true;
  };
  auto touch = [&](int x, std::uint32_t flags) {
    TouchInput point;
    point.x = (kHostOrigin.X + 50 + x) * 100;
    point.y = (kHostOrigin.Y + 10 + 20) * 100;
    point.dwFlags = flags | win::TOUCHEVENTF_PRIMARY;
    os_->InjectTouch(hwnd, {point});
  };
  touch(150, win::TOUCHEVENTF_DOWN);
  touch(140, win::TOUCHEVENTF_MOVE);  // 10 pixels: a pan begins
  touch(100, win::TOUCHEVENTF_MOVE);
  touch(90, win::TOUCHEVENTF_UP);
  using G = std::pair<int, TInteractiveGestureFlags>;
  std::vector<G> expected = {G{260, gf::Begin}, G{260, 0}, G{260, gf::End}};
  EXPECT_EQ(gestures, expected);
  EXPECT_FLOAT_EQ(lastX, 90);
  // No mouse messages were made of the touch on a touch window.
  EXPECT_TRUE(log.empty());
}

TEST_F(ToolkitFormWindow, TheHostSizingOrMovingTheWindowIsFollowed) {
  HWnd hwnd = Embed(0, 0);
  auto* filler = new TLayout(form.get());
  filler->SetAlign(TAlignLayout::Client);
  form->AddObject(filler);
  int resizes = 0;
  form->OnResize = [&](TFmxObject*) { ++resizes; };
  os_->MoveWindow(hwnd, 30, 5, 400, 60, true);
  EXPECT_EQ(form->Width(), 400);
  EXPECT_EQ(form->Height(), 60);
  EXPECT_EQ(form->Left(), 30);
  EXPECT_FLOAT_EQ(filler->Width(), 400);
  EXPECT_EQ(resizes, 1);
  // A move alone: no resize notification.
  os_->MoveWindow(hwnd, 35, 6, 400, 60, true);
  EXPECT_EQ(form->Left(), 35);
  EXPECT_EQ(form->Top(), 6);
  EXPECT_EQ(resizes, 1);
  // Screen and client meet through the window, which now sits inside the host.
  TPointF p = form->ClientToScreen({1.5f, 2});
  EXPECT_FLOAT_EQ(p.X, kHostOrigin.X + 35 + 1.5f);
  EXPECT_FLOAT_EQ(p.Y, kHostOrigin.Y + 6 + 2);
  EXPECT_FLOAT_EQ(form->ScreenToClient(p).X, 1.5f);
}

TEST_F(ToolkitFormWindow, PaintPutsTheFormsPictureIntoTheWindow) {
  form->Fill.Color = 0xFF102030u;
  a->Bitmap().Clear(0xFFFF0000u);
  a->SetWrapMode(TImageWrapMode::Stretch);
  HWnd hwnd = Embed(0, 0);
  os_->ProcessMessages();
  TWindowPixels pixels;
  ASSERT_TRUE(os_->ReadWindowPixels(hwnd, &pixels));
  ASSERT_EQ(pixels.width, 200);
  ASSERT_EQ(pixels.height, 50);
  EXPECT_EQ(pixels.pixels[10 * 200 + 10], 0xFFFF0000u);   // a's picture
  EXPECT_EQ(pixels.pixels[10 * 200 + 150], 0xFF102030u);  // b has an empty one: the fill
  EXPECT_TRUE(std::equal(pixels.pixels.begin(), pixels.pixels.end(), form->Surface().Bits()));

  // A change repaints on the next pump, not before.
  a->SetOpacity(0);
  os_->ReadWindowPixels(hwnd, &pixels);
  EXPECT_EQ(pixels.pixels[10 * 200 + 10], 0xFFFF0000u);
  os_->ProcessMessages();
  os_->ReadWindowPixels(hwnd, &pixels);
  EXPECT_EQ(pixels.pixels[10 * 200 + 10], 0xFF102030u);

  // The host widens the window: the picture grows with it.
  os_->MoveWindow(hwnd, 0, 0, 300, 50, true);
  os_->ProcessMessages();
  os_->ReadWindowPixels(hwnd, &pixels);
  EXPECT_EQ(pixels.width, 300);
}

TEST_F(ToolkitFormWindow, AHiddenFormIsNotPainted) {
  form->HandleNeed();
  os_->ProcessMessages();
  TWindowPixels pixels;
  ASSERT_TRUE(os_->ReadWindowPixels(form->Handle(), &pixels));
  EXPECT_EQ(pixels.width, 0);
}

TEST_F(ToolkitFormWindow, AWindowDestroyedWithItsParentIsForgotten) {
  std::size_t before = os_->WindowCount();
  HWnd hwnd = Embed(0, 0);
  EXPECT_EQ(os_->WindowCount(), before + 1);
  os_->DestroyWindow(host);
  EXPECT_FALSE(os_->IsWindow(hwnd));
  EXPECT_EQ(form->Handle(), nullptr);
  // The form lives on and can have a window again; freeing the form frees it.
  form->SetBounds(0, 0, 120, 30);
  form->HandleNeed();
  EXPECT_NE(form->Handle(), nullptr);
  std::size_t withWindow = os_->WindowCount();
  form.reset();
  EXPECT_EQ(os_->WindowCount(), withWindow - 1);
}

TEST_F(ToolkitFormWindow, TeardownUnregistersTheWindowClass) {
  form->HandleNeed();
  EXPECT_TRUE(os_->GetClassInfoW(TCommonCustomForm::kWindowClassName, nullptr));
  form.reset();
  TToolkit::Finalize();
  EXPECT_FALSE(os_->GetClassInfoW(TCommonCustomForm::kWindowClassName, nullptr));
  // A toolkit started afresh registers it again.
  TForm again;
  again.HandleNeed();
  EXPECT_NE(again.Handle(), nullptr);
}

TEST_F(ToolkitFormWindow, HandlerErrorsStopAtTheWindowProcedure) {
  Embed(0, 0);
  std::string caught;
  Application().OnException = [&](TFmxObject*, const std::exception& e) { caught = e.what(); };
  a->OnMouseDown = [](TFmxObject*, TMouseButton, TShiftState, float, float) {
    throw std::runtime_error("handler failed");
  };
  EXPECT_NO_THROW(Mouse(win::WM_LBUTTONDOWN, 10, 10, win::MK_LBUTTON));
  EXPECT_EQ(caught, "handler failed");
}

TEST_F(ToolkitFormWindow, ApplicationProcessMessagesPumpsTheWindows) {
  HWnd hwnd = Embed(0, 0);
  os_->SetCursorPos(kHostOrigin.X + 150, kHostOrigin.Y + 10);
  os_->PostMessageW(hwnd, win::WM_MOUSEMOVE, 0, MakeLParam(150, 10));
  Application().ProcessMessages();
  EXPECT_EQ(log, (std::vector<std::string>{"b.enter", "b.move 50"}));
}

}  // namespace
}  // namespace qx
