#include "tabview/AniCalculations.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace qx {

namespace {
constexpr int kDefaultInterval = 16;
// Rate (per second) at which a return into the bounds or a wheel step closes in.
constexpr double kApproachRate = 15;
// Closer than this (pixels) counts as arrived.
constexpr double kArrived = 0.5;
constexpr double kInf = std::numeric_limits<double>::infinity();

double Speed(TPointD v) { return std::hypot(v.X, v.Y); }
}  // namespace

TAniCalculations::TAniCalculations(TFmxObject* owner) : FOwner(owner), FTimer(std::make_unique<TTimer>(nullptr)) {
  FTimer->SetEnabled(false);
  FTimer->SetInterval(kDefaultInterval);
  FTimer->SetOnTimer([this](TFmxObject*) { UpdatePosImmediately(false); });
}

TAniCalculations::~TAniCalculations() = default;

double TAniCalculations::Now() const { return FTimer->TimerService()->GetTick(); }

TPointD TAniCalculations::MinTarget() const {
  for (const TAniTarget& t : FTargets)
    if (t.TargetType == TAniTargetType::Min) return t.Point;
  return {-kInf, -kInf};
}

TPointD TAniCalculations::MaxTarget() const {
  for (const TAniTarget& t : FTargets)
    if (t.TargetType == TAniTargetType::Max) return t.Point;
  return {kInf, kInf};
}

void TAniCalculations::SetTargets(const std::vector<TAniTarget>& targets) { FTargets = targets; }

TPointD TAniCalculations::Clamp(TPointD p) const {
  TPointD lo = MinTarget(), hi = MaxTarget();
  // An inverted range (content smaller than the view) rests at its minimum.
  return {std::max(lo.X, std::min(p.X, std::max(lo.X, hi.X))), std::max(lo.Y, std::min(p.Y, std::max(lo.Y, hi.Y)))};
}

bool TAniCalculations::OutOfBounds(TPointD p) const { return !(Clamp(p) == p); }

TPointD TAniCalculations::NearestRest(TPointD p) const {
  TPointD rest = Clamp(p);
  double best = kInf;
  TPointD nearest = rest;
  for (const TAniTarget& t : FTargets) {
    if (t.TargetType != TAniTargetType::Other) continue;
    TPointD q = Clamp(t.Point);
    double d = std::hypot(q.X - p.X, q.Y - p.Y);
    if (d < best) {
      best = d;
      nearest = q;
    }
  }
  return nearest;
}

double TAniCalculations::Rubber(double value, double lo, double hi) const {
  hi = std::max(lo, hi);
  double e = std::max(1.0, Elasticity);
  if (value > hi) {
    double over = value - hi;
    return hi + e * over / (e + over);
  }
  if (value < lo) {
    double over = lo - value;
    return lo - e * over / (e + over);
  }
  return value;
}

void TAniCalculations::SetPosition(TPointD p) {
  if (p == FViewportPosition) return;
  FViewportPosition = p;
  if (FUpdateCount > 0) {
    FChangedInUpdate = true;
    return;
  }
  DoChanged();
}

void TAniCalculations::SetViewportPosition(const TPointD& value) { SetPosition(value); }

void TAniCalculations::EndUpdate() {
  if (FUpdateCount <= 0) return;
  if (--FUpdateCount == 0 && FChangedInUpdate) {
    FChangedInUpdate = false;
    DoChanged();
  }
}

void TAniCalculations::StartMoving() {
  if (FMoving) return;
  FMoving = true;
  DoStart();
}

void TAniCalculations::StopMoving() {
  if (!FMoving) return;
  FMoving = false;
  DoStop();
}

void TAniCalculations::StartMode(TMode mode) {
  FMode = mode;
  if (mode == TMode::None) {
    FVelocity = {};
    FTimer->SetEnabled(false);
    return;
  }
  StartMoving();
  FLastTick = Now();
  FTimer->SetEnabled(true);
}

void TAniCalculations::Stop() {
  StartMode(TMode::None);
  FDown = false;
  FSamples.clear();
  StopMoving();
}

void TAniCalculations::MouseDown(double x, double y) {
  // A press catches a glide where it is.
  if (FMode != TMode::None) StartMode(TMode::None);
  FDown = true;
  FDownPoint = FLastPoint = {x, y};
  FDownViewport = FViewportPosition;
  FSamples.clear();
  FSamples.push_back({Now(), FDownPoint});
}

void TAniCalculations::MouseMove(double x, double y) {
  if (!FDown) return;
  FLastPoint = {x, y};
  double now = Now();
  FSamples.push_back({now, FLastPoint});
  while (FSamples.size() > 2 && FSamples.front().Time < now - StorageTime) FSamples.pop_front();
  TPointD p = FViewportPosition;
  TPointD lo = MinTarget(), hi = MaxTarget();
  if (TouchTracking & ttrack::Horizontal) p.X = FDownViewport.X + (FDownPoint.X - x);
  if (TouchTracking & ttrack::Vertical) p.Y = FDownViewport.Y + (FDownPoint.Y - y);
  if (BoundsAnimation) {
    p.X = Rubber(p.X, lo.X, hi.X);
    p.Y = Rubber(p.Y, lo.Y, hi.Y);
  } else {
    p = Clamp(p);
  }
  if (!(p == FViewportPosition)) StartMoving();
  SetPosition(p);
}

