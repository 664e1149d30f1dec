#pragma once

// The tab strip: a frame that mirrors the host's current tab group as tab
// images in a scroll box, places them with the curve layout, and owns what
// floats over the strip.

#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>
#include <unordered_set>

#include "base/ComPtr.h"
#include "host/ServiceCoreWrapIntf.h"
#include "host/WrapV3Intf.h"
#include "platform/Platform.h"
#include "resources/FaviconCache.h"
#include "resources/ImageButton.h"
#include "resources/TabbarImageRes.h"
#include "runtime/DelayExec.h"
#include "runtime/MMTimerFMX.h"
#include "tabview/CabinetDnDIntf.h"
#include "tabview/CabinetIconBarIntf.h"
#include "tabview/TabGroupViewLayout.h"
#include "tabview/TabImage.h"
#include "tabview/TabImageCacheMgr.h"
#include "tabview/TabImageScrollBoxAdapter.h"
#include "tabview/TabImageSection.h"
#include "tabview/TalvokScrollBox.h"
#include "toolkit/Animation.h"
#include "toolkit/Effects.h"
#include "toolkit/Frame.h"
#include "toolkit/Image.h"
#include "toolkit/Layout.h"
#include "toolkit/Timer.h"

namespace qx {

class TTabbarParentForm;
class TTitleForm;
class THoldAndGoFeedbackForm;
class TFlickWipeFeedbackWindow;

// Diagnostics sink kept for the frame's lifetime; writes nowhere.
class TTraceLog {};

class TTabbarFrame : public TFrame {
 public:
  // Fixed geometry of the strip.
  static constexpr float kTabWidth = 98;
  static constexpr float kSideMargin = 8;
  static constexpr float kTabTop = 5;
  static constexpr float kContentMargin = 200;
  // The parent's own call at a widget update: the title popup stays where it is.
  static constexpr std::uint32_t kWidgetUpdateMessage = 32770;

  // parentForm may be null: the strip's width is then the frame's own, unclamped.
  TTabbarFrame(TFmxObject* owner, TTabbarImageRes* imageRes, TTabbarParentForm* parentForm,
               IServiceCoreWrap* serviceCore, HWnd clientWindowHandle);
  ~TTabbarFrame() override;
  std::string ClassName() const override { return "TTabbarFrame"; }

  // ---- queries of the parent form and the plug-in
  TRectF TabScrollBoxScreenRect() const;
  TRectF GroupButtonAbsoluteRect() const;
  TRectF AddTabButtonAbsoluteRect() const;
  TTabImage* GetTabImages(std::int32_t index) const;
  std::int32_t TabImageCount() const;
  // Whether the host window should see through the strip at this client point.
  bool IsHitTestTranparent(float x, float y);
  void UpdateChildFormsPosition(std::uint32_t message);
  void HideTitleForm(float duration);
  void SaveThumbnailCache();
  void OnClientInitialize() {}
  void OnClientVisible() {}
  TTabImageSectionList* TabList() const { return FTabList.get(); }
  TTabImage* ActiveTab() const { return FActiveTab; }
  TTabImage* HoveredTab() const { return FHoveredTab; }
  TTabImage* DragTarget() const { return FdragTarget; }
  TImage* TabbarBottomImage() const { return FTabbarBottomImage; }
  TTabImageCacheMgr* TabImageCacheMgr() const { return FTabImageCacheMgr.get(); }
  const TString& ThumbnailDirectory() const { return FThumbnailDirectory; }

  // ---- animatable properties
  float TabbarWidth() const;
  void SetTabbarWidth(float value);
  float TabScrollViewPortX() const;
  void SetTabScrollViewPortX(float value);

