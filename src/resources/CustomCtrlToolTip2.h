#pragma once

// A native tooltip window whose tools are rectangles of one parent window, for forms
// that draw a scene graph and have no native child controls.

#include <cstdint>
#include <memory>
#include <vector>

#include "base/Rect.h"
#include "base/Text.h"
#include "platform/Platform.h"

namespace qx {

class TCustomControlToolTipItem {
 public:
  TCustomControlToolTipItem(std::uint32_t id, HWnd handle) : FId(id), FHandle(handle) {}
  std::uint32_t Id() const { return FId; }
  HWnd Handle() const { return FHandle; }
  const TRect& ItemRect() const { return FItemRect; }
  const TString& HintText() const { return FHintText; }

 private:
  friend class TCustomControlToolTipItemList;
  std::uint32_t FId;
  HWnd FHandle;
  TRect FItemRect;
  TString FHintText;
};

// Items sorted by id, owned.
class TCustomControlToolTipItemList {
 public:
  int Count() const { return static_cast<int>(FIdSearchList.size()); }
  TCustomControlToolTipItem* Items(int index) const;
  int IndexOf(std::uint32_t id) const;
  // Finds or creates the item of id; a new one takes handle, rect and text, an existing
  // one takes rect and text and tells which of them changed.
  TCustomControlToolTipItem* Update(std::uint32_t id, HWnd handle, const TRect& rect, const TString& text,
                                    bool& isNew, bool& textChanged, bool& rectChanged);
  void Delete(int index);
  void Clear() { FIdSearchList.clear(); }

 private:
  std::vector<std::unique_ptr<TCustomControlToolTipItem>> FIdSearchList;
};

class TCustomControlToolTip {
 public:
  TCustomControlToolTip(HWnd parentHandle, std::int32_t maxWidth);
  ~TCustomControlToolTip();
  TCustomControlToolTip(const TCustomControlToolTip&) = delete;
  TCustomControlToolTip& operator=(const TCustomControlToolTip&) = delete;

  void UpdateTool(std::uint32_t id, const TString& text, HWnd parentHandle, const TRect& rect);
  void DeleteTool(std::uint32_t id);
  void DeleteToolFromIndex(int index);
  int FindTool(std::uint32_t id) const { return FToolList.IndexOf(id); }
  void ClearTools();
  void DeActivate();
  TCustomControlToolTipItem* GetTools(int index) const { return FToolList.Items(index); }
  int ToolCount() const { return FToolList.Count(); }

  bool Active() const { return FActive; }
  void SetActive(bool value);

  // The native window; made on first need.
  HWnd Handle();
  bool HandleAllocated() const { return FHandle__ != nullptr; }
  std::int32_t CursorOffsetX = 0;
  std::int32_t CursorOffsetY = 0;

 private:
  LResult Send(std::uint32_t msg, WParam wParam, LParam lParam);
  LResult SendToolInfo(std::uint32_t msg, const TCustomControlToolTipItem& item);

  HWnd FHandle__ = nullptr;
  HWnd FParentHandle;
  TCustomControlToolTipItemList FToolList;
  bool FActive = true;
  std::int32_t FMaxWidth;
};

}  // namespace qx
