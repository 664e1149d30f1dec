#pragma once

// A reference-counted owner of one picture, so that several holders share it.

#include <cstdint>
#include <memory>

#include "base/ComObject.h"
#include "toolkit/Bitmap.h"

namespace qx {

struct ISharedFMXBitmap : IUnknown {
  static constexpr TGUID IID = MakeGuid("5A0E3C1B-7D42-4E8F-9B61-2C4D8A7F3E15");
  virtual TBitmap* GetBitmap() = 0;
  // The tag doubles as the last-used tick of the favicon cache.
  virtual std::int32_t GetTag() = 0;
  virtual void SetTag(std::int32_t value) = 0;
  virtual int GetWidth() = 0;
  virtual int GetHeight() = 0;
};

class TSharedFMXBitmapImpl : public TInterfacedObject<ISharedFMXBitmap> {
 public:
  explicit TSharedFMXBitmapImpl(std::unique_ptr<TBitmap> bitmap) : FBitmap(std::move(bitmap)) {}

  TBitmap* GetBitmap() override { return FBitmap.get(); }
  std::int32_t GetTag() override { return FTag; }
  void SetTag(std::int32_t value) override { FTag = value; }
  int GetWidth() override { return FBitmap ? FBitmap->Width() : 0; }
  int GetHeight() override { return FBitmap ? FBitmap->Height() : 0; }

 private:
  std::unique_ptr<TBitmap> FBitmap;
  std::int32_t FTag = 0;
};

inline ComPtr<ISharedFMXBitmap> MakeSharedBitmap(std::unique_ptr<TBitmap> bitmap) {
  return ComPtr<ISharedFMXBitmap>(MakeCom<TSharedFMXBitmapImpl>(std::move(bitmap)).get());
}

}  // namespace qx
