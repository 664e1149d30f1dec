#include "fakehost/FakeTabDock.h"

#include "base/Text.h"
#include "fakehost/FakeTabModel.h"
#include "host/HostKeys.h"

namespace qx {
namespace {

bool IsBlankUri(std::u16string_view uri) { return uri.empty() || uri == u"about:blank" || uri == u"http://"; }

}  // namespace

void TFakeTabDock::SetNewTabGroup(TFakeTabGroup* group) {
  newTabGroup_ = group ? static_cast<IQxITabGroup*>(group) : nullptr;
}

HResult QX_STDCALL TFakeTabDock::TabIdOf(IQxITab* tab, std::int32_t* id) {
  if (!id) return kInvalidArg;
  *id = 0;
  const auto model = model_.lock();
  TFakeTab* found = model ? model->FindTab(tab) : nullptr;
  if (!found) return kFail;
  *id = found->DockId();
  return kOk;
}

HResult QX_STDCALL TFakeTabDock::TabById(std::int32_t id, IQxITab** tab) {
  if (!tab) return kInvalidArg;
  *tab = nullptr;
  const auto model = model_.lock();
  if (!model) return kFail;
  return HandOut(ComPtr<TFakeTab>(model->TabByDockId(id)), tab);
}

HResult QX_STDCALL TFakeTabDock::TabByBrowserId(Text idText, IQxITab** tab) {
  if (!tab) return kInvalidArg;
  *tab = nullptr;
  const auto model = model_.lock();
  if (!model || !idText) return kFail;
  return HandOut(ComPtr<TFakeTab>(model->TabByBrowserId(idText)), tab);
}

std::int32_t QX_STDCALL TFakeTabDock::GetGroupKind(IQxITab* tab) {
  const auto model = model_.lock();
  TFakeTab* found = model ? model->FindTab(tab) : nullptr;
  return found && found->Group() ? found->Group()->Kind() : 0;
}

HResult QX_STDCALL TFakeTabDock::FirstContentIndex(IQxITabGroup* group, std::int32_t* index) {
  if (!index) return kInvalidArg;
  *index = 0;
  const auto model = model_.lock();
  TFakeTabGroup* found = model ? model->FindGroup(group) : nullptr;
  if (!found) return kFail;
  *index = found->FirstContentIndex();
  return kOk;
}

std::int32_t QX_STDCALL TFakeTabDock::IsTabHidden(IQxITab* tab) {
  const auto model = model_.lock();
  TFakeTab* found = model ? model->FindTab(tab) : nullptr;
  return found && found->Hidden() ? 1 : 0;
}

HResult QX_STDCALL TFakeTabDock::GetDockKind(std::int32_t* kind) {
  if (!kind) return kInvalidArg;
  *kind = dockKind_;
  return kOk;
}

HResult QX_STDCALL TFakeTabDock::Refresh(std::int32_t mode) {
  refreshCalls_.push_back(mode);
  return kOk;
}

HResult QX_STDCALL TFakeTabDock::SetLock(std::int32_t state) {
  lockCalls_.push_back(state);
  if (state == 2) locked_ = true;
  else if (state == 1) locked_ = false;
  else return kInvalidArg;
  return kOk;
}

HResult QX_STDCALL TFakeTabDock::GetNewTabGroup(IQxITabGroup** group) {
  if (!group) return kInvalidArg;
  *group = nullptr;
  return HandOut(newTabGroup_, group);
}

HResult QX_STDCALL TFakeTabDock::Navigate(Text uri, IQxITabGroup* group, IQxIStringDictionary* parameters,
                                          IQxITab** tab) {
  if (tab) *tab = nullptr;
  if (!uri) return kInvalidArg;
  const auto model = model_.lock();
  if (!model) return kFail;
  const TFakeParams options = ReadStringDictionary(parameters);
  const auto option = [&](std::u16string_view key) { return ParamValue(options, key); };
  TFakeTabGroup* target = model->FindGroup(group);
  if (group && !target) return kInvalidArg;
  navigateCalls_.push_back({uri, target ? target->GuidText() : std::u16string(), options});

  const std::u16string address(uri);
  const bool isNew = IsTrueText(option(open_key::New));
  const bool activate = !HasParam(options, open_key::Activate) || IsTrueText(option(open_key::Activate));
  TFakeTab* from = model->TabByGuid(option(open_key::FromTabGuid));
  TFakeTab* named = model->TabByGuid(option(open_key::TabGuid));
  if (!target) target = from && from->Group() ? from->Group() : model->ActiveGroup();
  if (!target) return kFail;

  ComPtr<TFakeTab> result;
  if (named) {
    result = named;
  } else if (!isNew) {
    result = target->ActiveTab();
  } else if (IsTrueText(option(open_key::ReuseBlank)) && target->ActiveTab() &&
             IsBlankUri(target->ActiveTab()->TextValue(tab_key::Uri))) {
    result = target->ActiveTab();
  }

  if (result) {
    if (activate) model->Activate(result.get());
    model->NavigateTab(result.get(), address);
  } else {
    TFakeOpenTab how;
    how.Group = target;
    how.After = from && from->Group() == target ? from : nullptr;
    how.Activate = activate;
    how.NoBrowser = IsTrueText(option(open_key::NoBrowser));
    how.EngineId = option(open_key::BrowserGuid);
    how.Guid = TryParseGuid(option(open_key::TabGuid));
    for (const auto key : {open_key::Individual, open_key::EffectKeyboard})
      if (HasParam(options, key)) how.Values.emplace_back(key, option(key));
    result = model->OpenTab(address, how);
    if (!result) return kFail;
  }
  if (HasParam(options, open_key::Post) && result->Browser())
    model->SetBrowserText(result->Browser(), open_key::Post, option(open_key::Post));
  if (tab) HandOut(result, tab);
  return kOk;
}

}  // namespace qx
