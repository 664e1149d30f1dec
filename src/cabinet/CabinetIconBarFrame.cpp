#include "cabinet/CabinetIconBarFrame.h"

#include <algorithm>
#include <cmath>
#include <typeinfo>
#include <unordered_map>

#include "base/Text.h"
#include "cabinet/CabinetBarIcon.h"
#include "cabinet/CabinetIconBarForm.h"
#include "tabview/TabImage.h"
#include "tabview/TabImageSection.h"

namespace qx {
namespace {

constexpr float kFarRight = 1000000000.0f;

bool TooClose(float r) { return r >= 1 && r <= 4; }

TString StringOf(IQxIString* text) {
  if (!text) return {};
  Text chars = nullptr;
  if (Failed(text->GetText(&chars)) || !chars) return {};
  return TString(chars);
}

}  // namespace

TCabinetIconBarFrame::TCabinetIconBarFrame(TFmxObject* owner, TCabinetIconBarImageRes* imageRes,
                                           IServiceCoreWrap* serviceCore, HWnd clientWindowHandle,
                                           TCabinetIconBarForm* parentForm)
    : TFrame(owner),
      FImageRes(imageRes),
      FServiceCore(serviceCore),
      FClientWindowHandle(clientWindowHandle),
      FIconList(std::make_unique<TCabinetBarIconList>()),
      FFaviconCache(std::make_unique<TFaviconCacheFMX>(serviceCore, kFaviconSize)),
      FParentForm(parentForm) {
  SetClipChildren(true);
  SetBounds(0, 0, 346, 24);
  FIconLayout = new TLayout(this);
  FIconLayout->Name = u"IconLayout";
  FIconLayout->SetParent(this);
  FIconLayout->SetAlign(TAlignLayout::Client);
  FIconLayout->SetHitTest(true);
  FIconLayout->OnMouseMove = [this](TFmxObject*, TShiftState, float, float) { IconLayoutMouseMove(); };
  FIconLayout->OnMouseEnter = [this](TFmxObject*) { IconLayoutMouseMove(); };
  FFaviconCache->OnNotifyUpdate = [this](TFaviconCacheFMX*, const TString& uri, ISharedFMXBitmap* favicon) {
    FaviconCacheNotifyUpdate(uri, favicon);
  };
  FFaviconCache->InitializeEvents();
  InitializeEvents();
}

TCabinetIconBarFrame::~TCabinetIconBarFrame() {
  UnInitializeEvents();
  FIconList.reset();
  FFaviconCache.reset();
  DeleteChildren();
}

void TCabinetIconBarFrame::InitializeEvents() {
  if (!FServiceCore) return;
  FServiceCore->AddEventHandler(0, u"PreviewStrip.Changed", FPreviewStripChangedListener, false,
                                [](const TString&, IQxIEvent*) -> HResult { return kOk; });
  FServiceCore->AddEventHandler(0, u"QxCabinetDataManager.Cabinet.Exit",
                                FCabinetDataManagerCabinetExitListener, false,
                                [this](const TString&, IQxIEvent*) -> HResult {
                                  if (IPreviewStrip* strip = PreviewStrip()) {
                                    TRectF rect;
                                    strip->TabScrollBoxScreenRect(rect);
                                    if (FParentForm) FParentForm->NotifyScrollBoxRect(rect);
                                  }
                                  layoutCabinetIcon(false, 0, 0, nullptr);
                                  return kOk;
                                });
}

void TCabinetIconBarFrame::UnInitializeEvents() {
  if (!FServiceCore) return;
  if (FPreviewStripChangedListener)
    FServiceCore->RemoveEventListener(u"PreviewStrip.Changed", FPreviewStripChangedListener.get());
  FPreviewStripChangedListener = nullptr;
  if (FCabinetDataManagerCabinetExitListener)
    FServiceCore->RemoveEventListener(u"QxCabinetDataManager.Cabinet.Exit",
                                      FCabinetDataManagerCabinetExitListener.get());
  FCabinetDataManagerCabinetExitListener = nullptr;
}

IPreviewStrip* TCabinetIconBarFrame::PreviewStrip() {
  if (!FPreviewStrip && FServiceCore) {
    static constexpr TGUID kControlIid = MakeGuid("65EE36B3-39E8-438A-AD0A-C8040A2A5372");
    if (!FTabControl)
      FServiceCore->GetPluginObject("PreviewStripPlugin", kControlIid, FTabControl.put_void());
    if (FTabControl) FPreviewStrip = FTabControl.As<IPreviewStrip>();
  }
  return FPreviewStrip.get();
}

void TCabinetIconBarFrame::InitFont() {
  if (FInitFont) return;
  FInitFont = true;
  // The host's interface font is the toolkit's default one; the bar's titles are a point smaller.
  const TFont font;
  FFontName = font.Family;
  FFontSize = static_cast<std::int32_t>(font.Size) - 1;
}

std::u16string TCabinetIconBarFrame::CabinetTitle(IQxICabinetManager* manager, IQxITab* tab) {
  ComPtr<IQxIString> title;
  if (!manager || Failed(manager->GetDisplayTitle(tab, title.put()))) return {};
  return StringOf(title.get());
}

TCabinetIcon2* TCabinetIconBarFrame::MakeIcon(const std::u16string& id, IQxITab* tab,
                                              ISharedFMXBitmap* favicon) {
  auto* icon = new TCabinetIcon2(this, id, tab, FServiceCore.get(), FImageRes);
  icon->OnIconClick = [this](TCabinetIcon2* sender) { IconClick(sender); };
  icon->SetFavicon(favicon);
  icon->SetFont(FFontName, static_cast<float>(FFontSize));
  icon->SetParent(this);
  icon->SetBounds(0, 0, 0, Height());
  return icon;
}

void TCabinetIconBarFrame::layoutCabinetIcon(bool animated, float duration, std::int32_t animationType,
                                             TTabImage* dragTarget) {
  InitFont();
  std::unordered_map<std::u16string, TCabinetIcon2*> pool;
  for (TCabinetIcon2* icon : FIconList->Items()) {
    icon->SetDragTarget(false);
    icon->SetRightToLeft(false);
    icon->SetForceHideLines(false);
    icon->SetLastFirstTabWidth(icon->FirstTabWidth());
    pool.emplace(icon->TabId(), icon);
  }
  FIconList->Clear();

  const float height = Height();
  IPreviewStrip* strip = PreviewStrip();
  TTabImageSectionList* tabs = strip ? strip->GetTabList() : nullptr;
  ComPtr<IQxICabinetManager> manager;
  // One tab manager for the whole pass: finding it through the services costs more than
  // the lookup of one tab.
  ComPtr<IQxITabManager> tabManager;
  if (FServiceCore) {
    FServiceCore->CabinetManager(manager);
    FServiceCore->TabManager(tabManager);
  }
  TCabinetIcon2* front = nullptr;
  if (tabs && manager && tabManager) {
    std::int32_t group = 0;
    TString prevDomain;
    bool first = true;
    TCabinetIcon2* runHead = nullptr;
    for (TTabImageSection* section : *tabs)
      for (TTabImageItem* item : *section) {
        TTabImage* tab = AsTabImage(item);
        if (!tab) continue;
        const std::u16string id = tab->TabGuid();
        ComPtr<IQxITab> hostTab;
        if (!id.empty()) tabManager->TabByGuid(id.c_str(), hostTab.put());
        if (!hostTab || Failed(manager->HasCabinetIcon(hostTab.get()))) continue;
        ComPtr<IQxIString> domainText;
        manager->GetDomainId(hostTab.get(), domainText.put());
        const TString domain = StringOf(domainText.get());

        TCabinetIcon2* icon = nullptr;
        if (auto it = pool.find(id); it != pool.end()) {
          icon = it->second;
          pool.erase(it);
        } else {
          ComPtr<ISharedFMXBitmap> favicon;
          FFaviconCache->GetFavicon(hostTab.get(), tab->TabId(), favicon);
          if (favicon) icon = MakeIcon(id, hostTab.get(), favicon.get());
        }
        if (!icon) continue;
        icon->SetTitle(CabinetTitle(manager.get(), hostTab.get()));
        FIconList->AddIcon(id, icon);

        ITabViewLayoutAttributes* attributes = tab->Attributes();
        icon->SetzPosition(attributes ? static_cast<float>(attributes->GetZPosition()) : 0.0f);
        icon->SetDragTarget(tab == dragTarget);
        if (!front || icon->zPosition() >= front->zPosition()) front = icon;
        TRectF area;
        if (tab == dragTarget || !attributes) {
          const float left = tab->Position().X() - TTabImage::kContentInset;
          area = TRectF::FromSize(left, 0, static_cast<float>(TTabImageItem::size().cx), icon->Height());
        } else {
          const TRectD frame = attributes->GetFrame();
          area = {static_cast<float>(frame.Left), 0, static_cast<float>(frame.Right), icon->Height()};
        }
        icon->SetvisibleArea(area);
        icon->SetcompoundVisibleArea(area);
        const bool visible = first || domain != prevDomain;
        first = false;
        prevDomain = domain;
        icon->SetVisible(visible);
        if (visible) {
          ++group;
          runHead = icon;
        } else if (runHead) {
          runHead->IncludeVisibleArea(area);
        }
        icon->SetDomainId(group);
        if (icon->Height() != height) icon->SetHeight(height);
      }
  }
  for (auto& [id, icon] : pool) delete icon;
  SortZOrder();

  const int count = FIconList->Count();
  if (count == 0) return;
  const int frontIndex = FIconList->IndexOf(front);
  ResolveOverlap(frontIndex >= 0 ? frontIndex : count / 2);

  const auto& icons = FIconList->Items();
  for (int i = count - 1; i >= 0; --i) {
    TCabinetIcon2* icon = icons[static_cast<std::size_t>(i)];
    if (!icon->Visible()) continue;
    icon->UpdateLayout();
    const bool animate = animated && !icon->DragTarget();
    const TRectF& area = icon->compoundVisibleArea();
    icon->AnimationSetLeft(animate, duration, animationType, area.Left);
    icon->AnimationSetWidth(animate, duration, animationType, area.Width());
  }
}

void TCabinetIconBarFrame::ResolveOverlap(int pivot) {
  const auto& icons = FIconList->Items();
  const int count = static_cast<int>(icons.size());
  std::vector<TCabinetIcon2*> shown;
  std::vector<int> shownIndex;
  for (int i = 0; i < count; ++i)
    if (icons[static_cast<std::size_t>(i)]->Visible()) {
      shown.push_back(icons[static_cast<std::size_t>(i)]);
      shownIndex.push_back(i);
    }
  // Each icon's next shown one, set only where it changed: dropping and taking the free
  // notification again for every icon of every pass costs more than the whole overlap pass.
  std::size_t nextShown = 0;
  for (int i = 0; i < count; ++i) {
    while (nextShown < shownIndex.size() && shownIndex[nextShown] <= i) ++nextShown;
    TCabinetIcon2* icon = icons[static_cast<std::size_t>(i)];
    icon->SetNextIcon(icon->Visible() && nextShown < shown.size() ? shown[nextShown] : nullptr);
  }
  if (shown.empty()) return;
  // The pivot among the shown icons: the last one at or before it.
  int p = -1;
  for (std::size_t k = 0; k < shown.size(); ++k)
    if (shownIndex[k] <= pivot) p = static_cast<int>(k);
  const int n = static_cast<int>(shown.size());

  float m = 0;
  for (int k = 0; k <= p; ++k) {
    shown[static_cast<std::size_t>(k)]->UpdateAreaWithMinLeft(m);
    m = shown[static_cast<std::size_t>(k)]->compoundVisibleArea().Right;
  }
  m = kFarRight;
  for (int k = n - 1; k > p; --k) {
    TCabinetIcon2* icon = shown[static_cast<std::size_t>(k)];
    icon->SetRightToLeft(true);
    icon->UpdateAreaWithMaxRight(m);
    m = icon->compoundVisibleArea().Left;
  }
  for (int k = 0; k <= p && k + 1 < n; ++k) {
    TCabinetIcon2* icon = shown[static_cast<std::size_t>(k)];
    TCabinetIcon2* next = shown[static_cast<std::size_t>(k + 1)];
    icon->ShrinkAreaFromRight(next->compoundVisibleArea().Left);
    float r = next->GetRequiredLeftMargin(icon);
    if (!TooClose(r)) continue;
    icon->ShrinkAreaFromRight(next->compoundVisibleArea().Left - r);
    r = next->GetRequiredLeftMargin(icon);
    if (TooClose(r)) next->UpdateAreaWithMinLeft(icon->compoundVisibleArea().Right + r);
  }
  for (int k = n - 1; k > p && k >= 1; --k) {
    TCabinetIcon2* icon = shown[static_cast<std::size_t>(k)];
    TCabinetIcon2* prev = shown[static_cast<std::size_t>(k - 1)];
    prev->ShrinkAreaFromRight(icon->compoundVisibleArea().Left);
    float r = icon->GetRequiredLeftMargin(prev);
    if (!TooClose(r)) continue;
    prev->ShrinkAreaFromRight(icon->compoundVisibleArea().Left - r);
    r = icon->GetRequiredLeftMargin(prev);
    if (TooClose(r)) prev->UpdateAreaWithMaxRight(prev->compoundVisibleArea().Right - r);
  }
}

void TCabinetIconBarFrame::SortZOrder() {
  SortChildrenByKey([](TFmxObject* child) -> double {
    // Nearly every child is an icon; the exact type check spares the full cast for them.
    auto* icon = typeid(*child) == typeid(TCabinetIcon2) ? static_cast<TCabinetIcon2*>(child)
                                                         : dynamic_cast<TCabinetIcon2*>(child);
    return icon ? icon->zPosition() : 0.0;
  });
}

void TCabinetIconBarFrame::UpdateIcon(TTabImage* tab) {
  if (!tab) return;
  TCabinetIcon2* icon = FIconList->FindIcon(tab->TabGuid());
  if (!icon || !FServiceCore) return;
  ComPtr<ISharedFMXBitmap> favicon;
  FFaviconCache->GetFavicon(icon->Tab(), tab->TabId(), favicon);
  if (favicon) icon->SetFavicon(favicon.get());
  ComPtr<IQxICabinetManager> manager;
  FServiceCore->CabinetManager(manager);
  if (manager) icon->SetTitle(CabinetTitle(manager.get(), icon->Tab()));
}

bool TCabinetIconBarFrame::ExistIcon(TTabImage* tab) { return tab && FIconList->FindIcon(tab->TabGuid()); }

bool TCabinetIconBarFrame::MouseInCabinetBar() {
  TPoint cursor;
  if (!Platform().GetCursorPos(&cursor)) return false;
  TPointF p(static_cast<float>(cursor.X), static_cast<float>(cursor.Y));
  if (TCommonCustomForm* form = Form()) p = form->ScreenToClient(p);
  const TPointF local = AbsoluteToLocal(p);
  const TRectF r = LocalRect();
  return local.X >= r.Left && local.X < r.Right && local.Y >= r.Top && local.Y < r.Bottom;
}

void TCabinetIconBarFrame::IconClick(TCabinetIcon2* icon) {
  if (!icon || !icon->Tab() || !FServiceCore) return;
  ComPtr<IQxITab> active;
  FServiceCore->ActiveTab(active);
  if (active && FServiceCore->TabGuid(active.get()) == icon->TabId()) return;
  FServiceCore->SelectTab(icon->Tab());
}

void TCabinetIconBarFrame::FaviconCacheNotifyUpdate(const TString& uri, ISharedFMXBitmap* favicon) {
  if (!FServiceCore) return;
  for (TCabinetIcon2* icon : FIconList->Items())
    if (icon->Tab() && SameText(FServiceCore->TabUri(icon->Tab()), uri)) icon->SetFavicon(favicon);
}

void TCabinetIconBarFrame::IconLayoutMouseMove() {
  if (IPreviewStrip* strip = PreviewStrip()) strip->HideTitleForm(false);
}

}  // namespace qx
