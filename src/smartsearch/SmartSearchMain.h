#pragma once

// Watches the user's input in pages, as the host's input handler reports it, and brings
// the smart search popup up beside a new text selection or takes it down again.

#include <memory>
#include <string_view>

#include "base/ComPtr.h"
#include "host/ServiceCoreWrapIntf.h"
#include "runtime/DelayExec.h"

namespace qx {

class TSmartSearchForm;
class TSmartSearchImageRes;

inline constexpr std::u16string_view kReadSelectionScript =
    u"(function (){var ret = \"\";var sel = window.getSelection(); if (sel && (!sel.isCollapsed)) ret = "
    u"sel.toString();return ret;})()";

class TSmartSearch {
 public:
  explicit TSmartSearch(IServiceCoreWrap* serviceCore);
  ~TSmartSearch();
  TSmartSearch(const TSmartSearch&) = delete;
  TSmartSearch& operator=(const TSmartSearch&) = delete;

  // Reads the selection on a later tick, so the page's script never runs inside the
  // host's input processing.
  void RunSmartSearch(TPoint pt);

  TSmartSearchForm* Form() const { return FSmartSearchForm.get(); }
  const TString& LastKeyword() const { return FLastKeyword; }
  TDelayTaskList& DelayTasks() { return *FDelayTaskList; }

 private:
  HResult InputHandlerIPC(const TString& eventId, IQxIEvent* event);
  void ShowSmartSearch(TPoint pt);
  void HidePopup();

  ComPtr<IServiceCoreWrap> FServiceCore;
  ComPtr<IQxIEventListener> FInputHandlerIPCListener;
  std::unique_ptr<TDelayTaskList> FDelayTaskList;
  std::unique_ptr<TSmartSearchImageRes> FImageRes;
  std::unique_ptr<TSmartSearchForm> FSmartSearchForm;
  TString FLastKeyword;
};

}  // namespace qx
