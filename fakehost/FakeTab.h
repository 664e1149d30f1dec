#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "base/ComObject.h"
#include "fakehost/FakeWebView.h"
#include "host/QuillmarV3Interface.h"

namespace qx {

class TFakeTabModel;
class TFakeTabGroup;
class TFakeTabSection;

// A tab: identity, values and at most one browser. Placement and every change that a
// browser would announce go through the model.
class TFakeTab : public TInterfacedObject<IQxITab> {
 public:
  TFakeTab(std::weak_ptr<TFakeTabModel> model, const TGUID& guid, std::int32_t dockId)
      : model_(std::move(model)), guid_(guid), dockId_(dockId) {}

  HResult QX_STDCALL GetGuid(IQxIString** guid) override;
  HResult QX_STDCALL GetTabGroup(IQxITabGroup** group) override;
  HResult QX_STDCALL GetBrowser(IQxIBrowser** browser) override;
  HResult QX_STDCALL SetBrowser(IQxIBrowser* browser) override;
  HResult QX_STDCALL GetValue(Text key, IQxIVariant** value) override;
  HResult QX_STDCALL SetValue(Text key, IQxIVariant* value) override;

  const TGUID& Guid() const { return guid_; }
  std::u16string GuidText() const;
  std::int32_t DockId() const { return dockId_; }
  TFakeTabGroup* Group() const { return group_; }
  TFakeTabSection* Section() const { return section_; }
  TFakeWebView* Browser() const { return browser_.get(); }
  bool Hidden() const { return hidden_; }
  ComPtr<IQxIVariant> Value(std::u16string_view key) const;
  // Text form of a value; empty when missing or an object.
  std::u16string TextValue(std::u16string_view key) const;

  // What the cabinet manager derived from the tab's values, as the host keeps it: it
  // stays until a value of the tab changes.
  struct TCabinetView {
    bool Valid = false;
    ComPtr<IQxIString> Domain, Title;
  };
  TCabinetView& CabinetView() const { return cabinetView_; }

 private:
  friend class TFakeTabModel;
  void StoreValue(std::u16string_view key, IQxIVariant* value);

  std::weak_ptr<TFakeTabModel> model_;
  const TGUID guid_;
  const std::int32_t dockId_;
  std::vector<std::pair<std::u16string, ComPtr<IQxIVariant>>> values_;
  ComPtr<TFakeWebView> browser_;
  TFakeTabGroup* group_ = nullptr;
  TFakeTabSection* section_ = nullptr;
  bool hidden_ = false;
  mutable TCabinetView cabinetView_;
};

}  // namespace qx