  // ---- model sync
  void UpdateTabbar(bool tabAdded, bool animated);
  TTabImage* AddTabImage(TTabImageSection* section, IQxITab* tab);
  void layoutSubviews(bool animated, float duration);
  void layoutSubviews(bool animated) { layoutSubviews(animated, 0.3f); }
  void layoutSubviews() { layoutSubviews(false); }
  void SetActiveTabImage(TTabImage* tab, bool keepViewport);
  void SortZOrderFromAttributeList(ITabViewLayoutAttributeList* attributes);
  // Drops from the scroll content what the layout pass does not list.
  void RemoveUnlistedChildren(std::int32_t count);
  void MoveActiveIndicator(ITabViewLayoutAttributes* attributes, bool animated, float duration);
  float ActiveIndicatorTargetX(ITabViewLayoutAttributes* attributes) const;
  void UpdateTabbarWidth(bool animated, float duration);
  float RequiredTabbarWidth();
  void SyncViewportToProgress();
  void SetViewportX(float x);
  void UpdateGroupImageFromGroup(IQxITabGroup* group);
  void UpdateGroupButtonImages(std::int32_t index, bool isPrivate);
  void UpdateMainWindowActive(bool active);
  // The on-screen X of a tab at content X, with the drag offset taken off and clamped.
  float ConvertTabLocalMatrix(TTabImage* tab, float x) const;

  // ---- state the drag and the hover set (mouse handling)
  void SetWaitUpdateTabbar(bool value) { FWaitUpdateTabbar = value; }
  bool WaitUpdateTabbar() const { return FWaitUpdateTabbar; }
  void SetHoveredTab(TTabImage* tab);
  void SetDragTarget(TTabImage* tab) { FdragTarget = tab; }
  // The tab was dropped: its indicator returns once its offset animation ends.
  void MarkAfterDrag(TTabImage* tab) { FAfterDragTabs.insert(tab); }
  // The host group the mirror stands for, null before the first sync.
  IQxITabGroup* HostGroup() const { return FHostGroup.get(); }
  // A section the drag made has no host section until the next sync.
  IUnknown* HostSectionOf(const TTabImageSection* section) const;

  // ---- the parts, for the parent form and for tests
  TTabGroupViewLayout* GetLayout();
  TalvokScrollBoxUnit::TTalvokScrollBox* TabScrollBox() const { return FTabScrollBox; }
  TImage* imgActiveTab() const { return FimgActiveTab; }
  TImage* imgTabbarLeft() const { return FimgTabbarLeft; }
  TImage* imgTabbarRight() const { return FimgTabbarRight; }
  TImage* imgTabbarMiddle() const { return FimgTabbarMiddle; }
  TImageButton* btnGroup() const { return FbtnGroup; }
  TImageButton* btnAddTab() const { return FbtnAddTab; }
  TFloatAnimation* TabbarWidthAnimation() const { return FTabbarWidthAnimation; }
  TFloatAnimation* ActiveTabIndicatorFloatAnimation() const { return FActiveTabIndicatorFloatAnimation; }
  TTimer* ActiveCenterTimer() const { return FActiveCenterTimer; }
  bool LayoutOnce() const { return FLayoutOnce; }
  std::int32_t GroupIndex() const { return FGroupIndex; }
  bool MainWindowIsActive() const { return FMainWindowIsActive; }

  // ---- thumbnails from the host's engine
  static constexpr int kSnapshotWidth = 96;
  static constexpr int kSnapshotHeight = 47;
  static constexpr std::int32_t kMaxThumbnailRetries = 10;
  void AddUpdateImageTask(TTabImage* tab);
  // True when the tab needs no further try.
  bool CaptureTabThumbnail(TTabImage* tab);
  std::int32_t TabImageLoadRetryCount(const TTabImage* tab) const;
  TDelayTaskList* DelayTask() const { return FDelayTask.get(); }

  // ---- actions sent back to the host
  void SendCloseTab(TTabImage* tab, bool deferred);
  void SendNewTab();
  void SendCabinetToggle();

  // ---- hands on the strip: touch routes, hold-and-go, capture, the floating forms
  // Raw touch of the parent form's window, in screen pixels.
  void TouchEventDown(float x, float y);
  void TouchEventMove(float x, float y);
  void TouchEventUp(float x, float y);
  // The host's hold-and-go gesture began at this screen point of the client window.
  void ShowHoldAndGoFeedback(TPoint screenPoint);
  // Another window took the mouse: a press or drag in progress ends as if released.
  void MouseCaptureLost();
  void ShowTabTitle(TTabImage* tab, bool animated);
  TTitleForm* TitleForm() const { return FTitleForm; }
  TFlickWipeFeedbackWindow* FlickWipeWindow() const { return FFlickWipeWindow; }
  THoldAndGoFeedbackForm* HoldAndGoFeedbackForm() const { return FHoldAndGoFeedbackForm; }
  TMMTimer* AutoScrollTimer() const { return FAutoScrollTimer; }
  TTimer* HideTitleTimer() const { return FHideTitleTimer; }
  TTabImage* FlickingTab() const { return FFlickingTab; }

