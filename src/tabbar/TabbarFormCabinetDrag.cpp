// Drags reported by the cabinet page become the floating drag window; a drop on a
// group tab goes back to the page as a move of the dragged tabs.

#include <cmath>

#include "base/PathDelim.h"
#include "host/QuillmarV3Interface.h"
#include "resources/ResourceFiles.h"
#include "tabbar/TabbarForm.h"
#include "tabbar/TabbarParentForm.h"
#include "text/JSONLibrary.h"

namespace qx {
namespace {

constexpr std::u16string_view kFileScheme = u"file:///";
constexpr std::int32_t kDropImageStep = -7;

// A page address of a local file as a path of this system.
TString FilePathOfSrc(std::u16string_view src) {
  if (!src.starts_with(kFileScheme)) return TString(src);
  TString path(src.substr(kFileScheme.size()));
  for (char16_t& c : path)
    if (c == u'/') c = kPathDelim;
#ifndef _WIN32
  // Without drive letters the third slash is the root.
  path.insert(path.begin(), u'/');
#endif
  return path;
}

std::int32_t IntMember(IJSONObject* object, std::u16string_view name) {
  return static_cast<std::int32_t>(object->GetInt(name));
}

// The drag's pictures that exist on disk; useBase stacks them upward from base.
TCabinetDragImageInfoList ReadDragImages(IJSONObject* object, std::int32_t step, TPoint base, bool useBase) {
  TCabinetDragImageInfoList list;
  ComPtr<IJSONArray> images = object->GetArray(u"image");
  if (!images) return list;
  for (std::int32_t i = 0; i < images->GetCount(); ++i) {
    ComPtr<IJSONValue> item = images->GetItem(i);
    ComPtr<IJSONObject> image = item ? item->AsObject() : nullptr;
    if (!image) continue;
    const TString path = FilePathOfSrc(image->GetString(u"src"));
    const std::int32_t left = useBase ? base.X : IntMember(image.get(), u"left");
    const std::int32_t top = useBase ? base.Y + i * step : IntMember(image.get(), u"top");
    const std::int32_t width = IntMember(image.get(), u"width");
    const std::int32_t height = IntMember(image.get(), u"height");
    if (!ResourceFileExists(path)) continue;
    list.push_back({path, {left, top, left + width, top + height}});
  }
  return list;
}

ComPtr<IJSONObject> ParseDragInfo(const TString& text) {
  try {
    ComPtr<IJSONValue> value;
    TJSONParser::ParseJSONText(text, value);
    return value ? value->AsObject() : nullptr;
  } catch (const EJsonParseError&) {
    return nullptr;
  }
}

TPointF ToF(TPoint p) { return {static_cast<float>(p.X), static_cast<float>(p.Y)}; }

}  // namespace

bool TTabbarFrame::CabinetDragging() const { return FCabinetDnDForm && FCabinetDnDForm->Showing(); }

ICabinetDnDWindow* TTabbarFrame::NeedCabinetDnDWindow() {
  if (!FCabinetDnDForm) {
    const TCabinetDnDWindowMaker& maker = CabinetDnDWindowMaker();
    if (!maker) return nullptr;
    FCabinetDnDForm = maker(FServiceCore.get(), FImageRes, FClientWindowHandle);
    if (FCabinetDnDForm)
      FCabinetDnDForm->SetOnDragImageHide(
          [this](const std::u16string& id) { CabinetDragImageHideNotify(id); });
  }
  return FCabinetDnDForm.get();
}

void TTabbarFrame::CabinetDragImageHideNotify(const std::u16string& id) {
  RunScriptInActiveTab(u"endDragImageHide('" + id + u"')");
}

void TTabbarFrame::SendChangeGroupOfTabs(const std::u16string& id, std::int32_t group) {
  ComPtr<IQxIStringDictionary> raw;
  FServiceCore->CreateStringDictionary(raw);
  ComPtr<IQxIStringDictionaryWrap> parameters = WrapStringDictionary(raw.get());
  if (!parameters) return;
  parameters->SetValue(u"p1", id);
  parameters->SetValue(u"p2", IntToStr(group));
  parameters->SetValue(u"funcname", u"Cabinet.changeGroupOfTabs");
  SendEvent(u"BrowserExternalAPI.talvokPrivateAPI", raw.get(), true);
}

void TTabbarFrame::ProcessCabinetDragAndDrop(IQxIStringDictionaryWrap* parameters) {
  if (!FParentForm || !parameters || !FServiceCore) return;
  ComPtr<IJSONObject> info = ParseDragInfo(parameters->Value(u"drag-info"));
  if (!info) return;
  const TString event = info->GetString(u"event");
  if (event == u"hide") {
    if (CabinetDragging()) FCabinetDnDForm->HideImmediately();
    return;
  }

  IPlatform& os = Platform();
  TPoint mouse{};
  os.GetCursorPos(&mouse);
  const TPoint offset{IntMember(info.get(), u"offset_x"), IntMember(info.get(), u"offset_y")};
  TPoint destPoint{IntMember(info.get(), u"dest_x"), IntMember(info.get(), u"dest_y")};
  const TString id = info->GetString(u"id");
  ComPtr<IQxITab> current;
  FServiceCore->ActiveTab(current);
  if (current) {
    const auto window = reinterpret_cast<HWnd>(FServiceCore->WindowHandleOfTab(current.get()));
    if (window) os.ClientToScreen(window, &destPoint);
  }
  const TPointF dest = ToF(destPoint);
  const std::int32_t sourceType = StrToDragSourceType(info->GetString(u"source"));
  std::int32_t destType = StrToDragSourceType(info->GetString(u"dest"));
  if (sourceType >= drag_type::TabStrip) return;
  const TPointF mouseF = ToF(mouse);
  if (destType == drag_type::Other && FParentForm->ScreenPointInGroupTab(mouseF))
    destType = drag_type::TabStrip;
  const bool cancel = info->GetBool(u"cancel");

  if (event == u"dragstart") {
    if (ICabinetDnDWindow* window = NeedCabinetDnDWindow())
      window->ShowForm(sourceType, destType, ReadDragImages(info.get(), 0, {}, false), offset, mouse);
  } else if (event == u"drag") {
    if (CabinetDragging()) FCabinetDnDForm->Move(sourceType, destType, mouse);
    FParentForm->UpdateTabGroupDragHover(FParentForm->GetGroupIndexFromScreenPoint(mouseF));
  } else if (event == u"drop") {
    if (!FCabinetDnDForm) return;
    std::int32_t group = -1;
    auto kind = TCabinetDragImageHideAnimationType::atShrink;
    TPointF target = dest;
    if (destType == drag_type::Archives) {
      const TCabinetDragImageInfoList images =
          ReadDragImages(info.get(), kDropImageStep, FCabinetDnDForm->SavedTopImagePoint(), true);
      if (!images.empty()) FCabinetDnDForm->UpdateDragImage(sourceType, destType, images, offset);
      if (cancel) {
        kind = TCabinetDragImageHideAnimationType::atMove;
      } else {
        target = ToF(FCabinetDnDForm->DragImageCenterPoint());
      }
    } else if (destType == drag_type::TabStrip) {
      group = FParentForm->GetGroupIndexFromScreenPoint(mouseF);
      const TRectF rect = FParentForm->GetGroupTabRect(group);
      target =
          FParentForm->ClientToScreen(TPointF((rect.Left + rect.Right) / 2, (rect.Top + rect.Bottom) / 2));
    } else if (destType != drag_type::LeftGroupButton && destType != drag_type::RightGroupButton) {
      kind = TCabinetDragImageHideAnimationType::atMove;
    }
    FCabinetDnDForm->HideDragImage(true, kind, target, id, sourceType, destType, cancel);
    if (group >= 0 && group != FParentForm->CurrentGroupIndex()) SendChangeGroupOfTabs(id, group);
    FParentForm->UpdateTabGroupDragHover(-1);
  } else if (event == u"dragend") {
    if (CabinetDragging()) FCabinetDnDForm->HideImmediately();
    FParentForm->UpdateTabGroupDragHover(-1);
  }
}

}  // namespace qx
