#include "fakehost/FakeFaviconManager.h"

#include <fstream>

#include "base/Text.h"
#include "fakehost/FakeString.h"
#include "host/V3EventTypes.h"

namespace qx {
namespace {

void WriteFile(const std::filesystem::path& path, const std::vector<std::uint8_t>& bytes) {
  std::error_code error;
  std::filesystem::create_directories(path.parent_path(), error);
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  out.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
}

TFakeParams RequestParams(std::u16string_view uri, std::u16string_view timing) {
  return {{u"event", u"Request"},
          {u"timing", std::u16string(timing)},
          {u"uri-id", std::u16string(uri)},
          {u"favicon-uri-id", std::u16string(uri)}};
}

}  // namespace

std::filesystem::path TFakeFaviconManager::PathOf(std::u16string_view uri) const {
  const auto it = files_.find(std::u16string(uri));
  return it == files_.end() ? DefaultPath() : it->second;
}

void TFakeFaviconManager::StoreFavicon(std::u16string_view uri, const std::vector<std::uint8_t>& bytes,
                                       std::u16string_view extension) {
  const auto eventId = V3EventId(kEvFaviconManagerChanged);
  if (events_) events_->FireFromHost(eventId, RequestParams(uri, u"before"));
  auto path = PathOf(uri);
  if (!Has(uri)) path = root_ / ("icon" + std::to_string(files_.size() + 1) + ToUtf8(extension));
  WriteFile(path, bytes);
  files_[std::u16string(uri)] = path;
  auto after = RequestParams(uri, u"after");
  after.emplace_back(u"result", u"true");
  if (events_) events_->FireFromHost(eventId, after);
}

void TFakeFaviconManager::FailFavicon(std::u16string_view uri) {
  const auto eventId = V3EventId(kEvFaviconManagerChanged);
  if (!events_) return;
  events_->FireFromHost(eventId, RequestParams(uri, u"before"));
  auto after = RequestParams(uri, u"after");
  after.emplace_back(u"result", u"false");
  events_->FireFromHost(eventId, after);
}

HResult QX_STDCALL TFakeFaviconManager::RequestFavicon(Text uri) {
  if (!uri) return kInvalidArg;
  const std::u16string key(uri);
  requests_.push_back(key);
  if (answerAtOnce_) {
    Answer(key);
  } else {
    pending_.push_back(key);
  }
  return kOk;
}

HResult QX_STDCALL TFakeFaviconManager::GetFaviconFile(Text uri, IQxIString** path) {
  if (!path) return kInvalidArg;
  *path = nullptr;
  if (!uri || !Has(uri)) return kFalse;
  *path = MakeFakeString(FromUtf8(PathOf(uri).string())).detach();
  return kOk;
}

void TFakeFaviconManager::SetSiteIcon(std::u16string_view uri, std::vector<std::uint8_t> bytes,
                                      std::u16string_view extension) {
  siteIcons_[std::u16string(uri)] = TSiteIcon{std::move(bytes), std::u16string(extension)};
}

std::size_t TFakeFaviconManager::AnswerRequests() {
  // Answers may lead to new requests; those wait for the next call.
  std::vector<std::u16string> batch;
  batch.swap(pending_);
  for (const auto& uri : batch) Answer(uri);
  return batch.size();
}

void TFakeFaviconManager::Answer(const std::u16string& uri) {
  const auto it = siteIcons_.find(uri);
  if (failing_ || it == siteIcons_.end()) {
    FailFavicon(uri);
    return;
  }
  const TSiteIcon icon = it->second;
  StoreFavicon(uri, icon.bytes, icon.extension);
}

void TFakeFaviconManager::StoreDefaultIcon(const std::vector<std::uint8_t>& bytes) { WriteFile(DefaultPath(), bytes); }

}  // namespace qx