  // ---- cabinet mode: the group bar follows the host's cabinet screen, and the page's
  // drags become the floating drag window
  void StartCabinetCheckTimer();
  // The exit button of the group bar: the page is asked to close the cabinet.
  void btnExitCabinetClick();
  bool CabinetDragging() const;
  bool IsCabinetTab(TTabImage* tab);
  ICabinetDnDWindow* CabinetDnDWindow() const { return FCabinetDnDForm.get(); }
  TTimer* tmCheckCabinetMode() const { return FtmCheckCabinetMode; }
  std::int32_t CabinetCheckTimerCounter() const { return FCabinetCheckTimerCounter; }

  const TPropertyTable& Properties() const override { return ClassProperties(); }
  static const TPropertyTable& ClassProperties();

 private:
  // Construction and teardown.
  void BindComponents();
  void ConfigureScrollBox();
  void CreateThumbnailCache();
  bool IsTitleMenuWidgetCreated();
  void InitializeEvents();
  void ProcessClientInitialized(IQxIStringDictionaryWrap* parameters);
  void ProcessTabGroupChanged(IQxIStringDictionaryWrap* parameters);
  void UnInitializeEvents();
  void CheckCabinetStartupScreen();

  // Host events: one handler per subscription.
  using THostEventHandler = void (TTabbarFrame::*)(IQxIStringDictionaryWrap* parameters);
  void Subscribe(std::u16string_view eventId, ComPtr<IQxIEventListener>& listener, THostEventHandler handler);
  void Unsubscribe(std::u16string_view eventId, ComPtr<IQxIEventListener>& listener);
  void ProcessTabbarControlUpdate(IQxIStringDictionaryWrap* parameters);
  void ProcessTabbarControlUpdateTab(IQxIStringDictionaryWrap* parameters);
  void ProcessBookmarkManagerUpdate(IQxIStringDictionaryWrap* parameters);
  void ProcessBrowserChanged(IQxIStringDictionaryWrap* parameters);
  void ProcessStopLoadingAction(IQxIStringDictionaryWrap* parameters);
  void ProcessThumbnailCreated(IQxIStringDictionaryWrap* parameters);
  void ProcessMainWindowActiveChanged(IQxIStringDictionaryWrap* parameters);
  void ProcessXmlWidgetUpdate(IQxIStringDictionaryWrap* parameters);
  void ProcessTabChanged(IQxIStringDictionaryWrap* parameters);
  void ProcessCabinetEnter(IQxIStringDictionaryWrap* parameters);
  void ProcessCabinetExit(IQxIStringDictionaryWrap* parameters);
  void ProcessTabManagerChanged(IQxIStringDictionaryWrap* parameters);
  void ProcessXmlWidgetMenuHide(IQxIStringDictionaryWrap* parameters);
  void ProcessTabGroupBarEditTitle(IQxIStringDictionaryWrap* parameters);
  void ProcessTabLoadingStop(IQxIStringDictionaryWrap* parameters);
  void ProcessTogglePrivate(IQxIStringDictionaryWrap* parameters);
  bool IsActiveGroupId(std::u16string_view id);
  TTabImage* FindTabImageFromGuid(std::u16string_view guid) const;
  TTabImage* FindTabImageOfBrowserEvent(IQxIStringDictionaryWrap* parameters);
  void FaviconUpdated(TFaviconCacheFMX* sender, const TString& uri, ISharedFMXBitmap* favicon);
  // Behaviours that host events start: touch's hold-and-go, the new-tab menu, and the
  // cabinet screen (the page's drags, its blurred background, the group bar in its place).
  void ProcessHoldAndGoStart(IQxIStringDictionaryWrap* parameters);
  void ProcessCabinetDragAndDrop(IQxIStringDictionaryWrap* parameters);
  void ProcessCabinetCreateBlurImage(IQxIStringDictionaryWrap* parameters);
  void ShowTabGroupbarIfHidden();
  void HideTabGroupbarIfShown();
  void RegisterNewTabMenu();
  void tmCheckCabinetModeTimer();
  void RunScriptInActiveTab(std::u16string_view code);
  void CabinetDragImageHideNotify(const std::u16string& id);
  ICabinetDnDWindow* NeedCabinetDnDWindow();
  void SendChangeGroupOfTabs(const std::u16string& id, std::int32_t group);

