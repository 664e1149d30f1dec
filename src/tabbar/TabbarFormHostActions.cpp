// What the strip tells the host: at once through the event service's fire, or
// deferred through its post, which the host delivers when its own work is done.

#include "host/QuillmarV3Interface.h"
#include "tabbar/TabbarForm.h"

namespace qx {

void TTabbarFrame::SendEvent(std::u16string_view eventId, IQxIStringDictionary* parameters, bool deferred) {
  ComPtr<IQxIEventService> events;
  FServiceCore->EventService(events);
  if (!events) return;
  const TString id(eventId);
  if (deferred) {
    events->Post(id.c_str(), u"", parameters, 1, 0, 0);
  } else {
    ComPtr<IQxIStringArray> results;
    events->Fire(id.c_str(), parameters, results.put());
  }
}

void TTabbarFrame::SendTabEvent(std::u16string_view eventId, TTabImage* tab, bool deferred) {
  if (!FServiceCore || !tab) return;
  const std::u16string guid = tab->TabGuid();
  if (guid.empty()) return;
  ComPtr<IQxIStringDictionary> raw;
  FServiceCore->CreateStringDictionary(raw);
  if (!raw) return;
  WrapStringDictionary(raw.get())->SetValue(u"tab-id", guid);
  SendEvent(eventId, raw.get(), deferred);
}

void TTabbarFrame::SendCloseTab(TTabImage* tab, bool deferred) {
  SendTabEvent(u"TabBar.CloseTab", tab, deferred);
}

void TTabbarFrame::SendNewTab() {
  if (!FServiceCore) return;
  ComPtr<IQxIStringDictionary> raw;
  FServiceCore->CreateStringDictionary(raw);
  SendEvent(u"TabBar.NewTab", raw.get(), false);
}

void TTabbarFrame::SendCabinetToggle() {
  if (!FServiceCore) return;
  ComPtr<IQxIStringDictionary> raw;
  FServiceCore->CreateStringDictionary(raw);
  SendEvent(u"QxCabinetDataManager.Cabinet", raw.get(), true);
}

}  // namespace qx
