#pragma once

#include <memory>

#include "base/ComObject.h"
#include "fakehost/FakeTabDock.h"
#include "host/QuillmarV3Interface.h"

namespace qx {

class TFakeTabModel;

class TFakeTabManager : public TInterfacedObject<IQxITabManager> {
 public:
  TFakeTabManager(std::weak_ptr<TFakeTabModel> model, ComPtr<TFakeTabDock> dock)
      : model_(std::move(model)), dock_(std::move(dock)) {}

  HResult QX_STDCALL TabByGuid(Text guid, IQxITab** tab) override;
  HResult QX_STDCALL CreateTab(IQxITab** tab) override;
  HResult QX_STDCALL GetActiveTab(IQxITab** tab) override;
  HResult QX_STDCALL SetActiveTab(IQxITab* tab) override;
  HResult QX_STDCALL GetTabGroupCount(std::int32_t* count) override;
  HResult QX_STDCALL GetTabGroup(std::int32_t index, IQxITabGroup** group) override;
  HResult QX_STDCALL GetActiveTabGroup(IQxITabGroup** group) override;
  HResult QX_STDCALL SetActiveTabGroup(IQxITabGroup* group) override;
  HResult QX_STDCALL SetMenuTabGroup(IQxITabGroup* group) override;
  HResult QX_STDCALL GetTabDock(IQxITabDock** dock) override;

  IQxITabGroup* MenuTabGroup() const { return menuGroup_.get(); }
  // Without a dock GetTabDock fails, as in a host window that has none.
  void SetDockAvailable(bool available) { dockAvailable_ = available; }

 private:
  std::weak_ptr<TFakeTabModel> model_;
  ComPtr<TFakeTabDock> dock_;
  ComPtr<IQxITabGroup> menuGroup_;
  bool dockAvailable_ = true;
};

}  // namespace qx
