// The strip in the host's cabinet screen: the tab group bar stands in for the tabs
// while the screen is open, found out from the host's events, its startup setting and
// a poll after each click that opens or closes it.

#include <filesystem>

#include "base/FilePath.h"
#include "host/HostKeys.h"
#include "host/QuillmarV3Interface.h"
#include "resources/ResourceFiles.h"
#include "tabbar/TabbarForm.h"
#include "tabbar/TabbarParentForm.h"
#include "toolkit/Canvas.h"

namespace qx {
namespace {

constexpr std::int32_t kCabinetCheckTicks = 50;
constexpr int kBlurOpenTries = 100;
constexpr std::uint32_t kBlurOpenWait = 20;

// The page's process may still be writing the file: it gets a few tries.
std::unique_ptr<TBitmap> CreateBitmapFromFileWithRetry(const TString& path) {
  if (!ResourceFileExists(path)) return nullptr;
  for (int attempt = 0; attempt < kBlurOpenTries; ++attempt) {
    if (std::unique_ptr<TBitmap> bitmap = LoadResourceBitmap(path)) return bitmap;
    Platform().Sleep(kBlurOpenWait);
  }
  return nullptr;
}

}  // namespace

void TTabbarFrame::ShowTabGroupbarIfHidden() {
  if (FParentForm && !FParentForm->ShowingTabgroupBar()) FParentForm->ShowTabGroupbar();
}

void TTabbarFrame::HideTabGroupbarIfShown() {
  if (FParentForm && FParentForm->ShowingTabgroupBar()) FParentForm->HideTabGroupbar();
}

void TTabbarFrame::CheckCabinetStartupScreen() {
  if (FServiceCore && FServiceCore->GetPropertyBool(prop_key::CabinetStartupScreen, false))
    ShowTabGroupbarIfHidden();
}

void TTabbarFrame::StartCabinetCheckTimer() {
  if (!FtmCheckCabinetMode) return;
  FtmCheckCabinetMode->SetOnTimer([this](TFmxObject*) { tmCheckCabinetModeTimer(); });
  FCabinetCheckTimerCounter = 0;
  FtmCheckCabinetMode->SetEnabled(false);
  FtmCheckCabinetMode->SetEnabled(true);
}

void TTabbarFrame::tmCheckCabinetModeTimer() {
  // The page takes its time to open or close, so the poll runs its whole course.
  if (++FCabinetCheckTimerCounter >= kCabinetCheckTicks) FtmCheckCabinetMode->SetEnabled(false);
  if (!FServiceCore) return;
  ComPtr<IQxICabinetManager> cabinet;
  FServiceCore->CabinetManager(cabinet);
  if (!cabinet) return;
  if (cabinet->GetCabinetState() == kOk)
    ShowTabGroupbarIfHidden();
  else
    HideTabGroupbarIfShown();
}

void TTabbarFrame::RunScriptInActiveTab(std::u16string_view code) {
  if (!FServiceCore) return;
  ComPtr<IQxITab> tab;
  FServiceCore->ActiveTab(tab);
  if (!tab) return;
  ComPtr<IQxIBrowser> browser;
  FServiceCore->BrowserOfTab(tab.get(), browser);
  if (!browser) return;
  FServiceCore->ExecuteJavascript(browser.get(), code, false, u"");
}

void TTabbarFrame::btnExitCabinetClick() {
  RunScriptInActiveTab(u"doneCabinet()");
  StartCabinetCheckTimer();
}

bool TTabbarFrame::IsCabinetTab(TTabImage* tab) {
  if (!tab || !FServiceCore) return false;
  ComPtr<IQxICabinetManager> cabinet;
  FServiceCore->CabinetManager(cabinet);
  ComPtr<IQxITab> host = HostTabOf(tab);
  return cabinet && host && cabinet->HasCabinetIcon(host.get()) == kOk;
}

void TTabbarFrame::ProcessCabinetCreateBlurImage(IQxIStringDictionaryWrap* parameters) {
  if (!parameters || !FBlurEffect) return;
  try {
    const TString source = parameters->Value(u"source");
    const TString dest = parameters->Value(u"dest");
    std::unique_ptr<TBitmap> picture = CreateBitmapFromFileWithRetry(source);
    if (!picture || picture->Width() <= 2) return;
    TBitmap copy(picture->Width() - 2, picture->Height());
    copy.Clear(0);
    TCanvas& canvas = copy.Canvas();
    canvas.BeginScene();
    const TRectF area(0, 0, static_cast<float>(copy.Width()), static_cast<float>(copy.Height()));
    canvas.DrawBitmap(*picture, area, area, 1, true);
    canvas.EndScene();
    // Two passes of slightly different strength.
    FBlurEffect->SetSoftness(2.0f);
    FBlurEffect->ProcessEffect(copy);
    FBlurEffect->SetSoftness(1.94f);
    FBlurEffect->ProcessEffect(copy);
    copy.SaveToFile(FilePathOf(dest));
  } catch (...) {
    // The page goes on without its blurred background.
  }
}

}  // namespace qx
