// Window lifetime, the default procedure, window longs and the window tree.

#include <algorithm>

#include "platform/portable/PortableOsHelpers.h"
#include "platform/portable/PortableOsImpl.h"

namespace qx {

using namespace win;
using namespace portable_os;

namespace {

LResult QX_STDCALL DefaultWindowProc(HWnd hwnd, std::uint32_t msg, WParam wParam, LParam lParam) {
  return Platform().DefWindowProcW(hwnd, msg, wParam, lParam);
}

LongPtr StyleValue(std::uint32_t style) { return static_cast<LongPtr>(static_cast<std::int32_t>(style)); }

}  // namespace

HWnd TPortableOs::CreateWindowExW(std::uint32_t exStyle, const char16_t* className, const char16_t* title,
                                  std::uint32_t style, std::int32_t x, std::int32_t y, std::int32_t width,
                                  std::int32_t height, HWnd parent, void* userData) {
  if (x == CW_USEDEFAULT) x = y = 0;
  if (width == CW_USEDEFAULT) width = height = 0;
  width = std::max(width, 0);
  height = std::max(height, 0);
  HWnd handle = nullptr;
  std::u16string classText;
  {
    TLock lock(FLock);
    auto cls = FClasses.find(ClassKey(className));
    if (cls == FClasses.end()) return nullptr;
    const bool messageOnly = parent == HWND_MESSAGE;
    if (parent == FDesktop) parent = nullptr;
    TWindow* parentWindow = nullptr;
    if (parent && !messageOnly) {
      parentWindow = Find(parent);
      if (!parentWindow || parentWindow->destroying) return nullptr;
    }
    if ((style & WS_CHILD) && !parentWindow && !messageOnly) return nullptr;
    auto w = std::make_unique<TWindow>();
    w->handle = handle = NewHandle();
    w->className = cls->second.name;
    w->title = FromZ(title);
    w->proc = cls->second.proc;
    w->style = style;
    w->exStyle = exStyle;
    w->rect = {x, y, x + width, y + height};
    w->threadId = ThisThreadId();
    w->processId = FProcessId;
    w->messageOnly = messageOnly;
    w->dirty = (style & WS_VISIBLE) != 0;
    ThreadState(w->threadId);
    if (messageOnly) {
      FMessageOnly.push_back(handle);
    } else if (style & WS_CHILD) {
      w->parent = parent;
      parentWindow->children.insert(parentWindow->children.begin(), handle);
    } else {
      w->owner = parent;
      FTopLevel.insert(FTopLevel.begin(), handle);
    }
    classText = w->className;
    FWindows.emplace(Key(handle), std::move(w));
  }
  CreateStructW cs;
  cs.lpCreateParams = userData;
  cs.hwndParent = parent;
  cs.cx = width;
  cs.cy = height;
  cs.x = x;
  cs.y = y;
  cs.style = static_cast<std::int32_t>(style);
  cs.lpszName = title;
  cs.lpszClass = classText.c_str();
  cs.dwExStyle = exStyle;
  if (SendDirect(handle, WM_NCCREATE, 0, reinterpret_cast<LParam>(&cs)) == 0 ||
      SendDirect(handle, WM_CREATE, 0, reinterpret_cast<LParam>(&cs)) == -1) {
    DestroyWindow(handle);
    return nullptr;
  }
  if (!IsWindow(handle)) return nullptr;
  SendDirect(handle, WM_SIZE, SIZE_RESTORED, MakeLParam(width, height));
  SendDirect(handle, WM_MOVE, 0, MakeLParam(x, y));
  return IsWindow(handle) ? handle : nullptr;
}

bool TPortableOs::DestroyWindow(HWnd hwnd) {
  std::vector<HWnd> owned;
  {
    TLock lock(FLock);
    TWindow* w = Find(hwnd);
    if (!w || w->desktop || w->destroying || w->threadId != ThisThreadId()) return false;
    for (HWnd h : FTopLevel) {
      TWindow* o = Find(h);
      if (o && o->owner == hwnd) owned.push_back(h);
    }
  }
  // Owned windows go first, as on the system.
  for (HWnd h : owned) DestroyWindow(h);

  std::vector<HWnd> subtree;
  HWnd lostCapture = nullptr;
  {
    TLock lock(FLock);
    TWindow* w = Find(hwnd);
    if (!w || w->destroying) return false;
    CollectSubtree(hwnd, subtree);
    for (HWnd h : subtree) {
      Find(h)->destroying = true;
      if (FCapture == h) lostCapture = h;
      if (FFocus == h) FFocus = nullptr;
    }
    if (lostCapture) FCapture = nullptr;
  }
  if (lostCapture) SendDirect(lostCapture, WM_CAPTURECHANGED, 0, 0);
  for (HWnd h : subtree) SendDirect(h, WM_DESTROY, 0, 0);
  for (auto it = subtree.rbegin(); it != subtree.rend(); ++it) {
    SendDirect(*it, WM_NCDESTROY, 0, 0);
    TLock lock(FLock);
    ReleaseWindowLocked(*it);
  }
  FWake.notify_all();
  return true;
}

void TPortableOs::ReleaseWindowLocked(HWnd hwnd) {
  TWindow* w = Find(hwnd);
  if (!w) return;
  if (auto* list = SiblingList(*w)) list->erase(std::remove(list->begin(), list->end(), hwnd), list->end());
  for (auto& [key, other] : FWindows) {
    if (other->owner == hwnd) other->owner = nullptr;
  }
  std::erase_if(FWindowTimers, [&](const TWindowTimer& t) { return t.hwnd == hwnd; });
  for (auto& [id, state] : FThreads) {
    std::erase_if(state.posted, [&](const TQueuedMessage& q) { return q.msg.hwnd == hwnd; });
    std::erase_if(state.sent, [&](const std::shared_ptr<TSentMessage>& s) {
      if (s->hwnd != hwnd) return false;
      s->result = 0;
      s->done = true;
      return true;
    });
  }
  if (FCapture == hwnd) FCapture = nullptr;
  if (FFocus == hwnd) FFocus = nullptr;
  if (FTrackLeave == hwnd) FTrackLeave = nullptr;
  FWindows.erase(Key(hwnd));
}

bool TPortableOs::IsWindow(HWnd hwnd) {
  TLock lock(FLock);
  return Find(hwnd) != nullptr;
}

LResult TPortableOs::DefWindowProcW(HWnd hwnd, std::uint32_t msg, WParam wParam, LParam lParam) {
  switch (msg) {
    case WM_NCCREATE:
      return 1;
    case WM_NCHITTEST: {
      TRect r;
      if (!GetWindowRect(hwnd, &r)) return HTNOWHERE;
      return Contains(r, TPoint{XFromLParam(lParam), YFromLParam(lParam)}) ? HTCLIENT : HTNOWHERE;
    }
    case WM_WINDOWPOSCHANGED: {
      const auto* pos = reinterpret_cast<const WindowPos*>(lParam);
      if (!pos) return 0;
      if (!(pos->flags & SWP_NOSIZE)) SendDirect(hwnd, WM_SIZE, SIZE_RESTORED, MakeLParam(pos->cx, pos->cy));
      if (!(pos->flags & SWP_NOMOVE)) SendDirect(hwnd, WM_MOVE, 0, MakeLParam(pos->x, pos->y));
      return 0;
    }
    case WM_SETTEXT: {
      TLock lock(FLock);
      TWindow* w = Find(hwnd);
      if (!w) return 0;
      w->title = FromZ(reinterpret_cast<const char16_t*>(lParam));
      return 1;
    }
    case WM_PAINT: {
      TLock lock(FLock);
      if (TWindow* w = Find(hwnd)) w->dirty = false;
      return 0;
    }
    case WM_CLOSE:
      DestroyWindow(hwnd);
      return 0;
    case WM_TOUCH:
      CloseTouchInputHandle(reinterpret_cast<HTouchInput>(lParam));
      return 0;
    case WM_MOUSEWHEEL:
    case WM_MOUSEHWHEEL: {
      // Unanswered wheel input climbs to the parent.
      HWnd parent = nullptr;
      {
        TLock lock(FLock);
        TWindow* w = Find(hwnd);
        if (w && (w->style & WS_CHILD)) parent = w->parent;
      }
      return parent ? SendDirect(parent, msg, wParam, lParam) : 0;
    }
    default:
      return 0;
  }
}

WndProc TPortableOs::DefWindowProcAddress() { return &DefaultWindowProc; }

LResult TPortableOs::CallWindowProcW(WndProc proc, HWnd hwnd, std::uint32_t msg, WParam wParam,
                                     LParam lParam) {
  return proc ? proc(hwnd, msg, wParam, lParam) : 0;
}

LongPtr TPortableOs::GetWindowLongPtrW(HWnd hwnd, std::int32_t index) {
  TLock lock(FLock);
  TWindow* w = Find(hwnd);
  if (!w) return 0;
  switch (index) {
    case GWLP_WNDPROC:
      return reinterpret_cast<LongPtr>(w->proc);
    case GWL_STYLE:
      return StyleValue(w->style);
    case GWL_EXSTYLE:
      return StyleValue(w->exStyle);
    case GWLP_USERDATA:
      return w->userData;
    case GWLP_ID:
      return w->id;
    case GWLP_HWNDPARENT:
      return reinterpret_cast<LongPtr>(w->parent ? w->parent : w->owner);
    default:
      return 0;
  }
}

LongPtr TPortableOs::SetWindowLongPtrW(HWnd hwnd, std::int32_t index, LongPtr value) {
  TLock lock(FLock);
  TWindow* w = Find(hwnd);
  if (!w || w->desktop) return 0;
  LongPtr old = 0;
  switch (index) {
    case GWLP_WNDPROC:
      if (!value) return 0;
      old = reinterpret_cast<LongPtr>(w->proc);
      w->proc = reinterpret_cast<WndProc>(value);
      return old;
    case GWL_STYLE:
      old = StyleValue(w->style);
      w->style = static_cast<std::uint32_t>(value);
      return old;
    case GWL_EXSTYLE:
      old = StyleValue(w->exStyle);
      w->exStyle = static_cast<std::uint32_t>(value);
      return old;
    case GWLP_USERDATA:
      old = w->userData;
      w->userData = value;
      return old;
    case GWLP_ID:
      old = w->id;
      w->id = value;
      return old;
    case GWLP_HWNDPARENT: {
      if (w->parent) return 0;
      HWnd owner = reinterpret_cast<HWnd>(value);
      if (owner && !Find(owner)) return 0;
      old = reinterpret_cast<LongPtr>(w->owner);
      w->owner = owner;
      return old;
    }
    default:
      return 0;
  }
}

std::int32_t TPortableOs::GetWindowLongW(HWnd hwnd, std::int32_t index) {
  // A procedure address does not fit 32 bits here; the pointer-sized call is the one to use.
  if (index == GWLP_WNDPROC && sizeof(LongPtr) > sizeof(std::int32_t)) return 0;
  return static_cast<std::int32_t>(GetWindowLongPtrW(hwnd, index));
}

std::int32_t TPortableOs::SetWindowLongW(HWnd hwnd, std::int32_t index, std::int32_t value) {
  if (index == GWLP_WNDPROC && sizeof(LongPtr) > sizeof(std::int32_t)) return 0;
  if (index == GWL_STYLE || index == GWL_EXSTYLE) {
    return static_cast<std::int32_t>(
        SetWindowLongPtrW(hwnd, index, static_cast<LongPtr>(static_cast<std::uint32_t>(value))));
  }
  return static_cast<std::int32_t>(SetWindowLongPtrW(hwnd, index, value));
}

HWnd TPortableOs::SetParent(HWnd child, HWnd newParent) {
  TLock lock(FLock);
  TWindow* c = FindLive(child);
  if (!c) return nullptr;
  if (newParent == FDesktop) newParent = nullptr;
  const bool toMessage = newParent == HWND_MESSAGE;
  if (newParent && !toMessage) {
    TWindow* np = FindLive(newParent);
    if (!np || newParent == child || IsDescendant(child, newParent)) return nullptr;
  }
  HWnd old = c->parent ? c->parent : FDesktop;
  if (auto* list = SiblingList(*c)) list->erase(std::remove(list->begin(), list->end(), child), list->end());
  c->messageOnly = toMessage;
  c->parent = toMessage ? nullptr : newParent;
  if (c->parent) c->owner = nullptr;
  if (auto* list = SiblingList(*c)) list->insert(list->begin(), child);
  return old;
}

HWnd TPortableOs::GetParent(HWnd hwnd) {
  TLock lock(FLock);
  TWindow* w = Find(hwnd);
  if (!w) return nullptr;
  if (w->parent) return w->parent;
  return (w->style & WS_POPUP) ? w->owner : nullptr;
}

HWnd TPortableOs::GetWindow(HWnd hwnd, std::uint32_t relation) {
  TLock lock(FLock);
  TWindow* w = Find(hwnd);
  if (!w) return nullptr;
  if (relation == GW_CHILD) {
    const std::vector<HWnd>& list = w->desktop ? FTopLevel : w->children;
    return list.empty() ? nullptr : list.front();
  }
  if (relation == GW_OWNER) return w->parent ? nullptr : w->owner;
  std::vector<HWnd>* list = SiblingList(*w);
  if (!list || list->empty()) return nullptr;
  auto it = std::find(list->begin(), list->end(), hwnd);
  switch (relation) {
    case GW_HWNDFIRST:
      return list->front();
    case GW_HWNDLAST:
      return list->back();
    case GW_HWNDNEXT:
      return (it == list->end() || it + 1 == list->end()) ? nullptr : *(it + 1);
    case GW_HWNDPREV:
      return (it == list->end() || it == list->begin()) ? nullptr : *(it - 1);
    default:
      return nullptr;
  }
}

HWnd TPortableOs::GetDesktopWindow() { return FDesktop; }

bool TPortableOs::IsChild(HWnd parent, HWnd hwnd) {
  TLock lock(FLock);
  return Find(parent) && IsDescendant(parent, hwnd);
}

}  // namespace qx
