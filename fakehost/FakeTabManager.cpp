#include "fakehost/FakeTabManager.h"

#include "fakehost/FakeCom.h"
#include "fakehost/FakeTabModel.h"

namespace qx {

HResult QX_STDCALL TFakeTabManager::TabByGuid(Text guid, IQxITab** tab) {
  if (!tab) return kInvalidArg;
  *tab = nullptr;
  const auto model = model_.lock();
  if (!model || !guid) return kFail;
  return HandOut(ComPtr<TFakeTab>(model->TabByGuid(guid)), tab);
}

HResult QX_STDCALL TFakeTabManager::CreateTab(IQxITab** tab) {
  if (!tab) return kInvalidArg;
  *tab = nullptr;
  const auto model = model_.lock();
  if (!model) return kFail;
  return HandOut(model->CreateTab(), tab);
}

HResult QX_STDCALL TFakeTabManager::GetActiveTab(IQxITab** tab) {
  if (!tab) return kInvalidArg;
  *tab = nullptr;
  const auto model = model_.lock();
  if (!model || !model->ActiveGroup()) return kFail;
  return HandOut(ComPtr<TFakeTab>(model->ActiveGroup()->ActiveTab()), tab);
}

HResult QX_STDCALL TFakeTabManager::SetActiveTab(IQxITab* tab) {
  const auto model = model_.lock();
  if (!model) return kFail;
  return model->Activate(model->FindTab(tab));
}

HResult QX_STDCALL TFakeTabManager::GetTabGroupCount(std::int32_t* count) {
  if (!count) return kInvalidArg;
  *count = 0;
  const auto model = model_.lock();
  if (!model) return kFail;
  *count = static_cast<std::int32_t>(model->Groups().size());
  return kOk;
}

HResult QX_STDCALL TFakeTabManager::GetTabGroup(std::int32_t index, IQxITabGroup** group) {
  if (!group) return kInvalidArg;
  *group = nullptr;
  const auto model = model_.lock();
  if (!model) return kFail;
  const auto& groups = model->Groups();
  if (index < 0 || static_cast<std::size_t>(index) >= groups.size()) return kInvalidArg;
  return HandOut(groups[static_cast<std::size_t>(index)], group);
}

HResult QX_STDCALL TFakeTabManager::GetActiveTabGroup(IQxITabGroup** group) {
  if (!group) return kInvalidArg;
  *group = nullptr;
  const auto model = model_.lock();
  if (!model) return kFail;
  return HandOut(ComPtr<TFakeTabGroup>(model->ActiveGroup()), group);
}

HResult QX_STDCALL TFakeTabManager::SetActiveTabGroup(IQxITabGroup* group) {
  const auto model = model_.lock();
  if (!model) return kFail;
  return model->SwitchGroup(model->FindGroup(group));
}

HResult QX_STDCALL TFakeTabManager::SetMenuTabGroup(IQxITabGroup* group) {
  menuGroup_ = group;
  return kOk;
}

HResult QX_STDCALL TFakeTabManager::GetTabDock(IQxITabDock** dock) {
  if (!dock) return kInvalidArg;
  *dock = nullptr;
  if (!dockAvailable_) return kFail;
  return HandOut(dock_, dock);
}

}  // namespace qx
