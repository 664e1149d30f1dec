#include "tabbar/TabbarForm.h"

#include <filesystem>

#include "base/PathDelim.h"
#include "base/Text.h"
#include "host/ClientWidgets.h"
#include "host/HostKeys.h"
#include "runtime/ReplaceAniThread.h"
#include "tabbar/TabbarFormLayout.h"
#include "toolkit/Form.h"
#include "toolkit/StoredLayout.h"

namespace qx {

namespace {

template <class T>
T* Part(const TFmxObject* root, std::u16string_view name) {
  T* part = FindComponentAs<T>(root, name);
  if (!part) throw EStoredLayoutError("Tab strip layout lacks " + ToUtf8(name));
  return part;
}

}  // namespace

TTabbarFrame::TTabbarFrame(TFmxObject* owner, TTabbarImageRes* imageRes, TTabbarParentForm* parentForm,
                           IServiceCoreWrap* serviceCore, HWnd clientWindowHandle)
    : TFrame(owner) {
  FTraceLog = std::make_unique<TTraceLog>();
  InstallAnimationThread();
  FParentForm = parentForm;
  FClientWindowHandle = clientWindowHandle;
  FGroupIndex = -1;
  FServiceCore = serviceCore;

  FBlurEffect = std::make_unique<TBlurEffect>(nullptr);
  FBlurEffect->SetSoftness(3.75f);
  FFaviconCache = std::make_unique<TFaviconCacheFMX>(serviceCore, 16);
  FDelayTask = std::make_unique<TDelayTaskList>();
  FDelayTask->SetInterval(200);
  FDelayTaskFast = std::make_unique<TDelayTaskList>();
  FDelayTaskFast->SetInterval(1);
  FTabList = std::make_unique<TTabImageSectionList>();
  FImageRes = imageRes;

  RegisterTabbarFrameClasses();
  TStoredLayoutOptions options;
  options.Handler("FrameResize", TNotifyEvent([this](TFmxObject* s) { FrameResize(s); }))
      .Handler("btnGroupClick", TNotifyEvent([this](TFmxObject* s) { btnGroupClick(s); }))
      .Handler("btnAddTabClick", TNotifyEvent([this](TFmxObject* s) { btnAddTabClick(s); }))
      .Handler("ActiveCenterTimerTimer", TNotifyEvent([this](TFmxObject* s) { ActiveCenterTimerTimer(s); }));
  LoadLayout(TabbarFrameLayoutText(), options);
  BindComponents();

  UpdateMainWindowActive(IsTitleMenuWidgetCreated());
  FimgTabbarMiddle->SetWrapMode(TImageWrapMode::Tile);
  if (FImageRes) FimgActiveTab->SetBitmap(FImageRes->TabActive());

  ConfigureScrollBox();
  CreateThumbnailCache();

  FAutoScrollTimer = new TMMTimer(this);
  FAutoScrollTimer->SetEnabled(false);
  FAutoScrollTimer->SetInterval(10);

  FTabbarWidthAnimation->PropertyName = "TabbarWidth";
  // A finished widening counts as switched off, so a later pass at the same
  // width starts nothing.
  FTabbarWidthAnimation->OnFinish = [](TFmxObject* sender) {
    static_cast<TAnimation*>(sender)->Enabled = false;
  };
  FbtnGroup->SetEnableRightClick(true);
  FbtnAddTab->SetEnableRightClick(true);
  InitializeEvents();
  BindInputHandlers();
}

void TTabbarFrame::BindComponents() {
  FTabbarBottomImage = Part<TImage>(this, u"TabbarBottomImage");
  FTabbarBackLayout = Part<TLayout>(this, u"TabbarBackLayout");
  FimgTabbarLeft = Part<TImage>(this, u"imgTabbarLeft");
  FimgTabbarRight = Part<TImage>(this, u"imgTabbarRight");
  FimgTabbarMiddle = Part<TImage>(this, u"imgTabbarMiddle");
  FbtnGroup = Part<TImageButton>(this, u"btnGroup");
  FbtnAddTab = Part<TImageButton>(this, u"btnAddTab");
  FTabScrollBox = Part<TalvokScrollBoxUnit::TTalvokScrollBox>(this, u"TabScrollBox");
  FimgActiveTab = Part<TImage>(this, u"imgActiveTab");
  FActiveTabIndicatorFloatAnimation = Part<TFloatAnimation>(this, u"ActiveTabIndicatorFloatAnimation");
  FHideTitleTimer = Part<TTimer>(this, u"HideTitleTimer");
  FShowActiveTabTitleTimer = Part<TTimer>(this, u"ShowActiveTabTitleTimer");
  FActiveCenterTimer = Part<TTimer>(this, u"ActiveCenterTimer");
  FUpdateCloseBtnTimer = Part<TTimer>(this, u"UpdateCloseBtnTimer");
  FtmCheckCabinetMode = Part<TTimer>(this, u"tmCheckCabinetMode");
  FTabbarWidthAnimation = Part<TFloatAnimation>(this, u"TabbarWidthAnimation");
  // The stored layouts know no property for it; the design has both buttons still.
  FbtnGroup->SetAnimate(false);
  FbtnAddTab->SetAnimate(false);
  FScrollBoxAdapter = std::make_unique<TTabImageScrollBoxAdapter>(FTabScrollBox);
}

void TTabbarFrame::ConfigureScrollBox() {
  auto& ani = FTabScrollBox->AniCalculations();
  ani.Animation = true;
  ani.TouchTracking = ttrack::Horizontal;
  ani.BoundsAnimation = false;
  ani.OnStart = [this](TFmxObject* s) { ScrollStarted(s); };
  ani.OnStop = [this](TFmxObject* s) { ScrollStopped(s); };
  ani.OnChanged = [this](TFmxObject* s) { ScrollChanged(s); };

  FTabScrollBox->OnAfterMouseWheel = [this](TFmxObject*, TShiftState, int, bool&) { HideTitleForm(0.2f); };
  FTabScrollBox->OnAniMouseMove = [this](TFmxObject*, TShiftState, float, float) { HideTitleForm(0.2f); };
  FTabScrollBox->OnCalcContentBounds = [this](TFmxObject* s, TRectF& bounds) {
    CalcContentBounds(s, bounds);
  };
  FTabScrollBox->OnNotification = [this](TFmxObject* s, TFmxObject* o,
                                         ScrollBoxExUnit::TContentNotification op) {
    TabImageRemoved(s, o, op);
  };
}

void TTabbarFrame::CreateThumbnailCache() {
  if (FServiceCore) {
    TString dir = FServiceCore->UserSettingClientDirectory();
    if (!dir.empty()) {
      if (dir.back() != kPathDelim) dir.push_back(kPathDelim);
      dir += u"thumbnail";
      dir.push_back(kPathDelim);
      FThumbnailDirectory = dir;
      try {
        std::error_code ignored;
        std::filesystem::create_directories(std::filesystem::path(dir), ignored);
      } catch (...) {
        // A strip without a thumbnail folder still works; the pictures just don't persist.
      }
    }
  }
  FTabImageCacheMgr = std::make_unique<TTabImageCacheMgr>(FServiceCore.get(), FThumbnailDirectory);
}

bool TTabbarFrame::IsTitleMenuWidgetCreated() {
  return IsClientWidgetBuilt(FServiceCore.get(), widget_name::TitleMenuWidget);
}

TTabbarFrame::~TTabbarFrame() {
  Flayout.reset();
  FFinishing = true;
  RemovePopupMenu(FServiceCore.get(), popup_menu_id::NewTab);
  UnInitializeEvents();
  DestroyFloatingForms();

  FFaviconCache.reset();
  FDelayTask.reset();
  FDelayTaskFast.reset();
  FTabList.reset();
  FTabImageCacheMgr.reset();
  FBlurEffect.reset();

  // What the inherited destructor would do, done while this frame is still whole:
  // tab images leaving the scroll box report back here.
  FTabScrollBox->OnNotification = nullptr;
  FTabScrollBox->OnCalcContentBounds = nullptr;
  FTabScrollBox->OnAfterMouseWheel = nullptr;
  FTabScrollBox->OnAniMouseMove = nullptr;
  FTabScrollBox->AniCalculations().OnChanged = nullptr;
  FTabScrollBox->AniCalculations().OnStart = nullptr;
  FTabScrollBox->AniCalculations().OnStop = nullptr;
  FScrollBoxAdapter.reset();
  DeleteChildren();
  while (!Components().empty()) delete Components().back();
  FTraceLog.reset();
}

// ---- properties

const TPropertyTable& TTabbarFrame::ClassProperties() {
  static const TPropertyTable table = [] {
    auto F = [](TFmxObject* o) { return static_cast<TTabbarFrame*>(o); };
    TPropertyTable t(&TFrame::ClassProperties());
    t.Float("TabbarWidth", {[F](TFmxObject* o) { return F(o)->TabbarWidth(); },
                            [F](TFmxObject* o, float v) { F(o)->SetTabbarWidth(v); }});
    t.Float("TabScrollViewPortX", {[F](TFmxObject* o) { return F(o)->TabScrollViewPortX(); },
                                   [F](TFmxObject* o, float v) { F(o)->SetTabScrollViewPortX(v); }});
    return t;
  }();
  return table;
}

float TTabbarFrame::TabbarWidth() const { return ParentChildFrameWidth(); }

void TTabbarFrame::SetTabbarWidth(float value) {
  ParentSetChildFrameWidth(value);
  if (FCabinetIconBar) FCabinetIconBar->NotifyScrollBoxRect(TabScrollBoxScreenRect());
}

float TTabbarFrame::TabScrollViewPortX() const { return FTabScrollBox->HorzPosition(); }

void TTabbarFrame::SetTabScrollViewPortX(float value) { FTabScrollBox->SetHorzPosition(value); }

// ---- queries

TRectF TTabbarFrame::TabScrollBoxScreenRect() const {
  const TRectF r = FTabScrollBox->AbsoluteRect();
  TPointF topLeft(r.Left, r.Top);
  if (TCommonCustomForm* form = FTabScrollBox->Form()) topLeft = form->ClientToScreen(topLeft);
  return TRectF::FromSize(topLeft.X, topLeft.Y, r.Width(), r.Height());
}

TRectF TTabbarFrame::GroupButtonAbsoluteRect() const { return FbtnGroup->AbsoluteRect(); }

TRectF TTabbarFrame::AddTabButtonAbsoluteRect() const { return FbtnAddTab->AbsoluteRect(); }

TTabImage* TTabbarFrame::GetTabImages(std::int32_t index) const {
  return FTabList ? AsTabImage(FTabList->TabImages(index)) : nullptr;
}

std::int32_t TTabbarFrame::TabImageCount() const { return FTabList ? FTabList->TabCount() : 0; }

bool TTabbarFrame::IsHitTestTranparent(float x, float y) {
  TControl* hit = ObjectAtPoint({x, y});
  if (hit == nullptr || hit == this) return true;
  // Over the tabs a thin band still drags the window, unless it is maximized.
  const bool maximized =
      FClientWindowHandle &&
      (static_cast<std::uint32_t>(Platform().GetWindowLongW(FClientWindowHandle, win::GWL_STYLE)) &
       win::WS_MAXIMIZE) != 0;
  const TRectF box = FTabScrollBox->AbsoluteRect();
  return !maximized && x >= box.Left && x < box.Right && y >= box.Top && y < box.Top + 5;
}

void TTabbarFrame::SaveThumbnailCache() {
  if (FTabImageCacheMgr) FTabImageCacheMgr->SaveThumbnailCache();
}

IUnknown* TTabbarFrame::HostSectionOf(const TTabImageSection* section) const {
  auto it = FHostSections.find(section);
  return it == FHostSections.end() ? nullptr : it->second.get();
}

// ---- the layout

TTabGroupViewLayout* TTabbarFrame::GetLayout() {
  if (!Flayout) Flayout = std::make_unique<TTabGroupViewLayout>();
  Flayout->setOnGetViewSize(
      [this](TTabGroupViewLayout& sender, TSizeD& size) { OnGetTargetViewSize(sender, size); });
  Flayout->setSections(FTabList.get());
  return Flayout.get();
}

void TTabbarFrame::OnGetTargetViewSize(TTabGroupViewLayout& sender, TSizeD& size) {
  // During an animated resize the layout works with the width the strip is going to have.
  const float sides = FimgTabbarLeft->Width() + FimgTabbarRight->Width();
  const float width = FTabbarWidthAnimation->Running() ? FTabbarWidthAnimation->StopValue : Width();
  size.cx = static_cast<double>(width - sides) + 2 * sender.margin();
  size.cy = FTabScrollBox->Height();
}

void TTabbarFrame::CalcContentBounds(TFmxObject* /*sender*/, TRectF& contentBounds) {
  const double content = GetLayout()->contentWidth() + 2 * kContentMargin;
  contentBounds = TRectF(0, 0, static_cast<float>(content), FTabScrollBox->Height());
}

// ---- references to tab images

void TTabbarFrame::TabImageRemoved(TFmxObject* /*sender*/, TFmxObject* object,
                                   ScrollBoxExUnit::TContentNotification operation) {
  if (operation != ScrollBoxExUnit::TContentNotification::Removed) return;
  // A tab being freed is no longer a TTabImage by the time its parent hears of
  // it; its section already let go. One merely taken out still is, and leaves here.
  if (!object->IsDestroying())
    if (auto* tab = dynamic_cast<TTabImage*>(object); tab && FTabList) FTabList->RemoveTab(tab);
  ForgetTabReferences(object);
}

void TTabbarFrame::ForgetTabReferences(const TFmxObject* object) {
  auto clear = [object](TTabImage*& field) {
    if (field && static_cast<const TFmxObject*>(field) == object) field = nullptr;
  };
  // The title popup must not go on naming a tab that is gone.
  auto is = [object](const TTabImage* field) {
    return field && static_cast<const TFmxObject*>(field) == object;
  };
  if (is(FHoveredTab) || is(FActiveTab)) HideTitleForm(0);
  clear(FActiveTab);
  clear(FHoveredTab);
  clear(FActivatingTab);
  clear(FScrollBoxCloseButtonCaptureImage);
  clear(FFlickingTab);
  clear(FMouseDownTab);
  clear(FClickedTab);
  clear(FTouchWaitDblClickTab);
  clear(FTouchCapturedTab);
  if (Flayout && Flayout->draggingTab() &&
      static_cast<const TFmxObject*>(static_cast<TTabImage*>(Flayout->draggingTab())) == object)
    Flayout->stopDragging();
  clear(FdragTarget);
  FAfterDragTabs.erase(object);
  FHostTabs.erase(object);
}

// ---- buttons

void TTabbarFrame::btnGroupClick(TFmxObject* /*sender*/) {
  SendCabinetToggle();
  StartCabinetCheckTimer();
}

void TTabbarFrame::btnAddTabClick(TFmxObject* /*sender*/) { SendNewTab(); }

}  // namespace qx
