#include "fakehost/FakeXmlWidgetPopup.h"

#include "fakehost/FakeCom.h"

namespace qx {

HResult QX_STDCALL TFakeXmlWidgetPopup::RegisterPopup(Text id, IQxIXmlElement* root) {
  if (!id || !*id || !root) return kInvalidArg;
  popups_[std::u16string(id)] = ComPtr<IQxIXmlElement>(root);
  return kOk;
}

HResult QX_STDCALL TFakeXmlWidgetPopup::RemovePopup(Text id) {
  if (!id) return kInvalidArg;
  auto it = popups_.find(std::u16string_view(id));
  if (it == popups_.end()) return kFalse;
  popups_.erase(it);
  return kOk;
}

IQxIXmlElement* TFakeXmlWidgetPopup::Popup(std::u16string_view id) const {
  auto it = popups_.find(id);
  return it == popups_.end() ? nullptr : it->second.get();
}

}  // namespace qx
