#pragma once

#include <atomic>
#include <cstdint>
#include <type_traits>
#include <utility>

#include "base/ComPtr.h"
#include "base/Unknown.h"

namespace qx {

namespace com_detail {

template <class I, class = void>
struct ParentOf {
  using type = void;
};
template <class I>
struct ParentOf<I, std::void_t<typename I::Parent>> {
  using type = typename I::Parent;
};

// Does interface I, or an interface it derives from, carry this identity?
template <class I>
bool Implements(const TGUID& iid) {
  if (iid == I::IID) return true;
  using P = typename ParentOf<I>::type;
  if constexpr (!std::is_void_v<P>) return Implements<P>(iid);
  return false;
}

template <class First, class...>
struct FirstOf {
  using type = First;
};

}  // namespace com_detail

// Reference-counted object that answers QueryInterface for the listed interfaces.
// The first interface doubles as the object's identity (its IUnknown).
template <class... Interfaces>
class TInterfacedObject : public Interfaces... {
 public:
  TInterfacedObject() = default;
  TInterfacedObject(const TInterfacedObject&) = delete;
  TInterfacedObject& operator=(const TInterfacedObject&) = delete;
  virtual ~TInterfacedObject() = default;

  HResult QX_STDCALL QueryInterface(const TGUID& iid, void** object) override {
    if (!object) return kInvalidArg;
    *object = nullptr;
    if (iid == IUnknown::IID) {
      *object = static_cast<IUnknown*>(Identity());
    } else if (!(FindInterface<Interfaces>(iid, object) || ...)) {
      QueryInterfaceExtra(iid, object);
    }
    if (!*object) return kNoInterface;
    AddRef();
    return kOk;
  }
  std::uint32_t QX_STDCALL AddRef() override { return ++refCount_; }
  std::uint32_t QX_STDCALL Release() override {
    const std::uint32_t left = --refCount_;
    if (left == 0) delete this;
    return left;
  }

  std::uint32_t RefCount() const { return refCount_.load(); }

  using IdentityInterface = typename com_detail::FirstOf<Interfaces...>::type;
  IdentityInterface* Identity() { return static_cast<IdentityInterface*>(this); }

 protected:
  // For objects that hand out further interfaces (aggregated or tear-off): set *object
  // without adding a reference; the caller adds it.
  virtual void QueryInterfaceExtra(const TGUID&, void**) {}

 private:
  template <class I>
  bool FindInterface(const TGUID& iid, void** object) {
    if (!com_detail::Implements<I>(iid)) return false;
    *object = static_cast<I*>(this);
    return true;
  }

  std::atomic<std::uint32_t> refCount_{0};
};

template <class T, class... Args>
ComPtr<T> MakeCom(Args&&... args) {
  return ComPtr<T>(new T(std::forward<Args>(args)...));
}

}  // namespace qx
