#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "base/ComObject.h"
#include "fakehost/FakeEventService.h"
#include "host/QuillmarV3Interface.h"

namespace qx {

// The host's favicon store: one file per site URI under a root folder, the default icon
// "default.ico" beside them. A URI without a stored file resolves to the default icon's
// path, which is how the host says it has none yet. A fetch the module asks for is
// answered from the icons the "network" has (SetSiteIcon), or fails; by default the
// answers wait for AnswerRequests, as a browser answers later. Each answer raises
// "FaviconManager.Changed":
//   1. {event=Request, timing=before, uri-id, favicon-uri-id}
//   2. the file is written (not for a failure)
//   3. {event=Request, timing=after, uri-id, favicon-uri-id, result="true" or "false"}
class TFakeFaviconManager : public TInterfacedObject<IQxIFaviconManagerV3> {
 public:
  explicit TFakeFaviconManager(ComPtr<TFakeEventService> events) : events_(std::move(events)) {}

  void SetRoot(const std::filesystem::path& root) { root_ = root; }
  const std::filesystem::path& Root() const { return root_; }
  std::filesystem::path DefaultPath() const { return root_ / "default.ico"; }
  // Stored file of a URI, else the default icon's path.
  std::filesystem::path PathOf(std::u16string_view uri) const;
  bool Has(std::u16string_view uri) const { return files_.contains(std::u16string(uri)); }

  // Writes the file and raises the events of a finished fetch.
  void StoreFavicon(std::u16string_view uri, const std::vector<std::uint8_t>& bytes,
                    std::u16string_view extension = u".png");
  // Raises the events of a failed fetch; nothing is stored.
  void FailFavicon(std::u16string_view uri);
  // Writes the default icon file.
  void StoreDefaultIcon(const std::vector<std::uint8_t>& bytes);

  // IQxIFaviconManagerV3
  HResult QX_STDCALL RequestFavicon(Text uri) override;
  HResult QX_STDCALL GetFaviconFile(Text uri, IQxIString** path) override;

  // What a fetch of uri finds; a URI with no icon here fails.
  void SetSiteIcon(std::u16string_view uri, std::vector<std::uint8_t> bytes, std::u16string_view extension = u".png");
  // Every fetch fails while set, icon or not.
  void SetFailing(bool failing) { failing_ = failing; }
  // Answer each fetch inside the request call instead of waiting for AnswerRequests.
  void SetAnswerAtOnce(bool atOnce) { answerAtOnce_ = atOnce; }
  // Answers the waiting fetches in request order; returns how many.
  std::size_t AnswerRequests();
  std::size_t PendingCount() const { return pending_.size(); }

  // Fetch requests the module made, in order.
  const std::vector<std::u16string>& Requests() const { return requests_; }

 private:
  ComPtr<TFakeEventService> events_;
  std::filesystem::path root_;
  std::map<std::u16string, std::filesystem::path> files_;
  std::vector<std::u16string> requests_;
  std::vector<std::u16string> pending_;
  struct TSiteIcon {
    std::vector<std::uint8_t> bytes;
    std::u16string extension;
  };
  std::map<std::u16string, TSiteIcon> siteIcons_;
  bool failing_ = false;
  bool answerAtOnce_ = false;

  void Answer(const std::u16string& uri);
};

}  // namespace qx