  // Thumbnails.
  void RunUpdateImageTask(const std::u16string& guid);
  void SendTabEvent(std::u16string_view eventId, TTabImage* tab, bool deferred);
  void SendEvent(std::u16string_view eventId, IQxIStringDictionary* parameters, bool deferred);

  // Sync.
  void InternalUpdateTabbar(bool tabAdded, bool animated);
  bool MirrorIsCurrent(IQxITabGroupWrap* group);
  void RebuildMirror(IQxITabGroupWrap* group, TTabImage*& newActive);
  // One new tab in one section and nothing else changed: the common add, done in
  // place without a rebuild. False when the change is any other.
  bool InsertOneTab(IQxITabGroupWrap* group, TTabImage*& newActive);
  // index -1 appends to the section.
  TTabImage* InsertTabImage(TTabImageSection* section, std::int32_t index, IQxITab* tab);
  void ApplyLayoutAttributes(bool animated, float duration);
  void ApplyAttributesToTabImage(ITabViewLayoutAttributes* attributes, TTabImage* tab, bool animated,
                                 float duration);
  void OnGetTargetViewSize(TTabGroupViewLayout& sender, TSizeD& size);
  void CalcContentBounds(TFmxObject* sender, TRectF& contentBounds);
  bool IsHostActiveTab(TTabImage* tab);
  void PostSelectTab(TTabImage* tab);
  void RemoveUpdateImageTask(TTabImage* tab);
  void ForgetTabReferences(const TFmxObject* object);

  // Tab image callbacks.
  bool GetTabActive(const TTabImageItem& tab) const;
  void CancelOtherCloseButtonHover(TFmxObject* sender);
  void TabDragOffsetAnimationFinish(TFmxObject* sender);
  void TabImageRemoved(TFmxObject* sender, TFmxObject* object,
                       ScrollBoxExUnit::TContentNotification operation);

  // Scrolling.
  void ScrollChanged(TFmxObject* sender);
  void ScrollStarted(TFmxObject* sender);
  void ScrollStopped(TFmxObject* sender);
  void ActiveCenterTimerTimer(TFmxObject* sender);
  void FrameResize(TFmxObject* sender);

  // Buttons; their menus on a right click come with the mouse handling.
  void btnGroupClick(TFmxObject* sender);
  void btnAddTabClick(TFmxObject* sender);

  // Cabinet icon bar, looked up on first need.
  IQxIControl* GetCabinetBarControl();
  ICabinetIconBar* GetCabinetIconBar();

  // Parent form access; without a parent the frame stands alone.
  float ParentChildFrameWidth() const;
  void ParentSetChildFrameWidth(float width);
  float ParentFormWidth() const;
  void ParentSetTabbarChildFrameVisible();
  void ParentUpdateMainWindowActive(bool active);

