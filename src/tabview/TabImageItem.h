#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "tabview/TabViewGeometry.h"

namespace qx {

class TTabImage;
class TTabImageSection;
struct ITabViewLayoutAttributes;

// What the strip's layout and its sections know of a tab: its fixed size, its
// section, its indexes and whether it is the selected one. The tab control
// derives from it; the layout engine depends on nothing else of the control.
class TTabImageItem {
 public:
  using TGetActiveEvent = std::function<bool(const TTabImageItem& sender)>;

  TTabImageItem() = default;
  TTabImageItem(const TTabImageItem&) = delete;
  TTabImageItem& operator=(const TTabImageItem&) = delete;
  // Leaves its section, so no section keeps a pointer to a freed tab.
  virtual ~TTabImageItem();

  // Every tab has this size; the layout's geometry is built on it.
  static constexpr TSizeD size() { return TSizeD(98, 49); }

  TTabImageSection* Section() const { return FSection; }
  // Index among all tabs of the strip, -1 until indexed.
  std::int32_t Index() const { return FIndex; }
  // Index inside its section, -1 until indexed.
  std::int32_t SectionIndex() const { return FSectionIndex; }

  // Asks OnGetActive; a tab without a handler is not the selected one.
  bool IsActive() const { return FOnGetActive ? FOnGetActive(*this) : false; }
  const TGetActiveEvent& OnGetActive() const { return FOnGetActive; }
  void SetOnGetActive(TGetActiveEvent handler) { FOnGetActive = std::move(handler); }

  // The tab's GUID text, empty when unknown. A control that asks its host on
  // first need overrides this.
  virtual std::u16string TabGuid() { return FTabGuid; }
  void SetTabGuid(std::u16string guid) { FTabGuid = std::move(guid); }
  // Whether TabGuid is guid, without a copy of the text.
  virtual bool HasTabGuid(std::u16string_view guid) { return FTabGuid == guid; }

  // The control behind the item without a cast: the strip asks this for every
  // tab on every pass.
  virtual TTabImage* AsTabImage() { return nullptr; }

  // The attributes the tab was last placed with, if it keeps them; a layout pass
  // refills them when nothing else holds them.
  virtual ITabViewLayoutAttributes* LastAttributes() const { return nullptr; }

 protected:
  std::u16string FTabGuid;

 private:
  friend class TTabImageSection;
  friend class TTabImageSectionList;

  TTabImageSection* FSection = nullptr;
  std::int32_t FIndex = -1;
  std::int32_t FSectionIndex = -1;
  TGetActiveEvent FOnGetActive;
};

}  // namespace qx
