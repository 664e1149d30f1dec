#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <mutex>

namespace qx {

// An owning list guarded by one lock; Pop takes from the front, so it serves as a queue.
template <class T>
class TGenericThreadList {
 public:
  void Add(std::unique_ptr<T> item) {
    std::lock_guard lock(FLock);
    FItems.push_back(std::move(item));
  }
  void Delete(std::size_t index) {
    std::lock_guard lock(FLock);
    if (index < FItems.size()) FItems.erase(FItems.begin() + static_cast<std::ptrdiff_t>(index));
  }
  std::unique_ptr<T> Pop() {
    std::lock_guard lock(FLock);
    if (FItems.empty()) return nullptr;
    auto item = std::move(FItems.front());
    FItems.pop_front();
    return item;
  }
  // Removes and answers the given item if it is still held.
  std::unique_ptr<T> Take(const T* item) {
    std::lock_guard lock(FLock);
    for (auto it = FItems.begin(); it != FItems.end(); ++it) {
      if (it->get() == item) {
        auto taken = std::move(*it);
        FItems.erase(it);
        return taken;
      }
    }
    return nullptr;
  }
  std::size_t Count() {
    std::lock_guard lock(FLock);
    return FItems.size();
  }
  void Clear() {
    std::deque<std::unique_ptr<T>> doomed;
    {
      std::lock_guard lock(FLock);
      doomed.swap(FItems);
    }
  }
  // Runs f with the items while the lock is held.
  template <class F>
  auto WithLockedList(F&& f) {
    std::lock_guard lock(FLock);
    return f(FItems);
  }

 private:
  std::mutex FLock;
  std::deque<std::unique_ptr<T>> FItems;
};

}  // namespace qx