void TAniCalculations::MouseUp(double x, double y) {
  if (!FDown) return;
  if (!(TPointD{x, y} == FLastPoint)) MouseMove(x, y);
  FDown = false;
  double now = Now();
  TPointD velocity;
  // The speed of the last moves, unless the finger rested before letting go.
  std::erase_if(FSamples, [&](const TSample& s) { return s.Time < now - StorageTime; });
  if (FSamples.size() >= 2) {
    const TSample& first = FSamples.front();
    const TSample& last = FSamples.back();
    double dt = last.Time - first.Time;
    if (dt > 0) {
      if (TouchTracking & ttrack::Horizontal) velocity.X = -(last.Point.X - first.Point.X) / dt;
      if (TouchTracking & ttrack::Vertical) velocity.Y = -(last.Point.Y - first.Point.Y) / dt;
    }
  }
  FSamples.clear();
  if (Animation) {
    if (Speed(velocity) >= MinVelocity && !OutOfBounds(FViewportPosition)) {
      FVelocity = velocity;
      StartMode(TMode::Glide);
      return;
    }
    TPointD rest = NearestRest(FViewportPosition);
    if (!(rest == FViewportPosition)) {
      FGoal = rest;
      StartMode(TMode::Approach);
      return;
    }
  } else {
    SetPosition(Clamp(FViewportPosition));
  }
  StopMoving();
}

void TAniCalculations::MouseLeave() {
  if (FDown) MouseUp(FLastPoint.X, FLastPoint.Y);
}

void TAniCalculations::MouseWheel(double dx, double dy) {
  TPointD from = FMode == TMode::Approach ? FGoal : FViewportPosition;
  TPointD goal = Clamp({from.X + dx, from.Y + dy});
  if (goal == FViewportPosition && FMode == TMode::None) return;
  if (Animation) {
    FVelocity = {};
    FGoal = goal;
    StartMode(TMode::Approach);
    return;
  }
  StartMoving();
  SetPosition(goal);
  StopMoving();
}

void TAniCalculations::UpdatePosImmediately(bool force) {
  if (FMode != TMode::None) {
    double now = Now();
    double dt = now - FLastTick;
    FLastTick = now;
    if (dt > 0) Step(dt);
  }
  if (force && FUpdateCount == 0) DoChanged();
}

void TAniCalculations::Step(double dt) {
  if (FMode == TMode::Approach) {
    double k = 1 - std::exp(-kApproachRate * dt);
    TPointD p{FViewportPosition.X + (FGoal.X - FViewportPosition.X) * k,
              FViewportPosition.Y + (FGoal.Y - FViewportPosition.Y) * k};
    if (std::fabs(FGoal.X - p.X) < kArrived && std::fabs(FGoal.Y - p.Y) < kArrived) {
      SetPosition(FGoal);
      StartMode(TMode::None);
      StopMoving();
      return;
    }
    SetPosition(p);
    return;
  }
  // Glide: the distance of this step, then the slower speed.
  TPointD p{FViewportPosition.X + FVelocity.X * dt, FViewportPosition.Y + FVelocity.Y * dt};
  double decay = std::exp(-DecelerationRate * dt);
  FVelocity = {FVelocity.X * decay, FVelocity.Y * decay};
  TPointD inside = Clamp(p);
  if (!(inside == p)) {
    if (!BoundsAnimation) {
      // The bound stops the glide on that axis.
      if (inside.X != p.X) FVelocity.X = 0;
      if (inside.Y != p.Y) FVelocity.Y = 0;
      p = inside;
    } else {
      // Past the bound: the glide ends and the position springs back.
      SetPosition({Rubber(p.X, MinTarget().X, MaxTarget().X), Rubber(p.Y, MinTarget().Y, MaxTarget().Y)});
      FVelocity = {};
      FGoal = NearestRest(FViewportPosition);
      FMode = TMode::Approach;
      return;
    }
  }
  SetPosition(p);
  if (Speed(FVelocity) >= MinVelocity) return;
  TPointD rest = NearestRest(FViewportPosition);
  if (rest == FViewportPosition) {
    StartMode(TMode::None);
    StopMoving();
    return;
  }
  FVelocity = {};
  FGoal = rest;
  FMode = TMode::Approach;
}

void TAniCalculations::DoStart() {
  if (OnStart) OnStart(FOwner);
}

void TAniCalculations::DoStop() {
  if (OnStop) OnStop(FOwner);
}

void TAniCalculations::DoChanged() {
  if (OnChanged) OnChanged(FOwner);
}

}  // namespace qx
