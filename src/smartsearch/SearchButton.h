#pragma once

// A small button of the smart search popup: one engine, or the search of the site being
// viewed, with the engine's icon on it.

#include <cstdint>

#include "base/Text.h"
#include "resources/ImageButton.h"

namespace qx {

class TSearchButton : public TImageButton {
 public:
  explicit TSearchButton(TFmxObject* owner = nullptr);
  std::string ClassName() const override { return "TSearchButton"; }

  TString FFaviconUrl;  // the page search button only: the page's address
  TString FGuid;
  TString FDisplayName;  // the tooltip
  TString FActionName;
  TString FRequest;
  std::int32_t FMethod = 0;
  std::int32_t FEncode = 0;
  TImage* FIconImage = nullptr;  // child, freed with the button
  std::int32_t FFaviconRetryCount = 0;
};

}  // namespace qx
