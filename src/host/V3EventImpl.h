#pragma once

#include "base/ComObject.h"
#include "host/QuillmarV3Interface.h"
#include "host/V3Callbacks.h"
#include "runtime/DelayExec.h"

namespace qx {

// The listener the host holds. Deliveries off the main thread are handed over through
// the shared delay task unless the registration asked to run synchronously.
class TEventListenerImpl : public TInterfacedObject<IQxIEventListener> {
 public:
  TEventListenerImpl(TQxIEventProc onEvent, TQxIEventProcedure onEventProcedure, ISharedDelayTask* sharedDelayTask,
                     std::u16string_view eventId, bool synchronous);

  HResult QX_STDCALL OnEvent(Text eventId, IQxIEvent* event) override;

 private:
  void Deliver(Text eventId, IQxIEvent* event);

  TQxIEventProc FOnEvent;
  TQxIEventProcedure FOnEventProcedure;
  ComPtr<ISharedDelayTask> FSharedDelayTask;
  TString FEventId;
  bool FSynchronous;
};

class TActionImpl : public TInterfacedObject<IQxIAction> {
 public:
  TActionImpl(TQxIActionProc onAction, TQxIActionProcedure onActionProcedure)
      : FOnAction(std::move(onAction)), FOnActionProcedure(std::move(onActionProcedure)) {}

  HResult QX_STDCALL Execute(IQxIStringDictionary* parameters) override;

 private:
  TQxIActionProc FOnAction;
  TQxIActionProcedure FOnActionProcedure;
};

// What the wrapper remembers of a registration, so that it can take it down at the end.
struct TEventItem {
  TString FEventId;
  ComPtr<IQxIEventListener> FEventListener;
};

}  // namespace qx
