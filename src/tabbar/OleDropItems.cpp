#include "tabbar/OleDropItems.h"

#include <string>
#include <vector>

#include "runtime/OleDnDUtils.h"

namespace qx {

void OpenDroppedItems(IServiceCoreWrap* serviceCore, const TDragObject& dragObject) {
  std::vector<std::u16string> items;
  if (!dragObject.Files.empty()) {
    for (const std::u16string& file : dragObject.Files)
      if (std::u16string url = ResolveDroppedUrl(file); !url.empty()) items.push_back(std::move(url));
  } else if (const auto* text = std::any_cast<std::u16string>(&dragObject.Data); text && !text->empty()) {
    items.push_back(*text);
  }
  if (!serviceCore) return;
  // A second pass: an item that came from a file goes through once more, and a text
  // of no known scheme drops out here.
  for (const std::u16string& item : items) {
    const std::u16string url = ResolveDroppedUrl(item);
    if (url.empty()) continue;
    ComPtr<IQxITab> tab;
    serviceCore->OpenUri(url, tab);
  }
}

}  // namespace qx