  // Mouse, drag, touch and the title popup.
  void BindInputHandlers();
  void RouteTabInput(TTabImage* tab);
  void DestroyFloatingForms();
  static bool IsMouseMessageFromTouch();
  TPointF MouseInScrollBoxCoordinates() const;
  bool ClientWindowMaximized() const;
  void TabScrollBoxMouseDown(TMouseButton button, float x, float y);
  void ProcessMouseDown(TMouseButton button, TPointF point);
  void TabScrollBoxMouseMove(float x, float y);
  void ProcessMouseUp(TMouseButton button, TPointF point);
  void TabScrollBoxMouseEnter();
  void TabScrollBoxMouseLeave();
  void TabScrollBoxClick();
  void TabScrollBoxBeforeMouseUp();
  void TabScrollBoxAfterMouseUp(TMouseButton button, float x, float y);
  void UpdateCloseBtnTimerTimer();
  void CloseButtonClicked(TPointF point);
  TTabImage* TabImageAtPoint(TPointF point);
  void FireTabMouseEvent(std::u16string_view eventId, TPointF point);
  void ExecuteTabClickAction(TTabImage* tab, std::u16string_view eventId, TPointF point);
  void CloseTabFromImage(TTabImage* tab);
  void ExecuteBrowserAction(TTabImage* tab, std::u16string_view action);
  void ShowTabMenu(TTabImage* tab, TPointF point);
  ComPtr<IQxITab> HostTabOf(TTabImage* tab);
  bool IsDragThresholdPassed(TPointF point) const;
  void StartTabDrag();
  void BeginTabDrag(TPointF point);
  void UpdateDraggingSectionState();
  void DragTabTo(bool movingLeft, TPointF point, bool fromTimer);
  bool MoveDraggedTab(bool movingLeft);
  void AutoScrollTimerTimer();
  void GetAutoScrollDirection(TPointF point, bool& left, bool& right);
  float MaxTabbarWidth() const;
  void CommitDrop(TTabImage* tab);
  void TabTouchMouseDown(float x, float y);
  bool IsFlickStart(float y) const;
  bool IsFlickCancelled(float y) const;
  void ShowFlickWipeWindow(TTabImage* tab);
  void PositionFlickWipeWindow(TTabImage* tab);
  void HideFlickWipeWindow();
  void HideTitleTimerTimer();
  void ShowActiveTabTitleTimerTimer();
  TPointF ScreenToScrollBox(TPointF screen) const;
  TPointF ScrollBoxToScreen(TPointF point) const;

  // ---- fields
  // The floating forms (title, cabinet drag, hold-and-go, flick-wipe) are made
  // at first use by the behaviour that shows them; none of that exists yet, so
  // they stay null.
  std::unique_ptr<TTraceLog> FTraceLog;
  ComPtr<IServiceCoreWrap> FServiceCore;
  TTitleForm* FTitleForm = nullptr;
  std::unique_ptr<ICabinetDnDWindow> FCabinetDnDForm;
  TMouseButton FLastMouseDownButton = TMouseButton::mbLeft;
  TTabImage* FActiveTab = nullptr;
  TTabImage* FHoveredTab = nullptr;
  TTabImage* FActivatingTab = nullptr;
  TTabImage* FScrollBoxCloseButtonCaptureImage = nullptr;
  TTabImage* FFlickingTab = nullptr;
  TTabImage* FMouseDownTab = nullptr;
  TTabImage* FClickedTab = nullptr;
  std::uint32_t FLastTabClickedTime = 0;
  TTabImage* FTouchWaitDblClickTab = nullptr;
  TTabImage* FTouchCapturedTab = nullptr;
  std::uint32_t FTouchWaitDblClickTime = 0;
  THoldAndGoFeedbackForm* FHoldAndGoFeedbackForm = nullptr;
  std::unique_ptr<TTabImageSectionList> FTabList;
  std::unique_ptr<TDelayTaskList> FDelayTask;
  std::unique_ptr<TDelayTaskList> FDelayTaskFast;
  std::unique_ptr<TFaviconCacheFMX> FFaviconCache;
  TMMTimer* FAutoScrollTimer = nullptr;
  TTabbarImageRes* FImageRes = nullptr;
  bool FFinishing = false;
  bool FLayoutOnce = false;
  TPointF FMouseDownPoint{-1, -1};
  TPointF FFlickMouseDownPoint{-1, -1};
  std::uint32_t FLastTouchMessage = 0;
  TPointF FMouseDirectionOrigin{-1, -1};
  ComPtr<IQxIEventListener> FBookmarkManagerUpdateEventListener, FTabbarControlUpdateEventListener,
      FTabbarControlUpdateTabEventListener, FBrowserEventListener, FTabGroupChangedEventListener,
      FClientInitializedEventListener, FStopLoadingAnimationListener, FHoldAndGoStartListener,
      FXmlWidgetUpdateListener, FChromiumEngineThumbnailCreated, FMainWindowActiveChanged,
      FTabChangedEventListener, FCabinetDragAndDropListener, FCabinetCreateBlurImageListener,
      FCabinetExitListener, FCabinetEnterListener, FTabManagerChangedEventListener,
      FXMLWidgetMenuHideEventListener, FTabGroupBarEditTitleEventListener, FTabLoadingStopEventListener,
      FTabGroupBar_TogglePrivateListener;
  float FLastMouseMoveX = 0, FLastMouseMoveY = 0;
  bool FClientInitialized = false;
  bool FWaitUpdateTabbar = false;
  bool FTabbarUpdated = false;
  TPointF FDragOrigin{-1, -1};
  bool FExecutingMouseEvent = false;
  std::uint32_t FLastTouchEventDrop = 0;
  bool FGroupImageInit = false;
  std::int32_t FGroupIndex = -1;
  bool FIsPrivateGroup = false;
  std::uint32_t FLastShowTitle = 0;
  std::unique_ptr<TTabImageCacheMgr> FTabImageCacheMgr;
  TFlickWipeFeedbackWindow* FFlickWipeWindow = nullptr;
  HWnd FClientWindowHandle = nullptr;
  TTabbarParentForm* FParentForm = nullptr;
  std::uint32_t FLastAddTabEvent = 0;
  bool FMainWindowIsActive = false, FMainWindowIsActiveSet = false;
  bool FScrolling = false;
  std::unique_ptr<TTabGroupViewLayout> Flayout;
  float FLastScroll = 0;
  bool FScrollStopChange = false;
  TTabImage* FdragTarget = nullptr;
  ComPtr<IQxIControl> FCabinetBarControl;
  ComPtr<ICabinetIconBar> FCabinetIconBar;
  bool FShowingTabMenu = false;
  bool FDelayMouseLeaveFlag = false;
  std::unique_ptr<TBlurEffect> FBlurEffect;
  std::int32_t FCabinetCheckTimerCounter = 0;

