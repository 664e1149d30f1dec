// Window position, size, z-order, visibility, coordinates and painting.

#include <algorithm>

#include "platform/portable/PortableOsImpl.h"

namespace qx {

using namespace win;

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
  if (!(flags & SWP_NOSENDCHANGING))
    SendDirect(hwnd, WM_WINDOWPOSCHANGING, 0, reinterpret_cast<LParam>(&pos));
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

bool TPortableOs::MoveWindow(HWnd hwnd, std::int32_t x, std::int32_t y, std::int32_t width,
                             std::int32_t height, bool repaint) {
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
    SetWindowPos(
        hwnd, nullptr, 0, 0, 0, 0,
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

}  // namespace qx
