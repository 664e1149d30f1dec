#include "fakehost/FakeBrowser.h"

#include "base/Text.h"
#include "host/V3EventTypes.h"

namespace qx {

TFakeBrowser::TFakeBrowser() { Model().AddGroup(u"Group 1"); }

TFakeTab* TFakeBrowser::ActiveTab() { return ActiveGroup() ? ActiveGroup()->ActiveTab() : nullptr; }

TFakeTab* TFakeBrowser::TabAt(std::int32_t flatIndex, TFakeTabGroup* group) {
  if (!group) group = ActiveGroup();
  if (!group || flatIndex < 0) return nullptr;
  const auto tabs = group->FlatTabs();
  return static_cast<std::size_t>(flatIndex) < tabs.size() ? tabs[static_cast<std::size_t>(flatIndex)].get()
                                                          : nullptr;
}

ComPtr<TFakeTabGroup> TFakeBrowser::NewGroup(std::u16string_view title) { return Model().AddGroup(title); }

ComPtr<TFakeTab> TFakeBrowser::OpenTabAfter(TFakeTab* after, std::u16string_view uri) {
  TFakeOpenTab how;
  how.After = after;
  return Model().OpenTab(uri, how);
}

HResult TFakeBrowser::MakeSection(TFakeTab* tab, std::int32_t sectionIndex) {
  if (!tab || !tab->Group()) return kInvalidArg;
  return Model().InsertSectionWithTab(tab->Group(), sectionIndex, tab);
}

HResult TFakeBrowser::Navigate(TFakeTab* tab, std::u16string_view uri, std::u16string_view title) {
  return Model().NavigateTab(tab, uri, title.empty() ? std::nullopt : std::optional<std::u16string>(title));
}

void TFakeBrowser::SetThumbnail(TFakeTab* tab, std::vector<std::uint8_t> encodedPicture) {
  if (tab && tab->Browser()) tab->Browser()->Page().Snapshot = std::move(encodedPicture);
}

void TFakeBrowser::SelectText(TFakeTab* tab, std::u16string_view text) {
  if (tab && tab->Browser()) tab->Browser()->Page().Selection = text;
}

void TFakeBrowser::ReleaseMouseInPage(int screenX, int screenY) {
  Raise(u"QxInputHandler.IPC", {{u"Action", u"#LU " + IntToStr(screenX) + u" " + IntToStr(screenY)}});
}

void TFakeBrowser::WheelInPage() { Raise(u"QxInputHandler.IPC", {{u"Action", u"#WH"}}); }

void TFakeBrowser::KeyDownInPage(std::u16string_view keys) {
  Raise(u"QxInputHandler.IPC", {{u"Action", u"#KD " + std::u16string(keys)}});
}

void TFakeBrowser::FaviconArrives(std::u16string_view uri, const std::vector<std::uint8_t>& bytes,
                                  std::u16string_view extension) {
  host_.Favicons().StoreFavicon(uri, bytes, extension);
}

void TFakeBrowser::ClientStartup() {
  for (const auto number : {kEvClientInitialize, kEvClientLoaded, kEvClientInitialized, kEvClientVisible})
    Raise(V3EventId(number));
}

void TFakeBrowser::ClientShutdown() {
  Raise(u"Client.Closing");
  Raise(V3EventId(kEvClientFinalize));
}

void TFakeBrowser::SetMainWindowActive(bool active) {
  Raise(u"MainWindow.ActiveChanged", {{u"active", active ? u"true" : u"false"}});
}

void TFakeBrowser::PressStop() { Raise(u"action", {{u"action", u"Stop"}}); }

void TFakeBrowser::Raise(std::u16string_view eventId, const TFakeParams& parameters) {
  Events().FireFromHost(eventId, parameters);
}

std::vector<TFakeEventRecord> TFakeBrowser::EventLog() const { return host_.Events().EventLog(); }

void TFakeBrowser::ClearEventLog() { host_.Events().ClearEventLog(); }

}  // namespace qx
