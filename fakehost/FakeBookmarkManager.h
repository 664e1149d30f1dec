#pragma once

#include <map>
#include <set>
#include <string>

#include "base/ComObject.h"
#include "host/QuillmarV3Interface.h"

namespace qx {

// Bookmark service status by key ("status" is "connected" at first) and a set of
// bookmarked URIs. An unknown status key fails.
class TFakeBookmarkManager : public TInterfacedObject<IQxIBookmarkManagerV3> {
 public:
  TFakeBookmarkManager() { status_[u"status"] = u"connected"; }

  HResult QX_STDCALL GetStatus(Text key, IQxIString** value) override;

  void SetStatus(std::u16string_view key, std::u16string_view value) { status_[std::u16string(key)] = value; }
  void AddBookmark(std::u16string_view uri) { bookmarks_.emplace(uri); }
  void RemoveBookmark(std::u16string_view uri) { bookmarks_.erase(std::u16string(uri)); }
  bool IsBookmarked(std::u16string_view uri) const { return bookmarks_.contains(std::u16string(uri)); }

 private:
  std::map<std::u16string, std::u16string> status_;
  std::set<std::u16string> bookmarks_;
};

}  // namespace qx
