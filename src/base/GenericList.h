#pragma once

#include <algorithm>
#include <cstdint>
#include <functional>
#include <vector>

#include "base/ComObject.h"

namespace qx {

// Reference-counted list. Every instantiation shares one identity, as the
// list travels between units as a plain interface.
template <class T>
struct IGenericList : IUnknown {
  static constexpr TGUID IID = MakeGuid("8C9054AF-368C-4195-945D-2AF838FEDB3A");
  // Orders two items for Sort and BinarySearch.
  using TLess = std::function<bool(const T&, const T&)>;

  virtual std::int32_t QX_STDCALL Count() = 0;                                                      // 1
  virtual void QX_STDCALL SetCapacity(std::int32_t capacity) = 0;                                   // 2
  virtual HResult QX_STDCALL GetItem(std::int32_t index, T& item) = 0;                              // 3
  virtual HResult QX_STDCALL SetItem(std::int32_t index, const T& item) = 0;                        // 4
  virtual std::int32_t QX_STDCALL Add(const T& item) = 0;                                           // 5
  virtual HResult QX_STDCALL Insert(std::int32_t index, const T& item) = 0;                         // 6
  virtual HResult QX_STDCALL Delete(std::int32_t index) = 0;                                        // 7
  virtual void QX_STDCALL Clear() = 0;                                                              // 8
  virtual std::int32_t QX_STDCALL IndexOf(const T& item) = 0;                                       // 9
  virtual std::int32_t QX_STDCALL Remove(const T& item) = 0;                                        // 10
  virtual HResult QX_STDCALL Exchange(std::int32_t a, std::int32_t b) = 0;                          // 11
  virtual HResult QX_STDCALL Move(std::int32_t from, std::int32_t to) = 0;                          // 12
  virtual HResult QX_STDCALL First(T& item) = 0;                                                    // 13
  virtual HResult QX_STDCALL Last(T& item) = 0;                                                     // 14
  virtual void QX_STDCALL Reverse() = 0;                                                            // 15
  virtual std::int32_t QX_STDCALL Capacity() = 0;                                                   // 16
  virtual void QX_STDCALL SetCount(std::int32_t count) = 0;                                         // 17
  virtual void QX_STDCALL AddRange(const std::vector<T>& items) = 0;                                // 18
  virtual HResult QX_STDCALL InsertRange(std::int32_t index, const std::vector<T>& items) = 0;      // 19
  virtual HResult QX_STDCALL DeleteRange(std::int32_t index, std::int32_t count) = 0;               // 20
  virtual HResult QX_STDCALL Extract(const T& item, T& extracted) = 0;                              // 21
  virtual HResult QX_STDCALL ExtractAt(std::int32_t index, T& item) = 0;                            // 22
  virtual bool QX_STDCALL Contains(const T& item) = 0;                                              // 23
  virtual std::int32_t QX_STDCALL LastIndexOf(const T& item) = 0;                                   // 24
  virtual std::int32_t QX_STDCALL RemoveLast(const T& item) = 0;                                    // 25
  virtual void QX_STDCALL Sort(const TLess& less) = 0;                                              // 26
  virtual bool QX_STDCALL BinarySearch(const T& item, std::int32_t& index, const TLess& less) = 0;  // 27
  virtual void QX_STDCALL Pack() = 0;                                                               // 28
  virtual void QX_STDCALL TrimExcess() = 0;                                                         // 29
  virtual std::int32_t QX_STDCALL Expand() = 0;                                                     // 30
  virtual void QX_STDCALL ToArray(std::vector<T>& items) = 0;                                       // 31
  virtual void QX_STDCALL Assign(const std::vector<T>& items) = 0;                                  // 32
  virtual void QX_STDCALL AddList(IGenericList<T>* source) = 0;                                     // 33
  // 34: the enumerator; in C++ the underlying vector serves range-for.
  virtual std::vector<T>& QX_STDCALL Items() = 0;

  auto begin() { return Items().begin(); }
  auto end() { return Items().end(); }

 protected:
  ~IGenericList() = default;
};

template <class T>
class TGenericListImpl : public TInterfacedObject<IGenericList<T>> {
 public:
  using TLess = typename IGenericList<T>::TLess;

