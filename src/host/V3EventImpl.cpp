#include "host/V3EventImpl.h"

#include "runtime/MainThread.h"

namespace qx {

TEventListenerImpl::TEventListenerImpl(TQxIEventProc onEvent, TQxIEventProcedure onEventProcedure,
                                       ISharedDelayTask* sharedDelayTask, std::u16string_view eventId,
                                       bool synchronous)
    : FOnEvent(std::move(onEvent)),
      FOnEventProcedure(std::move(onEventProcedure)),
      FSharedDelayTask(sharedDelayTask),
      FEventId(eventId),
      FSynchronous(synchronous) {}

HResult QX_STDCALL TEventListenerImpl::OnEvent(Text eventId, IQxIEvent* event) {
  // The closure holds the event and this listener until it has run; the host keeps its
  // static id texts alive that long.
  ComPtr<IQxIEvent> heldEvent(event);
  ComPtr<TEventListenerImpl> self(this);
  auto closure = [self, heldEvent, eventId] { self->Deliver(eventId, heldEvent.get()); };
  if (FSharedDelayTask && !IsMainThread() && !FSynchronous) {
    FSharedDelayTask->AddTask(FEventId, std::move(closure));
    return kOk;
  }
  closure();
  return kOk;
}

void TEventListenerImpl::Deliver(Text eventId, IQxIEvent* event) {
  const TString id = eventId ? TString(eventId) : TString();
  if (FOnEvent)
    FOnEvent(id, event);
  else if (FOnEventProcedure)
    FOnEventProcedure(id, event);
}

HResult QX_STDCALL TActionImpl::Execute(IQxIStringDictionary* parameters) {
  if (FOnAction)
    FOnAction(parameters);
  else if (FOnActionProcedure)
    FOnActionProcedure(parameters);
  return kOk;
}

}  // namespace qx
