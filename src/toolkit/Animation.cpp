#include "toolkit/Animation.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "base/Text.h"
#include "toolkit/Canvas.h"

namespace qx {

// ---- easing

namespace {

double EaseIn(double t, TInterpolationType interpolation) {
  constexpr double pi = std::numbers::pi;
  switch (interpolation) {
    case TInterpolationType::Linear:
      return t;
    case TInterpolationType::Quadratic:
      return t * t;
    case TInterpolationType::Cubic:
      return t * t * t;
    case TInterpolationType::Quartic:
      return t * t * t * t;
    case TInterpolationType::Quintic:
      return t * t * t * t * t;
    case TInterpolationType::Sinusoidal:
      return 1 - std::cos(t * pi / 2);
    case TInterpolationType::Exponential:
      return t <= 0 ? 0 : std::pow(2.0, 10 * (t - 1));
    case TInterpolationType::Circular:
      return 1 - std::sqrt(std::max(0.0, 1 - t * t));
    case TInterpolationType::Elastic: {
      if (t <= 0 || t >= 1) return t <= 0 ? 0 : 1;
      const double p = 0.3, s = p / 4;
      double u = t - 1;
      return -(std::pow(2.0, 10 * u) * std::sin((u - s) * (2 * pi) / p));
    }
    case TInterpolationType::Back: {
      const double s = 1.70158;
      return t * t * ((s + 1) * t - s);
    }
    case TInterpolationType::Bounce: {
      // In is the mirror of the classic bounce out.
      double u = 1 - t, out;
      if (u < 1 / 2.75)
        out = 7.5625 * u * u;
      else if (u < 2 / 2.75) {
        u -= 1.5 / 2.75;
        out = 7.5625 * u * u + 0.75;
      } else if (u < 2.5 / 2.75) {
        u -= 2.25 / 2.75;
        out = 7.5625 * u * u + 0.9375;
      } else {
        u -= 2.625 / 2.75;
        out = 7.5625 * u * u + 0.984375;
      }
      return 1 - out;
    }
  }
  return t;
}

}  // namespace

double InterpolateValue(double t, TInterpolationType interpolation, TAnimationType type) {
  t = std::clamp(t, 0.0, 1.0);
  double v;
  switch (type) {
    case TAnimationType::In:
      v = EaseIn(t, interpolation);
      break;
    case TAnimationType::Out:
      v = 1 - EaseIn(1 - t, interpolation);
      break;
    default:
      v = t < 0.5 ? EaseIn(2 * t, interpolation) / 2 : 1 - EaseIn(2 - 2 * t, interpolation) / 2;
      break;
  }
  if (t <= 0) return 0;
  if (t >= 1) return 1;
  return v;
}

// ---- the default thread

TDefaultAniThread::TDefaultAniThread() {
  SetInterval(std::max(1, 1000 / std::max(1, TAnimation::AniFrameRate)));
  SetEnabled(false);
  SetOnTimer([this](TFmxObject*) { DoTick(); });
  FTime = TimerService()->GetTick();
}

void TDefaultAniThread::AddAnimation(TAnimation* animation) {
  FAniList.Add(animation);
  if (!Enabled()) FTime = TimerService()->GetTick();
  SetEnabled(true);
}

void TDefaultAniThread::RemoveAnimation(TAnimation* animation) {
  FAniList.Remove(animation);
  SetEnabled(!FAniList.Empty());
}

void TDefaultAniThread::DoTick() {
  double now = TimerService()->GetTick();
  double delta = now - FTime;
  FTime = now;
  if (delta <= 0 || FAniList.Empty()) return;
  // A tick may remove animations (finished ones, or ones freed by a handler).
  FAniList.ForEachLatestFirst([&](TAnimation* a) {
    if (a->Running()) a->ProcessTick(FTime, delta);
  });
}

// ---- TAnimation

int TAnimation::AniFrameRate = 60;

std::unique_ptr<TAniThreadBase>& TAnimation::ThreadSlot() {
  static std::unique_ptr<TAniThreadBase> thread;
  return thread;
}

TAniThreadBase* TAnimation::AniThread() {
  auto& slot = ThreadSlot();
  if (!slot) slot = std::make_unique<TDefaultAniThread>();
  return slot.get();
}

bool TAnimation::AniThreadAssigned() { return ThreadSlot() != nullptr; }

void TAnimation::SetAniThread(std::unique_ptr<TAniThreadBase> thread) { ThreadSlot() = std::move(thread); }

void TAnimation::ShutdownAniThread() { ThreadSlot().reset(); }

TAnimation::TAnimation(TFmxObject* owner) : TFmxObject(owner) {}

TAnimation::~TAnimation() {
  if (FRunning && ThreadSlot()) ThreadSlot()->RemoveAnimation(this);
  FRunning = false;
}

double TAnimation::NormalizedTime() const {
  if (FDelayTime > 0) return 0;
  if (Duration <= 0) return Inverse ? 0 : 1;  // no duration: the end at once
  return InterpolateValue(FTime / Duration, Interpolation, AnimationType);
}

void TAnimation::DoProcess() {
  if (OnProcess) OnProcess(this);
}

void TAnimation::DoFinish() {
  if (OnFinish) OnFinish(this);
}

void TAnimation::ParentChanged() {
  // An animation moved away from its target has nothing left to drive.
  if (FRunning && !Parent()) StopAtCurrent();
}

void TAnimation::Start() {
  if (FRunning || IsDestroying()) return;
  if (std::fabs(Duration) < 0.001f) {
    // No duration: jump to the end at once.
    FDelayTime = 0;
    FTime = Inverse ? 0 : Duration;
    FRunning = true;
    ProcessAnimation();
    DoProcess();
    FRunning = false;
    FTime = 0;
    DoFinish();
    return;
  }
  FDelayTime = Delay;
  FRunning = true;
  FTime = Inverse ? Duration : 0;
  if (Delay <= 0) {
    FirstFrame();
    ProcessAnimation();
    DoProcess();
  }
  if (FRunning) AniThread()->AddAnimation(this);
}

void TAnimation::Stop() {
  if (!FRunning) return;
  if (ThreadSlot()) ThreadSlot()->RemoveAnimation(this);
  if (AutoReverse && Inverse) Inverse = false;
  FTime = Inverse ? 0 : Duration;
  FDelayTime = 0;
  ProcessAnimation();
  DoProcess();
  FRunning = false;
  DoFinish();
}

void TAnimation::StopAtCurrent() {
  if (!FRunning) return;
  if (ThreadSlot()) ThreadSlot()->RemoveAnimation(this);
  if (AutoReverse && Inverse) Inverse = false;
  FRunning = false;
  DoFinish();
}

void TAnimation::ProcessTick(double, double deltaTime) {
  if (!FRunning || Pause || IsDestroying()) return;
  // Times are summed in double with a little slack, so that n ticks of
  // duration / n end the animation on the n-th tick.
  constexpr double kSlack = 1e-6;
  double dt = deltaTime;
  if (Delay > 0 && FDelayTime != 0) {
    if (FDelayTime > 0) {
      FDelayTime -= dt;
      if (FDelayTime <= kSlack) {
        FDelayTime = 0;
        FirstFrame();
        ProcessAnimation();
        DoProcess();
      }
    }
    return;
  }
  FTime += Inverse ? -dt : dt;
  if (FTime >= Duration - kSlack) {
    FTime = Duration;
    if (Loop) {
      if (AutoReverse)
        Inverse = true;
      else
        FTime = 0;
    }
  } else if (FTime <= kSlack) {
    FTime = 0;
    if (Loop) {
      if (AutoReverse)
        Inverse = false;
      else
        FTime = Duration;
    }
  }
  ProcessAnimation();
  DoProcess();
  if (!FRunning || Loop) return;
  if ((!Inverse && FTime >= Duration) || (Inverse && FTime <= 0)) Stop();
}

const TPropertyTable& TAnimation::ClassProperties() {
  static const TPropertyTable table = [] {
    auto A = [](TFmxObject* o) { return static_cast<TAnimation*>(o); };
    TPropertyTable t(&TFmxObject::ClassProperties());
    t.Stored("Duration",
             [A](TFmxObject* o, const TStoredValue& v) { A(o)->Duration = StoredFloat(v, "Duration"); });
    t.Stored("Delay", [A](TFmxObject* o, const TStoredValue& v) { A(o)->Delay = StoredFloat(v, "Delay"); });
    t.Stored("Loop", [A](TFmxObject* o, const TStoredValue& v) { A(o)->Loop = StoredBool(v, "Loop"); });
    t.Stored("AutoReverse",
             [A](TFmxObject* o, const TStoredValue& v) { A(o)->AutoReverse = StoredBool(v, "AutoReverse"); });
    t.Stored("Inverse",
             [A](TFmxObject* o, const TStoredValue& v) { A(o)->Inverse = StoredBool(v, "Inverse"); });
    t.Stored("Enabled",
             [A](TFmxObject* o, const TStoredValue& v) { A(o)->Enabled = StoredBool(v, "Enabled"); });
    t.Stored("Interpolation", [A](TFmxObject* o, const TStoredValue& v) {
      static const char* kNames[] = {"Linear",  "Quadratic",  "Cubic",       "Quartic",
                                     "Quintic", "Sinusoidal", "Exponential", "Circular",
                                     "Elastic", "Back",       "Bounce"};
      std::string id = StoredIdentifier(v, "Interpolation");
      if (id.rfind("it", 0) == 0 && id.size() > 2 && std::isupper(static_cast<unsigned char>(id[2])))
        id = id.substr(2);
      for (int i = 0; i < 11; ++i)
        if (SameText(FromUtf8(id), FromUtf8(kNames[i])))
          return void(A(o)->Interpolation = static_cast<TInterpolationType>(i));
      throw EPropertyError("Unknown Interpolation value " + id);
    });
    t.Stored("AnimationType", [A](TFmxObject* o, const TStoredValue& v) {
      std::string id = StoredIdentifier(v, "AnimationType");
      if (id.rfind("at", 0) == 0 && id.size() > 2 && std::isupper(static_cast<unsigned char>(id[2])))
        id = id.substr(2);
      if (SameText(FromUtf8(id), u"In"))
        A(o)->AnimationType = TAnimationType::In;
      else if (SameText(FromUtf8(id), u"Out"))
        A(o)->AnimationType = TAnimationType::Out;
      else if (SameText(FromUtf8(id), u"InOut"))
        A(o)->AnimationType = TAnimationType::InOut;
      else
        throw EPropertyError("Unknown AnimationType value " + id);
    });
    t.Event("OnProcess", BindEvent(&TAnimation::OnProcess, "OnProcess"));
    t.Event("OnFinish", BindEvent(&TAnimation::OnFinish, "OnFinish"));
    return t;
  }();
  return table;
}

// ---- TFloatAnimation

bool TFloatAnimation::Resolve() {
  TFmxObject* target = Parent();
  if (FProperty && FTarget == target && FResolvedName == PropertyName) return true;
  FProperty = nullptr;
  FTarget = target;
  FResolvedName = PropertyName;
  if (!target) return false;
  FProperty = target->Properties().FindFloat(PropertyName);
  return FProperty != nullptr;
}

void TFloatAnimation::ParentChanged() {
  FProperty = nullptr;
  FTarget = nullptr;
  TAnimation::ParentChanged();
}

void TFloatAnimation::Start() {
  if (Parent() && !Resolve())
    throw EPropertyError("No float property \"" + PropertyName + "\" on " + Parent()->ClassName());
  TAnimation::Start();
}

void TFloatAnimation::FirstFrame() {
  if (StartFromCurrent && Resolve()) StartValue = FProperty->Get(FTarget);
}

void TFloatAnimation::ProcessAnimation() {
  if (!Resolve()) return;
  double t = NormalizedTime();
  FProperty->Set(FTarget, static_cast<float>(StartValue + (StopValue - StartValue) * t));
}

const TPropertyTable& TFloatAnimation::ClassProperties() {
  static const TPropertyTable table = [] {
    auto A = [](TFmxObject* o) { return static_cast<TFloatAnimation*>(o); };
    TPropertyTable t(&TAnimation::ClassProperties());
    t.Stored("PropertyName", [A](TFmxObject* o, const TStoredValue& v) {
      A(o)->PropertyName = ToUtf8(StoredText(v, "PropertyName"));
    });
    t.Stored("StartValue",
             [A](TFmxObject* o, const TStoredValue& v) { A(o)->StartValue = StoredFloat(v, "StartValue"); });
    t.Stored("StopValue",
             [A](TFmxObject* o, const TStoredValue& v) { A(o)->StopValue = StoredFloat(v, "StopValue"); });
    t.Stored("StartFromCurrent", [A](TFmxObject* o, const TStoredValue& v) {
      A(o)->StartFromCurrent = StoredBool(v, "StartFromCurrent");
    });
    return t;
  }();
  return table;
}

// ---- bitmap animations

namespace {
const TBitmapPropertyInfo* BitmapTarget(TFmxObject* parent, const std::string& name) {
  if (!parent) return nullptr;
  const TBitmapPropertyInfo* info = parent->Properties().FindBitmap(name);
  if (!info) throw EPropertyError("No bitmap property \"" + name + "\" on " + parent->ClassName());
  return info;
}
}  // namespace

void TBitmapAnimation::Start() {
  BitmapTarget(Parent(), PropertyName);
  TAnimation::Start();
}

void TBitmapAnimation::ProcessAnimation() {
  const TBitmapPropertyInfo* info = BitmapTarget(Parent(), PropertyName);
  if (!info) return;
  float t = static_cast<float>(NormalizedTime());
  const TBitmap& size = FStopValue.IsEmpty() ? FStartValue : FStopValue;
  if (size.IsEmpty()) return;
  // Both pictures at the frame's size, then a straight mix of the two.
  TRectF target(0, 0, static_cast<float>(size.Width()), static_cast<float>(size.Height()));
  auto scaled = [&target, &size](const TBitmap& from, TBitmap& into) {
    into.SetSize(size.Width(), size.Height());
    into.Canvas().Clear(TAlphaColors::Null);
    if (!from.IsEmpty())
      into.Canvas().DrawBitmap(
          from, TRectF(0, 0, static_cast<float>(from.Width()), static_cast<float>(from.Height())), target, 1);
  };
  TBitmap stop;
  scaled(FStartValue, FFrame);
  scaled(FStopValue, stop);
  std::uint32_t w = static_cast<std::uint32_t>(std::lround(std::clamp(t, 0.0f, 1.0f) * 256));
  std::uint32_t* a = FFrame.Bits();
  const std::uint32_t* b = stop.Bits();
  for (std::size_t i = 0, n = static_cast<std::size_t>(size.Width()) * size.Height(); i < n; ++i) {
    std::uint32_t mixed = 0;
    for (int s = 0; s < 32; s += 8) {
      std::uint32_t ca = (a[i] >> s) & 0xFF, cb = (b[i] >> s) & 0xFF;
      mixed |= ((ca * (256 - w) + cb * w + 128) >> 8) << s;
    }
    a[i] = mixed;
  }
  info->Set(Parent(), &FFrame);
}

void TBitmapListAnimation::Start() {
  BitmapTarget(Parent(), PropertyName);
  FLastFrame = -1;
  TAnimation::Start();
}

void TBitmapListAnimation::ProcessAnimation() {
  const TBitmapPropertyInfo* info = BitmapTarget(Parent(), PropertyName);
  if (!info || FAnimationBitmap.IsEmpty() || AnimationCount <= 0) return;
  int rows = std::max(1, AnimationRowCount);
  int perRow = (AnimationCount + rows - 1) / rows;
  int fw = FAnimationBitmap.Width() / perRow, fh = FAnimationBitmap.Height() / rows;
  if (fw <= 0 || fh <= 0) return;
  // Linear time picks the frame; easing would make a looping strip stutter.
  double t = Duration > 0 ? CurrentTime() / Duration : 1;
  int frame = std::clamp(static_cast<int>(t * AnimationCount), 0, AnimationCount - 1);
  if (frame == FLastFrame) return;
  FLastFrame = frame;
  FFrame.SetSize(fw, fh);
  TCanvas& c = FFrame.Canvas();
  c.BeginScene();
  c.Clear(TAlphaColors::Null);
  float sx = static_cast<float>((frame % perRow) * fw), sy = static_cast<float>((frame / perRow) * fh);
  c.DrawBitmap(FAnimationBitmap, TRectF::FromSize(sx, sy, static_cast<float>(fw), static_cast<float>(fh)),
               TRectF(0, 0, static_cast<float>(fw), static_cast<float>(fh)), 1);
  c.EndScene();
  info->Set(Parent(), &FFrame);
}

}  // namespace qx
