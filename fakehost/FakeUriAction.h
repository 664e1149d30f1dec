#pragma once

#include <string>
#include <utility>
#include <vector>

#include "base/ComObject.h"
#include "host/QuillmarV3Interface.h"

namespace qx {

// Which browser engine a URI opens in: the longest matching URI prefix of a table
// gives "browser-guid"; with no match the dictionary comes back without that key.
class TFakeUriAction : public TInterfacedObject<IQxIUriAction> {
 public:
  HResult QX_STDCALL GetBrowserInfo(Text uri, IQxIStringDictionary** info) override;

  void SetBrowserGuid(std::u16string_view uriPrefix, std::u16string_view browserGuid);

 private:
  std::vector<std::pair<std::u16string, std::u16string>> table_;
};

}  // namespace qx
