#pragma once

#include <memory>
#include <string>
#include <vector>

#include "base/ComObject.h"
#include "fakehost/FakeCom.h"
#include "host/QuillmarV3Interface.h"

namespace qx {

class TFakeTabModel;
class TFakeTabGroup;

// The tab dock of the main window.
//
// Navigate(uri, group, options, out tab) honours the option keys:
//   "new"          "true": open a new tab; otherwise navigate an existing one
//   "tab-guid"     the tab to navigate when it exists; a new tab takes this GUID
//   "from-tab-guid" a new tab goes right after this tab, in its group
//   "activate"     "false" leaves a new tab in the background (default: activate)
//   "reuseblank"   "true": a blank active tab ("", "about:blank", "http://") is reused
//   "nobrowser"    "true": the new tab gets no browser
//   "browser-guid" engine class of the new tab's browser (default: the model's)
//   "post"         post data, kept as the browser's "post" value
//   "individual", "effect-keyboard" stored on the tab as values of those names
// The group is the one given, else that of "from-tab-guid", else the active group.
// Every call is logged with its options.
class TFakeTabDock : public TInterfacedObject<IQxITabDock> {
 public:
  struct TNavigateCall {
    std::u16string Uri;
    std::u16string GroupId;
    TFakeParams Options;
  };

  explicit TFakeTabDock(std::weak_ptr<TFakeTabModel> model) : model_(std::move(model)) {}

  HResult QX_STDCALL TabIdOf(IQxITab* tab, std::int32_t* id) override;
  HResult QX_STDCALL TabById(std::int32_t id, IQxITab** tab) override;
  HResult QX_STDCALL Navigate(Text uri, IQxITabGroup* group, IQxIStringDictionary* parameters,
                              IQxITab** tab) override;
  HResult QX_STDCALL TabByBrowserId(Text idText, IQxITab** tab) override;
  std::int32_t QX_STDCALL GetGroupKind(IQxITab* tab) override;
  HResult QX_STDCALL FirstContentIndex(IQxITabGroup* group, std::int32_t* index) override;
  std::int32_t QX_STDCALL IsTabHidden(IQxITab* tab) override;
  HResult QX_STDCALL GetDockKind(std::int32_t* kind) override;
  HResult QX_STDCALL Refresh(std::int32_t mode) override;
  HResult QX_STDCALL SetLock(std::int32_t state) override;
  HResult QX_STDCALL GetNewTabGroup(IQxITabGroup** group) override;

  // Fake side.
  void SetDockKind(std::int32_t kind) { dockKind_ = kind; }
  // The group that new tabs go to; nil makes GetNewTabGroup fail.
  void SetNewTabGroup(TFakeTabGroup* group);
  const std::vector<TNavigateCall>& NavigateCalls() const { return navigateCalls_; }
  const std::vector<std::int32_t>& LockCalls() const { return lockCalls_; }
  const std::vector<std::int32_t>& RefreshCalls() const { return refreshCalls_; }
  bool Locked() const { return locked_; }

 private:
  std::weak_ptr<TFakeTabModel> model_;
  ComPtr<IQxITabGroup> newTabGroup_;
  std::int32_t dockKind_ = 1;
  std::vector<TNavigateCall> navigateCalls_;
  std::vector<std::int32_t> lockCalls_;
  std::vector<std::int32_t> refreshCalls_;
  bool locked_ = false;
};

}  // namespace qx
