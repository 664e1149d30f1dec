// Message queues: posting, sending, retrieving and dispatching.

#include <algorithm>

#include "platform/portable/PortableOsHelpers.h"
#include "platform/portable/PortableOsImpl.h"

namespace qx {

using namespace win;
using namespace portable_os;

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

bool TPortableOs::PostThreadMessageW(std::uint32_t threadId, std::uint32_t msg, WParam wParam,
                                     LParam lParam) {
  {
    TLock lock(FLock);
    auto it = FThreads.find(threadId);
    if (it == FThreads.end()) return false;
    it->second.posted.push_back(TQueuedMessage{
        Msg{nullptr, msg, wParam, lParam, static_cast<std::uint32_t>(NowLocked()), FCursor}, 0});
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
          VisibleLocked(w->handle) && (!best || Key(w->handle) < Key(best->handle))) {
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
  if (got)
    RunHooks(WH_GETMESSAGE, HC_ACTION, remove ? PM_REMOVE : PM_NOREMOVE, reinterpret_cast<LParam>(msg));
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

std::size_t TPortableOs::PendingMessageCount() {
  TLock lock(FLock);
  std::size_t count = 0;
  for (const auto& [id, state] : FThreads) count += state.posted.size();
  return count;
}

}  // namespace qx
