#include "host/ClientWidgets.h"

#include <string>

#include "base/Text.h"
#include "host/WrapV3Intf.h"

namespace qx {

namespace {

ComPtr<IQxIClientWidget> FindBuiltWidget(IServiceCoreWrap* core, std::u16string_view className) {
  if (!core) return nullptr;
  ComPtr<IQxIClientWidgetFactory> factory;
  core->ClientWidgetFactory(factory);
  if (!factory) return nullptr;
  const std::u16string name(className);
  ComPtr<IQxIClientWidget> widget;
  if (factory->FindWidget(name.c_str(), u"aclass", 1, widget.put()) != kOk || !widget) return nullptr;
  // The factory matches loosely; only a widget of exactly that class counts.
  ComPtr<IQxIString> found;
  if (!Succeeded(widget->GetClassName(found.put())) || StringText(found.get()) != className) return nullptr;
  return widget;
}

}  // namespace

bool IsClientWidgetBuilt(IServiceCoreWrap* core, std::u16string_view className) {
  return static_cast<bool>(FindBuiltWidget(core, className));
}

bool IsClientWidgetShown(IServiceCoreWrap* core, std::u16string_view className) {
  ComPtr<IQxIClientWidget> widget = FindBuiltWidget(core, className);
  std::int32_t left = 0, top = 0, right = 0, bottom = 0;
  if (!widget || !Succeeded(widget->GetRect(&left, &top, &right, &bottom))) return false;
  return right > left && bottom > top;
}

bool RegisterPopupMenu(IServiceCoreWrap* core, std::u16string_view id, IQxIXmlElement* root) {
  if (!core || !root) return false;
  ComPtr<IQxIXmlWidgetPopup> popup;
  core->XmlWidgetPopup(popup);
  const std::u16string key(id);
  return popup && Succeeded(popup->RegisterPopup(key.c_str(), root));
}

void RemovePopupMenu(IServiceCoreWrap* core, std::u16string_view id) {
  if (!core) return;
  ComPtr<IQxIXmlWidgetPopup> popup;
  core->XmlWidgetPopup(popup);
  const std::u16string key(id);
  if (popup) popup->RemovePopup(key.c_str());
}

}  // namespace qx