  std::int32_t QX_STDCALL Count() override { return static_cast<std::int32_t>(items_.size()); }
  void QX_STDCALL SetCapacity(std::int32_t capacity) override {
    if (capacity > 0) items_.reserve(static_cast<std::size_t>(capacity));
  }
  HResult QX_STDCALL GetItem(std::int32_t index, T& item) override {
    if (!Valid(index)) return kInvalidArg;
    item = items_[static_cast<std::size_t>(index)];
    return kOk;
  }
  HResult QX_STDCALL SetItem(std::int32_t index, const T& item) override {
    if (!Valid(index)) return kInvalidArg;
    items_[static_cast<std::size_t>(index)] = item;
    return kOk;
  }
  std::int32_t QX_STDCALL Add(const T& item) override {
    items_.push_back(item);
    return Count() - 1;
  }
  HResult QX_STDCALL Insert(std::int32_t index, const T& item) override {
    if (index < 0 || index > Count()) return kInvalidArg;
    items_.insert(items_.begin() + index, item);
    return kOk;
  }
  HResult QX_STDCALL Delete(std::int32_t index) override {
    if (!Valid(index)) return kInvalidArg;
    items_.erase(items_.begin() + index);
    return kOk;
  }
  void QX_STDCALL Clear() override { items_.clear(); }
  std::int32_t QX_STDCALL IndexOf(const T& item) override {
    const auto it = std::find(items_.begin(), items_.end(), item);
    return it == items_.end() ? -1 : static_cast<std::int32_t>(it - items_.begin());
  }
  std::int32_t QX_STDCALL Remove(const T& item) override {
    const std::int32_t index = IndexOf(item);
    if (index >= 0) Delete(index);
    return index;
  }
  HResult QX_STDCALL Exchange(std::int32_t a, std::int32_t b) override {
    if (!Valid(a) || !Valid(b)) return kInvalidArg;
    std::swap(items_[static_cast<std::size_t>(a)], items_[static_cast<std::size_t>(b)]);
    return kOk;
  }
  HResult QX_STDCALL Move(std::int32_t from, std::int32_t to) override {
    if (!Valid(from) || !Valid(to)) return kInvalidArg;
    T item = items_[static_cast<std::size_t>(from)];
    items_.erase(items_.begin() + from);
    items_.insert(items_.begin() + to, std::move(item));
    return kOk;
  }
  HResult QX_STDCALL First(T& item) override { return GetItem(0, item); }
  HResult QX_STDCALL Last(T& item) override { return GetItem(Count() - 1, item); }
  void QX_STDCALL Reverse() override { std::reverse(items_.begin(), items_.end()); }
  std::int32_t QX_STDCALL Capacity() override { return static_cast<std::int32_t>(items_.capacity()); }
  void QX_STDCALL SetCount(std::int32_t count) override {
    if (count >= 0) items_.resize(static_cast<std::size_t>(count));
  }
  void QX_STDCALL AddRange(const std::vector<T>& items) override {
    items_.insert(items_.end(), items.begin(), items.end());
  }
  HResult QX_STDCALL InsertRange(std::int32_t index, const std::vector<T>& items) override {
    if (index < 0 || index > Count()) return kInvalidArg;
    items_.insert(items_.begin() + index, items.begin(), items.end());
    return kOk;
  }
  HResult QX_STDCALL DeleteRange(std::int32_t index, std::int32_t count) override {
    if (index < 0 || count < 0 || index > Count() - count) return kInvalidArg;
    items_.erase(items_.begin() + index, items_.begin() + index + count);
    return kOk;
  }
  HResult QX_STDCALL Extract(const T& item, T& extracted) override {
    return ExtractAt(IndexOf(item), extracted);
  }
  HResult QX_STDCALL ExtractAt(std::int32_t index, T& item) override {
    if (!Valid(index)) return kInvalidArg;
    item = std::move(items_[static_cast<std::size_t>(index)]);
    items_.erase(items_.begin() + index);
    return kOk;
  }
  bool QX_STDCALL Contains(const T& item) override { return IndexOf(item) >= 0; }
  std::int32_t QX_STDCALL LastIndexOf(const T& item) override {
    for (std::size_t i = items_.size(); i-- > 0;) {
      if (items_[i] == item) return static_cast<std::int32_t>(i);
    }
    return -1;
  }
  std::int32_t QX_STDCALL RemoveLast(const T& item) override {
    const std::int32_t index = LastIndexOf(item);
    if (index >= 0) Delete(index);
    return index;
  }
  void QX_STDCALL Sort(const TLess& less) override { std::sort(items_.begin(), items_.end(), less); }
  // On a miss, index is where the item would go to keep the order.
  bool QX_STDCALL BinarySearch(const T& item, std::int32_t& index, const TLess& less) override {
    const auto it = std::lower_bound(items_.begin(), items_.end(), item, less);
    index = static_cast<std::int32_t>(it - items_.begin());
    return it != items_.end() && !less(item, *it);
  }
  // Drops the empty items (nil pointers, zeros).
  void QX_STDCALL Pack() override { std::erase(items_, T{}); }
  void QX_STDCALL TrimExcess() override { items_.shrink_to_fit(); }
  // Makes room for more when the list is full; answers the capacity.
  std::int32_t QX_STDCALL Expand() override {
    if (items_.size() == items_.capacity()) items_.reserve(std::max<std::size_t>(4, items_.capacity() * 2));
    return Capacity();
  }
  void QX_STDCALL ToArray(std::vector<T>& items) override { items = items_; }
  void QX_STDCALL Assign(const std::vector<T>& items) override { items_ = items; }
  void QX_STDCALL AddList(IGenericList<T>* source) override {
    if (!source) return;
    // Copied first: the source may be this list.
    const std::vector<T> items = source->Items();
    AddRange(items);
  }
  std::vector<T>& QX_STDCALL Items() override { return items_; }

 private:
  bool Valid(std::int32_t index) const {
    return index >= 0 && static_cast<std::size_t>(index) < items_.size();
  }

  std::vector<T> items_;
};

}  // namespace qx
