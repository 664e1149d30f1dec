#pragma once

// Animations. Each one is a child of the object whose property it drives and
// is ticked by the class-wide animation thread, a TTimer on the registered
// timer service. A host may install its own thread (SetAniThread).

#include <memory>
#include <string>
#include <vector>

#include "toolkit/AnimationList.h"
#include "toolkit/Bitmap.h"
#include "toolkit/Timer.h"

namespace qx {

enum class TInterpolationType {
  Linear,
  Quadratic,
  Cubic,
  Quartic,
  Quintic,
  Sinusoidal,
  Exponential,
  Circular,
  Elastic,
  Back,
  Bounce
};
enum class TAnimationType { In, Out, InOut };

// Eased progress for t in 0..1.
double InterpolateValue(double t, TInterpolationType interpolation, TAnimationType type);

class TAnimation;

// The thread that ticks running animations; the toolkit's default runs at AniFrameRate.
class TAniThreadBase : public TTimer {
 public:
  TAniThreadBase() : TTimer(nullptr) {}
  virtual void AddAnimation(TAnimation* animation) = 0;
  virtual void RemoveAnimation(TAnimation* animation) = 0;
};

class TDefaultAniThread : public TAniThreadBase {
 public:
  TDefaultAniThread();
  void AddAnimation(TAnimation* animation) override;
  void RemoveAnimation(TAnimation* animation) override;
  std::size_t Count() const { return FAniList.Count(); }
  // One tick: every running animation gets ProcessTick(now, elapsed).
  void DoTick();

 private:
  TAnimationList FAniList;
  double FTime = 0;
};

class TAnimation : public TFmxObject {
 public:
  explicit TAnimation(TFmxObject* owner = nullptr);
  ~TAnimation() override;
  std::string ClassName() const override { return "TAnimation"; }

  // Frames per second of the default animation thread.
  static int AniFrameRate;
  // The class-wide thread, made on first need.
  static TAniThreadBase* AniThread();
  // Whether the class-wide thread stands, without making one.
  static bool AniThreadAssigned();
  // Ends the class-wide thread (global teardown).
  static void ShutdownAniThread();

  float Duration = 0.2f;
  float Delay = 0;
  TInterpolationType Interpolation = TInterpolationType::Linear;
  TAnimationType AnimationType = TAnimationType::In;
  bool Loop = false;
  bool AutoReverse = false;
  bool Inverse = false;
  bool Enabled = false;
  TNotifyEvent OnProcess;
  TNotifyEvent OnFinish;

  virtual void Start();
  virtual void Stop();
  // Stops where it is, without jumping to the end value.
  virtual void StopAtCurrent();
  bool Running() const { return FRunning; }
  bool Pause = false;
  double CurrentTime() const { return FTime; }
  // Eased progress of the current time.
  double NormalizedTime() const;

  virtual void ProcessTick(double time, double deltaTime);

  const TPropertyTable& Properties() const override { return ClassProperties(); }
  static const TPropertyTable& ClassProperties();

 protected:
  // Writes the animated value for the current time.
  virtual void ProcessAnimation() = 0;
  // Called when the animation starts running its frames (after any delay).
  virtual void FirstFrame() {}
  void DoProcess();
  void DoFinish();
  void ParentChanged() override;
  // For a host's replacement thread: takes ownership; the former thread is freed.
  static void SetAniThread(std::unique_ptr<TAniThreadBase> thread);

 private:
  static std::unique_ptr<TAniThreadBase>& ThreadSlot();
  double FTime = 0;
  double FDelayTime = 0;
  bool FRunning = false;
};

// Drives a float property of the parent, addressed by name ("Opacity", "Position.X").
class TFloatAnimation : public TAnimation {
 public:
  explicit TFloatAnimation(TFmxObject* owner = nullptr) : TAnimation(owner) {}
  std::string ClassName() const override { return "TFloatAnimation"; }

  std::string PropertyName;
  float StartValue = 0;
  float StopValue = 0;
  bool StartFromCurrent = false;

  // Raises EPropertyError when the parent has no float property of that name.
  void Start() override;

  const TPropertyTable& Properties() const override { return ClassProperties(); }
  static const TPropertyTable& ClassProperties();

 protected:
  void ProcessAnimation() override;
  void FirstFrame() override;
  void ParentChanged() override;

 private:
  bool Resolve();
  const TFloatPropertyInfo* FProperty = nullptr;
  TFmxObject* FTarget = nullptr;
  std::string FResolvedName;
};

// Cross-fades a bitmap property of the parent from StartValue to StopValue.
class TBitmapAnimation : public TAnimation {
 public:
  explicit TBitmapAnimation(TFmxObject* owner = nullptr) : TAnimation(owner) {}
  std::string ClassName() const override { return "TBitmapAnimation"; }

  std::string PropertyName = "Bitmap";
  TBitmap& StartValue() { return FStartValue; }
  TBitmap& StopValue() { return FStopValue; }

  void Start() override;

 protected:
  void ProcessAnimation() override;

 private:
  TBitmap FStartValue, FStopValue, FFrame;
};

// Plays frames cut from a strip into a bitmap property of the parent.
class TBitmapListAnimation : public TAnimation {
 public:
  explicit TBitmapListAnimation(TFmxObject* owner = nullptr) : TAnimation(owner) {}
  std::string ClassName() const override { return "TBitmapListAnimation"; }

  std::string PropertyName = "Bitmap";
  // Frames side by side, in AnimationRowCount rows.
  TBitmap& AnimationBitmap() { return FAnimationBitmap; }
  int AnimationCount = 1;
  int AnimationRowCount = 1;
  int CurrentFrame() const { return FLastFrame; }

  void Start() override;

 protected:
  void ProcessAnimation() override;

 private:
  TBitmap FAnimationBitmap, FFrame;
  int FLastFrame = -1;
};

}  // namespace qx
