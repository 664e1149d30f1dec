#pragma once

// A queue that runs work on the main thread, one task per timer tick, so that a burst of
// events can't freeze the user interface. Any thread may add a task.

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "base/ComObject.h"
#include "base/Text.h"
#include "platform/Platform.h"
#include "runtime/GenericThreadList.h"

namespace qx {

class TDelayTask {
 public:
  TDelayTask(std::u16string taskId, std::u16string origin) : FTaskId(std::move(taskId)), FOrigin(std::move(origin)) {}
  virtual ~TDelayTask() = default;
  virtual void Execute() = 0;

  const std::u16string& TaskId() const { return FTaskId; }
  const std::u16string& Origin() const { return FOrigin; }

 private:
  std::u16string FTaskId;
  std::u16string FOrigin;
};

using TAnonTaskProc = std::function<void()>;

class TAnonTask : public TDelayTask {
 public:
  TAnonTask(std::u16string taskId, TAnonTaskProc proc, std::u16string origin)
      : TDelayTask(std::move(taskId), std::move(origin)), FProc(std::move(proc)) {}
  void Execute() override {
    if (FProc) FProc();
  }

 private:
  TAnonTaskProc FProc;
};

inline constexpr std::uint32_t kDelayTaskMessage = 0x8065;
inline constexpr char16_t kDefaultUtilWindowClass[] = u"TalvokRDUtilWindow";

class TDelayTaskList {
 public:
  // Must be made on the main thread: its window and timer live there.
  TDelayTaskList();
  ~TDelayTaskList();
  TDelayTaskList(const TDelayTaskList&) = delete;
  TDelayTaskList& operator=(const TDelayTaskList&) = delete;

  void AddTask(std::unique_ptr<TDelayTask> task);
  void AddAnonTask(std::u16string_view taskId, TAnonTaskProc proc, std::u16string_view origin = {});
  // Queues, like AddTask; both entry points are kept.
  void ExecTaskNow(std::unique_ptr<TDelayTask> task);
  void ExecAnonTaskNow(std::u16string_view taskId, TAnonTaskProc proc, std::u16string_view origin = {});
  void RemoveTaskById(std::u16string_view taskId);
  bool TaskExists(std::u16string_view taskId);
  void SetInterval(std::uint32_t milliseconds);

  // A running task sets this to be queued again at the end instead of being freed.
  void SetRetryFlag() { FRetryFlag = true; }
  std::size_t Count() { return FList_.Count(); }
  bool TimerEnabled() const { return FTimerEnabled; }
  HWnd WindowHandle() const { return FWindowHandle; }

 private:
  static LResult QX_STDCALL WindowProc(HWnd hwnd, std::uint32_t msg, WParam wParam, LParam lParam);
  void Tick();
  void SetTimerEnabled(bool enabled);

  bool FStop = false;
  TGenericThreadList<TDelayTask> FList_;
  std::uint32_t FInterval = 1000;
  bool FTimerEnabled = false;
  HWnd FWindowHandle = nullptr;
  bool FRetryFlag = false;
  // Tasks posted but not yet received; freed with the list if their message never arrives.
  TGenericThreadList<TDelayTask> FInFlight;
};

struct ISharedDelayTask : IUnknown {
  static constexpr TGUID IID = MakeGuid("3B480674-2CF3-487A-A67B-75001ADD6EB8");
  virtual void AddTask(std::u16string_view taskId, TAnonTaskProc proc) = 0;
  virtual void SetInterval(std::uint32_t milliseconds) = 0;
};

class TSharedDelayTaskImpl : public TInterfacedObject<ISharedDelayTask> {
 public:
  TSharedDelayTaskImpl() : FDelayTaskList(std::make_unique<TDelayTaskList>()) {}
  void AddTask(std::u16string_view taskId, TAnonTaskProc proc) override {
    FDelayTaskList->AddAnonTask(taskId, std::move(proc), u"");
  }
  void SetInterval(std::uint32_t milliseconds) override { FDelayTaskList->SetInterval(milliseconds); }
  TDelayTaskList& List() { return *FDelayTaskList; }

 private:
  std::unique_ptr<TDelayTaskList> FDelayTaskList;
};

// Makes the hidden message window of the utility class (or the given one) whose
// procedure is wndProc; the class is registered anew if it exists with another procedure.
HWnd AllocateUtilWindow(WndProc wndProc, void* owner, const char16_t* className = kDefaultUtilWindowClass);
void DeallocateUtilWindow(HWnd window);

}  // namespace qx
