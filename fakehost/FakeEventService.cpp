#include "fakehost/FakeEventService.h"

#include <set>
#include <thread>

#include "base/Text.h"
#include "fakehost/FakeEvent.h"
#include "fakehost/FakeStringArray.h"
#include "fakehost/FakeStringDictionary.h"

namespace qx {

Text TFakeEventService::InternId(std::u16string_view eventId) {
  // Never freed: listeners may hold these pointers in queued work past any service's life.
  static auto* pool = new std::set<std::u16string, std::less<>>();
  static auto* poolMutex = new std::mutex();
  std::lock_guard lock(*poolMutex);
  auto it = pool->find(eventId);
  if (it == pool->end()) it = pool->emplace(eventId).first;
  return it->c_str();
}

HResult QX_STDCALL TFakeEventService::AddListener(Text eventId, IQxIEventListener* listener, std::uint8_t timing) {
  if (!eventId || !listener) return kInvalidArg;
  auto entry = std::make_shared<TEntry>();
  entry->EventId = eventId;
  entry->Listener = listener;
  entry->Timing = timing;
  std::lock_guard lock(mutex_);
  entry->Cookie = nextCookie_++;
  entries_.push_back(std::move(entry));
  return kOk;
}

HResult QX_STDCALL TFakeEventService::RemoveListener(Text eventId, IQxIEventListener* listener) {
  if (!eventId || !listener) return kInvalidArg;
  std::shared_ptr<TEntry> removed;
  {
    std::lock_guard lock(mutex_);
    for (auto it = entries_.begin(); it != entries_.end(); ++it) {
      if ((*it)->Listener && SameText((*it)->EventId, eventId) &&
          SameInterface((*it)->Listener.get(), listener)) {
        removed = *it;
        removed->Alive = false;
        entries_.erase(it);
        break;
      }
    }
  }
  // The listener is released outside the lock: its destructor may call back.
  return removed ? kOk : kFail;
}

std::uint64_t TFakeEventService::AddHostHandler(std::u16string_view eventId, THostHandler handler) {
  auto entry = std::make_shared<TEntry>();
  entry->EventId = eventId;
  entry->Host = std::move(handler);
  std::lock_guard lock(mutex_);
  entry->Cookie = nextCookie_++;
  entries_.push_back(entry);
  return entry->Cookie;
}

void TFakeEventService::RemoveHostHandler(std::uint64_t cookie) {
  std::lock_guard lock(mutex_);
  for (auto it = entries_.begin(); it != entries_.end(); ++it) {
    if ((*it)->Cookie == cookie) {
      (*it)->Alive = false;
      entries_.erase(it);
      return;
    }
  }
}

void TFakeEventService::Log(std::u16string_view eventId, IQxIStringDictionary* parameters,
                            TFakeEventRecord::EDelivery delivery, bool fromHost, std::u16string target) {
  TFakeEventRecord record;
  record.Id = eventId;
  record.Parameters = ReadStringDictionary(parameters);
  record.Delivery = delivery;
  record.FromHost = fromHost;
  record.Target = std::move(target);
  std::lock_guard lock(mutex_);
  log_.push_back(std::move(record));
}

void TFakeEventService::Log(std::u16string_view eventId, const TFakeParams& parameters,
                            TFakeEventRecord::EDelivery delivery) {
  TFakeEventRecord record;
  record.Id = eventId;
  record.Parameters = parameters;
  record.Delivery = delivery;
  record.FromHost = true;
  std::lock_guard lock(mutex_);
  log_.push_back(std::move(record));
}

std::vector<std::u16string> TFakeEventService::DeliverNow(std::u16string_view eventId,
                                                          IQxIStringDictionary* parameters) {
  std::vector<std::shared_ptr<TEntry>> snapshot;
  {
    std::lock_guard lock(mutex_);
    for (const auto& entry : entries_)
      if (SameText(entry->EventId, eventId)) snapshot.push_back(entry);
  }
  std::vector<std::u16string> results;
  if (snapshot.empty()) return results;
  const Text id = InternId(eventId);
  const std::u16string idText(eventId);
  auto event = MakeCom<TFakeEvent>(parameters);
  for (const auto& entry : snapshot) {
    if (!entry->Alive) continue;
    if (entry->Listener) {
      // Hold the listener: it may remove itself during the call.
      ComPtr<IQxIEventListener> listener = entry->Listener;
      listener->OnEvent(id, event.get());
    } else if (entry->Host) {
      auto handler = entry->Host;
      handler(idText, parameters, results);
    }
  }
  return results;
}

std::vector<std::u16string> TFakeEventService::Deliver(std::u16string_view eventId,
                                                       IQxIStringDictionary* parameters) {
  if (!workerThread_) return DeliverNow(eventId, parameters);
  std::vector<std::u16string> results;
  std::thread worker([&] { results = DeliverNow(eventId, parameters); });
  worker.join();
  return results;
}

HResult QX_STDCALL TFakeEventService::Fire(Text eventId, IQxIStringDictionary* parameters,
                                           IQxIStringArray** results) {
  if (results) *results = nullptr;
  if (!eventId) return kInvalidArg;
  Log(eventId, parameters, TFakeEventRecord::EDelivery::Fired, false, {});
  auto answers = Deliver(eventId, parameters);
  if (results) *results = MakeCom<TFakeStringArray>(std::move(answers)).detach();
  return kOk;
}

HResult QX_STDCALL TFakeEventService::Post(Text eventId, Text target, IQxIStringDictionary* parameters,
                                           std::int32_t, std::int32_t, std::int32_t) {
  if (!eventId) return kInvalidArg;
  Log(eventId, parameters, TFakeEventRecord::EDelivery::Posted, false, TextOf(target));
  std::lock_guard lock(mutex_);
  posts_.push_back(TPost{eventId, ComPtr<IQxIStringDictionary>(parameters)});
  return kOk;
}

std::vector<std::u16string> TFakeEventService::FireFromHost(std::u16string_view eventId,
                                                            const TFakeParams& parameters) {
  auto dictionary = MakeCom<TFakeStringDictionary>(parameters);
  Log(eventId, dictionary->Entries(), TFakeEventRecord::EDelivery::Fired);
  return Deliver(eventId, dictionary.get());
}

void TFakeEventService::PostFromHost(std::u16string_view eventId, const TFakeParams& parameters) {
  auto dictionary = MakeCom<TFakeStringDictionary>(parameters);
  Log(eventId, dictionary->Entries(), TFakeEventRecord::EDelivery::Posted);
  std::lock_guard lock(mutex_);
  posts_.push_back(TPost{std::u16string(eventId), ComPtr<IQxIStringDictionary>(dictionary.get())});
}

std::size_t TFakeEventService::RunPosted() {
  // Bounded, so that two handlers posting to each other cannot spin for ever.
  constexpr std::size_t kLimit = 100000;
  std::size_t count = 0;
  while (count < kLimit) {
    TPost post;
    {
      std::lock_guard lock(mutex_);
      if (posts_.empty()) break;
      post = std::move(posts_.front());
      posts_.pop_front();
    }
    Deliver(post.EventId, post.Parameters.get());
    ++count;
  }
  return count;
}

std::size_t TFakeEventService::PendingPosts() const {
  std::lock_guard lock(mutex_);
  return posts_.size();
}

void TFakeEventService::Clear() {
  std::vector<std::shared_ptr<TEntry>> entries;
  std::deque<TPost> posts;
  {
    std::lock_guard lock(mutex_);
    entries.swap(entries_);
    posts.swap(posts_);
  }
  for (const auto& entry : entries) entry->Alive = false;
  // Released here, outside the lock: a listener's destructor may call the service.
}

std::size_t TFakeEventService::ListenerCount(std::u16string_view eventId) const {
  std::lock_guard lock(mutex_);
  std::size_t count = 0;
  for (const auto& entry : entries_)
    if (entry->Listener && SameText(entry->EventId, eventId)) ++count;
  return count;
}

std::vector<TFakeEventRecord> TFakeEventService::EventLog() const {
  std::lock_guard lock(mutex_);
  return log_;
}

void TFakeEventService::ClearEventLog() {
  std::lock_guard lock(mutex_);
  log_.clear();
}

}  // namespace qx
