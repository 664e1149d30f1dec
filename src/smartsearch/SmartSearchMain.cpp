#include "smartsearch/SmartSearchMain.h"

#include <cmath>
#include <vector>

#include "host/WebkitScriptManager.h"
#include "resources/SmartSearchImageRes.h"
#include "smartsearch/SmartSearchForm.h"

namespace qx {
namespace {

constexpr std::u16string_view kInputHandlerIPC = u"QxInputHandler.IPC";
constexpr std::u16string_view kNavigationKeys[] = {u"Home", u"End",   u"Tab", u"Left",
                                                   u"Up",   u"Right", u"Down"};
constexpr std::u16string_view kWheelActions[] = {u"#WH", u"#HWH", u"#WH2", u"#HWH2"};

std::vector<TString> SplitAtBlanks(const TString& text) {
  std::vector<TString> tokens;
  std::size_t start = 0;
  while (start <= text.size()) {
    const std::size_t end = text.find(u' ', start);
    const TString token = text.substr(start, end == TString::npos ? TString::npos : end - start);
    if (!token.empty()) tokens.push_back(token);
    if (end == TString::npos) break;
    start = end + 1;
  }
  return tokens;
}

bool IsInteger(const TString& text, int& value) {
  const std::int64_t parsed = StrToIntDef(text, INT64_MIN);
  if (parsed == INT64_MIN || parsed < INT32_MIN || parsed > INT32_MAX) return false;
  value = static_cast<int>(parsed);
  return true;
}

bool HidesPopup(const std::vector<TString>& tokens) {
  for (auto action : kWheelActions)
    if (tokens[0] == action) return true;
  if (tokens[0] != u"#KD") return false;
  for (std::size_t i = 1; i < tokens.size(); ++i)
    for (auto key : kNavigationKeys)
      if (SameText(Trim(tokens[i]), key)) return true;
  return false;
}

}  // namespace

TSmartSearch::TSmartSearch(IServiceCoreWrap* serviceCore)
    : FServiceCore(serviceCore), FDelayTaskList(std::make_unique<TDelayTaskList>()) {
  FDelayTaskList->SetInterval(1);
  FImageRes = std::make_unique<TSmartSearchImageRes>(serviceCore);
  if (FServiceCore)
    FServiceCore->AddEventHandler(
        0, kInputHandlerIPC, FInputHandlerIPCListener, false,
        [this](const TString& eventId, IQxIEvent* event) { return InputHandlerIPC(eventId, event); });
}

TSmartSearch::~TSmartSearch() {
  if (FServiceCore && FInputHandlerIPCListener)
    FServiceCore->RemoveEventListener(kInputHandlerIPC, FInputHandlerIPCListener.get());
  FInputHandlerIPCListener = nullptr;
  if (FSmartSearchForm) {
    FSmartSearchForm->UnRegisterEvents();
    FSmartSearchForm->Hide();
  }
  FSmartSearchForm.reset();
  FDelayTaskList.reset();
  FImageRes.reset();
}

HResult TSmartSearch::InputHandlerIPC(const TString&, IQxIEvent* event) {
  if (!event) return kOk;
  ComPtr<IQxIStringDictionaryWrap> params = FServiceCore->EventParameters(event);
  if (!params) return kOk;
  const std::vector<TString> tokens = SplitAtBlanks(params->Value(u"Action"));
  if (tokens.empty()) return kOk;
  if (tokens[0] == u"#LU") {
    TPoint pt;
    if (tokens.size() < 3 || !IsInteger(tokens[1], pt.X) || !IsInteger(tokens[2], pt.Y))
      Platform().GetCursorPos(&pt);
    RunSmartSearch(pt);
  } else if (HidesPopup(tokens)) {
    HidePopup();
  }
  return kOk;
}

void TSmartSearch::HidePopup() {
  if (!FSmartSearchForm) return;
  FSmartSearchForm->HideEngineMenu();
  FSmartSearchForm->Hide();
}

void TSmartSearch::RunSmartSearch(TPoint pt) {
  FDelayTaskList->AddAnonTask(u"ShowSmartSearch", [this, pt] { ShowSmartSearch(pt); });
}

void TSmartSearch::ShowSmartSearch(TPoint pt) {
  ComPtr<IQxIBrowser> browser;
  FServiceCore->ActiveBrowser(browser);
  if (!browser) return;
  auto scripts = MakeCom<TWebkitScriptManagerImpl>(FServiceCore.get(), false, browser.get());
  TString text;
  if (!scripts->ExecuteAndWait(kReadSelectionScript, text)) return;
  // The same selection clicked again doesn't bring the popup back.
  if (text == FLastKeyword) return;
  FLastKeyword = text;
  if (text.empty()) return;
  if (!FSmartSearchForm) {
    FSmartSearchForm =
        std::make_unique<TSmartSearchForm>(nullptr, FServiceCore.get(), FImageRes.get(),
                                           reinterpret_cast<HWnd>(FServiceCore->MainWindowHandle()));
    FSmartSearchForm->RegisterEvents();
  }
  FSmartSearchForm->ShowForm(text, pt);
}

}  // namespace qx
