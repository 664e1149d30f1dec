#include "StripFixture.h"
#include "platform/portable/PortableOsExport.h"
#include "tabview/PreviewStripIntf.h"

QX_EXPORT_PORTABLE_OS()

namespace qx::test {
namespace {

// A parent handle whose value cannot be read.
class TFailingHandle : public TInterfacedObject<IQxIHandle> {
 public:
  HResult QX_STDCALL GetValue(std::uintptr_t*) override { return kFail; }
};

std::int32_t Side(IQxIControl* control, HResult (QX_STDCALL IQxIControl::*op)(std::int32_t*)) {
  std::int32_t value = -1;
  EXPECT_EQ((control->*op)(&value), kOk);
  return value;
}

TEST_F(StripTest, CreateControlPutsTheFormIntoTheParentAsAChildWindow) {
  scenario_->PrepareHost();
  ASSERT_EQ(scenario_->CreateStrip(loader_), kOk);
  const HWnd form = scenario_->ControlWindow();
  ASSERT_TRUE(os_->IsWindow(form));
  EXPECT_EQ(os_->GetParent(form), scenario_->MainWindow());
  const auto style = static_cast<std::uint32_t>(os_->GetWindowLongW(form, win::GWL_STYLE));
  EXPECT_TRUE(style & win::WS_CHILD);
  EXPECT_FALSE(style & win::WS_POPUP);
  scenario_->Settle(500);
  ComPtr<IQxIControl> control = ComPtr<IUnknown>(scenario_->StripPlugin()).As<IQxIControl>();
  const std::int32_t left = Side(control.get(), &IQxIControl::GetChildFrameLeft);
  const std::int32_t right = Side(control.get(), &IQxIControl::GetChildFrameRight);
  EXPECT_LT(left, right);
  EXPECT_LE(right, kHostWidth);
  EXPECT_GT(Side(control.get(), &IQxIControl::GetChildFrameBottom),
            Side(control.get(), &IQxIControl::GetChildFrameTop));
  ComPtr<IPreviewStrip> strip = ComPtr<IUnknown>(scenario_->StripPlugin()).As<IPreviewStrip>();
  EXPECT_NE(strip->GetTabList(), nullptr);
  scenario_->AddPage();
  scenario_->Settle(500);
  EXPECT_NE(strip->GetActiveTab(), nullptr);
  TRectF box;
  strip->TabScrollBoxScreenRect(box);
  EXPECT_GT(box.Width(), 0);
  // The host's client events reach a strip that stands.
  host_.Events().FireFromHost(u"Client.Visible", {});

  // A second call makes nothing and hands out nothing.
  const std::size_t windows = os_->WindowCount();
  ComPtr<IQxIHandle> parent = MakeCom<TFakeHandle>(reinterpret_cast<std::uintptr_t>(scenario_->MainWindow()));
  IQxIHandle* second = reinterpret_cast<IQxIHandle*>(0x1);
  EXPECT_EQ(control->CreateControl(parent.get(), &second), kOk);
  EXPECT_EQ(second, nullptr);
  EXPECT_EQ(os_->WindowCount(), windows);

  // Destroying twice is harmless; afterwards every answer is the one without a form.
  EXPECT_EQ(control->DestroyControl(), kOk);
  EXPECT_EQ(control->DestroyControl(), kOk);
  EXPECT_FALSE(os_->IsWindow(form));
  EXPECT_EQ(Side(control.get(), &IQxIControl::GetChildFrameRight), 0);
  EXPECT_EQ(strip->GetTabList(), nullptr);
  EXPECT_EQ(strip->GetActiveTab(), nullptr);
  strip->TabScrollBoxScreenRect(box);
  EXPECT_EQ(box, TRectF{});
  strip->HideTitleForm(true);
  host_.Events().FireFromHost(u"Client.Visible", {});
}

TEST_F(StripTest, TheLastControlLeavesNothingRegistered) {
  scenario_->PrepareHost();
  ASSERT_EQ(scenario_->CreateStrip(loader_), kOk);
  scenario_->AddPage();
  scenario_->Settle(500);
  EXPECT_TRUE(FormClassRegistered());
  scenario_->DestroyStrip();
  EXPECT_FALSE(FormClassRegistered());
  // Only the host's own window class stays.
  EXPECT_EQ(os_->RegisteredClassNames(), std::vector<std::u16string>{u"QxFakeHostMainWindow"});
  EXPECT_EQ(os_->TimerCount(), 0u);
  EXPECT_EQ(os_->HookCount(), 0u);
}

TEST_F(StripTest, AHostWithoutTabDockGetsAnEmptyStrip) {
  scenario_->PrepareHost();
  host_.TabManager().SetDockAvailable(false);
  ASSERT_EQ(scenario_->CreateStrip(loader_), kOk);
  scenario_->Settle(500);
  ComPtr<IPreviewStrip> strip = ComPtr<IUnknown>(scenario_->StripPlugin()).As<IPreviewStrip>();
  EXPECT_EQ(strip->GetActiveTab(), nullptr);
  scenario_->AddPage();
  scenario_->Settle(500);
  EXPECT_EQ(strip->GetActiveTab(), nullptr);
}

TEST_F(StripTest, AParentThatCannotBeReadLeavesTheFormWithoutParent) {
  scenario_->PrepareHost();
  ComPtr<IQxIControl> control = NewStripControl();
  for (ComPtr<IQxIHandle> parent : {ComPtr<IQxIHandle>(MakeCom<TFailingHandle>()), ComPtr<IQxIHandle>()}) {
    ComPtr<IQxIHandle> handle;
    ASSERT_EQ(control->CreateControl(parent.get(), handle.put()), kOk);
    std::uintptr_t value = 0;
    ASSERT_TRUE(handle);
    ASSERT_EQ(handle->GetValue(&value), kOk);
    const auto form = reinterpret_cast<HWnd>(value);
    EXPECT_TRUE(os_->IsWindow(form));
    EXPECT_EQ(os_->GetParent(form), nullptr);
    EXPECT_EQ(control->DestroyControl(), kOk);
    EXPECT_FALSE(os_->IsWindow(form));
    control = NewStripControl();
  }
}

// Windows on screen besides the host's own and the module's docked controls, top level or
// children of the host.
std::vector<HWnd> FloatingWindowsShown(IPortableOs& os, HWnd main, HWnd form, HWnd bar) {
  std::vector<HWnd> shown;
  for (HWnd child = os.GetWindow(main, win::GW_CHILD); child; child = os.GetWindow(child, win::GW_HWNDNEXT))
    if (child != form && child != bar && os.IsWindowVisible(child)) shown.push_back(child);
  struct TSearch {
    IPortableOs* Os;
    HWnd Main;
    std::vector<HWnd>* Shown;
  } search{&os, main, &shown};
  os.EnumWindows(
      [](HWnd hwnd, LParam param) -> std::int32_t {
        auto* s = reinterpret_cast<TSearch*>(param);
        if (hwnd != s->Main && s->Os->IsWindowVisible(hwnd)) s->Shown->push_back(hwnd);
        return 1;
      },
      reinterpret_cast<LParam>(&search));
  return shown;
}

TEST_F(StripTest, TheTitlePopupFadesASecondAfterItShowedAwayFromThePointerAndGoesWithTheControl) {
  scenario_->PrepareHost();
  TBitmap icon(16, 16);
  icon.Clear(0xFF3060A0);
  std::filesystem::create_directories(host_.Favicons().DefaultPath().parent_path());
  icon.SaveToFile(host_.Favicons().DefaultPath().u16string());
  ASSERT_EQ(scenario_->CreateStrip(loader_), kOk);
  scenario_->Settle(500);
  const HWnd main = scenario_->MainWindow();
  const HWnd form = scenario_->ControlWindow();
  // The new page's title shows while the pointer is nowhere near the strip; the module's
  // own timer ends it once its second is up.
  scenario_->AddPage();
  scenario_->Settle(200);
  ASSERT_EQ(FloatingWindowsShown(PortableOs(), main, form, scenario_->CabinetBarWindow()).size(), 1u);
  scenario_->Settle(1500);
  EXPECT_TRUE(FloatingWindowsShown(PortableOs(), main, form, scenario_->CabinetBarWindow()).empty());

  ComPtr<IPreviewStrip> strip = ComPtr<IUnknown>(scenario_->StripPlugin()).As<IPreviewStrip>();
  TRectF box;
  strip->TabScrollBoxScreenRect(box);
  const TPoint overFirstTab{static_cast<int>(box.Left) + 60, static_cast<int>((box.Top + box.Bottom) / 2)};
  os_->InjectMouseAtScreen(win::WM_MOUSEMOVE, overFirstTab, 0);
  scenario_->Settle(200);
  ASSERT_EQ(FloatingWindowsShown(PortableOs(), main, form, scenario_->CabinetBarWindow()).size(), 1u);
  ComPtr<IQxIControl> control = ComPtr<IUnknown>(scenario_->StripPlugin()).As<IQxIControl>();
  EXPECT_EQ(control->DestroyControl(), kOk);
  scenario_->Settle(1500);
  EXPECT_TRUE(FloatingWindowsShown(PortableOs(), main, nullptr, scenario_->CabinetBarWindow()).empty());
}

}  // namespace
}  // namespace qx::test
