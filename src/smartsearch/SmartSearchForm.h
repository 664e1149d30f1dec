#pragma once

// The smart search popup shown beside a text selection: the default search button, a
// row of engine buttons, an arrow to a menu of further engines and, on sites with a
// search of their own, a button that searches the site. A borderless popup that never
// takes the focus from the page.

#include <cstdint>
#include <memory>
#include <vector>

#include "base/ComPtr.h"
#include "host/ServiceCoreWrapIntf.h"
#include "resources/BaseFormXE7.h"
#include "smartsearch/EngineMenuDocument.h"
#include "smartsearch/SearchButton.h"
#include "smartsearch/SearchEngineList.h"
#include "smartsearch/SiteSearchItem.h"
#include "smartsearch/SmartSearchEngines.h"
#include "smartsearch/SmartSearchFavicons.h"
#include "toolkit/Layout.h"
#include "toolkit/TextControls.h"
#include "toolkit/Timer.h"

namespace qx {

class TSmartSearchImageRes;
class TCustomControlToolTip;

inline constexpr std::u16string_view kSmartSearchEngineMenuId = u"smartsearch-engine-menu";

class TSmartSearchForm : public TBaseFormXE7 {
 public:
  static constexpr int kFormHeight = 90;
  static constexpr int kSearchButtonWidth = 22;
  static constexpr int kSearchButtonHeight = 30;
  static constexpr int kPageSearchWidth = 32;

  TSmartSearchForm(TFmxObject* owner, IServiceCoreWrap* serviceCore, TSmartSearchImageRes* imageRes,
                   HWnd parentHandle);
  ~TSmartSearchForm() override;
  std::string ClassName() const override { return "TSmartSearchForm"; }

  // Shows the popup for a selection at a screen point, or refreshes and moves it.
  void ShowForm(std::u16string_view keyword, TPoint pt);
  void RegisterEvents();
  void UnRegisterEvents();
  // Asks the host to close whatever menu it has open.
  void HideEngineMenu();
  // Mouse input of any window of this thread, from the mouse hook.
  void HandleMouseHook(std::uint32_t msg, HWnd hwnd, TPoint pt);
  // A press at a screen point: hides the form on a see-through pixel of its background,
  // and also outside it unless ignoreOutside.
  void HitTestForm(TPoint pt, bool ignoreOutside);

  // The parts of the popup, for whoever drives or inspects it.
  TImageButton* DefaultSearchButton() const { return DefaultSearchButton_; }
  TImageButton* MoreButton() const { return MoreButton_; }
  TLayout* SearchButtonsLayout() const { return SearchButtonsLayout_; }
  TLayout* PageSearchButtonLayout() const { return PageSearchButtonLayout_; }
  TImage* Background() const { return imgBackground_; }
  TLabel* SearchLabel() const { return lbSearch_; }
  TLabel* SearchLabelShadow() const { return lbSearchShadow_; }
  const std::vector<TSearchButton*>& SearchButtons() const { return FSearchButtons; }
  TSearchButton* PageSearchButton() const { return FPageSearchButton; }
  const std::vector<TEngineMenuItem>& EngineMenuItems() const { return FEngineMenuItems; }
  const TString& Keyword() const { return FKeyword; }
  const TString& PageSearchRequest() const { return FPageSearchRequest; }
  const TString& PageSearchCharSet() const { return FPageSearchCharSet; }
  bool ShowingUpword() const { return FShowingUpword; }
  bool ShowingMenu() const { return FShowingMenu; }
  bool SearchButtonsBuilt() const { return FSearchButtonsBuilt; }
  const TSiteSearchList& SiteSearchList() const { return FSiteSearchList; }
  TSmartSearchFavicons& Favicons() { return FFavicons; }
  TCustomControlToolTip* ToolTip() const { return FToolTip.get(); }
  TTimer* AutoSearchMenuShowTimer() const { return tmAutoSearchMenuShow_; }

  // The button handlers, as clicks call them.
  void DefaultSearchButtonClick();
  void SearchButtonClick(TFmxObject* sender);
  void PageSearchClick();
  void MoreButtonMouseEnter();
  void MoreButtonMouseMove();
  void MoreButtonMouseLeave();
  void MoreButtonMouseDown();

 protected:
  void HandleCreated() override;
  void WndMethod(TWndMessage& message) override;

 private:
  void LoadDesign();
  void FindParts();
  void FormKeyDown(int& key);
  void FormHide();

