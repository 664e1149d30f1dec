#include <gtest/gtest.h>

#include <map>

#include "platform/portable/ScopedPortableOs.h"
#include "resources/BaseFormXE7.h"
#include "toolkit/Application.h"
#include "toolkit/Image.h"

namespace qx {
namespace {

// Counts what reaches the class's own procedure.
struct TClassProc {
  static inline std::map<std::uint32_t, int> Seen;
  static LResult QX_STDCALL Proc(HWnd hwnd, std::uint32_t msg, WParam wParam, LParam lParam) {
    ++Seen[msg];
    if (msg == win::WM_USER + 2) return 7;
    return Platform().DefWindowProcW(hwnd, msg, wParam, lParam);
  }
};

class TTestForm : public TBaseFormXE7 {
 public:
  using TBaseFormXE7::TBaseFormXE7;
  ~TTestForm() override {
    RestoreWindowProc();
    if (FWnd) Platform().DestroyWindow(FWnd);
  }
  void HandleNeed() override {
    if (FWnd) return;
    FWnd = Platform().CreateWindowExW(0, u"QxTestForm", u"", win::WS_POPUP, Left(), Top(), Width(), Height(),
                                      nullptr, nullptr);
    if (Subclass) SubclassWindow(FWnd);
  }
  HWnd FormHandle() const override { return FWnd; }
  void Realign() override {
    ++Realigns;
    TBaseFormXE7::Realign();
  }
  void Unsubclass() { RestoreWindowProc(); }

  bool Subclass = false;
  int Realigns = 0;
  int Answered = 0;

 protected:
  void WndMethod(TWndMessage& message) override {
    if (message.Msg == win::WM_USER + 1) {
      ++Answered;
      message.Result = 42;
      return;
    }
    DefaultHandler(message);
  }

