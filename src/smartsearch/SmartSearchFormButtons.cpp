// The popup's engine buttons, its page search button and the menu of the other engines.

#include "host/ClientWidgets.h"
#include "resources/SmartSearchImageRes.h"
#include "smartsearch/SmartSearchForm.h"

namespace qx {

void TSmartSearchForm::BuildSearchButtons() {
  if (FSearchButtonsBuilt || !TSearchEngineSettings::ReadShowSmartSearch(*FServiceCore)) return;
  RemovePopupMenu(FServiceCore.get(), kSmartSearchEngineMenuId);
  ClearSearchButtons();
  MakePageSearchButton();
  FEngineList.Build(*FServiceCore);
  for (const TSearchEngineItem& engine : FEngineList.Engines()) {
    if (static_cast<std::int32_t>(FSearchButtons.size()) < FEngineList.FCacheSmartSearchButtonCount) {
      ComPtr<ISharedFMXBitmap> icon;
      FFavicons.GetFavicon(engine.Icon, icon);
      // An engine without any icon, not even the default one, is left out.
      if (icon) AddEngineButton(engine, icon.get());
      continue;
    }
    FEngineMenuItems.push_back({engine.ActionName, engine.Guid, EngineMenuIconUrl(engine.Icon), engine.Name,
                                EngineMenuScript(engine.ActionName, engine.Guid)});
  }
  const bool hasMenu = !FEngineMenuItems.empty();
  if (hasMenu)
    if (ComPtr<IQxIXmlElement> menu = MakeEngineMenuDocument(*FServiceCore, FEngineMenuItems))
      RegisterPopupMenu(FServiceCore.get(), kSmartSearchEngineMenuId, menu.get());
  MoreButton_->SetVisible(hasMenu);
  FSearchButtonsBuilt = true;
}

void TSmartSearchForm::ClearSearchButtons() {
  FEngineMenuItems.clear();
  for (TSearchButton* button : FSearchButtons) delete button;
  FSearchButtons.clear();
  delete FPageSearchButton;
  FPageSearchButton = nullptr;
}

void TSmartSearchForm::PrepareSmallButton(TSearchButton& button) {
  button.SetNormalBitmap(FSearchButtonNormalBitmap.get());
  if (FImageRes) {
    button.SetHoverBitmap(FImageRes->SmartSearchServiceHovered());
    button.SetPushedBitmap(FImageRes->SmartSearchServicePressed());
  }
}

void TSmartSearchForm::MakePageSearchButton() {
  auto* button = new TSearchButton(this);
  button->SetBounds(-7, 30, kSearchButtonWidth, kSearchButtonHeight);
  button->OnClick = [this](TFmxObject*) { PageSearchClick(); };
  button->SetParent(PageSearchButtonLayout_);
  PrepareSmallButton(*button);
  FPageSearchButton = button;
}

void TSmartSearchForm::AddEngineButton(const TSearchEngineItem& engine, ISharedFMXBitmap* icon) {
  auto* button = new TSearchButton(this);
  FSearchButtons.push_back(button);
  const auto index = static_cast<float>(FSearchButtons.size() - 1);
  button->FGuid = engine.Guid;
  button->FDisplayName = engine.Name;
  button->FActionName = engine.ActionName;
  button->FRequest = engine.Request;
  button->FMethod = engine.Method;
  button->FEncode = engine.Encode;
  button->FIconImage->SetBitmap(icon->GetBitmap());
  button->OnClick = [this](TFmxObject* sender) { SearchButtonClick(sender); };
  button->SetBounds(index * kSearchButtonWidth, 0, kSearchButtonWidth, kSearchButtonHeight);
  button->SetParent(SearchButtonsLayout_);
  PrepareSmallButton(*button);
}

void TSmartSearchForm::UpdatePageSearchButtonIcon() {
  if (!FPageSearchButton || FPageSearchRequest.empty()) return;
  FPageSearchButton->FFaviconRetryCount = 0;
  FPageSearchButton->FFaviconUrl = FServiceCore->ActiveBrowserUri();
  ComPtr<ISharedFMXBitmap> icon;
  FFavicons.GetFavicon(u"favicon://" + FPageSearchButton->FFaviconUrl, icon);
  if (icon)
    FPageSearchButton->FIconImage->SetBitmap(icon->GetBitmap());
  else
    FPageSearchButton->FIconImage->Bitmap().SetSize(0, 0);
}

// Only the page search button knows its site; engine icons wait for the next rebuild.
HResult TSmartSearchForm::FaviconManagerChanged(const TString&, IQxIEvent* event) {
  ComPtr<IQxIStringDictionaryWrap> params = FServiceCore->EventParameters(event);
  if (!params || params->Value(u"timing") != u"after" || params->Value(u"event") != u"Request") return kOk;
  const TString uri = params->Value(u"favicon-uri-id");
  if (!FPageSearchButton || !SameText(FPageSearchButton->FFaviconUrl, uri)) return kOk;
  ComPtr<ISharedFMXBitmap> icon;
  FFavicons.GetFavicon(u"favicon://" + FPageSearchButton->FFaviconUrl, icon);
  if (icon) FPageSearchButton->FIconImage->SetBitmap(icon->GetBitmap());
  return kOk;
}

}  // namespace qx
