#pragma once

#include <map>
#include <optional>
#include <string>

#include "base/ComObject.h"
#include "host/QuillmarV3Interface.h"

namespace qx {

// Text data per page (tab GUID, compared without regard to case) and key. A missing
// entry reads as a failure. A closed tab's data goes with it.
class TFakePageDataManager : public TInterfacedObject<IQxIPageDataManager> {
 public:
  HResult QX_STDCALL SetData(Text pageGuid, Text key, Text value) override;
  HResult QX_STDCALL DeleteData(Text pageGuid, Text key) override;
  HResult QX_STDCALL GetData(Text pageGuid, Text key, IQxIString** value) override;

  std::optional<std::u16string> Data(std::u16string_view pageGuid, std::u16string_view key) const;
  void RemovePage(std::u16string_view pageGuid);

 private:
  static std::u16string PageKey(std::u16string_view guid);

  std::map<std::u16string, std::map<std::u16string, std::u16string>> pages_;
};

}  // namespace qx