 private:
  HWnd FWnd = nullptr;
};

class BaseFormTest : public ::testing::Test {
 protected:
  void SetUp() override {
    TToolkit::Finalize();
    TClassProc::Seen.clear();
    os_->RegisterClassW(u"QxTestForm", &TClassProc::Proc);
  }
  void TearDown() override { TToolkit::Finalize(); }
  int Seen(std::uint32_t msg) { return TClassProc::Seen[msg]; }
  TRect WindowRectIn(HWnd hwnd, HWnd parent) {
    TRect r;
    os_->GetWindowRect(hwnd, &r);
    TPoint a{r.Left, r.Top}, b{r.Right, r.Bottom};
    if (parent) {
      os_->ScreenToClient(parent, &a);
      os_->ScreenToClient(parent, &b);
    }
    return {a.X, a.Y, b.X, b.Y};
  }
  TScopedPortableOs os_;
};

TEST_F(BaseFormTest, SetBoundsTellsThePlatformOnlyOfChanges) {
  TTestForm form;
  int resizes = 0;
  form.OnResize = [&](TFmxObject*) { ++resizes; };
  form.HandleNeed();
  HWnd hwnd = form.FormHandle();
  ASSERT_NE(hwnd, nullptr);
  form.SetBounds(10, 20, 300, 200);
  EXPECT_EQ(WindowRectIn(hwnd, nullptr), (TRect{10, 20, 310, 220}));
  EXPECT_EQ(form.Realigns, 1);
  EXPECT_EQ(resizes, 1);
  int positions = Seen(win::WM_WINDOWPOSCHANGED);
  EXPECT_GE(positions, 1);

  // The same bounds again: nothing at all.
  form.SetBounds(10, 20, 300, 200);
  EXPECT_EQ(Seen(win::WM_WINDOWPOSCHANGED), positions);
  EXPECT_EQ(form.Realigns, 1);

  // A move: the window follows, no realign and no resize notification.
  form.SetBounds(50, 60, 300, 200);
  EXPECT_EQ(WindowRectIn(hwnd, nullptr), (TRect{50, 60, 350, 260}));
  EXPECT_GT(Seen(win::WM_WINDOWPOSCHANGED), positions);
  EXPECT_EQ(form.Realigns, 1);
  EXPECT_EQ(resizes, 1);

  // A window that already stands where the form goes is left alone.
  os_->MoveWindow(hwnd, 70, 80, 300, 200, false);
  positions = Seen(win::WM_WINDOWPOSCHANGED);
  form.SetBounds(70, 80, 300, 200);
  EXPECT_EQ(Seen(win::WM_WINDOWPOSCHANGED), positions);
  EXPECT_EQ(form.Left(), 70);

  // A size change realigns and notifies.
  form.SetBounds(70, 80, 320, 200);
  EXPECT_EQ(form.Realigns, 2);
  EXPECT_EQ(resizes, 2);
  EXPECT_EQ(WindowRectIn(hwnd, nullptr), (TRect{70, 80, 390, 280}));
}

TEST_F(BaseFormTest, FormsWithoutAWindowAskTheResolver) {
  TBaseFormXE7 form;
  EXPECT_EQ(form.FormHandle(), nullptr);
  form.SetBounds(1, 2, 30, 40);  // no window: the fields only
  EXPECT_EQ(form.Width(), 30);
  HWnd hwnd = os_->CreateWindowExW(0, u"QxTestForm", u"", win::WS_POPUP, 0, 0, 10, 10, nullptr, nullptr);
  TBaseFormXE7::SetFormHandleResolver(
      [&](const TCommonCustomForm* f) { return f == &form ? hwnd : nullptr; });
  EXPECT_EQ(form.FormHandle(), hwnd);
  form.SetBounds(5, 6, 30, 40);
  EXPECT_EQ(WindowRectIn(hwnd, nullptr), (TRect{5, 6, 35, 46}));
  TBaseFormXE7::SetFormHandleResolver(nullptr);
  os_->DestroyWindow(hwnd);
}

TEST_F(BaseFormTest, TheToolkitsOwnWindowIsTheFormHandle) {
  TBaseFormXE7 form;
  form.SetBounds(0, 0, 100, 20);
  form.HandleNeed();
  EXPECT_NE(form.FormHandle(), nullptr);
  EXPECT_EQ(form.FormHandle(), form.Handle());
  // Bounds compare against that window.
  form.SetBounds(4, 5, 100, 20);
  EXPECT_EQ(WindowRectIn(form.Handle(), nullptr), (TRect{4, 5, 104, 25}));
}

TEST_F(BaseFormTest, ChildEmbeddingMakesAChildOfTheHostWindow) {
  HWnd host = os_->CreateWindowExW(0, u"QxTestForm", u"host", win::WS_POPUP | win::WS_VISIBLE, 100, 100, 800,
                                   600, nullptr, nullptr);
  TBaseFormXE7 form;
  form.SetBounds(0, 0, 300, 24);
  int clicks = 0;
  auto* image = new TImage(&form);
  image->SetBounds(0, 0, 300, 24);
  image->OnClick = [&](TFmxObject*) { ++clicks; };
  form.AddObject(image);
  HWnd hwnd = EmbedChildForm(form, host);
  ASSERT_NE(hwnd, nullptr);
  EXPECT_EQ(hwnd, form.Handle());
  auto style = static_cast<std::uint32_t>(os_->GetWindowLongW(hwnd, win::GWL_STYLE));
  EXPECT_TRUE(style & win::WS_CHILD);
  EXPECT_FALSE(style & win::WS_POPUP);
  EXPECT_EQ(os_->GetParent(hwnd), host);
  EXPECT_TRUE(os_->IsChild(host, hwnd));
  form.SetBounds(10, 30, 300, 24);
  form.Show();
  EXPECT_EQ(WindowRectIn(hwnd, host), (TRect{10, 30, 310, 54}));
  // Clicked where it now stands inside the host.
  os_->InjectMouseAtScreen(win::WM_LBUTTONDOWN, TPoint{100 + 20, 100 + 40}, win::MK_LBUTTON);
  os_->InjectMouseAtScreen(win::WM_LBUTTONUP, TPoint{100 + 20, 100 + 40}, 0);
  EXPECT_EQ(clicks, 1);
  // No host window: nothing is made.
  TBaseFormXE7 orphan;
  EXPECT_EQ(EmbedChildForm(orphan, nullptr), nullptr);
  EXPECT_EQ(orphan.Handle(), nullptr);
  os_->DestroyWindow(host);
}

TEST_F(BaseFormTest, SubclassingEndsWhenTheHostDestroysTheWindow) {
  std::size_t freeBefore = FreeObjectInstanceCount();
  HWnd host =
      os_->CreateWindowExW(0, u"QxTestForm", u"host", win::WS_POPUP, 0, 0, 800, 600, nullptr, nullptr);
  class TSubclassedForm : public TBaseFormXE7 {
   public:
    using TBaseFormXE7::TBaseFormXE7;

   protected:
    void HandleCreated() override { SubclassWindow(Handle()); }
  } form;
  EmbedChildForm(form, host);
  EXPECT_EQ(form.OldInstance(), TCommonCustomForm::WindowClassProc());
  EXPECT_EQ(FreeObjectInstanceCount(), freeBefore - 1);
  os_->DestroyWindow(host);
  EXPECT_EQ(form.Handle(), nullptr);
  EXPECT_EQ(form.ObjectInstance(), nullptr);
  EXPECT_EQ(FreeObjectInstanceCount(), freeBefore);
}

TEST_F(BaseFormTest, PopupEmbeddingDoesNotTakeTheActivation) {
  HWnd host = os_->CreateWindowExW(0, u"QxTestForm", u"host", win::WS_POPUP | win::WS_VISIBLE, 100, 100, 800,
                                   600, nullptr, nullptr);
  os_->SetFocus(host);
  TTestForm form;
  form.SetVisible(false);
  EmbedPopupForm(form, host, 5, 6, 120, 40);
  HWnd hwnd = form.FormHandle();
  ASSERT_NE(hwnd, nullptr);
  EXPECT_EQ(os_->GetParent(hwnd), host);
  EXPECT_EQ(WindowRectIn(hwnd, host), (TRect{5, 6, 125, 46}));
  EXPECT_TRUE(os_->IsWindowVisible(hwnd));
  EXPECT_TRUE(form.Visible());
  EXPECT_EQ(os_->GetFocus(), host);
  EXPECT_EQ(Seen(win::WM_ACTIVATE), 0);
  // Bounds now count in the parent's client area.
  form.SetBounds(9, 6, 120, 40);
  EXPECT_EQ(WindowRectIn(hwnd, host), (TRect{9, 6, 129, 46}));
  // A second embedding into the same parent keeps it.
  EmbedPopupForm(form, host, 1, 2, 60, 20);
  EXPECT_EQ(os_->GetParent(hwnd), host);
  EXPECT_EQ(WindowRectIn(hwnd, host), (TRect{1, 2, 61, 22}));
  os_->DestroyWindow(host);
}

TEST_F(BaseFormTest, SubclassingKeepsTheOldProcedure) {
  std::size_t freeBefore = FreeObjectInstanceCount();
  {
    TTestForm form;
    form.Subclass = true;
    form.HandleNeed();
    HWnd hwnd = form.FormHandle();
    EXPECT_EQ(form.OldInstance(), &TClassProc::Proc);
    EXPECT_EQ(reinterpret_cast<WndProc>(os_->GetWindowLongPtrW(hwnd, win::GWL_WNDPROC)),
              form.ObjectInstance());
    EXPECT_EQ(FreeObjectInstanceCount(), freeBefore - 1);
    // Answered by the form; the old procedure never sees it.
    EXPECT_EQ(os_->SendMessageW(hwnd, win::WM_USER + 1, 0, 0), 42);
    EXPECT_EQ(form.Answered, 1);
    EXPECT_EQ(Seen(win::WM_USER + 1), 0);
    // Everything else goes through the old procedure.
    EXPECT_EQ(os_->SendMessageW(hwnd, win::WM_USER + 2, 0, 0), 7);
    EXPECT_EQ(Seen(win::WM_USER + 2), 1);
    form.Unsubclass();
    EXPECT_EQ(reinterpret_cast<WndProc>(os_->GetWindowLongPtrW(hwnd, win::GWL_WNDPROC)), &TClassProc::Proc);
    EXPECT_EQ(form.ObjectInstance(), nullptr);
    EXPECT_EQ(FreeObjectInstanceCount(), freeBefore);
    EXPECT_EQ(os_->SendMessageW(hwnd, win::WM_USER + 1, 0, 0), 0);
    EXPECT_EQ(Seen(win::WM_USER + 1), 1);
    form.Subclass = true;
  }
  {
    // A form freed while subclassed gives its instance back.
    TTestForm form;
    form.Subclass = true;
    form.HandleNeed();
    EXPECT_EQ(FreeObjectInstanceCount(), freeBefore - 1);
  }
  EXPECT_EQ(FreeObjectInstanceCount(), freeBefore);
}

TEST_F(BaseFormTest, ObjectInstancesRunOutAndComeBack) {
  EXPECT_EQ(MakeObjectInstance(nullptr), nullptr);
  std::vector<WndProc> made;
  int calls = 0;
  while (WndProc p = MakeObjectInstance([&](TWndMessage& m) {
           ++calls;
           m.Result = static_cast<LResult>(m.Msg);
         }))
    made.push_back(p);
  EXPECT_EQ(made.size(), 64u);
  EXPECT_EQ(FreeObjectInstanceCount(), 0u);
  EXPECT_EQ(made[5](nullptr, 1234, 0, 0), 1234);
  EXPECT_EQ(calls, 1);
  for (WndProc p : made) FreeObjectInstance(p);
  EXPECT_EQ(FreeObjectInstanceCount(), 64u);
}

TEST_F(BaseFormTest, WindowSearchFindsThisProcessByClassName) {
  os_->RegisterClassW(u"MoorLandingWindow", os_->DefWindowProcAddress());
  EXPECT_EQ(FindProcessWindowByClassName(u"MoorLandingWindow"), nullptr);
  HWnd foreign =
      os_->CreateWindowExW(0, u"MoorLandingWindow", u"", win::WS_POPUP, 0, 0, 10, 10, nullptr, nullptr);
  os_->SetWindowProcessId(foreign, os_->GetCurrentProcessId() + 1);
  EXPECT_EQ(FindProcessWindowByClassName(u"MoorLandingWindow"), nullptr);
  HWnd own =
      os_->CreateWindowExW(0, u"MoorLandingWindow", u"", win::WS_POPUP, 0, 0, 10, 10, nullptr, nullptr);
  // The foreign one stands in front now; it is still skipped.
  os_->SetWindowPos(foreign, win::HWND_TOP, 0, 0, 0, 0, win::SWP_NOMOVE | win::SWP_NOSIZE);
  EXPECT_EQ(FindProcessWindowByClassName(u"moorlandingwindow"), own);
  EXPECT_EQ(FindProcessWindowByClassName(u"MoorLanding"), nullptr);
  os_->DestroyWindow(own);
  os_->DestroyWindow(foreign);
}

}  // namespace
}  // namespace qx
