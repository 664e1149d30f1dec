#pragma once

// Runs a script in a Chromium-class page and puts the request and its answer, which
// arrives later as an event, together again.

#include <map>

#include "base/ComObject.h"
#include "host/ServiceCoreWrapIntf.h"

namespace qx {

struct IWebkitScriptManager : IUnknown {
  static constexpr TGUID IID = MakeGuid("E8272DAE-45ED-4255-A6F1-DB53AB3A955C");
  virtual bool ExecuteAndWait(std::u16string_view code, TString& result) = 0;
  virtual bool ExecuteAndWaitPumping(std::u16string_view code, TString& result) = 0;
  virtual void ExecuteNoResult(std::u16string_view code) = 0;
  virtual bool ExecuteAndWaitChecked(std::u16string_view code, TString& result) = 0;
  virtual double ExecuteFloat(std::u16string_view code) = 0;
};

inline constexpr std::uint32_t kScriptWaitLimitMs = 2500;

class TWebkitScriptManagerImpl : public TInterfacedObject<IWebkitScriptManager> {
 public:
  TWebkitScriptManagerImpl(IServiceCoreWrap* serviceCore, bool unblockScript, IQxIBrowser* browser);
  ~TWebkitScriptManagerImpl() override;

  bool ExecuteAndWait(std::u16string_view code, TString& result) override;
  bool ExecuteAndWaitPumping(std::u16string_view code, TString& result) override;
  void ExecuteNoResult(std::u16string_view code) override;
  bool ExecuteAndWaitChecked(std::u16string_view code, TString& result) override;
  double ExecuteFloat(std::u16string_view code) override;

  const TString& GuidStr() const { return FGuidStr; }

 private:
  bool RunAndWait(std::u16string_view code, TString& result, bool pumping);
  HResult OnScriptResult(const TString& eventId, IQxIEvent* event);
  // Extension point for a failed checked run; nothing to do by default.
  void OnScriptFailed() {}

  ComPtr<IServiceCoreWrap> FServiceCore;
  ComPtr<IQxIBrowser> FBrowser;
  TString FBrowserId;
  TString FGuidStr;
  std::int32_t FSeqNo = 0;
  std::map<TString, TString> FReturnValueMap;
  ComPtr<IQxIEventListener> FEventListener;
  bool FUnblockScript;
};

}  // namespace qx
