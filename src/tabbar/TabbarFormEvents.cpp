// The strip's subscriptions to host events, and the lookups of the cabinet icon bar.

#include "host/QuillmarV3Interface.h"
#include "tabbar/TabbarForm.h"

namespace qx {

void TTabbarFrame::Subscribe(std::u16string_view eventId, ComPtr<IQxIEventListener>& listener,
                             THostEventHandler handler) {
  // A delivery handed over from another thread may run after the frame is gone;
  // it finds the token cleared then.
  std::weak_ptr<TTabbarFrame*> target = FEventTarget;
  FServiceCore->AddEventHandler(0, eventId, listener, false,
                                [target, handler](const TString&, IQxIEvent* event) -> HResult {
                                  const std::shared_ptr<TTabbarFrame*> frame = target.lock();
                                  if (!frame || !*frame) return kOk;
                                  TTabbarFrame& self = **frame;
                                  ComPtr<IQxIStringDictionaryWrap> parameters;
                                  if (self.FServiceCore)
                                    parameters = self.FServiceCore->EventParameters(event);
                                  (self.*handler)(parameters.get());
                                  return kOk;
                                });
}

void TTabbarFrame::InitializeEvents() {
  FEventTarget = std::make_shared<TTabbarFrame*>(this);
  if (!FServiceCore) return;
  Subscribe(u"TabGroup.Changed", FTabGroupChangedEventListener, &TTabbarFrame::ProcessTabGroupChanged);
  Subscribe(u"TabBarControl.Update", FTabbarControlUpdateEventListener,
            &TTabbarFrame::ProcessTabbarControlUpdate);
  Subscribe(u"TabBarControl.UpdateTab", FTabbarControlUpdateTabEventListener,
            &TTabbarFrame::ProcessTabbarControlUpdateTab);
  Subscribe(u"BookmarkManagerV3.Update", FBookmarkManagerUpdateEventListener,
            &TTabbarFrame::ProcessBookmarkManagerUpdate);
  Subscribe(u"Browser.Changed", FBrowserEventListener, &TTabbarFrame::ProcessBrowserChanged);
  Subscribe(u"Client.Initialized", FClientInitializedEventListener, &TTabbarFrame::ProcessClientInitialized);
  Subscribe(u"action", FStopLoadingAnimationListener, &TTabbarFrame::ProcessStopLoadingAction);
  Subscribe(u"HoldAndGo.Start", FHoldAndGoStartListener, &TTabbarFrame::ProcessHoldAndGoStart);
  if (FFaviconCache) {
    FFaviconCache->OnNotifyUpdate = [this](TFaviconCacheFMX* sender, const TString& uri,
                                           ISharedFMXBitmap* favicon) {
      FaviconUpdated(sender, uri, favicon);
    };
    FFaviconCache->InitializeEvents();
  }
  Subscribe(u"ChromiumEngine.ThumbnailCreated", FChromiumEngineThumbnailCreated,
            &TTabbarFrame::ProcessThumbnailCreated);
  Subscribe(u"MainWindow.ActiveChanged", FMainWindowActiveChanged,
            &TTabbarFrame::ProcessMainWindowActiveChanged);
  Subscribe(u"XmlWidget.Update", FXmlWidgetUpdateListener, &TTabbarFrame::ProcessXmlWidgetUpdate);
  // One listener answers both widget updates.
  FServiceCore->AddEventListener(0, u"XmlWidget.UpdateNow", FXmlWidgetUpdateListener.get());
  Subscribe(u"Tab.Changed", FTabChangedEventListener, &TTabbarFrame::ProcessTabChanged);
  Subscribe(u"Cabinet.DragAndDrop", FCabinetDragAndDropListener, &TTabbarFrame::ProcessCabinetDragAndDrop);
  Subscribe(u"Cabinet.CreateBlurImage", FCabinetCreateBlurImageListener,
            &TTabbarFrame::ProcessCabinetCreateBlurImage);
  Subscribe(u"QxCabinetDataManager.Cabinet.Enter", FCabinetEnterListener, &TTabbarFrame::ProcessCabinetEnter);
  Subscribe(u"QxCabinetDataManager.Cabinet.Exit", FCabinetExitListener, &TTabbarFrame::ProcessCabinetExit);
  Subscribe(u"TabManager.Changed", FTabManagerChangedEventListener, &TTabbarFrame::ProcessTabManagerChanged);
  Subscribe(u"XmlWidget.MenuHide", FXMLWidgetMenuHideEventListener, &TTabbarFrame::ProcessXmlWidgetMenuHide);
  Subscribe(u"TabGroupBar.EditTitle", FTabGroupBarEditTitleEventListener,
            &TTabbarFrame::ProcessTabGroupBarEditTitle);
  Subscribe(u"Tab.LoadingStop", FTabLoadingStopEventListener, &TTabbarFrame::ProcessTabLoadingStop);
  Subscribe(u"TabGroupBar.TogglePrivate", FTabGroupBar_TogglePrivateListener,
            &TTabbarFrame::ProcessTogglePrivate);
}

void TTabbarFrame::Unsubscribe(std::u16string_view eventId, ComPtr<IQxIEventListener>& listener) {
  if (listener) FServiceCore->RemoveEventListener(eventId, listener.get());
}

void TTabbarFrame::UnInitializeEvents() {
  // Queued deliveries that have not run yet find no frame from here on.
  if (FEventTarget) *FEventTarget = nullptr;
  FEventTarget.reset();
  if (!FServiceCore) return;
  Unsubscribe(u"Browser.Changed", FBrowserEventListener);
  Unsubscribe(u"BookmarkManagerV3.Update", FBookmarkManagerUpdateEventListener);
  Unsubscribe(u"TabBarControl.Update", FTabbarControlUpdateEventListener);
  Unsubscribe(u"TabBarControl.UpdateTab", FTabbarControlUpdateTabEventListener);
  Unsubscribe(u"TabGroup.Changed", FTabGroupChangedEventListener);
  Unsubscribe(u"Client.Initialized", FClientInitializedEventListener);
  Unsubscribe(u"action", FStopLoadingAnimationListener);
  Unsubscribe(u"HoldAndGo.Start", FHoldAndGoStartListener);
  if (FFaviconCache) FFaviconCache->UnInitializeEvents();
  Unsubscribe(u"XmlWidget.Update", FXmlWidgetUpdateListener);
  Unsubscribe(u"XmlWidget.UpdateNow", FXmlWidgetUpdateListener);
  Unsubscribe(u"ChromiumEngine.ThumbnailCreated", FChromiumEngineThumbnailCreated);
  Unsubscribe(u"MainWindow.ActiveChanged", FMainWindowActiveChanged);
  Unsubscribe(u"Tab.Changed", FTabChangedEventListener);
  Unsubscribe(u"Cabinet.DragAndDrop", FCabinetDragAndDropListener);
  Unsubscribe(u"Cabinet.CreateBlurImage", FCabinetCreateBlurImageListener);
  Unsubscribe(u"QxCabinetDataManager.Cabinet.Enter", FCabinetEnterListener);
  Unsubscribe(u"QxCabinetDataManager.Cabinet.Exit", FCabinetExitListener);
  Unsubscribe(u"TabManager.Changed", FTabManagerChangedEventListener);
  // Spelled as the host has always been asked; the wrapper's own record of the
  // subscription stays until it drops every handler.
  Unsubscribe(u"XMLWidget.MenuHide", FXMLWidgetMenuHideEventListener);
  Unsubscribe(u"TabGroupBar.EditTitle", FTabGroupBarEditTitleEventListener);
  Unsubscribe(u"Tab.LoadingStop", FTabLoadingStopEventListener);
  Unsubscribe(u"TabGroupBar.TogglePrivate", FTabGroupBar_TogglePrivateListener);
}

IQxIControl* TTabbarFrame::GetCabinetBarControl() {
  static constexpr TGUID kControlIid = MakeGuid("65EE36B3-39E8-438A-AD0A-C8040A2A5372");
  if (!FCabinetBarControl && FServiceCore)
    FServiceCore->GetPluginObject("CabinetIconBarControl", kControlIid, FCabinetBarControl.put_void());
  return FCabinetBarControl.get();
}

ICabinetIconBar* TTabbarFrame::GetCabinetIconBar() {
  if (!FCabinetIconBar)
    if (IQxIControl* control = GetCabinetBarControl())
      FCabinetIconBar = ComPtr<IQxIControl>(control).As<ICabinetIconBar>();
  return FCabinetIconBar.get();
}

}  // namespace qx
