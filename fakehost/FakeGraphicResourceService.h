#pragma once

#include <filesystem>

#include "base/ComObject.h"
#include "fakehost/FakeFaviconManager.h"
#include "host/QuillmarV3Interface.h"

namespace qx {

// Resolves "skin://", "menu://" and "favicon://" URLs to file paths. Skin and menu paths
// are the rest of the URL under their roots; a favicon URL asks the favicon store.
// Another scheme fails.
class TFakeGraphicResourceService : public TInterfacedObject<IQxIGraphicResourceService> {
 public:
  explicit TFakeGraphicResourceService(ComPtr<TFakeFaviconManager> favicons) : favicons_(std::move(favicons)) {}

  HResult QX_STDCALL ResolvePath(Text url, IQxIString** path, std::int32_t reserved) override;

  void SetSkinRoot(const std::filesystem::path& root) { skinRoot_ = root; }
  void SetMenuRoot(const std::filesystem::path& root) { menuRoot_ = root; }
  const std::filesystem::path& SkinRoot() const { return skinRoot_; }
  const std::filesystem::path& MenuRoot() const { return menuRoot_; }

 private:
  ComPtr<TFakeFaviconManager> favicons_;
  std::filesystem::path skinRoot_;
  std::filesystem::path menuRoot_;
};

}  // namespace qx
