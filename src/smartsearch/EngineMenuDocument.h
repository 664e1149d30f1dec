#pragma once

// The menu of engines without a button of their own, as the host's popup service takes
// it: a document of items carrying the host's menu attributes.

#include <cstdint>
#include <string_view>
#include <vector>

#include "base/ComPtr.h"
#include "base/Text.h"
#include "host/QuillmarV3Interface.h"
#include "host/ServiceCoreWrapIntf.h"

namespace qx {

// One entry of the menu.
struct TEngineMenuItem {
  TString ActionName;
  TString Guid;
  TString Icon;  // favicon:// or skin:// address
  TString DisplayName;
  TString Script;
};

// The host numbers its element attributes; these are the ones a menu item carries.
// Number 0 is the element's kind, which the host's documents write as the element name.
namespace menu_attribute {
inline constexpr std::int32_t Kind = 0;
inline constexpr std::int32_t Action = 32;
inline constexpr std::int32_t DisplayName = 286;
inline constexpr std::int32_t Icon = 288;
inline constexpr std::int32_t Script = 298;
}  // namespace menu_attribute

// The attribute name of a host attribute number; empty for one a menu item never carries.
std::u16string_view MenuAttributeName(std::int32_t number);

// The document's text: a "menu" root with one "item" element per entry, in order.
TString EngineMenuXml(const std::vector<TEngineMenuItem>& items);

// The document as the host's XML service builds it; nil without the service or when it
// refuses the text.
ComPtr<IQxIXmlElement> MakeEngineMenuDocument(IServiceCoreWrap& core,
                                              const std::vector<TEngineMenuItem>& items);

}  // namespace qx
