#include "smartsearch/SmartSearchForm.h"

#include <cmath>

#include "host/ClientWidgets.h"
#include "resources/CustomCtrlToolTip2.h"
#include "resources/SmartSearchImageRes.h"
#include "resources/SystemFont.h"
#include "smartsearch/PageSearchRequest.h"
#include "smartsearch/SiteSearchListFile.h"
#include "smartsearch/SmartSearchFormDesign.h"

namespace qx {
namespace {

constexpr LResult kMaNoActivate = 3;
constexpr std::uint32_t kWmNcLButtonDown = 0x00A1;
constexpr std::uint32_t kWmNcRButtonDown = 0x00A4;
// Pixels of the background at least this opaque belong to the popup.
constexpr std::uint32_t kOpaqueAlpha = 200;
constexpr float kLabelFontAdjustment = 1;

TSmartSearchForm*& LiveForm() {
  static TSmartSearchForm* form = nullptr;
  return form;
}

template <class T>
T* Part(const TFmxObject* root, std::u16string_view name) {
  auto* part = FindComponentAs<T>(root, name);
  if (!part) throw EToolkitError("The smart search popup has no " + ToUtf8(name));
  return part;
}

}  // namespace

TSmartSearchForm* LiveSmartSearchForm() { return LiveForm(); }

TSmartSearchForm::TSmartSearchForm(TFmxObject* owner, IServiceCoreWrap* serviceCore,
                                   TSmartSearchImageRes* imageRes, HWnd parentHandle)
    : TBaseFormXE7(owner),
      FParentHandle(parentHandle),
      FServiceCore(serviceCore),
      FImageRes(imageRes),
      FFavicons(serviceCore),
      FEngines(ComPtr<IServiceCoreWrap>(serviceCore)) {
  LoadDesign();
  FSearchButtonNormalBitmap = std::make_unique<TBitmap>(kSearchButtonWidth, kSearchButtonHeight);
  FSearchButtonNormalBitmap->Clear(0x00FFFFFFu);
  if (FImageRes) {
    imgLupe_->SetBitmap(FImageRes->SmartSearchLupe());
    MoreButton_->SetNormalBitmap(FImageRes->SmartSearchMore());
    MoreButton_->SetHoverBitmap(FImageRes->SmartSearchMoreHovered());
    MoreButton_->SetPushedBitmap(FImageRes->SmartSearchMorePressed());
  }
  LiveForm() = this;
  if (FServiceCore) LoadSiteSearchList(*FServiceCore, FSiteSearchList);
  InstallHooks();
}

TSmartSearchForm::~TSmartSearchForm() {
  RemovePopupMenu(FServiceCore.get(), kSmartSearchEngineMenuId);
  RemoveHooks();
  if (LiveForm() == this) LiveForm() = nullptr;
  FToolTip.reset();
  for (TTimer* timer : {tmAutoSearchMenuShow_, tmCheckEngineMenuMouseLeave_, tmUpdateHovered_})
    timer->SetEnabled(false);
  ClearSearchButtons();
  UnRegisterEvents();
  RestoreWindowProc();
  DeleteChildren();
}

void TSmartSearchForm::LoadDesign() {
  if (!TComponentRegistry::IsRegistered("TImageButton"))
    TComponentRegistry::RegisterClass("TImageButton", [](TFmxObject* o) { return new TImageButton(o); });
  TStoredLayoutOptions options;
  options.Handler("DefaultSearchButtonClick",
                  TNotifyEvent([this](TFmxObject*) { DefaultSearchButtonClick(); }));
  LoadLayout(SmartSearchFormDesign(), options);
  FindParts();
  MoreButton_->OnMouseEnter = [this](TFmxObject*) { MoreButtonMouseEnter(); };
  MoreButton_->OnMouseLeave = [this](TFmxObject*) { MoreButtonMouseLeave(); };
  MoreButton_->OnMouseMove = [this](TFmxObject*, TShiftState, float, float) { MoreButtonMouseMove(); };
  MoreButton_->OnMouseDown = [this](TFmxObject*, TMouseButton, TShiftState, float, float) {
    MoreButtonMouseDown();
  };
  tmAutoSearchMenuShow_->SetOnTimer([this](TFmxObject*) { AutoSearchMenuShowTimer(); });
  tmCheckEngineMenuMouseLeave_->SetOnTimer([this](TFmxObject*) { CheckEngineMenuMouseLeave(); });
  tmUpdateHovered_->SetOnTimer([this](TFmxObject*) { UpdateHovered(); });
  OnHide = [this](TFmxObject*) { FormHide(); };
}

void TSmartSearchForm::FindParts() {
  BackgroundLayout_ = Part<TLayout>(this, u"BackgroundLayout");
  imgBackground_ = Part<TImage>(this, u"imgBackground");
  ButtonLayout_ = Part<TLayout>(this, u"ButtonLayout");
  DefaultSearchButton_ = Part<TImageButton>(this, u"DefaultSearchButton");
  lbSearchShadow_ = Part<TLabel>(this, u"lbSearchShadow");
  imgLupe_ = Part<TImage>(this, u"imgLupe");
  lbSearch_ = Part<TLabel>(this, u"lbSearch");
  SearchButtonsLayout_ = Part<TLayout>(this, u"SearchButtonsLayout");
  MoreButton_ = Part<TImageButton>(this, u"MoreButton");
  PageSearchButtonLayout_ = Part<TLayout>(this, u"PageSearchButtonLayout");
  tmAutoSearchMenuShow_ = Part<TTimer>(this, u"tmAutoSearchMenuShow");
  tmCheckEngineMenuMouseLeave_ = Part<TTimer>(this, u"tmCheckEngineMenuMouseLeave");
  tmUpdateHovered_ = Part<TTimer>(this, u"tmUpdateHovered");
}

void TSmartSearchForm::HandleCreated() {
  TBaseFormXE7::HandleCreated();
  SubclassWindow(FormHandle());
}

// Clicks must never activate the popup: the page keeps the focus and the selection.
void TSmartSearchForm::WndMethod(TWndMessage& message) {
  if (message.Msg == win::WM_MOUSEACTIVATE) {
    message.Result = kMaNoActivate;
    return;
  }
  if (message.Msg == win::WM_KEYDOWN) {
    int key = static_cast<int>(message.wParam);
    FormKeyDown(key);
    if (key == 0) return;
  }
  DefaultHandler(message);
}

void TSmartSearchForm::ShowForm(std::u16string_view keyword, TPoint pt) {
  if (!FServiceCore || !TSearchEngineSettings::ReadShowSmartSearch(*FServiceCore)) return;
  HandleNeed();
  SetHeight(kFormHeight);
  ComPtr<IQxITab> tab;
  FServiceCore->ActiveTab(tab);
  FPageSearchFormReferer.clear();
  if (tab) FServiceCore->GetTabText(tab.get(), u"search_form_referrer", FPageSearchFormReferer);
  FPageSearchRequest.clear();
  FPageSearchCharSet.clear();
  FKeyword = TString(keyword);
  const TPageSearch pageSearch = FindPageSearch(*FServiceCore, FSiteSearchList, FPageSearchFormReferer);
  FPageSearchRequest = pageSearch.Request;
  FPageSearchCharSet = pageSearch.CharSet;
  InitLabels();
  PageSearchButtonLayout_->SetVisible(!FPageSearchRequest.empty());
  BuildSearchButtons();
  UpdateFormWidth();
  UpdateBackground(pt);
  UpdateDefaultButtonBitmaps();
  UpdateFormPosition(pt);
  UpdatePageSearchButtonIcon();
  PageSearchButtonLayout_->SetVisible(!FPageSearchRequest.empty());
  UpdateToolTips();
  FCurrentTabId = tab ? FServiceCore->TabGuid(tab.get()) : TString();
  Invalidate();
  if (!Visible()) {
    IPlatform& os = Platform();
    const HWnd window = FormHandle();
    if (window && os.GetParent(window) != FParentHandle) os.SetParent(window, FParentHandle);
    if (window) os.ShowWindow(window, win::SW_SHOWNA);
    tmUpdateHovered_->SetEnabled(true);
    SetVisible(true);
  }
}

void TSmartSearchForm::InitLabels() {
  if (FFontInit) return;
  FFontInit = true;
  // The host's UI font, a point larger and bold, so the word reads like the browser's own.
  TFont& font = lbSearch_->TextSettings.Font;
  ApplySystemFont(font, kLabelFontAdjustment);
  font.Style |= static_cast<TFontStyles>(TFontStyle::Bold);
  const TString text = FServiceCore->TranslateText(u"検索");
  lbSearch_->SetText(text);
  lbSearchShadow_->SetText(text);
  lbSearchShadow_->TextSettings.Font = lbSearch_->TextSettings.Font;
}

void TSmartSearchForm::FormKeyDown(int& key) {
  if (key != win::VK_ESCAPE) return;
  key = 0;
  Hide();
}

void TSmartSearchForm::FormHide() {
  for (TTimer* timer : {tmAutoSearchMenuShow_, tmCheckEngineMenuMouseLeave_, tmUpdateHovered_})
    timer->SetEnabled(false);
  if (const HWnd menu = LiveEngineMenuWindow())
    Platform().PostMessageW(menu, win::WM_KEYDOWN, static_cast<WParam>(win::VK_ESCAPE), 0);
  FToolTip.reset();
}

void TSmartSearchForm::HitTestForm(TPoint pt, bool ignoreOutside) {
  const TPointF client = ScreenToClient(TPointF{static_cast<float>(pt.X), static_cast<float>(pt.Y)});
  const int x = static_cast<int>(std::lround(client.X)), y = static_cast<int>(std::lround(client.Y));
  const TBitmap& picture = imgBackground_->Bitmap();
  if (x >= 0 && y >= 0 && x < picture.Width() && y < picture.Height()) {
    if ((picture.PixelColor(x, y) >> 24) < kOpaqueAlpha) Hide();
  } else if (!ignoreOutside) {
    Hide();
  }
}

void TSmartSearchForm::HandleMouseHook(std::uint32_t msg, HWnd hwnd, TPoint pt) {
  if (!Visible()) return;
  switch (msg) {
    case win::WM_LBUTTONDOWN:
    case kWmNcLButtonDown:
    case win::WM_RBUTTONDOWN:
    case kWmNcRButtonDown:
      break;
    default:
      return;
  }
  if (hwnd && hwnd == FormHandle()) {
    HitTestForm(pt, true);
    return;
  }
  const HWnd menu = LiveEngineMenuWindow();
  if (menu && hwnd == menu) return;
  Hide();
}

// ---- searching

void TSmartSearchForm::DefaultSearchButtonClick() {
  Hide();
  FEngines.DefaultSearch(FKeyword);
}

void TSmartSearchForm::SearchButtonClick(TFmxObject* sender) {
  auto* button = dynamic_cast<TSearchButton*>(sender);
  if (!button) return;
  Hide();
  FEngines.EngineButtonSearch(button->FGuid, button->FActionName, FKeyword);
}

void TSmartSearchForm::PageSearchClick() {
  Hide();
  FEngines.PageSearch(FPageSearchRequest, FPageSearchCharSet, FKeyword);
}

HResult TSmartSearchForm::SmartSearchMenuSelect(const TString&, IQxIEvent* event) {
  ComPtr<IQxIStringDictionaryWrap> params = FServiceCore->EventParameters(event);
  if (!params) return kOk;
  const TString action = params->Value(u"action");
  if (action.empty()) return kOk;
  Hide();
  FEngines.EngineMenuSearch(params->Value(u"id"), action, FKeyword);
  return kOk;
}

// A tab switch by the user in the group shown ends the popup; other groups don't matter.
HResult TSmartSearchForm::TabGroupChanged(const TString&, IQxIEvent* event) {
  if (!Visible()) return kOk;
  ComPtr<IQxIStringDictionaryWrap> params = FServiceCore->EventParameters(event);
  if (!params) return kOk;
  if (SameText(params->Value(u"id"), FServiceCore->ActiveTabGroupGuid()) &&
      params->Value(u"timing") == u"after" && params->Value(u"event") == u"SetActiveTab" &&
      !SameText(params->Value(u"new-tab-id"), FCurrentTabId))
    Hide();
  return kOk;
}

HResult TSmartSearchForm::OptionApply(const TString&, IQxIEvent*) {
  if (FSearchButtonsBuilt && FEngineList.IsEngineSettingChanged(*FServiceCore)) FSearchButtonsBuilt = false;
  return kOk;
}

// ---- events

void TSmartSearchForm::RegisterEvents() {
  if (!FServiceCore) return;
  auto add = [this](std::u16string_view id, ComPtr<IQxIEventListener>& listener,
                    HResult (TSmartSearchForm::*handler)(const TString&, IQxIEvent*)) {
    if (listener) return;
    FServiceCore->AddEventHandler(0, id, listener, false,
                                  [this, handler](const TString& eventId, IQxIEvent* event) {
                                    return (this->*handler)(eventId, event);
                                  });
  };
  add(u"FaviconManager.Changed", FFaviconManagerChangedListener, &TSmartSearchForm::FaviconManagerChanged);
  add(u"Option.Apply", FOptionApplyListener, &TSmartSearchForm::OptionApply);
  add(u"XmlWidget.MenuHide", FXMLWidgetMenuHideEventListener, &TSmartSearchForm::XmlWidgetMenuHide);
  add(u"SmartSearch.MenuSelect", FSmartSearchMenuSelectEventListener,
      &TSmartSearchForm::SmartSearchMenuSelect);
  add(u"TabGroup.Changed", FTabGroupChangedListener, &TSmartSearchForm::TabGroupChanged);
  add(u"XmlWidgetPopup.DoModal", FXmlWidgetPopupDoModalListener, &TSmartSearchForm::XmlWidgetPopupDoModal);
  add(u"XmlWidget.DoMenuHide", FXmlWidgetDoMenuHideListener, &TSmartSearchForm::XmlWidgetDoMenuHide);
}

void TSmartSearchForm::UnRegisterEvents() {
  if (!FServiceCore) return;
  auto remove = [this](std::u16string_view id, ComPtr<IQxIEventListener>& listener) {
    if (!listener) return;
    FServiceCore->RemoveEventListener(id, listener.get());
    listener = nullptr;
  };
  remove(u"FaviconManager.Changed", FFaviconManagerChangedListener);
  remove(u"Option.Apply", FOptionApplyListener);
  remove(u"XmlWidget.MenuHide", FXMLWidgetMenuHideEventListener);
  remove(u"SmartSearch.MenuSelect", FSmartSearchMenuSelectEventListener);
  remove(u"TabGroup.Changed", FTabGroupChangedListener);
  remove(u"XmlWidgetPopup.DoModal", FXmlWidgetPopupDoModalListener);
  remove(u"XmlWidget.DoMenuHide", FXmlWidgetDoMenuHideListener);
}

void TSmartSearchForm::FireEvent(std::u16string_view eventId,
                                 std::initializer_list<std::pair<std::u16string_view, TString>> values,
                                 ComPtr<IQxIStringArray>* results) {
  ComPtr<IQxIEventService> events;
  FServiceCore->EventService(events);
  if (!events) return;
  ComPtr<IQxIStringDictionary> parameters;
  FServiceCore->CreateStringDictionary(parameters);
  if (!parameters) return;
  for (const auto& [key, value] : values) parameters->SetValue(TString(key).c_str(), value.c_str());
  ComPtr<IQxIStringArray> ignored;
  events->Fire(TString(eventId).c_str(), parameters.get(), results ? results->put() : ignored.put());
}

void TSmartSearchForm::HideEngineMenu() { FireEvent(u"XmlWidget.MenuHide", {}); }

}  // namespace qx
