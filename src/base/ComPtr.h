#pragma once

#include <cstddef>
#include <type_traits>
#include <utility>

#include "base/Unknown.h"

namespace qx {

// The one way code holds a counted reference.
template <class T>
class ComPtr {
 public:
  ComPtr() = default;
  ComPtr(std::nullptr_t) {}
  ComPtr(T* raw) : ptr_(raw) { AddRefRaw(); }
  ComPtr(const ComPtr& other) : ptr_(other.ptr_) { AddRefRaw(); }
  ComPtr(ComPtr&& other) noexcept : ptr_(std::exchange(other.ptr_, nullptr)) {}
  template <class U, class = std::enable_if_t<std::is_convertible_v<U*, T*>>>
  ComPtr(const ComPtr<U>& other) : ptr_(other.get()) {
    AddRefRaw();
  }
  template <class U, class = std::enable_if_t<std::is_convertible_v<U*, T*>>>
  ComPtr(ComPtr<U>&& other) noexcept : ptr_(other.detach()) {}
  ~ComPtr() { reset(); }

  ComPtr& operator=(const ComPtr& other) {
    ComPtr(other).swap(*this);
    return *this;
  }
  ComPtr& operator=(ComPtr&& other) noexcept {
    ComPtr(std::move(other)).swap(*this);
    return *this;
  }
  ComPtr& operator=(std::nullptr_t) {
    reset();
    return *this;
  }

  T* get() const { return ptr_; }
  T* operator->() const { return ptr_; }
  T& operator*() const { return *ptr_; }
  explicit operator bool() const { return ptr_ != nullptr; }

  void reset() {
    if (T* old = std::exchange(ptr_, nullptr)) old->Release();
  }
  // Releases what is held and gives the slot to an out parameter.
  T** put() {
    reset();
    return &ptr_;
  }
  void** put_void() { return reinterpret_cast<void**>(put()); }
  // Takes over a reference without adding one.
  void attach(T* raw) {
    reset();
    ptr_ = raw;
  }
  [[nodiscard]] T* detach() { return std::exchange(ptr_, nullptr); }
  void swap(ComPtr& other) noexcept { std::swap(ptr_, other.ptr_); }

  // QueryInterface; nil when the object does not have U.
  template <class U>
  ComPtr<U> As() const {
    ComPtr<U> result;
    if (ptr_) ptr_->QueryInterface(U::IID, result.put_void());
    return result;
  }

  // Hands out a new reference through a raw out parameter.
  void CopyTo(T** out) const {
    if (!out) return;
    *out = ptr_;
    if (ptr_) ptr_->AddRef();
  }

  friend bool operator==(const ComPtr& a, const ComPtr& b) { return a.ptr_ == b.ptr_; }
  friend bool operator==(const ComPtr& a, std::nullptr_t) { return a.ptr_ == nullptr; }

 private:
  void AddRefRaw() {
    if (ptr_) ptr_->AddRef();
  }

  T* ptr_ = nullptr;
};

}  // namespace qx