  // Beyond the design's list: where the thumbnails live, the tabs' view of
  // the scroll box, and the dropped tabs waiting for their offset to settle.
  TString FThumbnailDirectory;
  std::unique_ptr<TTabImageScrollBoxAdapter> FScrollBoxAdapter;
  std::unordered_set<const TFmxObject*> FAfterDragTabs;
  // The host objects the mirror stands for, by identity (their IUnknown).
  ComPtr<IQxITabGroup> FHostGroup;
  ComPtr<IUnknown> FHostGroupIdentity;
  std::unordered_map<const TTabImageSection*, ComPtr<IUnknown>> FHostSections;
  std::unordered_map<const TFmxObject*, ComPtr<IUnknown>> FHostTabs;

  // Host events and thumbnails: retries per tab id, and the token that queued
  // deliveries check, so a handler handed over from another thread before the
  // frame went never runs on what is left of it.
  std::unordered_map<std::u16string, std::int32_t> FTabImageLoadRetryCount;
  std::shared_ptr<TTabbarFrame*> FEventTarget;

  // Components of the stored layout (owned by the frame as toolkit owner).
  TImage* FTabbarBottomImage = nullptr;
  TLayout* FTabbarBackLayout = nullptr;
  TImage* FimgTabbarLeft = nullptr;
  TImage* FimgTabbarRight = nullptr;
  TImage* FimgTabbarMiddle = nullptr;
  TImageButton* FbtnGroup = nullptr;
  TImageButton* FbtnAddTab = nullptr;
  TalvokScrollBoxUnit::TTalvokScrollBox* FTabScrollBox = nullptr;
  TImage* FimgActiveTab = nullptr;
  TFloatAnimation* FActiveTabIndicatorFloatAnimation = nullptr;
  TTimer* FHideTitleTimer = nullptr;
  TTimer* FShowActiveTabTitleTimer = nullptr;
  TTimer* FActiveCenterTimer = nullptr;
  TTimer* FUpdateCloseBtnTimer = nullptr;
  TTimer* FtmCheckCabinetMode = nullptr;
  TFloatAnimation* FTabbarWidthAnimation = nullptr;
};

}  // namespace qx
