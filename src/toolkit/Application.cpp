#include "toolkit/Application.h"

#include "platform/Platform.h"
#include "toolkit/Animation.h"
#include "toolkit/Form.h"
#include "toolkit/Managers.h"
#include "toolkit/PlatformServices.h"

namespace qx {

TApplication& Application() {
  static TApplication application;
  return application;
}

void TApplication::ProcessMessages() {
  if (MessagePump)
    MessagePump();
  else
    Platform().ProcessMessages();
  // Only the work queued before this call; work queued meanwhile waits for the next one.
  std::size_t count = FQueue.size();
  for (std::size_t i = 0; i < count && !FQueue.empty(); ++i) {
    std::function<void()> work = std::move(FQueue.front());
    FQueue.pop_front();
    try {
      work();
    } catch (const std::exception& e) {
      HandleException(nullptr, e);
    }
  }
}

void TApplication::HandleException(TFmxObject* sender, const std::exception& error) {
  if (OnException) OnException(sender, error);
}

void TApplication::Reset() {
  FQueue.clear();
  MessagePump = nullptr;
  OnException = nullptr;
  MainForm = nullptr;
  FWindowCallback = nullptr;
}

void TToolkit::FinalizeForms() {
  Application().MainForm = nullptr;
  // The library may be unloaded next: its window class must not outlive its procedure.
  // (The system refuses while a window of the class still stands.)
  Platform().UnregisterClassW(TCommonCustomForm::kWindowClassName);
}

void TToolkit::Finalize() {
  FinalizeForms();
  TStyleManager::UnInitialize();
  TFilterManager::UnInitialize();
  TBitmapCodecManager::UnInitialize();
  TTextLayoutManager::UnInitialize();
  TCanvasManager::UnInitialize();
  TContextManager::UnInitialize();
  TShaderManager::UnInitialize();
  // The animation thread still holds the timer service, so it goes before the services.
  TAnimation::ShutdownAniThread();
  Application().Reset();
  TPlatformServices::Current().Clear();
  ++FFinalizeCount;
}

}  // namespace qx
