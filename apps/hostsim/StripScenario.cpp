#include "StripScenario.h"

#include <cstdio>
#include <string>

#include "PagePictures.h"
#include "ScenarioDisplay.h"
#include "WindowCapture.h"
#include "base/Guid.h"
#include "base/Text.h"
#include "fakehost/FakeHandle.h"
#include "tabview/PreviewStripIntf.h"

namespace qx {
namespace {

constexpr int kAddedPage = 6;

TGUID PageGuid(int number) {
  char text[40];
  std::snprintf(text, sizeof text, "{5A0F%04X-0000-4000-8000-00000000%04X}", number, number);
  return *TryParseGuid(std::string_view(text));
}

// The page number in a page's tab GUID; 0 for a tab that is no page of ours.
int PageOfGuid(const std::u16string& guid) {
  const std::string text = ToUtf8(guid);
  unsigned number = 0;
  if (text.size() != 38 || std::sscanf(text.c_str(), "{5A0F%4X-0000-4000-8000-", &number) != 1) return 0;
  return GuidToString(PageGuid(static_cast<int>(number))) == guid ? static_cast<int>(number) : 0;
}

std::u16string PageUri(int number) {
  return u"https://page" + FromUtf8(std::to_string(number)) + u".example/";
}
std::u16string PageTitle(int number) { return u"Page " + FromUtf8(std::to_string(number)); }

TFakeTab* TabOfPage(TFakeHost& host, int number) {
  return host.Model().TabByGuid(GuidToString(PageGuid(number)));
}

}  // namespace

TStripScenario::TStripScenario(TFakeHost& host, std::filesystem::path root,
                               const std::filesystem::path& skinRoot)
    : FHost(host), FRoot(std::move(root)) {
  FHost.UseFolder(FRoot);
  if (!skinRoot.empty()) FHost.Resources().SetSkinRoot(skinRoot);
}

TStripScenario::~TStripScenario() {
  DestroyStrip();
  if (FMainWindow && Platform().IsWindow(FMainWindow)) Platform().DestroyWindow(FMainWindow);
}

std::filesystem::path TStripScenario::ThumbnailFolder() const {
  return FRoot / "user/setting/client/thumbnail";
}

std::u16string TStripScenario::GuidOfPage(int number) const { return GuidToString(PageGuid(number)); }

int TStripScenario::ActivePage() const {
  TFakeTabGroup* group = FHost.Model().ActiveGroup();
  TFakeTab* tab = group ? group->ActiveTab() : nullptr;
  return tab ? PageOfGuid(GuidToString(tab->Guid())) : 0;
}

void TStripScenario::PrepareHost() {
  TFakeTabModel& model = FHost.Model();
  auto open = [&](TFakeTabGroup* group, int number, std::int32_t section) {
    TFakeOpenTab how;
    how.Group = group;
    how.Section = section;
    how.Activate = false;
    how.Title = PageTitle(number);
    how.Guid = PageGuid(number);
    model.OpenTab(PageUri(number), how);
  };
  ComPtr<TFakeTabGroup> travel = model.AddGroup(u"Travel");
  open(travel.get(), 7, 0);
  open(travel.get(), 8, 0);
  ComPtr<TFakeTabGroup> work = model.AddGroup(u"Work");
  model.SwitchGroup(work.get());
  for (int number = 1; number <= 3; ++number) open(work.get(), number, 0);
  for (int number = 4; number <= 5; ++number) open(work.get(), number, 1);
  model.Activate(TabOfPage(FHost, 1));
  FCabinetBar.StoreDefaultIcon();
  for (int number = 1; number <= 8; ++number) {
    WriteThumbnail(ThumbnailFolder(), GuidOfPage(number),
                   *DrawPagePicture(number, kThumbnailWidth, kThumbnailHeight));
    FCabinetBar.StoreSiteIcon(number);
  }
  FMainWindow = FHost.HostWindows().CreateMainWindow(TRect{40, 40, 40 + kHostWidth, 40 + kHostHeight});
  // Where the system draws a frame, the window grows by it: the client area is the same
  // size on every system, and so are the pictures.
  TRect outer{}, client{};
  if (Platform().GetWindowRect(FMainWindow, &outer) && Platform().GetClientRect(FMainWindow, &client) &&
      (outer.Width() != client.Width() || outer.Height() != client.Height()))
    Platform().SetWindowPos(FMainWindow, nullptr, 0, 0, kHostWidth + outer.Width() - client.Width(),
                            kHostHeight + outer.Height() - client.Height(),
                            win::SWP_NOZORDER | win::SWP_NOACTIVATE | win::SWP_NOMOVE);
  PaintHostWindow();
}

HResult TStripScenario::CreateStrip(TModuleLoader& loader) {
  if (!loader.GetPlugin()) return kFail;
  FCabinetBar.Create(loader, FMainWindow, kStripTop);
  HResult status = loader.GetPlugin()("PreviewStripPlugin", FHost.ServiceCore().get(), FPlugin.put());
  if (Failed(status) || !FPlugin) return Failed(status) ? status : kFail;
  FHost.RegisterPlugin("PreviewStripPlugin", FPlugin.get());
  FControl = FPlugin.As<IQxIControl>();
  if (!FControl) return kFail;
  ComPtr<IQxIHandle> parent = MakeCom<TFakeHandle>(reinterpret_cast<std::uintptr_t>(FMainWindow));
  ComPtr<IQxIHandle> control;
  status = FControl->CreateControl(parent.get(), control.put());
  std::uintptr_t value = 0;
  if (Succeeded(status) && control && Succeeded(control->GetValue(&value))) {
    FControlWindow = reinterpret_cast<HWnd>(value);
    TRect client{};
    Platform().GetClientRect(FMainWindow, &client);
    Platform().SetWindowPos(FControlWindow, nullptr, 0, kStripTop, client.Width(), kStripHeight,
                            win::SWP_NOZORDER | win::SWP_NOACTIVATE);
    Platform().ShowWindow(FControlWindow, win::SW_SHOWNOACTIVATE);
    // The browser comes up around its plug-ins' controls.
    for (const char16_t* id :
         {u"Client.Initialize", u"Client.Visible", u"Client.Loaded", u"Client.Initialized"})
      FHost.Events().FireFromHost(id, {});
  }
  return status;
}

void TStripScenario::DestroyStrip() {
  FCabinetBar.Destroy();
  if (FControl) FControl->DestroyControl();
  FControl = nullptr;
  FControlWindow = nullptr;
  if (FPlugin) FHost.RegisterPlugin("PreviewStripPlugin", nullptr);
  FPlugin = nullptr;
}

void TStripScenario::SelectPage(int number) {
  if (TFakeTab* tab = TabOfPage(FHost, number)) FHost.Model().Activate(tab);
  PaintHostWindow();
}

void TStripScenario::AddPage() {
  TFakeTabGroup* group = FHost.Model().ActiveGroup();
  TFakeOpenTab how;
  how.Group = group;
  how.Section = group ? static_cast<std::int32_t>(group->Sections().size()) - 1 : -1;
  how.Title = PageTitle(kAddedPage);
  how.Guid = PageGuid(kAddedPage);
  ComPtr<TFakeTab> tab = FHost.Model().OpenTab(PageUri(kAddedPage), how);
  FHost.Model().FinishLoading(tab.get());
  PaintHostWindow();
}

void TStripScenario::FreshThumbnails() {
  TFakeTabGroup* group = FHost.Model().ActiveGroup();
  if (!group) return;
  for (const auto& tab : group->FlatTabs()) FHost.Model().ThumbnailReady(tab.get());
}

void TStripScenario::AddPages(int first, int last) {
  TFakeTabGroup* group = FHost.Model().ActiveGroup();
  for (int number = first; number <= last; ++number) {
    WriteThumbnail(ThumbnailFolder(), GuidOfPage(number),
                   *DrawPagePicture(number, kThumbnailWidth, kThumbnailHeight));
    FCabinetBar.StoreSiteIcon(number);
    TFakeOpenTab how;
    how.Group = group;
    how.Section = group ? static_cast<std::int32_t>(group->Sections().size()) - 1 : -1;
    how.Activate = false;
    how.Title = PageTitle(number);
    how.Guid = PageGuid(number);
    ComPtr<TFakeTab> tab = FHost.Model().OpenTab(PageUri(number), how);
    FHost.Model().FinishLoading(tab.get());
  }
  PaintHostWindow();
}

void TStripScenario::ClosePage(int number) {
  if (TFakeTab* tab = TabOfPage(FHost, number)) FHost.Model().CloseTab(tab);
  PaintHostWindow();
}

void TStripScenario::SwitchGroup(int index) {
  const auto& groups = FHost.Model().Groups();
  if (index >= 0 && index < static_cast<int>(groups.size()))
    FHost.Model().SwitchGroup(groups[static_cast<std::size_t>(index)].get());
  PaintHostWindow();
}

void TStripScenario::SetInCabinet(bool in) { FHost.SetInCabinet(in); }

std::optional<TPoint> TStripScenario::TabCentreOfPage(int number) const {
  ComPtr<IPreviewStrip> strip = ComPtr<IUnknown>(FPlugin.get()).As<IPreviewStrip>();
  TRectF rect{};
  if (!strip || !strip->TabScreenRectOf(GuidOfPage(number), rect)) return std::nullopt;
  TPoint centre{static_cast<int>((rect.Left + rect.Right) / 2),
                static_cast<int>((rect.Top + rect.Bottom) / 2)};
  Platform().ScreenToClient(FMainWindow, &centre);
  return centre;
}

void TStripScenario::Settle(std::uint32_t milliseconds) {
  LetTimePass(milliseconds);
  // The host's loop delivers what the strip posted to it (a close, a select) between steps.
  FHost.Events().RunPosted();
  LetTimePass(0);
  if (FControlWindow) Platform().UpdateWindow(FControlWindow);
  FCabinetBar.Update();
  LetTimePass(0);
}

void TStripScenario::PaintHostWindow() {
  if (!FMainWindow) return;
  TRect client{};
  Platform().GetClientRect(FMainWindow, &client);
  const int page = ActivePage();
  std::unique_ptr<TBitmap> pagePicture =
      page ? DrawPagePicture(page, client.Width(), client.Height() - kStripTop - kStripHeight) : nullptr;
  std::unique_ptr<TBitmap> window =
      DrawHostWindow(client.Width(), client.Height(), kStripTop, kStripHeight, pagePicture.get());
  ShowWindowPicture(FMainWindow, *window);
}

std::unique_ptr<TBitmap> TStripScenario::Capture() { return CaptureWindow(FMainWindow); }

}  // namespace qx
