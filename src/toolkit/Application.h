#pragma once

// The application object and the toolkit's one teardown call.

#include <cstdint>
#include <deque>
#include <exception>
#include <functional>

#include "toolkit/FmxObject.h"

namespace qx {

class TCommonCustomForm;

class TApplication {
 public:
  // Dispatches the pending window messages (through MessagePump when one is set),
  // then runs queued work.
  void ProcessMessages();
  // Work to run on the next ProcessMessages, in order.
  void Queue(std::function<void()> work) { FQueue.push_back(std::move(work)); }
  std::function<void()> MessagePump;

  // Errors from event handlers end here; with no handler they are dropped.
  std::function<void(TFmxObject* sender, const std::exception& error)> OnException;
  void HandleException(TFmxObject* sender, const std::exception& error);

  TCommonCustomForm* MainForm = nullptr;

  // The native window that counts as the application's window, asked for when needed.
  using TApplicationWindowFunc = std::function<std::uintptr_t()>;
  void SetApplicationWindowCallback(TApplicationWindowFunc callback) {
    FWindowCallback = std::move(callback);
  }
  std::uintptr_t ApplicationWindow() const { return FWindowCallback ? FWindowCallback() : 0; }

  void Reset();

 private:
  std::deque<std::function<void()>> FQueue;
  TApplicationWindowFunc FWindowCallback;
};

TApplication& Application();

class TToolkit {
 public:
  // Global teardown, in this order: the forms' bookkeeping and window class, every
  // manager, the animation thread, the application's hooks, every platform service.
  // After it no toolkit call is made (the toolkit would start afresh if one were).
  static void Finalize();
  static void FinalizeForms();
  static int FinalizeCount() { return FFinalizeCount; }

 private:
  static inline int FFinalizeCount = 0;
};

}  // namespace qx
