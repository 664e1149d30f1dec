// Event and action registration, remembered so that one call can take them all down.

#include <algorithm>

#include "host/ServiceCoreWrap.h"
#include "host/V3EventTypes.h"

namespace qx {

void TServiceCoreWrapImplBase::AddEventListener(std::uint8_t timing, std::u16string_view eventId,
                                                IQxIEventListener* listener) {
  ComPtr<IQxIEventService> events;
  EventService(events);
  if (!events) return;
  const TString id(eventId);
  if (Failed(events->AddListener(id.c_str(), listener, timing))) return;
  FEventList.push_back(std::make_unique<TEventItem>(TEventItem{id, ComPtr<IQxIEventListener>(listener)}));
}

void TServiceCoreWrapImplBase::RemoveEventListener(std::u16string_view eventId, IQxIEventListener* listener) {
  ComPtr<IQxIEventService> events;
  EventService(events);
  if (!events || !listener) return;
  const TString id(eventId);
  if (Failed(events->RemoveListener(id.c_str(), listener)) || FDestroying) return;
  // Exact id text: a removal under another spelling leaves the record for the final sweep.
  const auto it = std::find_if(FEventList.begin(), FEventList.end(), [&](const auto& item) {
    return item->FEventId == eventId && SameInterface(item->FEventListener.get(), listener);
  });
  if (it != FEventList.end()) FEventList.erase(it);
}

void TServiceCoreWrapImplBase::AddEventListenerV3(std::uint8_t timing, int eventNumber, IQxIEventListener* listener) {
  AddEventListener(timing, V3EventId(eventNumber), listener);
}

void TServiceCoreWrapImplBase::RemoveEventListenerV3(int eventNumber, IQxIEventListener* listener) {
  RemoveEventListener(V3EventId(eventNumber), listener);
}

void TServiceCoreWrapImplBase::AddEventHandler(std::uint8_t timing, std::u16string_view eventId,
                                               ComPtr<IQxIEventListener>& listener, bool synchronous,
                                               TQxIEventProc method) {
  listener = MakeCom<TEventListenerImpl>(std::move(method), nullptr, FEventSharedDelayTask.get(), eventId, synchronous);
  AddEventListener(timing, eventId, listener.get());
}

void TServiceCoreWrapImplBase::AddEventClosure(std::uint8_t timing, std::u16string_view eventId,
                                               ComPtr<IQxIEventListener>& listener, bool synchronous,
                                               TQxIEventProcedure closure) {
  listener = MakeCom<TEventListenerImpl>(nullptr, std::move(closure), FEventSharedDelayTask.get(), eventId, synchronous);
  AddEventListener(timing, eventId, listener.get());
}

void TServiceCoreWrapImplBase::AddEventHandlerV3(std::uint8_t timing, int eventNumber,
                                                 ComPtr<IQxIEventListener>& listener, bool synchronous,
                                                 TQxIEventProc method) {
  AddEventHandler(timing, V3EventId(eventNumber), listener, synchronous, std::move(method));
}

void TServiceCoreWrapImplBase::AddEventClosureV3(std::uint8_t timing, int eventNumber,
                                                 ComPtr<IQxIEventListener>& listener, bool synchronous,
                                                 TQxIEventProcedure closure) {
  AddEventClosure(timing, V3EventId(eventNumber), listener, synchronous, std::move(closure));
}

void TServiceCoreWrapImplBase::AddAction(std::u16string_view actionId, IQxIAction* action) {
  ComPtr<IQxIActionManager> actions;
  ActionManager(actions);
  const TString id(actionId);
  if (!actions || Failed(actions->AddAction(1, id.c_str(), action, 0))) return;
  if (std::find(FActionList.begin(), FActionList.end(), id) == FActionList.end()) FActionList.push_back(id);
}

void TServiceCoreWrapImplBase::RemoveAction(std::u16string_view actionId) {
  ComPtr<IQxIActionManager> actions;
  ActionManager(actions);
  const TString id(actionId);
  if (!actions || Failed(actions->RemoveAction(id.c_str())) || FDestroying) return;
  const auto it = std::find(FActionList.begin(), FActionList.end(), id);
  if (it != FActionList.end()) FActionList.erase(it);
}

void TServiceCoreWrapImplBase::AddActionHandler(std::u16string_view actionId, TQxIActionProc method) {
  ComPtr<IQxIAction> action = MakeCom<TActionImpl>(std::move(method), nullptr);
  AddAction(actionId, action.get());
}

void TServiceCoreWrapImplBase::AddActionClosure(std::u16string_view actionId, TQxIActionProcedure closure) {
  ComPtr<IQxIAction> action = MakeCom<TActionImpl>(nullptr, std::move(closure));
  AddAction(actionId, action.get());
}

void TServiceCoreWrapImplBase::RemoveAllHandlers() {
  // Last to first; while destroying, RemoveEventListener leaves the list alone, so the
  // walk never sees it change.
  for (std::size_t i = FEventList.size(); i-- > 0;) {
    if (i >= FEventList.size()) continue;
    const TString id = FEventList[i]->FEventId;
    ComPtr<IQxIEventListener> listener = FEventList[i]->FEventListener;
    RemoveEventListener(id, listener.get());
  }
  for (std::size_t i = FActionList.size(); i-- > 0;) {
    if (i >= FActionList.size()) continue;
    const TString id = FActionList[i];
    RemoveAction(id);
  }
}

}  // namespace qx
