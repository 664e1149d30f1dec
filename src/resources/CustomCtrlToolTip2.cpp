#include "resources/CustomCtrlToolTip2.h"

#include <algorithm>

namespace qx {

TCustomControlToolTipItem* TCustomControlToolTipItemList::Items(int index) const {
  if (index < 0 || index >= Count()) return nullptr;
  return FIdSearchList[static_cast<std::size_t>(index)].get();
}

int TCustomControlToolTipItemList::IndexOf(std::uint32_t id) const {
  const auto it = std::lower_bound(FIdSearchList.begin(), FIdSearchList.end(), id,
                                   [](const auto& item, std::uint32_t key) { return item->FId < key; });
  if (it == FIdSearchList.end() || (*it)->FId != id) return -1;
  return static_cast<int>(it - FIdSearchList.begin());
}

TCustomControlToolTipItem* TCustomControlToolTipItemList::Update(std::uint32_t id, HWnd handle, const TRect& rect,
                                                                 const TString& text, bool& isNew, bool& textChanged,
                                                                 bool& rectChanged) {
  const auto it = std::lower_bound(FIdSearchList.begin(), FIdSearchList.end(), id,
                                   [](const auto& item, std::uint32_t key) { return item->FId < key; });
  if (it != FIdSearchList.end() && (*it)->FId == id) {
    TCustomControlToolTipItem& item = **it;
    isNew = false;
    textChanged = item.FHintText != text;
    rectChanged = !(item.FItemRect == rect);
    item.FHintText = text;
    item.FItemRect = rect;
    return &item;
  }
  auto item = std::make_unique<TCustomControlToolTipItem>(id, handle);
  item->FItemRect = rect;
  item->FHintText = text;
  isNew = true;
  textChanged = rectChanged = false;
  return FIdSearchList.insert(it, std::move(item))->get();
}

void TCustomControlToolTipItemList::Delete(int index) {
  if (index < 0 || index >= Count()) return;
  FIdSearchList.erase(FIdSearchList.begin() + index);
}

TCustomControlToolTip::TCustomControlToolTip(HWnd parentHandle, std::int32_t maxWidth)
    : FParentHandle(parentHandle), FMaxWidth(maxWidth) {}

TCustomControlToolTip::~TCustomControlToolTip() {
  ClearTools();
  if (FHandle__) Platform().DestroyWindow(FHandle__);
  FHandle__ = nullptr;
}

HWnd TCustomControlToolTip::Handle() {
  if (!FHandle__) {
    IPlatform& platform = Platform();
    platform.InitCommonControlsEx(win::ICC_WIN95_CLASSES);
    FHandle__ = platform.CreateWindowExW(win::WS_EX_TOPMOST | win::WS_EX_TOOLWINDOW, win::TOOLTIPS_CLASSW, nullptr,
                                         win::WS_POPUP | win::TTS_ALWAYSTIP | win::TTS_NOPREFIX, 0, 0, 0, 0,
                                         FParentHandle, nullptr);
    if (FHandle__ && FMaxWidth != 0) Send(win::TTM_SETMAXTIPWIDTH, 0, static_cast<LParam>(FMaxWidth));
  }
  return FHandle__;
}

LResult TCustomControlToolTip::Send(std::uint32_t msg, WParam wParam, LParam lParam) {
  HWnd handle = Handle();
  return handle ? Platform().SendMessageW(handle, msg, wParam, lParam) : 0;
}

LResult TCustomControlToolTip::SendToolInfo(std::uint32_t msg, const TCustomControlToolTipItem& item) {
  ToolInfoW info;
  info.cbSize = sizeof(ToolInfoW);
  info.uFlags = win::TTF_SUBCLASS;
  info.hwnd = item.Handle();
  info.uId = item.Id();
  info.rect = {item.ItemRect().Left, item.ItemRect().Top, item.ItemRect().Right, item.ItemRect().Bottom};
  TString text = item.HintText();
  info.lpszText = text.data();
  return Send(msg, 0, reinterpret_cast<LParam>(&info));
}

void TCustomControlToolTip::UpdateTool(std::uint32_t id, const TString& text, HWnd parentHandle, const TRect& rect) {
  if (!parentHandle && Platform().IsWindow(FParentHandle)) parentHandle = FParentHandle;
  bool isNew = false, textChanged = false, rectChanged = false;
  TCustomControlToolTipItem* item = FToolList.Update(id, parentHandle, rect, text, isNew, textChanged, rectChanged);
  if (isNew) {
    SendToolInfo(win::TTM_ADDTOOLW, *item);
    return;
  }
  if (textChanged) SendToolInfo(win::TTM_UPDATETIPTEXTW, *item);
  if (rectChanged) SendToolInfo(win::TTM_NEWTOOLRECTW, *item);
}

void TCustomControlToolTip::DeleteTool(std::uint32_t id) {
  const int index = FindTool(id);
  if (index >= 0) DeleteToolFromIndex(index);
}

void TCustomControlToolTip::DeleteToolFromIndex(int index) {
  TCustomControlToolTipItem* item = FToolList.Items(index);
  if (!item) return;
  SendToolInfo(win::TTM_DELTOOLW, *item);
  FToolList.Delete(index);
}

void TCustomControlToolTip::ClearTools() {
  while (FToolList.Count() > 0) DeleteToolFromIndex(FToolList.Count() - 1);
}

void TCustomControlToolTip::DeActivate() {
  Send(win::TTM_POP, 0, 0);
  Send(win::TTM_ACTIVATE, 0, 0);
}

void TCustomControlToolTip::SetActive(bool value) {
  if (value == FActive) return;
  FActive = value;
  if (value) {
    Send(win::TTM_ACTIVATE, 1, 0);
  } else {
    DeActivate();
  }
}

}  // namespace qx
