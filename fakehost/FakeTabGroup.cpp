#include "fakehost/FakeTabGroup.h"

#include "fakehost/FakeCom.h"
#include "fakehost/FakeString.h"
#include "fakehost/FakeTabModel.h"

namespace qx {

std::u16string TFakeTabGroup::GuidText() const { return GuidToString(guid_); }

std::vector<ComPtr<TFakeTab>> TFakeTabGroup::FlatTabs() const {
  std::vector<ComPtr<TFakeTab>> tabs;
  for (const auto& section : sections_)
    for (const auto& tab : section->Tabs()) tabs.push_back(tab);
  return tabs;
}

std::int32_t TFakeTabGroup::IndexOf(const TFakeTab* tab) const {
  std::int32_t index = 0;
  for (const auto& section : sections_) {
    for (const auto& candidate : section->Tabs()) {
      if (candidate.get() == tab) return index;
      ++index;
    }
  }
  return -1;
}

std::u16string TFakeTabGroup::TextValue(std::u16string_view key) const {
  for (const auto& entry : values_)
    if (entry.first == key) return entry.second;
  return {};
}

HResult QX_STDCALL TFakeTabGroup::GetGuid(IQxIString** guid) {
  if (!guid) return kInvalidArg;
  *guid = MakeFakeString(GuidText()).detach();
  return kOk;
}

HResult QX_STDCALL TFakeTabGroup::GetValue(Text key, IQxIString** value) {
  if (!value) return kInvalidArg;
  *value = nullptr;
  if (!key) return kInvalidArg;
  for (const auto& entry : values_) {
    if (entry.first == key) {
      *value = MakeFakeString(entry.second).detach();
      return kOk;
    }
  }
  return kFail;
}

HResult QX_STDCALL TFakeTabGroup::SetValue(Text key, Text value) {
  if (!key) return kInvalidArg;
  const auto model = model_.lock();
  if (!model) return kFail;
  return model->SetGroupValue(this, key, TextOf(value));
}

HResult QX_STDCALL TFakeTabGroup::AddTab(IQxITab* tab) {
  const auto model = model_.lock();
  if (!model) return kFail;
  return model->AddTab(this, model->FindTab(tab));
}

HResult QX_STDCALL TFakeTabGroup::InsertTab(IQxITab* tab, std::int32_t index) {
  const auto model = model_.lock();
  if (!model) return kFail;
  return model->InsertTabAt(this, model->FindTab(tab), index);
}

HResult QX_STDCALL TFakeTabGroup::GetTabCount(std::int32_t* count) {
  if (!count) return kInvalidArg;
  std::int32_t total = 0;
  for (const auto& section : sections_) total += static_cast<std::int32_t>(section->Tabs().size());
  *count = total;
  return kOk;
}

HResult QX_STDCALL TFakeTabGroup::GetActiveTab(IQxITab** tab) { return HandOut(active_, tab); }

HResult QX_STDCALL TFakeTabGroup::SelectTab(IQxITab* tab) {
  const auto model = model_.lock();
  if (!model) return kFail;
  return model->SelectInGroup(this, model->FindTab(tab));
}

HResult QX_STDCALL TFakeTabGroup::IndexOfTab(IQxITab* tab, std::int32_t* index) {
  if (!index) return kInvalidArg;
  *index = -1;
  const auto model = model_.lock();
  if (!model) return kFail;
  *index = IndexOf(model->FindTab(tab));
  return *index >= 0 ? kOk : kFail;
}

HResult QX_STDCALL TFakeTabGroup::GetTab(std::int32_t index, IQxITab** tab) {
  if (!tab) return kInvalidArg;
  *tab = nullptr;
  if (index < 0) return kInvalidArg;
  // Walks the sections rather than copying every tab, so a whole pass stays linear.
  auto rest = static_cast<std::size_t>(index);
  for (const auto& section : sections_) {
    const auto& tabs = section->Tabs();
    if (rest < tabs.size()) return HandOut(tabs[rest], tab);
    rest -= tabs.size();
  }
  return kInvalidArg;
}

HResult QX_STDCALL TFakeTabGroup::SetMenuTab(IQxITab* tab) {
  if (!tab) {
    menuTab_ = nullptr;
    return kOk;
  }
  const auto model = model_.lock();
  TFakeTab* found = model ? model->FindTab(tab) : nullptr;
  if (!found) return kInvalidArg;
  menuTab_ = found;
  return kOk;
}

HResult QX_STDCALL TFakeTabGroup::GetSectionCount(std::int32_t* count) {
  if (!count) return kInvalidArg;
  *count = static_cast<std::int32_t>(sections_.size());
  return kOk;
}

HResult QX_STDCALL TFakeTabGroup::GetSection(std::int32_t index, IQxITabSection** section) {
  if (!section) return kInvalidArg;
  *section = nullptr;
  if (index < 0 || static_cast<std::size_t>(index) >= sections_.size()) return kInvalidArg;
  return HandOut(sections_[static_cast<std::size_t>(index)], section);
}

HResult QX_STDCALL TFakeTabGroup::InsertSectionWithTab(std::int32_t sectionIndex, IQxITab* tab) {
  const auto model = model_.lock();
  if (!model) return kFail;
  moveCalls_.push_back({sectionIndex, 0, true});
  return model->InsertSectionWithTab(this, sectionIndex, model->FindTab(tab));
}

HResult QX_STDCALL TFakeTabGroup::MoveTabToSection(IQxITab* tab, IQxITabSection* section, std::int32_t index) {
  const auto model = model_.lock();
  if (!model) return kFail;
  TFakeTab* moving = model->FindTab(tab);
  TFakeTabSection* target = model->FindSection(section);
  if (!moving || !target || moving->Group() != this || target->Group() != this) return kInvalidArg;
  std::int32_t sectionIndex = 0;
  while (static_cast<std::size_t>(sectionIndex) < sections_.size() &&
         sections_[static_cast<std::size_t>(sectionIndex)].get() != target)
    ++sectionIndex;
  moveCalls_.push_back({sectionIndex, index, false});
  return model->MoveTab(moving, sectionIndex, index);
}

}  // namespace qx
