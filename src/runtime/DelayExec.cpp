#include "runtime/DelayExec.h"

#include <algorithm>

namespace qx {
namespace {

constexpr std::uintptr_t kTimerId = 1;

}  // namespace

TDelayTaskList::TDelayTaskList() { FWindowHandle = AllocateUtilWindow(&TDelayTaskList::WindowProc, this); }

TDelayTaskList::~TDelayTaskList() {
  FStop = true;
  SetTimerEnabled(false);
  FList_.Clear();
  // Messages still in flight die with the window; their tasks never run.
  DeallocateUtilWindow(FWindowHandle);
  FInFlight.Clear();
}

void TDelayTaskList::AddTask(std::unique_ptr<TDelayTask> task) {
  if (FStop || !task) return;
  TDelayTask* raw = task.get();
  FInFlight.Add(std::move(task));
  if (!Platform().PostMessageW(FWindowHandle, kDelayTaskMessage, 0, reinterpret_cast<LParam>(raw)))
    FInFlight.Take(raw);
}

void TDelayTaskList::AddAnonTask(std::u16string_view taskId, TAnonTaskProc proc, std::u16string_view origin) {
  AddTask(std::make_unique<TAnonTask>(std::u16string(taskId), std::move(proc), std::u16string(origin)));
}

void TDelayTaskList::ExecTaskNow(std::unique_ptr<TDelayTask> task) { AddTask(std::move(task)); }

void TDelayTaskList::ExecAnonTaskNow(std::u16string_view taskId, TAnonTaskProc proc, std::u16string_view origin) {
  AddAnonTask(taskId, std::move(proc), origin);
}

void TDelayTaskList::RemoveTaskById(std::u16string_view taskId) {
  std::vector<std::unique_ptr<TDelayTask>> doomed;
  FList_.WithLockedList([&](auto& items) {
    for (auto i = items.size(); i-- > 0;) {
      if (items[i]->TaskId() == taskId) {
        doomed.push_back(std::move(items[i]));
        items.erase(items.begin() + static_cast<std::ptrdiff_t>(i));
      }
    }
  });
}

bool TDelayTaskList::TaskExists(std::u16string_view taskId) {
  return FList_.WithLockedList([&](auto& items) {
    return std::any_of(items.rbegin(), items.rend(), [&](const auto& task) { return task->TaskId() == taskId; });
  });
}

void TDelayTaskList::SetInterval(std::uint32_t milliseconds) {
  FInterval = milliseconds;
  if (FTimerEnabled) Platform().SetTimer(FWindowHandle, kTimerId, FInterval);
}

void TDelayTaskList::SetTimerEnabled(bool enabled) {
  if (enabled == FTimerEnabled) return;
  FTimerEnabled = enabled;
  if (enabled)
    Platform().SetTimer(FWindowHandle, kTimerId, FInterval);
  else
    Platform().KillTimer(FWindowHandle, kTimerId);
}

LResult QX_STDCALL TDelayTaskList::WindowProc(HWnd hwnd, std::uint32_t msg, WParam wParam, LParam lParam) {
  auto* self = reinterpret_cast<TDelayTaskList*>(Platform().GetWindowLongPtrW(hwnd, win::GWLP_USERDATA));
  if (self && msg == kDelayTaskMessage) {
    auto task = self->FInFlight.Take(reinterpret_cast<TDelayTask*>(lParam));
    if (!self->FStop && task) {
      self->FList_.Add(std::move(task));
      self->SetTimerEnabled(true);
    }
    return 0;
  }
  if (self && msg == win::WM_TIMER && wParam == kTimerId) {
    self->Tick();
    return 0;
  }
  return Platform().DefWindowProcW(hwnd, msg, wParam, lParam);
}

void TDelayTaskList::Tick() {
  SetTimerEnabled(false);
  std::unique_ptr<TDelayTask> task = FList_.Pop();
  // Re-armed before running, so a long task does not lose the next tick.
  if (task) SetTimerEnabled(true);
  if (!task) return;
  FRetryFlag = false;
  if (!FStop) {
    try {
      task->Execute();
    } catch (...) {
      // A failing task ends only itself; the queue goes on.
    }
  }
  if (FRetryFlag && !FStop) {
    FList_.Add(std::move(task));
    SetTimerEnabled(true);
  }
  FRetryFlag = false;
}

}  // namespace qx
