#pragma once

#include <algorithm>
#include <cstdint>
#include <vector>

#include "base/ComObject.h"

namespace qx {

// Reference-counted list. Every instantiation shares one identity, as the
// list travels between units as a plain interface.
template <class T>
struct IGenericList : IUnknown {
  static constexpr TGUID IID = MakeGuid("8C9054AF-368C-4195-945D-2AF838FEDB3A");

  virtual std::int32_t QX_STDCALL Count() = 0;                           // 1
  virtual void QX_STDCALL SetCapacity(std::int32_t capacity) = 0;         // 2
  virtual HResult QX_STDCALL GetItem(std::int32_t index, T& item) = 0;    // 3
  virtual HResult QX_STDCALL SetItem(std::int32_t index, const T& item) = 0;  // 4
  virtual std::int32_t QX_STDCALL Add(const T& item) = 0;                // 5
  virtual HResult QX_STDCALL Insert(std::int32_t index, const T& item) = 0;  // 6
  virtual HResult QX_STDCALL Delete(std::int32_t index) = 0;             // 7
  virtual void QX_STDCALL Clear() = 0;                                   // 8
  virtual std::int32_t QX_STDCALL IndexOf(const T& item) = 0;            // 9
  virtual std::int32_t QX_STDCALL Remove(const T& item) = 0;             // 10
  virtual HResult QX_STDCALL Exchange(std::int32_t a, std::int32_t b) = 0;  // 11
  virtual HResult QX_STDCALL Move(std::int32_t from, std::int32_t to) = 0;  // 12
  virtual HResult QX_STDCALL First(T& item) = 0;                         // 13
  virtual HResult QX_STDCALL Last(T& item) = 0;                          // 14
  virtual void QX_STDCALL Reverse() = 0;                                 // 15
  virtual std::int32_t QX_STDCALL Capacity() = 0;                        // 16
  // 17..33: forwarded list operations this module never calls.
  virtual void QX_STDCALL Reserved17() {}
  virtual void QX_STDCALL Reserved18() {}
  virtual void QX_STDCALL Reserved19() {}
  virtual void QX_STDCALL Reserved20() {}
  virtual void QX_STDCALL Reserved21() {}
  virtual void QX_STDCALL Reserved22() {}
  virtual void QX_STDCALL Reserved23() {}
  virtual void QX_STDCALL Reserved24() {}
  virtual void QX_STDCALL Reserved25() {}
  virtual void QX_STDCALL Reserved26() {}
  virtual void QX_STDCALL Reserved27() {}
  virtual void QX_STDCALL Reserved28() {}
  virtual void QX_STDCALL Reserved29() {}
  virtual void QX_STDCALL Reserved30() {}
  virtual void QX_STDCALL Reserved31() {}
  virtual void QX_STDCALL Reserved32() {}
  virtual void QX_STDCALL Reserved33() {}
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
  std::vector<T>& QX_STDCALL Items() override { return items_; }

 private:
  bool Valid(std::int32_t index) const { return index >= 0 && static_cast<std::size_t>(index) < items_.size(); }

  std::vector<T> items_;
};

}  // namespace qx
