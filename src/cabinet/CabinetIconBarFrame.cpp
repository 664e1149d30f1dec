#include "cabinet/CabinetIconBarFrame.h"

#include <algorithm>
#include <cmath>
#include <typeinfo>

#include "base/Text.h"
#include "cabinet/CabinetBarIcon.h"
#include "cabinet/CabinetIconBarForm.h"
#include "tabview/TabImage.h"
#include "tabview/TabImageSection.h"

namespace qx {
namespace {

constexpr float kFarRight = 1000000000.0f;

bool TooClose(float r) { return r >= 1 && r <= 4; }

// The string's text, alive as long as the string.
std::u16string_view TextOf(IQxIString* text) {
  Text chars = nullptr;
  if (!text || Failed(text->GetText(&chars)) || !chars) return {};
  return chars;
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

void TCabinetIconBarFrame::RefreshTitle(IQxICabinetManager* manager, TCabinetIcon2* icon) {
  ComPtr<IQxIString> title;
  if (!manager || Failed(manager->GetDisplayTitle(icon->Tab(), title.put()))) title = nullptr;
  // Compared before copied: the title is nearly always the one the icon shows.
  const std::u16string_view text = TextOf(title.get());
  if (text != icon->Title()) icon->SetTitle(std::u16string(text));
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
  // The list keeps its lookup across passes: only icons of new or gone tabs change it.
  FIconList->BeginPass();
  TCabinetIcon2* front = CollectIcons(dragTarget);
  for (TCabinetIcon2* icon : FIconList->EndPass()) {
    ForgetImage(icon);
    delete icon;
  }
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

TCabinetIcon2* TCabinetIconBarFrame::KnownIcon(TTabImage* tab, std::u16string& id) {
  if (const auto it = FIconOfImage.find(tab);
      it != FIconOfImage.end() && it->second->ImageTabId() == tab->TabId())
    return it->second;
  id = tab->TabGuid();
  return id.empty() ? nullptr : FIconList->FindIcon(id);
}

void TCabinetIconBarFrame::RememberImage(TCabinetIcon2* icon, TTabImage* tab) {
  if (icon->Image() == tab && icon->ImageTabId() == tab->TabId()) return;
  ForgetImage(icon);
  icon->SetImage(tab, tab->TabId());
  FIconOfImage[tab] = icon;
}

void TCabinetIconBarFrame::ForgetImage(TCabinetIcon2* icon) {
  // Only its own entry: the image's address may serve another icon's tab by now.
  if (const auto it = FIconOfImage.find(icon->Image()); it != FIconOfImage.end() && it->second == icon)
    FIconOfImage.erase(it);
}

TCabinetIcon2* TCabinetIconBarFrame::CollectIcons(TTabImage* dragTarget) {
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
  if (!tabs || !manager || !tabManager) return nullptr;
  TCabinetIcon2* front = nullptr;
  std::int32_t group = 0;
  // The run's domain as the host gave it, compared by its text.
  ComPtr<IQxIString> runDomain;
  std::u16string_view runDomainText;
  TCabinetIcon2* runHead = nullptr;
  for (TTabImageSection* section : *tabs)
    for (TTabImageItem* item : *section) {
      TTabImage* tab = AsTabImage(item);
      if (!tab) continue;
      std::u16string id;
      TCabinetIcon2* icon = KnownIcon(tab, id);
      // A known icon holds its host tab; only a new one is looked up.
      ComPtr<IQxITab> foundTab;
      if (!icon && !id.empty()) tabManager->TabByGuid(id.c_str(), foundTab.put());
      IQxITab* hostTab = icon ? icon->Tab() : foundTab.get();
      if (!hostTab) continue;
      // Asked once per tab: a tab without a site icon has no domain either.
      ComPtr<IQxIString> domain;
      if (Failed(manager->GetDomainId(hostTab, domain.put()))) continue;
      const bool made = !icon;
      if (icon) {
        // The same tab twice in the strip keeps its first place.
        if (!FIconList->Keep(icon)) continue;
        icon->SetRightToLeft(false);
        icon->SetForceHideLines(false);
        icon->SetLastFirstTabWidth(icon->FirstTabWidth());
      } else {
        ComPtr<ISharedFMXBitmap> favicon;
        FFaviconCache->GetFavicon(hostTab, tab->TabId(), favicon);
        if (!favicon) continue;
        icon = MakeIcon(id, hostTab, favicon.get());
        FIconList->AddIcon(id, icon);
      }
      RememberImage(icon, tab);

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
      // Tabs of one domain may share the host's string, which then needs no reading.
      const bool sameDomain = runHead && (domain == runDomain || TextOf(domain.get()) == runDomainText);
      const bool visible = !sameDomain;
      icon->SetVisible(visible);
      // Only a shown icon draws its title; a hidden one gets it when it heads a run.
      if (visible || made) RefreshTitle(manager.get(), icon);
      if (visible) {
        ++group;
        runHead = icon;
        runDomain = std::move(domain);
        runDomainText = TextOf(runDomain.get());
      } else {
        runHead->IncludeVisibleArea(area);
      }
      icon->SetDomainId(group);
      if (icon->Height() != height) icon->SetHeight(height);
    }
  return front;
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
  if (manager) RefreshTitle(manager.get(), icon);
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
