#pragma once

// Inertial scrolling: turns presses, drags and wheel turns into a viewport
// position that glides on, slows down and stays within its bounds. The motion
// runs on a timer that is made in the constructor, on the timer service that is
// registered at that moment.

#include <deque>
#include <functional>
#include <memory>
#include <vector>

#include "tabview/TabViewGeometry.h"
#include "toolkit/Timer.h"

namespace qx {

enum class TAniTargetType { Min, Max, Other };

struct TAniTarget {
  TAniTargetType TargetType = TAniTargetType::Other;
  TPointD Point;
  constexpr bool operator==(const TAniTarget&) const = default;
};

using TTouchTracking = unsigned;
namespace ttrack {
inline constexpr TTouchTracking Horizontal = 1;
inline constexpr TTouchTracking Vertical = 2;
}  // namespace ttrack

class TAniCalculations {
 public:
  static constexpr double DecelerationRateNormal = 1.95;
  static constexpr double DecelerationRateFast = 9.5;
  // Below this speed (pixels per second) a glide ends.
  static constexpr double MinVelocity = 10;

  // owner is the sender of the notifications.
  explicit TAniCalculations(TFmxObject* owner);
  virtual ~TAniCalculations();
  TAniCalculations(const TAniCalculations&) = delete;
  TAniCalculations& operator=(const TAniCalculations&) = delete;

  TFmxObject* Owner() const { return FOwner; }

  // ---- settings
  // Glides on after a release; without it a release stops at once.
  bool Animation = false;
  // May be dragged past the bounds and springs back; without it the bounds hold.
  bool BoundsAnimation = true;
  bool AutoShowing = false;
  TTouchTracking TouchTracking = ttrack::Horizontal | ttrack::Vertical;
  // Velocity falls by the factor e each 1/DecelerationRate seconds.
  double DecelerationRate = DecelerationRateNormal;
  // How far a drag past the bounds can pull, in pixels.
  double Elasticity = 100;
  // Moves older than this (seconds) before a release don't count for the velocity.
  double StorageTime = 0.15;
  int Interval() const { return FTimer->Interval(); }
  void SetInterval(int milliseconds) { FTimer->SetInterval(milliseconds); }
  TTimer& Timer() { return *FTimer; }

  // ---- position and bounds
  TPointD ViewportPosition() const { return FViewportPosition; }
  void SetViewportPosition(const TPointD& value);
  // Min and Max targets are the bounds of the viewport position; Other targets are
  // resting points a glide ends on (the nearest one).
  void SetTargets(const std::vector<TAniTarget>& targets);
  std::vector<TAniTarget> GetTargets() const { return FTargets; }
  TPointD MinTarget() const;
  TPointD MaxTarget() const;
  TPointD CurrentVelocity() const { return FVelocity; }

  // ---- input, in the owner's local coordinates
  void MouseDown(double x, double y);
  void MouseMove(double x, double y);
  void MouseUp(double x, double y);
  void MouseLeave();
  // Moves the viewport by (dx, dy), smoothly when Animation is on.
  void MouseWheel(double dx, double dy);

  // ---- state
  bool Down() const { return FDown; }
  bool Moving() const { return FMoving; }
  // A glide or a return into the bounds is under way.
  bool Inertia() const { return FMode != TMode::None; }
  // Runs a step of the motion now; with force the change is told even if nothing moved.
  void UpdatePosImmediately(bool force = false);
  // Ends any motion where it stands.
  void Stop();

  // While the count is above zero no change is told.
  void BeginUpdate() { ++FUpdateCount; }
  void EndUpdate();
  int UpdateCount() const { return FUpdateCount; }
  void SetUpdateCount(int value) { FUpdateCount = value; }

  TNotifyEvent OnStart, OnStop, OnChanged;

 protected:
  virtual void DoStart();
  virtual void DoStop();
  virtual void DoChanged();

 private:
  enum class TMode { None, Glide, Approach };
  struct TSample {
    double Time;
    TPointD Point;
  };
  double Now() const;
  void Step(double dt);
  void SetPosition(TPointD p);
  void StartMoving();
  void StopMoving();
  void StartMode(TMode mode);
  bool OutOfBounds(TPointD p) const;
  TPointD Clamp(TPointD p) const;
  TPointD NearestRest(TPointD p) const;
  double Rubber(double value, double lo, double hi) const;

  TFmxObject* FOwner;
  std::unique_ptr<TTimer> FTimer;
  std::vector<TAniTarget> FTargets;
  TPointD FViewportPosition;
  TPointD FVelocity;
  TPointD FGoal;
  TMode FMode = TMode::None;
  bool FDown = false;
  bool FMoving = false;
  bool FChangedInUpdate = false;
  int FUpdateCount = 0;
  TPointD FDownPoint, FDownViewport, FLastPoint;
  std::deque<TSample> FSamples;
  double FLastTick = 0;
};

}  // namespace qx
