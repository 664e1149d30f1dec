#pragma once

#include <atomic>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "base/ComObject.h"
#include "fakehost/FakeCom.h"
#include "host/QuillmarV3Interface.h"

namespace qx {

// What the event service saw, in order: every Fire and Post, from the module or the host.
struct TFakeEventRecord {
  enum class EDelivery { Fired, Posted };

  std::u16string Id;
  TFakeParams Parameters;
  EDelivery Delivery = EDelivery::Fired;
  bool FromHost = false;
  std::u16string Target;

  std::u16string Value(std::u16string_view key) const { return ParamValue(Parameters, key); }
  bool Has(std::u16string_view key) const { return HasParam(Parameters, key); }
};

// The host's event bus. Listeners are kept per event id (ids compare without regard to
// ASCII case) in registration order. Fire delivers at once to a snapshot of the listeners;
// one that is removed during the delivery, by itself or by another, is not called after
// its removal, and one added during it waits for the next event. Post queues the event
// until RunPosted. Event id pointers handed to listeners are interned for the life of the
// process, as the host's static id texts are, because a listener may queue the pointer.
// With SetDeliverOnWorkerThread the deliveries of Fire run on a thread of their own
// while the caller waits, which is how the host raises events from its other threads.
class TFakeEventService : public TInterfacedObject<IQxIEventService> {
 public:
  // The host's own subscribers: they may answer with result texts that Fire collects.
  using THostHandler = std::function<void(const std::u16string& eventId, IQxIStringDictionary* parameters,
                                          std::vector<std::u16string>& results)>;

  HResult QX_STDCALL AddListener(Text eventId, IQxIEventListener* listener, std::uint8_t timing) override;
  HResult QX_STDCALL RemoveListener(Text eventId, IQxIEventListener* listener) override;
  HResult QX_STDCALL Fire(Text eventId, IQxIStringDictionary* parameters, IQxIStringArray** results) override;
  HResult QX_STDCALL Post(Text eventId, Text target, IQxIStringDictionary* parameters, std::int32_t wait,
                          std::int32_t r1, std::int32_t r2) override;

  // Fake side.
  std::uint64_t AddHostHandler(std::u16string_view eventId, THostHandler handler);
  void RemoveHostHandler(std::uint64_t cookie);
  // Raised by the host's model: logged as coming from the host.
  std::vector<std::u16string> FireFromHost(std::u16string_view eventId, const TFakeParams& parameters);
  void PostFromHost(std::u16string_view eventId, const TFakeParams& parameters);
  // Delivers queued posts, including those posted meanwhile, in order; returns how many.
  std::size_t RunPosted();
  std::size_t PendingPosts() const;

  void SetDeliverOnWorkerThread(bool on) { workerThread_ = on; }
  bool DeliverOnWorkerThread() const { return workerThread_; }

  // Drops every listener, handler and queued post, e.g. when the host goes away while the
  // module still holds the service.
  void Clear();
  std::size_t ListenerCount(std::u16string_view eventId) const;
  std::vector<TFakeEventRecord> EventLog() const;
  void ClearEventLog();

  // The interned copy of an id text, valid until the process ends.
  static Text InternId(std::u16string_view eventId);

 private:
  struct TEntry {
    std::u16string EventId;
    ComPtr<IQxIEventListener> Listener;
    THostHandler Host;
    std::uint8_t Timing = 0;
    std::uint64_t Cookie = 0;
    std::atomic<bool> Alive{true};
  };
  struct TPost {
    std::u16string EventId;
    ComPtr<IQxIStringDictionary> Parameters;
  };

  std::vector<std::u16string> Deliver(std::u16string_view eventId, IQxIStringDictionary* parameters);
  std::vector<std::u16string> DeliverNow(std::u16string_view eventId, IQxIStringDictionary* parameters);
  void Log(std::u16string_view eventId, IQxIStringDictionary* parameters, TFakeEventRecord::EDelivery delivery,
           bool fromHost, std::u16string target);
  // The host's own events are logged from the dictionary's entries as they stand: reading
  // them back through the host's interfaces costs every event a round of copies.
  void Log(std::u16string_view eventId, const TFakeParams& parameters, TFakeEventRecord::EDelivery delivery);

  mutable std::mutex mutex_;
  std::vector<std::shared_ptr<TEntry>> entries_;
  std::deque<TPost> posts_;
  std::vector<TFakeEventRecord> log_;
  std::uint64_t nextCookie_ = 1;
  std::atomic<bool> workerThread_{false};
};

}  // namespace qx
