#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "fakehost/FakeHost.h"

namespace qx {

// What happens in the browser, step by step, for tests, benchmarks and the simulator.
// Each step changes the fake host's model and raises the events a browser raises, in
// the order told in FakeTabModel.h. A new browser has one group, "Group 1", without tabs.
class TFakeBrowser {
 public:
  TFakeBrowser();

  TFakeHost& Host() { return host_; }
  ComPtr<IQxIServiceCore> ServiceCore() const { return host_.ServiceCore(); }
  TFakeTabModel& Model() { return host_.Model(); }
  TFakeEventService& Events() { return host_.Events(); }

  TFakeTabGroup* ActiveGroup() { return Model().ActiveGroup(); }
  TFakeTab* ActiveTab();
  TFakeTab* TabAt(std::int32_t flatIndex, TFakeTabGroup* group = nullptr);

  // Groups.
  ComPtr<TFakeTabGroup> NewGroup(std::u16string_view title);
  HResult SwitchGroup(TFakeTabGroup* group) { return Model().SwitchGroup(group); }
  HResult SetPrivate(TFakeTabGroup* group, bool on) { return Model().SetPrivate(group, on); }

  // Tabs.
  ComPtr<TFakeTab> OpenTab(std::u16string_view uri, const TFakeOpenTab& how = {}) { return Model().OpenTab(uri, how); }
  ComPtr<TFakeTab> OpenTabAfter(TFakeTab* after, std::u16string_view uri);
  HResult CloseTab(TFakeTab* tab) { return Model().CloseTab(tab); }
  HResult SelectTab(TFakeTab* tab) { return Model().Activate(tab); }
  HResult MoveTab(TFakeTab* tab, std::int32_t flatIndex) { return Model().MoveTabTo(tab, flatIndex); }
  HResult MoveTabToSection(TFakeTab* tab, std::int32_t section, std::int32_t index) {
    return Model().MoveTab(tab, section, index);
  }
  HResult SwapTabs(TFakeTab* a, TFakeTab* b) { return Model().SwapTabs(a, b); }
  // The tab leaves its section for a new one at sectionIndex.
  HResult MakeSection(TFakeTab* tab, std::int32_t sectionIndex);
  HResult HideTab(TFakeTab* tab) { return Model().SetHidden(tab, true); }
  HResult ShowTab(TFakeTab* tab) { return Model().SetHidden(tab, false); }

  // Pages.
  HResult Navigate(TFakeTab* tab, std::u16string_view uri, std::u16string_view title = {});
  HResult FinishLoading(TFakeTab* tab) { return Model().FinishLoading(tab); }
  HResult ThumbnailReady(TFakeTab* tab) { return Model().ThumbnailReady(tab); }
  void SetThumbnail(TFakeTab* tab, std::vector<std::uint8_t> encodedPicture);
  // The page's selection, which the module reads by script.
  void SelectText(TFakeTab* tab, std::u16string_view text);
  // Input in a page as the host's input handler reports it ("QxInputHandler.IPC").
  void ReleaseMouseInPage(int screenX, int screenY);
  void WheelInPage();
  void KeyDownInPage(std::u16string_view keys);
  void FaviconArrives(std::u16string_view uri, const std::vector<std::uint8_t>& bytes,
                      std::u16string_view extension = u".png");
  void FaviconFails(std::u16string_view uri) { host_.Favicons().FailFavicon(uri); }

  // The host window and the client.
  void ClientStartup();   // Client.Initialize, Client.Loaded, Client.Initialized, Client.Visible
  void ClientShutdown();  // Client.Closing, Client.Finalize
  void EnterCabinet() { host_.SetInCabinet(true); }
  void ExitCabinet() { host_.SetInCabinet(false); }
  void SetMainWindowActive(bool active);
  void PressStop();  // "action" {action=Stop}
  void Raise(std::u16string_view eventId, const TFakeParams& parameters = {});

  // Delivers posted events (the host's deferred ones and the module's); returns how many.
  std::size_t RunPending() { return Events().RunPosted(); }
  std::vector<TFakeEventRecord> EventLog() const;
  void ClearEventLog();

 private:
  mutable TFakeHost host_;
};

}  // namespace qx
