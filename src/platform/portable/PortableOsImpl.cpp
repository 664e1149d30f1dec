// The emulation's state and the lookups shared by its parts (lock held unless said otherwise).

#include "platform/portable/PortableOsImpl.h"

#include <unistd.h>

#include <atomic>

#include "base/Text.h"
#include "platform/portable/PortableOsHelpers.h"

namespace qx {

using namespace win;
using namespace portable_os;

namespace {

std::atomic<std::uint32_t> gNextThreadId{0x1000};

LResult QX_STDCALL DesktopProc(HWnd, std::uint32_t, WParam, LParam) { return 0; }

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

std::uint32_t TPortableOs::ThisThreadId() {
  thread_local const std::uint32_t id = gNextThreadId.fetch_add(4);
  return id;
}

std::u16string TPortableOs::ClassKey(const char16_t* name) { return LowerCase(FromZ(name)); }

std::uint64_t TPortableOs::NowLocked() const {
  if (FMode == TClockMode::Manual) return FManualNow;
  const auto elapsed = std::chrono::steady_clock::now() - FEpoch;
  return FStartMs +
         static_cast<std::uint64_t>(std::chrono::duration_cast<std::chrono::milliseconds>(elapsed).count());
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

void TPortableOs::CollectHitCandidates(const std::vector<HWnd>& siblings, TPoint screen,
                                       std::vector<HWnd>& out) {
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

}  // namespace qx
