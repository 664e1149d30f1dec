#include "CabinetBarStep.h"

#include <sstream>
#include <string>

#include "PagePictures.h"
#include "base/Text.h"
#include "fakehost/FakeHandle.h"
#include "platform/Platform.h"

namespace qx {
namespace {

std::vector<std::uint8_t> PngOf(const TBitmap& picture) {
  std::ostringstream out;
  picture.SaveToStream(out);
  const std::string bytes = out.str();
  return {bytes.begin(), bytes.end()};
}

}  // namespace

void TCabinetBarStep::StoreDefaultIcon() {
  FHost.Favicons().StoreDefaultIcon(PngOf(*DrawPagePicture(0, kFaviconSize, kFaviconSize)));
}

void TCabinetBarStep::StoreSiteIcon(int page) {
  FHost.Favicons().StoreFavicon(u"https://page" + FromUtf8(std::to_string(page)) + u".example/",
                                PngOf(*DrawPagePicture(page, kFaviconSize, kFaviconSize)));
}

HResult TCabinetBarStep::Create(TModuleLoader& loader, HWnd mainWindow, int stripTop) {
  if (!loader.GetPlugin()) return kFail;
  HResult status = loader.GetPlugin()("CabinetIconBarControl", FHost.ServiceCore().get(), FPlugin.put());
  if (Failed(status) || !FPlugin) return Failed(status) ? status : kFail;
  FHost.RegisterPlugin("CabinetIconBarControl", FPlugin.get());
  FControl = FPlugin.As<IQxIControl>();
  if (!FControl) return kFail;
  ComPtr<IQxIHandle> parent = MakeCom<TFakeHandle>(reinterpret_cast<std::uintptr_t>(mainWindow));
  ComPtr<IQxIHandle> control;
  status = FControl->CreateControl(parent.get(), control.put());
  std::uintptr_t value = 0;
  if (Failed(status) || !control || Failed(control->GetValue(&value))) return Failed(status) ? status : kFail;
  FWindow = reinterpret_cast<HWnd>(value);
  TRect client{};
  Platform().GetClientRect(mainWindow, &client);
  Platform().SetWindowPos(FWindow, nullptr, 0, stripTop - kCabinetBarHeight, client.Width(),
                          kCabinetBarHeight, win::SWP_NOZORDER | win::SWP_NOACTIVATE);
  Platform().ShowWindow(FWindow, win::SW_SHOWNOACTIVATE);
  return status;
}

void TCabinetBarStep::Destroy() {
  if (FControl) FControl->DestroyControl();
  FControl = nullptr;
  FWindow = nullptr;
  if (FPlugin) FHost.RegisterPlugin("CabinetIconBarControl", nullptr);
  FPlugin = nullptr;
}

void TCabinetBarStep::Update() {
  if (FWindow) Platform().UpdateWindow(FWindow);
}

}  // namespace qx
