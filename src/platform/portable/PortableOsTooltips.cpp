// The common controls: the built-in tooltip window.

#include <algorithm>

#include "base/Text.h"
#include "platform/portable/PortableOsHelpers.h"
#include "platform/portable/PortableOsImpl.h"

namespace qx {

using namespace win;
using namespace portable_os;

bool TPortableOs::InitCommonControlsEx(std::uint32_t) { return true; }

LResult TPortableOs::TooltipMessage(HWnd hwnd, std::uint32_t msg, WParam wParam, LParam lParam) {
  switch (msg) {
    case TTM_ADDTOOLW:
    case TTM_DELTOOLW:
    case TTM_NEWTOOLRECTW:
    case TTM_UPDATETIPTEXTW:
    case TTM_SETMAXTIPWIDTH:
    case TTM_ACTIVATE:
    case TTM_POP:
    case TTM_GETTOOLCOUNT:
      break;
    default:
      return DefWindowProcW(hwnd, msg, wParam, lParam);
  }
  TLock lock(FLock);
  TWindow* w = FindLive(hwnd);
  if (!w) return 0;
  if (!w->tooltip) w->tooltip = std::make_unique<TTooltipState>();
  TTooltipState& state = *w->tooltip;
  const bool toolMessage =
      msg == TTM_ADDTOOLW || msg == TTM_DELTOOLW || msg == TTM_NEWTOOLRECTW || msg == TTM_UPDATETIPTEXTW;
  // Only the tool messages carry a record.
  const auto* info = toolMessage ? reinterpret_cast<const ToolInfoW*>(lParam) : nullptr;
  // Records older than the lParam field are too short to read.
  if (toolMessage && (!info || info->cbSize < offsetof(ToolInfoW, lParam))) return 0;
  auto tool = state.tools.end();
  if (toolMessage) {
    tool = std::find_if(state.tools.begin(), state.tools.end(),
                        [&](const TTooltipTool& t) { return t.hwnd == info->hwnd && t.id == info->uId; });
  }
  const bool callback = info && reinterpret_cast<std::intptr_t>(info->lpszText) == -1;
  const std::u16string text = (info && !callback) ? FromZ(info->lpszText) : std::u16string();
  switch (msg) {
    case TTM_ADDTOOLW: {
      TTooltipTool added{info->hwnd, info->uId, info->uFlags, info->rect, text, callback};
      if (tool != state.tools.end()) {
        *tool = added;
      } else {
        state.tools.push_back(added);
      }
      return 1;
    }
    case TTM_DELTOOLW:
      if (tool != state.tools.end()) state.tools.erase(tool);
      return 0;
    case TTM_NEWTOOLRECTW:
      if (tool != state.tools.end()) tool->rect = info->rect;
      return 0;
    case TTM_UPDATETIPTEXTW:
      if (tool != state.tools.end()) {
        tool->text = text;
        tool->textCallback = callback;
      }
      return 0;
    case TTM_SETMAXTIPWIDTH: {
      const std::int32_t old = state.maxWidth;
      state.maxWidth = static_cast<std::int32_t>(lParam);
      return old;
    }
    case TTM_ACTIVATE:
      state.active = wParam != 0;
      return 0;
    case TTM_POP:
      ++state.pops;
      return 0;
    default:
      return static_cast<LResult>(state.tools.size());
  }
}

bool TPortableOs::ReadTooltip(HWnd hwnd, TTooltipState* out) {
  if (!out) return false;
  TLock lock(FLock);
  TWindow* w = Find(hwnd);
  if (!w || !SameText(w->className, TOOLTIPS_CLASSW)) return false;
  *out = w->tooltip ? *w->tooltip : TTooltipState{};
  return true;
}

// Window procedures reach the system through Platform(); so does this built-in one.
LResult QX_STDCALL portable_os::TooltipProc(HWnd hwnd, std::uint32_t msg, WParam wParam, LParam lParam) {
  auto* os = dynamic_cast<TPortableOs*>(&Platform());
  return os ? os->TooltipMessage(hwnd, msg, wParam, lParam) : 0;
}

}  // namespace qx
