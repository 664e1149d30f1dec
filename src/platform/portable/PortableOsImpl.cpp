#include "platform/portable/PortableOsImpl.h"

#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <cstring>

#include "base/Text.h"
#include "platform/portable/UrlCrack.h"

namespace qx {

namespace {

using namespace win;

// Handles are never reused in a process, so a stale one stays invalid.
std::atomic<std::uintptr_t> gNextHandle{0x00010010};
std::atomic<std::uint32_t> gNextThreadId{0x1000};

HWnd NewHandle() { return reinterpret_cast<HWnd>(gNextHandle.fetch_add(4)); }
std::uintptr_t Key(HWnd hwnd) { return reinterpret_cast<std::uintptr_t>(hwnd); }
std::u16string FromZ(const char16_t* text) { return text ? std::u16string(text) : std::u16string(); }

LResult QX_STDCALL DesktopProc(HWnd, std::uint32_t, WParam, LParam) { return 0; }

LResult QX_STDCALL DefaultWindowProc(HWnd hwnd, std::uint32_t msg, WParam wParam, LParam lParam) {
  return Platform().DefWindowProcW(hwnd, msg, wParam, lParam);
}

// Window procedures reach the system through Platform(); so does this built-in one.
LResult QX_STDCALL TooltipProc(HWnd hwnd, std::uint32_t msg, WParam wParam, LParam lParam) {
  IPortableOs* os = Platform().Portable();
  return os ? static_cast<TPortableOs*>(os)->TooltipMessage(hwnd, msg, wParam, lParam) : 0;
}

InputMessageSource SourceOfMouse(LParam extraInfo) {
  const auto info = static_cast<std::uint32_t>(extraInfo);
  if ((info & 0xFFFFFF80u) == MI_WP_TOUCH) return {IMDT_TOUCH, IMO_HARDWARE};
  if ((info & SIGNATURE_MASK) == MI_WP_SIGNATURE) return {IMDT_PEN, IMO_HARDWARE};
  return {IMDT_MOUSE, IMO_HARDWARE};
}

std::int32_t CopyOut(const std::u16string& text, char16_t* buffer, std::int32_t maxCount) {
  if (!buffer || maxCount <= 0) return 0;
  const auto n = std::min<std::size_t>(text.size(), static_cast<std::size_t>(maxCount - 1));
  std::copy_n(text.data(), n, buffer);
  buffer[n] = 0;
  return static_cast<std::int32_t>(n);
}

bool Contains(const TRect& r, TPoint p) { return p.X >= r.Left && p.X < r.Right && p.Y >= r.Top && p.Y < r.Bottom; }

bool IsMouseMessage(std::uint32_t msg) { return msg >= WM_MOUSEFIRST && msg <= WM_MOUSELAST; }

LongPtr StyleValue(std::uint32_t style) { return static_cast<LongPtr>(static_cast<std::int32_t>(style)); }

}  // namespace

TPortableOs::TPortableOs(TClockMode mode, std::uint64_t startMilliseconds)
    : FMode(mode),
      FEpoch(std::chrono::steady_clock::now()),
      FStartMs(startMilliseconds),
      FManualNow(startMilliseconds),
      FProcessId(static_cast<std::uint32_t>(::getpid())) {
  FMetrics = {{SM_CXSCREEN, 1920}, {SM_CYSCREEN, 1080}, {SM_CXDOUBLECLK, 4}, {SM_CYDOUBLECLK, 4},
              {SM_CXDRAG, 4},      {SM_CYDRAG, 4},      {SM_DIGITIZER, 0},   {SM_MAXIMUMTOUCHES, 0}};
  FLocale = {{LOCALE_ILANGUAGE, u"0409"},
             {LOCALE_SISO639LANGNAME, u"en"},
             {LOCALE_SISO3166CTRYNAME, u"US"},
             {LOCALE_SNAME, u"en-US"}};
  auto desktop = std::make_unique<TWindow>();
  desktop->handle = NewHandle();
  desktop->className = u"#32769";
  desktop->proc = &DesktopProc;
  desktop->style = WS_POPUP | WS_VISIBLE | WS_CLIPCHILDREN;
  desktop->rect = {0, 0, FMetrics[SM_CXSCREEN], FMetrics[SM_CYSCREEN]};
  desktop->processId = FProcessId;
  desktop->desktop = true;
  FDesktop = desktop->handle;
  FWindows.emplace(Key(FDesktop), std::move(desktop));
  FClasses.emplace(ClassKey(TOOLTIPS_CLASSW), TWindowClass{TOOLTIPS_CLASSW, &TooltipProc, FNextAtom++, true});
}

TPortableOs::~TPortableOs() {
  {
    TLock lock(FLock);
    FStopping = true;
  }
  FMMWake.notify_all();
  if (FMMThread.joinable()) FMMThread.join();
}

// ---------------------------------------------------------------------------
// Helpers (lock held unless said otherwise)

std::uint32_t TPortableOs::ThisThreadId() {
  thread_local const std::uint32_t id = gNextThreadId.fetch_add(4);
  return id;
}

std::u16string TPortableOs::ClassKey(const char16_t* name) { return LowerCase(FromZ(name)); }

std::uint64_t TPortableOs::NowLocked() const {
  if (FMode == TClockMode::Manual) return FManualNow;
  const auto elapsed = std::chrono::steady_clock::now() - FEpoch;
  return FStartMs + static_cast<std::uint64_t>(std::chrono::duration_cast<std::chrono::milliseconds>(elapsed).count());
}

TPortableOs::TWindow* TPortableOs::Find(HWnd hwnd) {
  if (!hwnd) return nullptr;
  auto it = FWindows.find(Key(hwnd));
  return it == FWindows.end() ? nullptr : it->second.get();
}

TPortableOs::TWindow* TPortableOs::FindLive(HWnd hwnd) {
  TWindow* w = Find(hwnd);
  return (w && !w->desktop && !w->destroying) ? w : nullptr;
}

TPortableOs::TThreadState& TPortableOs::ThreadState(std::uint32_t threadId) { return FThreads[threadId]; }

std::vector<HWnd>* TPortableOs::SiblingList(TWindow& window) {
  if (window.desktop) return nullptr;
  if (window.messageOnly) return &FMessageOnly;
  if (window.parent) {
    TWindow* p = Find(window.parent);
    return p ? &p->children : nullptr;
  }
  return &FTopLevel;
}

TPoint TPortableOs::ClientOrigin(const TWindow& window) {
  TPoint origin{window.rect.Left, window.rect.Top};
  HWnd parent = window.parent;
  while (parent) {
    TWindow* p = Find(parent);
    if (!p) break;
    origin.X += p->rect.Left;
    origin.Y += p->rect.Top;
    parent = p->parent;
  }
  return origin;
}

bool TPortableOs::IsDescendant(HWnd ancestor, HWnd hwnd) {
  TWindow* w = Find(hwnd);
  while (w && w->parent) {
    if (w->parent == ancestor) return true;
    w = Find(w->parent);
  }
  return false;
}

bool TPortableOs::VisibleLocked(HWnd hwnd) {
  TWindow* w = Find(hwnd);
  if (!w) return false;
  while (w) {
    if (!(w->style & WS_VISIBLE)) return false;
    if (!w->parent) return true;
    w = Find(w->parent);
  }
  return false;
}

void TPortableOs::CollectSubtree(HWnd hwnd, std::vector<HWnd>& out) {
  TWindow* w = Find(hwnd);
  if (!w) return;
  out.push_back(hwnd);
  for (HWnd child : w->children) CollectSubtree(child, out);
}

void TPortableOs::CollectHitCandidates(const std::vector<HWnd>& siblings, TPoint screen, std::vector<HWnd>& out) {
  for (HWnd h : siblings) {
    TWindow* w = Find(h);
    if (!w || !(w->style & WS_VISIBLE)) continue;
    const TPoint o = ClientOrigin(*w);
    const TRect r{o.X, o.Y, o.X + w->rect.Width(), o.Y + w->rect.Height()};
    if (!Contains(r, screen)) continue;
    CollectHitCandidates(w->children, screen, out);
    out.push_back(h);
  }
}

// ---------------------------------------------------------------------------
// Calling window procedures and hooks (lock not held)

LResult TPortableOs::CallProc(HWnd hwnd, std::uint32_t msg, WParam wParam, LParam lParam) {
  WndProc proc = nullptr;
  {
    TLock lock(FLock);
    TWindow* w = Find(hwnd);
    if (!w) return 0;
    proc = w->proc;
  }
  return proc ? proc(hwnd, msg, wParam, lParam) : 0;
}

LResult TPortableOs::SendDirect(HWnd hwnd, std::uint32_t msg, WParam wParam, LParam lParam) {
  CwpStruct cwp{lParam, wParam, msg, hwnd};
  RunHooks(WH_CALLWNDPROC, HC_ACTION, 1, reinterpret_cast<LParam>(&cwp));
  return CallProc(hwnd, msg, wParam, lParam);
}

LResult TPortableOs::RunHooks(std::int32_t kind, std::int32_t code, WParam wParam, LParam lParam) {
  HookProc proc = nullptr;
  {
    TLock lock(FLock);
    const std::uint32_t me = ThisThreadId();
    for (const THook& hook : FHooks) {
      if (hook.kind == kind && (hook.threadId == 0 || hook.threadId == me)) {
        proc = hook.proc;
        break;
      }
    }
  }
  return proc ? proc(code, wParam, lParam) : 0;
}

LResult TPortableOs::CallNextHookEx(HHook hook, std::int32_t code, WParam wParam, LParam lParam) {
  HookProc proc = nullptr;
  {
    TLock lock(FLock);
    const std::uint32_t me = ThisThreadId();
    auto it = std::find_if(FHooks.begin(), FHooks.end(), [&](const THook& h) { return h.handle == hook; });
    if (it == FHooks.end()) return 0;
    const std::int32_t kind = it->kind;
    for (++it; it != FHooks.end(); ++it) {
      if (it->kind == kind && (it->threadId == 0 || it->threadId == me)) {
        proc = it->proc;
        break;
      }
    }
  }
  return proc ? proc(code, wParam, lParam) : 0;
}

HHook TPortableOs::SetWindowsHookExW(std::int32_t idHook, HookProc proc, void*, std::uint32_t threadId) {
  if (!proc || (idHook != WH_MOUSE && idHook != WH_CALLWNDPROC && idHook != WH_GETMESSAGE)) return nullptr;
  TLock lock(FLock);
  FNextHook += 4;
  THook hook{reinterpret_cast<HHook>(FNextHook), idHook, proc, threadId};
  FHooks.insert(FHooks.begin(), hook);
  return hook.handle;
}

bool TPortableOs::UnhookWindowsHookEx(HHook hook) {
  TLock lock(FLock);
  auto it = std::find_if(FHooks.begin(), FHooks.end(), [&](const THook& h) { return h.handle == hook; });
  if (it == FHooks.end()) return false;
  FHooks.erase(it);
  return true;
}

// ---------------------------------------------------------------------------
// Window classes

std::uint16_t TPortableOs::RegisterClassW(const char16_t* className, WndProc wndProc) {
  if (!className || !*className || !wndProc) return 0;
  TLock lock(FLock);
  const std::u16string key = ClassKey(className);
  if (FClasses.count(key)) return 0;
  if (FNextAtom == 0xFFFF) return 0;
  TWindowClass cls{className, wndProc, FNextAtom++};
  FClasses.emplace(key, cls);
  return cls.atom;
}

bool TPortableOs::UnregisterClassW(const char16_t* className) {
  if (!className) return false;
  TLock lock(FLock);
  auto it = FClasses.find(ClassKey(className));
  if (it == FClasses.end() || it->second.system) return false;
  for (const auto& [key, w] : FWindows) {
    if (!w->desktop && SameText(w->className, it->second.name)) return false;
  }
  FClasses.erase(it);
  return true;
}

bool TPortableOs::GetClassInfoW(const char16_t* className, WndProc* wndProc) {
  if (!className) return false;
  TLock lock(FLock);
  auto it = FClasses.find(ClassKey(className));
  if (it == FClasses.end()) return false;
  if (wndProc) *wndProc = it->second.proc;
  return true;
}

// ---------------------------------------------------------------------------
// Windows

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

LResult TPortableOs::CallWindowProcW(WndProc proc, HWnd hwnd, std::uint32_t msg, WParam wParam, LParam lParam) {
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

void TPortableOs::ReorderLocked(TWindow& window, HWnd insertAfter) {
  std::vector<HWnd>* list = SiblingList(window);
  if (!list) return;
  auto it = std::find(list->begin(), list->end(), window.handle);
  if (it == list->end()) return;
  const auto index = it - list->begin();
  list->erase(it);
  if (insertAfter == HWND_TOPMOST) window.exStyle |= WS_EX_TOPMOST;
  if (insertAfter == HWND_NOTOPMOST) window.exStyle &= ~WS_EX_TOPMOST;
  if (insertAfter == HWND_TOP || insertAfter == HWND_TOPMOST || insertAfter == HWND_NOTOPMOST) {
    list->insert(list->begin(), window.handle);
  } else if (insertAfter == HWND_BOTTOM) {
    list->push_back(window.handle);
  } else {
    auto after = std::find(list->begin(), list->end(), insertAfter);
    if (after == list->end()) {
      list->insert(list->begin() + index, window.handle);
    } else {
      list->insert(after + 1, window.handle);
    }
  }
}

bool TPortableOs::SetWindowPos(HWnd hwnd, HWnd insertAfter, std::int32_t x, std::int32_t y, std::int32_t cx,
                               std::int32_t cy, std::uint32_t flags) {
  WindowPos pos{hwnd, insertAfter, x, y, cx, cy, flags};
  {
    TLock lock(FLock);
    TWindow* w = FindLive(hwnd);
    if (!w) return false;
    if (flags & SWP_NOMOVE) {
      pos.x = w->rect.Left;
      pos.y = w->rect.Top;
    }
    if (flags & SWP_NOSIZE) {
      pos.cx = w->rect.Width();
      pos.cy = w->rect.Height();
    }
  }
  if (!(flags & SWP_NOSENDCHANGING)) SendDirect(hwnd, WM_WINDOWPOSCHANGING, 0, reinterpret_cast<LParam>(&pos));
  {
    TLock lock(FLock);
    TWindow* w = FindLive(hwnd);
    if (!w) return false;
    ApplyWindowPos(*w, pos);
  }
  FWake.notify_all();
  SendDirect(hwnd, WM_WINDOWPOSCHANGED, 0, reinterpret_cast<LParam>(&pos));
  return true;
}

void TPortableOs::ApplyWindowPos(TWindow& window, WindowPos& pos) {
  pos.cx = std::max(pos.cx, 0);
  pos.cy = std::max(pos.cy, 0);
  const TRect old = window.rect;
  std::uint32_t reported = pos.flags;
  if (!(pos.flags & SWP_NOMOVE)) {
    window.rect = {pos.x, pos.y, pos.x + old.Width(), pos.y + old.Height()};
  }
  if (!(pos.flags & SWP_NOSIZE)) {
    window.rect.Right = window.rect.Left + pos.cx;
    window.rect.Bottom = window.rect.Top + pos.cy;
  }
  if (window.rect.Left == old.Left && window.rect.Top == old.Top) reported |= SWP_NOMOVE;
  if (window.rect.Width() == old.Width() && window.rect.Height() == old.Height()) {
    reported |= SWP_NOSIZE;
  } else if (!(pos.flags & SWP_NOREDRAW)) {
    window.dirty = true;
  }
  if (!(pos.flags & SWP_NOZORDER)) ReorderLocked(window, pos.hwndInsertAfter);
  const bool visible = (window.style & WS_VISIBLE) != 0;
  if ((pos.flags & SWP_SHOWWINDOW) && !visible) {
    window.style |= WS_VISIBLE;
    window.dirty = true;
  } else {
    reported &= ~SWP_SHOWWINDOW;
  }
  if ((pos.flags & SWP_HIDEWINDOW) && visible && !(pos.flags & SWP_SHOWWINDOW)) {
    window.style &= ~WS_VISIBLE;
  } else {
    reported &= ~SWP_HIDEWINDOW;
  }
  pos.x = window.rect.Left;
  pos.y = window.rect.Top;
  pos.cx = window.rect.Width();
  pos.cy = window.rect.Height();
  pos.flags = reported;
}

bool TPortableOs::MoveWindow(HWnd hwnd, std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height,
                             bool repaint) {
  return SetWindowPos(hwnd, nullptr, x, y, width, height,
                      SWP_NOZORDER | SWP_NOACTIVATE | (repaint ? 0u : SWP_NOREDRAW));
}

bool TPortableOs::GetWindowRect(HWnd hwnd, TRect* rect) {
  if (!rect) return false;
  TLock lock(FLock);
  TWindow* w = Find(hwnd);
  if (!w) return false;
  const TPoint o = ClientOrigin(*w);
  *rect = {o.X, o.Y, o.X + w->rect.Width(), o.Y + w->rect.Height()};
  return true;
}

bool TPortableOs::GetClientRect(HWnd hwnd, TRect* rect) {
  if (!rect) return false;
  TLock lock(FLock);
  TWindow* w = Find(hwnd);
  if (!w) return false;
  *rect = {0, 0, w->rect.Width(), w->rect.Height()};
  return true;
}

bool TPortableOs::ShowWindow(HWnd hwnd, std::int32_t cmdShow) {
  bool wasVisible = false;
  {
    TLock lock(FLock);
    TWindow* w = FindLive(hwnd);
    if (!w) return false;
    wasVisible = (w->style & WS_VISIBLE) != 0;
  }
  const bool show = cmdShow != SW_HIDE;
  if (show != wasVisible) {
    SendDirect(hwnd, WM_SHOWWINDOW, show ? 1 : 0, 0);
    SetWindowPos(hwnd, nullptr, 0, 0, 0, 0,
                 SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE | (show ? SWP_SHOWWINDOW : SWP_HIDEWINDOW));
  }
  return wasVisible;
}

bool TPortableOs::IsWindowVisible(HWnd hwnd) {
  TLock lock(FLock);
  return VisibleLocked(hwnd);
}

bool TPortableOs::ClientToScreen(HWnd hwnd, TPoint* point) {
  if (!point) return false;
  TLock lock(FLock);
  TWindow* w = Find(hwnd);
  if (!w) return false;
  const TPoint o = ClientOrigin(*w);
  point->X += o.X;
  point->Y += o.Y;
  return true;
}

bool TPortableOs::ScreenToClient(HWnd hwnd, TPoint* point) {
  if (!point) return false;
  TLock lock(FLock);
  TWindow* w = Find(hwnd);
  if (!w) return false;
  const TPoint o = ClientOrigin(*w);
  point->X -= o.X;
  point->Y -= o.Y;
  return true;
}

HWnd TPortableOs::WindowFromPoint(TPoint screenPoint) {
  std::vector<HWnd> candidates;
  {
    TLock lock(FLock);
    CollectHitCandidates(FTopLevel, screenPoint, candidates);
  }
  const std::uint32_t me = ThisThreadId();
  for (HWnd h : candidates) {
    std::uint32_t thread = 0;
    {
      TLock lock(FLock);
      TWindow* w = Find(h);
      if (!w) continue;
      thread = w->threadId;
    }
    // Only this thread's windows are asked; they may let the point through.
    if (thread != me) return h;
    if (SendDirect(h, WM_NCHITTEST, 0, MakeLParam(screenPoint.X, screenPoint.Y)) != HTTRANSPARENT) return h;
  }
  return FDesktop;
}

bool TPortableOs::InvalidateRect(HWnd hwnd, const TRect*, bool) {
  {
    TLock lock(FLock);
    if (!hwnd) {
      for (auto& [key, w] : FWindows) {
        if (!w->desktop) w->dirty = true;
      }
    } else {
      TWindow* w = FindLive(hwnd);
      if (!w) return false;
      w->dirty = true;
    }
  }
  FWake.notify_all();
  return true;
}

bool TPortableOs::UpdateWindow(HWnd hwnd) {
  {
    TLock lock(FLock);
    TWindow* w = FindLive(hwnd);
    if (!w) return false;
    if (!w->dirty || !VisibleLocked(hwnd)) return true;
    w->dirty = false;
  }
  SendDirect(hwnd, WM_PAINT, 0, 0);
  return true;
}

HWnd TPortableOs::FindWindowW(const char16_t* className, const char16_t* title) {
  TLock lock(FLock);
  for (HWnd h : FTopLevel) {
    TWindow* w = Find(h);
    if (!w) continue;
    if (className && !SameText(w->className, className)) continue;
    if (title && !SameText(w->title, title)) continue;
    return h;
  }
  return nullptr;
}

bool TPortableOs::EnumWindows(EnumWindowsProc callback, LParam lParam) {
  if (!callback) return false;
  std::vector<HWnd> snapshot;
  {
    TLock lock(FLock);
    snapshot = FTopLevel;
  }
  for (HWnd h : snapshot) {
    if (!IsWindow(h)) continue;
    if (callback(h, lParam) == 0) return false;
  }
  return true;
}

std::int32_t TPortableOs::GetClassNameW(HWnd hwnd, char16_t* buffer, std::int32_t maxCount) {
  TLock lock(FLock);
  TWindow* w = Find(hwnd);
  return w ? CopyOut(w->className, buffer, maxCount) : 0;
}

std::int32_t TPortableOs::GetWindowTextW(HWnd hwnd, char16_t* buffer, std::int32_t maxCount) {
  TLock lock(FLock);
  TWindow* w = Find(hwnd);
  return w ? CopyOut(w->title, buffer, maxCount) : 0;
}

std::int32_t TPortableOs::GetWindowTextLengthW(HWnd hwnd) {
  TLock lock(FLock);
  TWindow* w = Find(hwnd);
  return w ? static_cast<std::int32_t>(w->title.size()) : 0;
}

bool TPortableOs::SetWindowTextW(HWnd hwnd, const char16_t* text) {
  if (!IsWindow(hwnd)) return false;
  return SendDirect(hwnd, WM_SETTEXT, 0, reinterpret_cast<LParam>(text)) != 0;
}

std::uint32_t TPortableOs::GetWindowThreadProcessId(HWnd hwnd, std::uint32_t* processId) {
  TLock lock(FLock);
  TWindow* w = Find(hwnd);
  if (!w) return 0;
  if (processId) *processId = w->processId;
  return w->threadId;
}

std::uint32_t TPortableOs::GetCurrentProcessId() { return FProcessId; }

std::uint32_t TPortableOs::GetCurrentThreadId() { return ThisThreadId(); }

// ---------------------------------------------------------------------------
// Messages

bool TPortableOs::PostMessageW(HWnd hwnd, std::uint32_t msg, WParam wParam, LParam lParam) {
  {
    TLock lock(FLock);
    std::uint32_t thread = ThisThreadId();
    if (hwnd) {
      TWindow* w = Find(hwnd);
      if (!w || w->desktop) return false;
      thread = w->threadId;
    }
    ThreadState(thread).posted.push_back(
        TQueuedMessage{Msg{hwnd, msg, wParam, lParam, static_cast<std::uint32_t>(NowLocked()), FCursor}, 0});
  }
  FWake.notify_all();
  return true;
}

bool TPortableOs::PostThreadMessageW(std::uint32_t threadId, std::uint32_t msg, WParam wParam, LParam lParam) {
  {
    TLock lock(FLock);
    auto it = FThreads.find(threadId);
    if (it == FThreads.end()) return false;
    it->second.posted.push_back(
        TQueuedMessage{Msg{nullptr, msg, wParam, lParam, static_cast<std::uint32_t>(NowLocked()), FCursor}, 0});
  }
  FWake.notify_all();
  return true;
}

void TPortableOs::PostQuitMessage(std::int32_t exitCode) {
  {
    TLock lock(FLock);
    ThreadState(ThisThreadId())
        .posted.push_back(TQueuedMessage{Msg{nullptr, WM_QUIT, static_cast<WParam>(exitCode), 0,
                                             static_cast<std::uint32_t>(NowLocked()), FCursor},
                                         0});
  }
  FWake.notify_all();
}

LResult TPortableOs::SendMessageW(HWnd hwnd, std::uint32_t msg, WParam wParam, LParam lParam) {
  TLock lock(FLock);
  TWindow* w = Find(hwnd);
  if (!w) return 0;
  const std::uint32_t me = ThisThreadId();
  if (w->desktop || w->threadId == me) {
    lock.unlock();
    return SendDirect(hwnd, msg, wParam, lParam);
  }
  // Another thread's window: its thread runs the procedure the next time it looks at
  // its queue; meanwhile this thread answers what is sent to it.
  auto sent = std::make_shared<TSentMessage>();
  sent->hwnd = hwnd;
  sent->msg = msg;
  sent->wParam = wParam;
  sent->lParam = lParam;
  ThreadState(w->threadId).sent.push_back(sent);
  FWake.notify_all();
  while (!sent->done && !FStopping) {
    ReceiveSentMessages(lock);
    if (sent->done) break;
    FWake.wait(lock, [&] { return sent->done || FStopping || !ThreadState(me).sent.empty(); });
  }
  return sent->result;
}

void TPortableOs::ReceiveSentMessages(TLock& lock) {
  const std::uint32_t me = ThisThreadId();
  for (;;) {
    TThreadState& state = ThreadState(me);
    if (state.sent.empty()) return;
    std::shared_ptr<TSentMessage> sent = state.sent.front();
    state.sent.pop_front();
    lock.unlock();
    CwpStruct cwp{sent->lParam, sent->wParam, sent->msg, sent->hwnd};
    RunHooks(WH_CALLWNDPROC, HC_ACTION, 0, reinterpret_cast<LParam>(&cwp));
    const LResult result = CallProc(sent->hwnd, sent->msg, sent->wParam, sent->lParam);
    lock.lock();
    sent->result = result;
    sent->done = true;
    FWake.notify_all();
  }
}

bool TPortableOs::TakeMessage(TLock&, Msg* out, HWnd hwnd, std::uint32_t filterMin, std::uint32_t filterMax,
                              bool remove) {
  const std::uint32_t me = ThisThreadId();
  TThreadState& state = ThreadState(me);
  const bool anyMessage = filterMin == 0 && filterMax == 0;
  auto inRange = [&](std::uint32_t m) { return anyMessage || (m >= filterMin && m <= filterMax); };
  auto wanted = [&](const Msg& m) {
    return m.message == WM_QUIT || ((!hwnd || m.hwnd == hwnd) && inRange(m.message));
  };
  for (auto it = state.posted.begin(); it != state.posted.end(); ++it) {
    if (!wanted(it->msg)) continue;
    *out = it->msg;
    if (remove) {
      state.extraInfo = it->extraInfo;
      state.source = InputMessageSource{};
      state.posted.erase(it);
    }
    return true;
  }
  const std::uint64_t now = NowLocked();
  const Msg base{nullptr, 0, 0, 0, static_cast<std::uint32_t>(now), FCursor};
  if (inRange(WM_PAINT)) {
    TWindow* best = nullptr;
    for (auto& [key, w] : FWindows) {
      if (w->dirty && !w->desktop && !w->destroying && w->threadId == me && (!hwnd || w->handle == hwnd) &&
          VisibleLocked(w->handle) &&
          (!best || Key(w->handle) < Key(best->handle))) {
        best = w.get();
      }
    }
    if (best) {
      *out = base;
      out->hwnd = best->handle;
      out->message = WM_PAINT;
      if (remove) {
        best->dirty = false;
        ForgetInputLocked();
      }
      return true;
    }
  }
  if (inRange(WM_TIMER)) {
    TWindowTimer* best = nullptr;
    for (TWindowTimer& t : FWindowTimers) {
      TWindow* w = Find(t.hwnd);
      if (!w || w->threadId != me || t.due > now || (hwnd && t.hwnd != hwnd)) continue;
      if (!best || t.due < best->due || (t.due == best->due && t.order < best->order)) best = &t;
    }
    if (best) {
      *out = base;
      out->hwnd = best->hwnd;
      out->message = WM_TIMER;
      out->wParam = best->id;
      if (remove) {
        ForgetInputLocked();
        // Missed periods merge into one message, as on the system.
        best->due += best->interval;
        if (best->due <= now) best->due = now + best->interval;
        best->order = ++FTimerOrder;
      }
      return true;
    }
  }
  return false;
}

bool TPortableOs::PeekMessageW(Msg* msg, HWnd hwnd, std::uint32_t filterMin, std::uint32_t filterMax,
                               std::uint32_t removeMsg) {
  if (!msg) return false;
  const bool remove = (removeMsg & PM_REMOVE) != 0;
  bool got = false;
  {
    TLock lock(FLock);
    ReceiveSentMessages(lock);
    got = TakeMessage(lock, msg, hwnd, filterMin, filterMax, remove);
  }
  if (got) RunHooks(WH_GETMESSAGE, HC_ACTION, remove ? PM_REMOVE : PM_NOREMOVE, reinterpret_cast<LParam>(msg));
  return got;
}

std::int32_t TPortableOs::GetMessageW(Msg* msg, HWnd hwnd, std::uint32_t filterMin, std::uint32_t filterMax) {
  if (!msg) return -1;
  {
    TLock lock(FLock);
    if (hwnd && !Find(hwnd)) return -1;
    const std::uint32_t me = ThisThreadId();
    for (;;) {
      ReceiveSentMessages(lock);
      if (TakeMessage(lock, msg, hwnd, filterMin, filterMax, true)) break;
      if (FMode == TClockMode::Real) {
        std::uint64_t next = UINT64_MAX;
        for (const TWindowTimer& t : FWindowTimers) {
          TWindow* w = Find(t.hwnd);
          if (w && w->threadId == me) next = std::min(next, t.due);
        }
        if (next != UINT64_MAX) {
          FWake.wait_until(lock, FEpoch + std::chrono::milliseconds(next - FStartMs));
          continue;
        }
      }
      FWake.wait(lock);
    }
  }
  RunHooks(WH_GETMESSAGE, HC_ACTION, PM_REMOVE, reinterpret_cast<LParam>(msg));
  return msg->message == WM_QUIT ? 0 : 1;
}

bool TPortableOs::TranslateMessage(const Msg* msg) {
  if (!msg || msg->message != WM_KEYDOWN) return false;
  const std::int32_t vk = static_cast<std::int32_t>(msg->wParam);
  const bool shift = GetKeyState(VK_SHIFT) < 0;
  char16_t ch = 0;
  if (vk >= 'A' && vk <= 'Z') {
    ch = static_cast<char16_t>(shift ? vk : vk - 'A' + 'a');
  } else if ((vk >= '0' && vk <= '9') || vk == ' ') {
    ch = static_cast<char16_t>(vk);
  } else if (vk == VK_RETURN || vk == VK_BACK || vk == VK_ESCAPE || vk == VK_TAB) {
    ch = static_cast<char16_t>(vk);
  }
  if (!ch) return false;
  return PostMessageW(msg->hwnd, WM_CHAR, ch, msg->lParam);
}

LResult TPortableOs::DispatchMessageW(const Msg* msg) {
  if (!msg || !msg->hwnd) return 0;
  return CallProc(msg->hwnd, msg->message, msg->wParam, msg->lParam);
}

LParam TPortableOs::GetMessageExtraInfo() {
  TLock lock(FLock);
  return ThreadState(ThisThreadId()).extraInfo;
}

std::size_t TPortableOs::ProcessMessages() {
  std::size_t count = 0;
  for (;;) {
    Msg msg;
    {
      TLock lock(FLock);
      ReceiveSentMessages(lock);
      if (!TakeMessage(lock, &msg, nullptr, 0, 0, false) || msg.message == WM_QUIT) break;
      TakeMessage(lock, &msg, nullptr, 0, 0, true);
    }
    RunHooks(WH_GETMESSAGE, HC_ACTION, PM_REMOVE, reinterpret_cast<LParam>(&msg));
    TranslateMessage(&msg);
    DispatchMessageW(&msg);
    ++count;
  }
  return count;
}

// ---------------------------------------------------------------------------
// Timers and the clock

std::uint64_t TPortableOs::Now() {
  TLock lock(FLock);
  return NowLocked();
}

std::uintptr_t TPortableOs::SetTimer(HWnd hwnd, std::uintptr_t id, std::uint32_t elapse) {
  {
    TLock lock(FLock);
    if (!FindLive(hwnd)) return 0;
    elapse = std::clamp(elapse, USER_TIMER_MINIMUM, USER_TIMER_MAXIMUM);
    const std::uint64_t due = NowLocked() + elapse;
    auto it = std::find_if(FWindowTimers.begin(), FWindowTimers.end(),
                           [&](const TWindowTimer& t) { return t.hwnd == hwnd && t.id == id; });
    if (it != FWindowTimers.end()) {
      it->interval = elapse;
      it->due = due;
      it->order = ++FTimerOrder;
    } else {
      FWindowTimers.push_back(TWindowTimer{hwnd, id, elapse, due, ++FTimerOrder});
    }
  }
  FWake.notify_all();
  return id ? id : 1;
}

bool TPortableOs::KillTimer(HWnd hwnd, std::uintptr_t id) {
  TLock lock(FLock);
  return std::erase_if(FWindowTimers, [&](const TWindowTimer& t) { return t.hwnd == hwnd && t.id == id; }) > 0;
}

std::uint32_t TPortableOs::timeSetEvent(std::uint32_t delay, std::uint32_t, TimerProc proc, ULongPtr user,
                                        std::uint32_t flags) {
  // Only function callbacks; event handles have no meaning here.
  if (!proc || delay == 0 || delay > 1000000 || (flags & ~(TIME_PERIODIC | TIME_KILL_SYNCHRONOUS)) != 0) return 0;
  std::uint32_t id = 0;
  {
    TLock lock(FLock);
    id = FNextMMId++;
    if (FNextMMId == 0) FNextMMId = 1;
    FMMTimers.push_back(
        TMMTimer{id, delay, proc, user, (flags & TIME_PERIODIC) != 0, NowLocked() + delay, ++FTimerOrder});
    StartMMThreadLocked();
  }
  FMMWake.notify_all();
  return id;
}

std::uint32_t TPortableOs::timeKillEvent(std::uint32_t id) {
  TLock lock(FLock);
  const bool found = std::erase_if(FMMTimers, [&](const TMMTimer& t) { return t.id == id; }) > 0;
  FMMWake.notify_all();
  return found ? TIMERR_NOERROR : MMSYSERR_INVALPARAM;
}

std::uint32_t TPortableOs::timeGetTime() { return static_cast<std::uint32_t>(Now()); }

std::uint32_t TPortableOs::GetTickCount() { return static_cast<std::uint32_t>(Now()); }

void TPortableOs::Sleep(std::uint32_t milliseconds) {
  if (FMode == TClockMode::Real) {
    std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
  } else {
    std::this_thread::yield();
  }
}

void TPortableOs::StartMMThreadLocked() {
  if (!FMMThread.joinable()) FMMThread = std::thread([this] { MMThreadMain(); });
}

void TPortableOs::MMThreadMain() {
  TLock lock(FLock);
  while (!FStopping) {
    if (FMode == TClockMode::Manual) {
      if (FMMRequest.serial == FMMTaken) {
        FMMWake.wait(lock);
        continue;
      }
      const TMMRequest request = FMMRequest;
      FMMTaken = request.serial;
      lock.unlock();
      try {
        request.proc(request.id, 0, request.user, 0, 0);
      } catch (...) {
        // A callback must not take the timer thread down.
      }
      lock.lock();
      FMMDone = request.serial;
      FWake.notify_all();
      continue;
    }
    TMMTimer* next = nullptr;
    for (TMMTimer& t : FMMTimers) {
      if (!next || t.due < next->due || (t.due == next->due && t.order < next->order)) next = &t;
    }
    if (!next) {
      FMMWake.wait(lock);
      continue;
    }
    const std::uint64_t now = NowLocked();
    if (next->due > now) {
      FMMWake.wait_until(lock, FEpoch + std::chrono::milliseconds(next->due - FStartMs));
      continue;
    }
    const TimerProc proc = next->proc;
    const std::uint32_t id = next->id;
    const ULongPtr user = next->user;
    if (next->periodic) {
      next->due += next->delay;
      if (next->due <= now) next->due = now + next->delay;
      next->order = ++FTimerOrder;
    } else {
      std::erase_if(FMMTimers, [&](const TMMTimer& t) { return t.id == id; });
    }
    lock.unlock();
    try {
      proc(id, 0, user, 0, 0);
    } catch (...) {
    }
    lock.lock();
  }
}

void TPortableOs::RunMMOnThread(TLock& lock, TimerProc proc, std::uint32_t id, ULongPtr user) {
  StartMMThreadLocked();
  const std::uint64_t serial = FMMRequest.serial + 1;
  FMMRequest = TMMRequest{serial, proc, id, user};
  FMMWake.notify_all();
  const std::uint32_t me = ThisThreadId();
  while (FMMDone < serial && !FStopping) {
    ReceiveSentMessages(lock);
    FWake.wait(lock, [&] { return FMMDone >= serial || FStopping || !ThreadState(me).sent.empty(); });
  }
}

void TPortableOs::AdvanceClock(std::uint64_t milliseconds) {
  ProcessMessages();
  if (FMode == TClockMode::Real) return;
  std::uint64_t target = 0;
  {
    TLock lock(FLock);
    target = FManualNow + milliseconds;
  }
  for (;;) {
    TLock lock(FLock);
    const std::uint32_t me = ThisThreadId();
    TWindowTimer* window = nullptr;
    for (TWindowTimer& t : FWindowTimers) {
      TWindow* w = Find(t.hwnd);
      if (!w || w->threadId != me || t.due > target) continue;
      if (!window || t.due < window->due || (t.due == window->due && t.order < window->order)) window = &t;
    }
    TMMTimer* mm = nullptr;
    for (TMMTimer& t : FMMTimers) {
      if (t.due > target) continue;
      if (!mm || t.due < mm->due || (t.due == mm->due && t.order < mm->order)) mm = &t;
    }
    if (!window && !mm) break;
    const bool useWindow = window && (!mm || window->due < mm->due || (window->due == mm->due && window->order < mm->order));
    const std::uint64_t due = useWindow ? window->due : mm->due;
    if (due > FManualNow) FManualNow = due;
    FWake.notify_all();
    if (useWindow) {
      Msg msg{window->hwnd, WM_TIMER, window->id, 0, static_cast<std::uint32_t>(FManualNow), FCursor};
      window->due += window->interval;
      window->order = ++FTimerOrder;
      ForgetInputLocked();
      lock.unlock();
      RunHooks(WH_GETMESSAGE, HC_ACTION, PM_REMOVE, reinterpret_cast<LParam>(&msg));
      DispatchMessageW(&msg);
    } else {
      const TimerProc proc = mm->proc;
      const std::uint32_t id = mm->id;
      const ULongPtr user = mm->user;
      if (mm->periodic) {
        mm->due += mm->delay;
        mm->order = ++FTimerOrder;
      } else {
        std::erase_if(FMMTimers, [&](const TMMTimer& t) { return t.id == id; });
      }
      RunMMOnThread(lock, proc, id, user);
      lock.unlock();
    }
    ProcessMessages();
  }
  {
    TLock lock(FLock);
    if (FManualNow < target) FManualNow = target;
  }
  FWake.notify_all();
  ProcessMessages();
}

// ---------------------------------------------------------------------------
// Input

void TPortableOs::ForgetInputLocked() {
  TThreadState& state = ThreadState(ThisThreadId());
  state.extraInfo = 0;
  state.source = InputMessageSource{};
}

LResult TPortableOs::DeliverInput(Msg msg, LParam extraInfo, InputMessageSource source) {
  {
    TLock lock(FLock);
    TThreadState& state = ThreadState(ThisThreadId());
    state.extraInfo = extraInfo;
    state.source = source;
  }
  if (IsMouseMessage(msg.message)) {
    MouseHookStruct info{msg.pt, msg.hwnd, static_cast<std::uint32_t>(HTCLIENT), static_cast<ULongPtr>(extraInfo)};
    if (RunHooks(WH_MOUSE, HC_ACTION, msg.message, reinterpret_cast<LParam>(&info)) != 0) return 0;
  }
  RunHooks(WH_GETMESSAGE, HC_ACTION, PM_REMOVE, reinterpret_cast<LParam>(&msg));
  TranslateMessage(&msg);
  return DispatchMessageW(&msg);
}

LResult TPortableOs::InjectMouse(HWnd hwnd, std::uint32_t msg, std::int32_t x, std::int32_t y, WParam keys,
                                 LParam extraInfo) {
  Msg m;
  {
    TLock lock(FLock);
    TWindow* w = FindLive(hwnd);
    if (!w) return 0;
    const TPoint origin = ClientOrigin(*w);
    const TPoint screen{origin.X + x, origin.Y + y};
    FCursor = screen;
    const bool wheel = msg == WM_MOUSEWHEEL || msg == WM_MOUSEHWHEEL;
    HWnd target = hwnd;
    if (!wheel && FCapture && FindLive(FCapture)) target = FCapture;
    const TPoint targetOrigin = ClientOrigin(*Find(target));
    switch (msg) {
      case WM_LBUTTONDOWN:
      case WM_LBUTTONDBLCLK:
        FKeys[VK_LBUTTON] |= 1;
        break;
      case WM_LBUTTONUP:
        FKeys[VK_LBUTTON] &= static_cast<std::uint8_t>(~1u);
        break;
      case WM_RBUTTONDOWN:
      case WM_RBUTTONDBLCLK:
        FKeys[VK_RBUTTON] |= 1;
        break;
      case WM_RBUTTONUP:
        FKeys[VK_RBUTTON] &= static_cast<std::uint8_t>(~1u);
        break;
      case WM_MBUTTONDOWN:
      case WM_MBUTTONDBLCLK:
        FKeys[VK_MBUTTON] |= 1;
        break;
      case WM_MBUTTONUP:
        FKeys[VK_MBUTTON] &= static_cast<std::uint8_t>(~1u);
        break;
      default:
        break;
    }
    if (msg != WM_MOUSELEAVE) LeaveTrackedLocked(target);
    LParam lParam = 0;
    if (wheel) {
      lParam = MakeLParam(screen.X, screen.Y);
    } else if (msg != WM_MOUSELEAVE) {
      lParam = MakeLParam(screen.X - targetOrigin.X, screen.Y - targetOrigin.Y);
    }
    m = Msg{target, msg, keys, lParam, static_cast<std::uint32_t>(NowLocked()), screen};
  }
  return DeliverInput(m, extraInfo, SourceOfMouse(extraInfo));
}

LResult TPortableOs::InjectMouseAtScreen(std::uint32_t msg, TPoint screen, WParam keys, LParam extraInfo) {
  HWnd target = nullptr;
  {
    TLock lock(FLock);
    if (FCapture && FindLive(FCapture)) target = FCapture;
  }
  if (!target) target = WindowFromPoint(screen);
  if (!target || target == FDesktop) {
    {
      TLock lock(FLock);
      FCursor = screen;
      LeaveTrackedLocked(nullptr);
    }
    FWake.notify_all();
    return 0;
  }
  TPoint client = screen;
  if (!ScreenToClient(target, &client)) return 0;
  return InjectMouse(target, msg, client.X, client.Y, keys, extraInfo);
}

void TPortableOs::LeaveTrackedLocked(HWnd target) {
  if (!FTrackLeave || FTrackLeave == target) return;
  if (TWindow* w = FindLive(FTrackLeave)) {
    ThreadState(w->threadId)
        .posted.push_back(TQueuedMessage{
            Msg{FTrackLeave, WM_MOUSELEAVE, 0, 0, static_cast<std::uint32_t>(NowLocked()), FCursor}, 0});
    FWake.notify_all();
  }
  FTrackLeave = nullptr;
}

bool TPortableOs::TrackMouseEvent(TrackMouseEventInfo* info) {
  if (!info || info->cbSize != sizeof(TrackMouseEventInfo)) return false;
  TLock lock(FLock);
  if (info->dwFlags & TME_CANCEL) {
    if ((info->dwFlags & TME_LEAVE) && FTrackLeave == info->hwndTrack) FTrackLeave = nullptr;
    return true;
  }
  if (!(info->dwFlags & TME_LEAVE)) return true;
  TWindow* w = FindLive(info->hwndTrack);
  if (!w) return false;
  if (FTrackLeave != info->hwndTrack) LeaveTrackedLocked(info->hwndTrack);
  FTrackLeave = info->hwndTrack;
  // Asked while the cursor is elsewhere: the leave comes at once, as on the system.
  const TPoint o = ClientOrigin(*w);
  if (!Contains(TRect{o.X, o.Y, o.X + w->rect.Width(), o.Y + w->rect.Height()}, FCursor)) {
    LeaveTrackedLocked(nullptr);
  }
  return true;
}

LResult TPortableOs::InjectKey(HWnd hwnd, std::uint32_t msg, std::int32_t virtualKey, LParam lParam) {
  Msg m;
  {
    TLock lock(FLock);
    HWnd target = hwnd ? hwnd : FFocus;
    if (!FindLive(target)) return 0;
    auto& key = FKeys[static_cast<std::size_t>(virtualKey & 0xFF)];
    if (msg == WM_KEYDOWN || msg == WM_SYSKEYDOWN) {
      if (!(key & 1)) key ^= 2;
      key |= 1;
    } else if (msg == WM_KEYUP || msg == WM_SYSKEYUP) {
      key &= static_cast<std::uint8_t>(~1u);
    }
    m = Msg{target, msg, static_cast<WParam>(virtualKey), lParam, static_cast<std::uint32_t>(NowLocked()), FCursor};
  }
  return DeliverInput(m, 0, InputMessageSource{IMDT_KEYBOARD, IMO_HARDWARE});
}

LResult TPortableOs::InjectTouch(HWnd hwnd, const std::vector<TouchInput>& points) {
  if (points.empty() || points.size() > 0xFFFF) return 0;
  Msg m;
  std::uint32_t mouseMsg = 0;
  WParam keys = 0;
  TPoint client;
  {
    TLock lock(FLock);
    TWindow* w = FindLive(hwnd);
    if (!w) return 0;
    if (w->touch) {
      FNextTouchInput += 4;
      FTouchInputs[FNextTouchInput] = points;
      m = Msg{hwnd, WM_TOUCH, MakeWParam(static_cast<std::int32_t>(points.size()), 0),
              static_cast<LParam>(FNextTouchInput), static_cast<std::uint32_t>(NowLocked()), FCursor};
    } else {
      auto primary = std::find_if(points.begin(), points.end(),
                                  [](const TouchInput& p) { return (p.dwFlags & TOUCHEVENTF_PRIMARY) != 0; });
      if (primary == points.end()) primary = points.begin();
      const TPoint origin = ClientOrigin(*w);
      client = {primary->x / 100 - origin.X, primary->y / 100 - origin.Y};
      if (primary->dwFlags & TOUCHEVENTF_DOWN) {
        mouseMsg = WM_LBUTTONDOWN;
        keys = MK_LBUTTON;
      } else if (primary->dwFlags & TOUCHEVENTF_UP) {
        mouseMsg = WM_LBUTTONUP;
      } else {
        mouseMsg = WM_MOUSEMOVE;
        keys = MK_LBUTTON;
      }
    }
  }
  if (mouseMsg) return InjectMouse(hwnd, mouseMsg, client.X, client.Y, keys, static_cast<LParam>(MI_WP_TOUCH));
  return DeliverInput(m, 0, InputMessageSource{IMDT_TOUCH, IMO_HARDWARE});
}

bool TPortableOs::RegisterTouchWindow(HWnd hwnd, std::uint32_t flags) {
  TLock lock(FLock);
  TWindow* w = FindLive(hwnd);
  if (!w) return false;
  w->touch = true;
  w->touchFlags = flags;
  return true;
}

bool TPortableOs::UnregisterTouchWindow(HWnd hwnd) {
  TLock lock(FLock);
  TWindow* w = FindLive(hwnd);
  if (!w) return false;
  w->touch = false;
  w->touchFlags = 0;
  return true;
}

bool TPortableOs::IsTouchWindow(HWnd hwnd, std::uint32_t* flags) {
  TLock lock(FLock);
  TWindow* w = Find(hwnd);
  if (!w || !w->touch) return false;
  if (flags) *flags = w->touchFlags;
  return true;
}

bool TPortableOs::GetTouchInputInfo(HTouchInput input, std::uint32_t count, TouchInput* inputs, std::int32_t size) {
  if (!inputs || count == 0 || size != static_cast<std::int32_t>(sizeof(TouchInput))) return false;
  TLock lock(FLock);
  auto it = FTouchInputs.find(reinterpret_cast<std::uintptr_t>(input));
  if (it == FTouchInputs.end()) return false;
  const std::size_t n = std::min<std::size_t>(count, it->second.size());
  std::copy_n(it->second.begin(), n, inputs);
  return true;
}

bool TPortableOs::CloseTouchInputHandle(HTouchInput input) {
  TLock lock(FLock);
  return FTouchInputs.erase(reinterpret_cast<std::uintptr_t>(input)) > 0;
}

bool TPortableOs::GetCurrentInputMessageSource(InputMessageSource* source) {
  TLock lock(FLock);
  if (!FInputSourceAvailable || !source) return false;
  *source = ThreadState(ThisThreadId()).source;
  return true;
}

bool TPortableOs::InitCommonControlsEx(std::uint32_t) { return true; }

bool TPortableOs::InternetCrackUrlW(const char16_t* url, std::uint32_t urlLength, std::uint32_t flags,
                                    UrlComponentsW* components) {
  if (!url) return false;
  const std::u16string_view text = urlLength ? std::u16string_view(url, urlLength) : std::u16string_view(url);
  return CrackUrl(text, flags, components);
}

bool TPortableOs::CheckWin32Version(std::int32_t major, std::int32_t minor) {
  TLock lock(FLock);
  return FVersionMajor > major || (FVersionMajor == major && FVersionMinor >= minor);
}

void TPortableOs::SetInputMessageSourceAvailable(bool available) {
  TLock lock(FLock);
  FInputSourceAvailable = available;
}

void TPortableOs::SetWin32Version(std::int32_t major, std::int32_t minor) {
  TLock lock(FLock);
  FVersionMajor = major;
  FVersionMinor = minor;
}

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

void TPortableOs::SetKeyState(std::int32_t virtualKey, bool down, bool toggled) {
  TLock lock(FLock);
  FKeys[static_cast<std::size_t>(virtualKey & 0xFF)] = static_cast<std::uint8_t>((down ? 1 : 0) | (toggled ? 2 : 0));
}

std::int16_t TPortableOs::GetKeyState(std::int32_t virtualKey) {
  if (virtualKey < 0 || virtualKey > 255) return 0;
  TLock lock(FLock);
  const std::uint8_t key = FKeys[static_cast<std::size_t>(virtualKey)];
  const std::uint16_t value = static_cast<std::uint16_t>(((key & 1) ? 0x8000u : 0u) | ((key & 2) ? 1u : 0u));
  return static_cast<std::int16_t>(value);
}

bool TPortableOs::GetCursorPos(TPoint* point) {
  if (!point) return false;
  TLock lock(FLock);
  *point = FCursor;
  return true;
}

bool TPortableOs::SetCursorPos(std::int32_t x, std::int32_t y) {
  TLock lock(FLock);
  FCursor = {x, y};
  return true;
}

std::uint32_t TPortableOs::GetDoubleClickTime() {
  TLock lock(FLock);
  return FDoubleClickTime;
}

HWnd TPortableOs::SetCapture(HWnd hwnd) {
  HWnd previous = nullptr;
  {
    TLock lock(FLock);
    if (!FindLive(hwnd)) return nullptr;
    previous = FCapture;
    FCapture = hwnd;
  }
  if (previous && previous != hwnd && IsWindow(previous)) {
    SendDirect(previous, WM_CAPTURECHANGED, 0, reinterpret_cast<LParam>(hwnd));
  }
  return previous;
}

bool TPortableOs::ReleaseCapture() {
  HWnd previous = nullptr;
  {
    TLock lock(FLock);
    previous = FCapture;
    FCapture = nullptr;
  }
  if (previous && IsWindow(previous)) SendDirect(previous, WM_CAPTURECHANGED, 0, 0);
  return true;
}

HWnd TPortableOs::GetCapture() {
  TLock lock(FLock);
  return FCapture;
}

HWnd TPortableOs::SetFocus(HWnd hwnd) {
  HWnd previous = nullptr;
  {
    TLock lock(FLock);
    if (hwnd && !FindLive(hwnd)) return nullptr;
    previous = FFocus;
    if (previous == hwnd) return previous;
    FFocus = hwnd;
  }
  if (previous && IsWindow(previous)) SendDirect(previous, WM_KILLFOCUS, reinterpret_cast<WParam>(hwnd), 0);
  if (hwnd && IsWindow(hwnd)) SendDirect(hwnd, WM_SETFOCUS, reinterpret_cast<WParam>(previous), 0);
  return previous;
}

HWnd TPortableOs::GetFocus() {
  TLock lock(FLock);
  return FFocus;
}

// ---------------------------------------------------------------------------
// System information and the emulation's own services

std::int32_t TPortableOs::GetSystemMetrics(std::int32_t index) {
  TLock lock(FLock);
  auto it = FMetrics.find(index);
  return it == FMetrics.end() ? 0 : it->second;
}

std::int32_t TPortableOs::GetLogPixelsY() {
  TLock lock(FLock);
  return FLogPixelsY;
}

std::int32_t TPortableOs::MessageBoxW(HWnd hwnd, const char16_t* text, const char16_t* caption, std::uint32_t type) {
  TLock lock(FLock);
  FMessageBoxCalls.push_back(TMessageBoxCall{hwnd, FromZ(text), FromZ(caption), type});
  return FMessageBoxAnswer;
}

std::int32_t TPortableOs::GetLocaleInfoW(std::uint32_t, std::uint32_t type, char16_t* buffer, std::int32_t maxCount) {
  TLock lock(FLock);
  // The high bits are options (no user override, ANSI code page, number); the text is the same.
  auto it = FLocale.find(type & 0x0FFFFFFFu);
  if (it == FLocale.end() || maxCount < 0) return 0;
  const auto needed = static_cast<std::int32_t>(it->second.size() + 1);
  if (maxCount == 0) return needed;
  if (!buffer || maxCount < needed) return 0;
  std::copy(it->second.begin(), it->second.end(), buffer);
  buffer[needed - 1] = 0;
  return needed;
}

bool TPortableOs::SetWindowSurface(HWnd hwnd, std::int32_t width, std::int32_t height, const std::uint32_t* pixels) {
  if (width < 0 || height < 0) return false;
  const std::size_t count = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
  if (count > 0 && !pixels) return false;
  TLock lock(FLock);
  TWindow* w = FindLive(hwnd);
  if (!w) return false;
  w->surface.width = width;
  w->surface.height = height;
  w->surface.pixels.assign(pixels, pixels + count);
  return true;
}

bool TPortableOs::ReadWindowPixels(HWnd hwnd, TWindowPixels* out) {
  if (!out) return false;
  TLock lock(FLock);
  TWindow* w = Find(hwnd);
  if (!w) return false;
  *out = w->surface;
  return true;
}

bool TPortableOs::SetWindowProcessId(HWnd hwnd, std::uint32_t processId) {
  TLock lock(FLock);
  TWindow* w = Find(hwnd);
  if (!w) return false;
  w->processId = processId;
  return true;
}

void TPortableOs::SetSystemMetric(std::int32_t index, std::int32_t value) {
  TLock lock(FLock);
  FMetrics[index] = value;
  if (index == SM_CXSCREEN) Find(FDesktop)->rect.Right = value;
  if (index == SM_CYSCREEN) Find(FDesktop)->rect.Bottom = value;
}

void TPortableOs::SetDoubleClickTime(std::uint32_t milliseconds) {
  TLock lock(FLock);
  FDoubleClickTime = milliseconds;
}

void TPortableOs::SetLogPixelsY(std::int32_t dpi) {
  TLock lock(FLock);
  FLogPixelsY = dpi;
}

void TPortableOs::SetLocaleInfo(std::uint32_t type, std::u16string value) {
  TLock lock(FLock);
  FLocale[type] = std::move(value);
}

void TPortableOs::SetMessageBoxAnswer(std::int32_t answer) {
  TLock lock(FLock);
  FMessageBoxAnswer = answer;
}

std::vector<TMessageBoxCall> TPortableOs::MessageBoxCalls() {
  TLock lock(FLock);
  return FMessageBoxCalls;
}

std::size_t TPortableOs::WindowCount() {
  TLock lock(FLock);
  return FWindows.size() - 1;
}

std::size_t TPortableOs::PendingMessageCount() {
  TLock lock(FLock);
  std::size_t count = 0;
  for (const auto& [id, state] : FThreads) count += state.posted.size();
  return count;
}

}  // namespace qx
