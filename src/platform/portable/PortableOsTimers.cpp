// The clock, window timers and multimedia timers with their thread.

#include <algorithm>

#include "platform/portable/PortableOsImpl.h"

namespace qx {

using namespace win;

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
  return std::erase_if(FWindowTimers, [&](const TWindowTimer& t) { return t.hwnd == hwnd && t.id == id; }) >
         0;
}

std::uint32_t TPortableOs::timeSetEvent(std::uint32_t delay, std::uint32_t, TimerProc proc, ULongPtr user,
                                        std::uint32_t flags) {
  // Only function callbacks; event handles have no meaning here.
  if (!proc || delay == 0 || delay > 1000000 || (flags & ~(TIME_PERIODIC | TIME_KILL_SYNCHRONOUS)) != 0)
    return 0;
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
    const bool useWindow =
        window && (!mm || window->due < mm->due || (window->due == mm->due && window->order < mm->order));
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

void TPortableOs::WaitStep(bool pumpMessages) {
  // On the manual clock time passes only when it is advanced, and advancing runs what
  // falls due, messages included.
  if (FMode == TClockMode::Manual) {
    AdvanceClock(1);
    return;
  }
  if (pumpMessages)
    ProcessMessages();
  else
    std::this_thread::yield();
}

}  // namespace qx
