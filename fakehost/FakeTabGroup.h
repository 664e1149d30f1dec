#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "base/ComObject.h"
#include "host/QuillmarV3Interface.h"

namespace qx {

class TFakeTab;
class TFakeTabModel;
class TFakeTabSection;

// A tab group: sections of tabs, one active tab, text values ("title", "private").
// Flat tab indexes run over all sections in order.
class TFakeTabGroup : public TInterfacedObject<IQxITabGroup> {
 public:
  TFakeTabGroup(std::weak_ptr<TFakeTabModel> model, const TGUID& guid) : model_(std::move(model)), guid_(guid) {}

  HResult QX_STDCALL GetGuid(IQxIString** guid) override;
  HResult QX_STDCALL GetValue(Text key, IQxIString** value) override;
  HResult QX_STDCALL SetValue(Text key, Text value) override;
  HResult QX_STDCALL AddTab(IQxITab* tab) override;
  HResult QX_STDCALL InsertTab(IQxITab* tab, std::int32_t index) override;
  HResult QX_STDCALL GetTabCount(std::int32_t* count) override;
  HResult QX_STDCALL GetActiveTab(IQxITab** tab) override;
  HResult QX_STDCALL SelectTab(IQxITab* tab) override;
  HResult QX_STDCALL IndexOfTab(IQxITab* tab, std::int32_t* index) override;
  HResult QX_STDCALL GetTab(std::int32_t index, IQxITab** tab) override;
  HResult QX_STDCALL SetMenuTab(IQxITab* tab) override;
  HResult QX_STDCALL GetSectionCount(std::int32_t* count) override;
  HResult QX_STDCALL GetSection(std::int32_t index, IQxITabSection** section) override;
  HResult QX_STDCALL InsertSectionWithTab(std::int32_t sectionIndex, IQxITab* tab) override;
  HResult QX_STDCALL MoveTabToSection(IQxITab* tab, IQxITabSection* section, std::int32_t index) override;

  const TGUID& Guid() const { return guid_; }
  std::u16string GuidText() const;
  const std::vector<ComPtr<TFakeTabSection>>& Sections() const { return sections_; }
  std::vector<ComPtr<TFakeTab>> FlatTabs() const;
  std::int32_t IndexOf(const TFakeTab* tab) const;
  TFakeTab* ActiveTab() const { return active_.get(); }
  TFakeTab* MenuTab() const { return menuTab_.get(); }
  std::u16string TextValue(std::u16string_view key) const;

  // What the strip committed at its drops, in order: (section index, tab index),
  // section index -1 for a new section made with the tab.
  struct TMoveCall {
    std::int32_t Section = -1;
    std::int32_t Index = -1;
    bool NewSection = false;
  };
  const std::vector<TMoveCall>& MoveCalls() const { return moveCalls_; }

  // Dock answers for tabs of this group.
  void SetFirstContentIndex(std::int32_t index) { firstContentIndex_ = index; }
  std::int32_t FirstContentIndex() const { return firstContentIndex_; }
  void SetKind(std::int32_t kind) { kind_ = kind; }
  std::int32_t Kind() const { return kind_; }

 private:
  friend class TFakeTabModel;

  std::weak_ptr<TFakeTabModel> model_;
  const TGUID guid_;
  std::vector<std::pair<std::u16string, std::u16string>> values_;
  std::vector<ComPtr<TFakeTabSection>> sections_;
  std::vector<TMoveCall> moveCalls_;
  ComPtr<TFakeTab> active_;
  ComPtr<TFakeTab> menuTab_;
  std::int32_t firstContentIndex_ = 0;
  std::int32_t kind_ = 0;
};

}  // namespace qx
