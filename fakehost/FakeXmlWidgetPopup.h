#pragma once

#include <map>
#include <string>

#include "base/ComObject.h"
#include "host/QuillmarV3Interface.h"

namespace qx {

// The host's popup menus: what the module registered, by id, until it removes it.
class TFakeXmlWidgetPopup : public TInterfacedObject<IQxIXmlWidgetPopup> {
 public:
  HResult QX_STDCALL RegisterPopup(Text id, IQxIXmlElement* root) override;
  HResult QX_STDCALL RemovePopup(Text id) override;

  // The document registered under id, nil when none.
  IQxIXmlElement* Popup(std::u16string_view id) const;
  std::size_t Count() const { return popups_.size(); }

 private:
  std::map<std::u16string, ComPtr<IQxIXmlElement>, std::less<>> popups_;
};

}  // namespace qx