  // Engines (SmartSearchFormButtons.cpp).
  void BuildSearchButtons();
  void ClearSearchButtons();
  void MakePageSearchButton();
  void AddEngineButton(const TSearchEngineItem& engine, ISharedFMXBitmap* icon);
  void PrepareSmallButton(TSearchButton& button);
  void UpdatePageSearchButtonIcon();
  HResult FaviconManagerChanged(const TString& eventId, IQxIEvent* event);
  HResult OptionApply(const TString& eventId, IQxIEvent* event);
  HResult SmartSearchMenuSelect(const TString& eventId, IQxIEvent* event);
  HResult TabGroupChanged(const TString& eventId, IQxIEvent* event);

  // Size, pictures and place (SmartSearchFormPlacing.cpp).
  void UpdateFormWidth();
  void UpdateBackground(TPoint pt);
  void UpdateDefaultButtonBitmaps();
  void UpdateFormPosition(TPoint pt);
  void UpdateToolTips();
  void UpdateHovered();
  void InitLabels();

  // The engine menu (SmartSearchFormMenu.cpp).
  void ShowEngineMenu();
  void CloseEngineMenu();
  void AutoSearchMenuShowTimer();
  void CheckEngineMenuMouseLeave();
  bool MouseOverMoreButton() const;
  HResult XmlWidgetMenuHide(const TString& eventId, IQxIEvent* event);
  HResult XmlWidgetPopupDoModal(const TString& eventId, IQxIEvent* event);
  HResult XmlWidgetDoMenuHide(const TString& eventId, IQxIEvent* event);
  HWnd LiveEngineMenuWindow();

  // Hooks (SmartSearchFormHooks.cpp).
  void InstallHooks();
  void RemoveHooks();

  void FireEvent(std::u16string_view eventId,
                 std::initializer_list<std::pair<std::u16string_view, TString>> values,
                 ComPtr<IQxIStringArray>* results = nullptr);

  // Designed parts, owned by the form.
  TLayout* BackgroundLayout_ = nullptr;
  TImage* imgBackground_ = nullptr;
  TLayout* ButtonLayout_ = nullptr;
  TImageButton* DefaultSearchButton_ = nullptr;
  TLabel* lbSearchShadow_ = nullptr;
  TImage* imgLupe_ = nullptr;
  TLabel* lbSearch_ = nullptr;
  TLayout* SearchButtonsLayout_ = nullptr;
  TImageButton* MoreButton_ = nullptr;
  TLayout* PageSearchButtonLayout_ = nullptr;
  TTimer* tmAutoSearchMenuShow_ = nullptr;
  TTimer* tmCheckEngineMenuMouseLeave_ = nullptr;
  TTimer* tmUpdateHovered_ = nullptr;

  HWnd FParentHandle;
  ComPtr<IServiceCoreWrap> FServiceCore;
  TSmartSearchImageRes* FImageRes;  // not owned
  TString FKeyword;
  bool FFontInit = false;
  bool FFirstShow = true;
  bool FSearchButtonsBuilt = false;
  std::vector<TSearchButton*> FSearchButtons;  // owned through the form
  TSearchEngineList FEngineList;
  TSmartSearchFavicons FFavicons;
  std::vector<TEngineMenuItem> FEngineMenuItems;
  ComPtr<IQxIEventListener> FFaviconManagerChangedListener, FOptionApplyListener,
      FXMLWidgetMenuHideEventListener, FSmartSearchMenuSelectEventListener, FTabGroupChangedListener,
      FXmlWidgetPopupDoModalListener, FXmlWidgetDoMenuHideListener;
  float FLastFormSize = 0;
  bool FBackGroundInit = false;
  bool FShowingUpword = false;
  float FLastDefaultSearchButtonWidth = 0;
  float FLastDefaultSearchButtonBitmapWidth = 0;
  std::unique_ptr<TBitmap> FSearchButtonNormalBitmap;
  bool FShowingMenu = false;
  TString FCurrentTabId;
  HWnd FEngineMenuWindowHandle = nullptr;
  std::uint32_t FEngineMenuMouseLeaveTime = 0;
  bool FStopAutoShowMenu = false;
  std::uint32_t FEngineMenuShowTime = 0;
  TString FPageSearchRequest;
  TString FPageSearchCharSet;
  TString FPageSearchFormReferer;
  bool FShowPageSearchButton = false;
  TSearchButton* FPageSearchButton = nullptr;  // owned through the form
  std::unique_ptr<TCustomControlToolTip> FToolTip;
  TSiteSearchList FSiteSearchList;
  TSmartSearchEngines FEngines;
};

// The one live popup, for the thread hooks; null while there is none.
TSmartSearchForm* LiveSmartSearchForm();

}  // namespace qx
