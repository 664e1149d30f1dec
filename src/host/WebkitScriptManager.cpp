#include "host/WebkitScriptManager.h"

#include <cstdlib>

#include "host/HostKeys.h"
#include "host/V3EventTypes.h"
#include "platform/Platform.h"

namespace qx {

TWebkitScriptManagerImpl::TWebkitScriptManagerImpl(IServiceCoreWrap* serviceCore, bool unblockScript,
                                                   IQxIBrowser* browser)
    : FServiceCore(serviceCore), FBrowser(browser), FUnblockScript(unblockScript) {
  if (FServiceCore) {
    FBrowserId = FServiceCore->BrowserIdTextOfBrowser(browser);
    // Not held by the listener: the manager removes it before it dies.
    FServiceCore->AddEventHandlerV3(
        0, kEvBrowserExecuteJavascript, FEventListener, false,
        [this](const TString& id, IQxIEvent* event) { return OnScriptResult(id, event); });
  }
  FGuidStr = GuidToString(NewGuid());
}

TWebkitScriptManagerImpl::~TWebkitScriptManagerImpl() {
  if (FServiceCore && FEventListener)
    FServiceCore->RemoveEventListener(V3EventId(kEvBrowserExecuteJavascript), FEventListener.get());
}

bool TWebkitScriptManagerImpl::RunAndWait(std::u16string_view code, TString& result, bool pumping) {
  result.clear();
  ++FSeqNo;
  const TString scriptId = FGuidStr + u"_" + IntToStr(FSeqNo);
  if (!FServiceCore) return false;
  FServiceCore->ExecuteJavascript(FBrowser.get(), code, FUnblockScript, scriptId);
  const std::uint32_t start = Platform().GetTickCount();
  for (;;) {
    if (pumping) Platform().ProcessMessages();
    if (FServiceCore->GetFinalizing()) return false;
    if (const auto it = FReturnValueMap.find(scriptId); it != FReturnValueMap.end()) {
      result = it->second;
      return true;
    }
    if (Platform().GetTickCount() - start >= kScriptWaitLimitMs) return false;
    Platform().WaitStep(pumping);
  }
}

bool TWebkitScriptManagerImpl::ExecuteAndWait(std::u16string_view code, TString& result) {
  return RunAndWait(code, result, false);
}

bool TWebkitScriptManagerImpl::ExecuteAndWaitPumping(std::u16string_view code, TString& result) {
  return RunAndWait(code, result, true);
}

void TWebkitScriptManagerImpl::ExecuteNoResult(std::u16string_view code) {
  if (FServiceCore) FServiceCore->ExecuteJavascript(FBrowser.get(), code, FUnblockScript, u"");
}

bool TWebkitScriptManagerImpl::ExecuteAndWaitChecked(std::u16string_view code, TString& result) {
  const bool ok = RunAndWait(code, result, true);
  if (!ok) OnScriptFailed();
  return ok;
}

double TWebkitScriptManagerImpl::ExecuteFloat(std::u16string_view code) {
  TString result;
  if (!RunAndWait(code, result, true)) {
    OnScriptFailed();
    return 0;
  }
  const std::string text = ToUtf8(Trim(result));
  char* end = nullptr;
  const double value = std::strtod(text.c_str(), &end);
  return (text.empty() || end != text.c_str() + text.size()) ? 0 : value;
}

HResult TWebkitScriptManagerImpl::OnScriptResult(const TString&, IQxIEvent* event) {
  ComPtr<IQxIStringDictionaryWrap> parameters = FServiceCore ? FServiceCore->EventParameters(event) : nullptr;
  if (!parameters || FBrowserId.empty() || FGuidStr.empty()) return kOk;
  if (!SameText(parameters->Value(event_key::Event), u"Result")) return kOk;
  if (!SameText(parameters->Value(script_key::BrowserId), FBrowserId)) return kOk;
  const TString scriptId = parameters->Value(script_key::ScriptId);
  if (scriptId.empty()) return kOk;
  // A prefix test on the shorter of the two: a manager takes only its own answers.
  const std::size_t n = std::min(scriptId.size(), FGuidStr.size());
  if (!SameText(std::u16string_view(scriptId).substr(0, n), std::u16string_view(FGuidStr).substr(0, n)))
    return kOk;
  FReturnValueMap[scriptId] = parameters->Value(script_key::Result);
  return kOk;
}

}  // namespace qx
