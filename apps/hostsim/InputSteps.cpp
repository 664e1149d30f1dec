#include "InputSteps.h"

#include "InputPath.h"

namespace qx {
namespace {

class TInjectedHands final : public IScenarioHands {
 public:
  TInjectedHands(HWnd mainWindow, HWnd touchWindow, std::uint32_t stepMs)
      : FMain(mainWindow), FPath(touchWindow, stepMs) {}

  void Move(TPoint at) override { FPath.MoveTo(Screen(at)); }
  void Glide(TPoint to, int stride) override { FPath.Glide(Screen(to), stride); }
  void Press(TPoint at) override { FPath.Press(Screen(at)); }
  void Release(TPoint at) override { FPath.Release(Screen(at)); }
  void Wheel(TPoint at, int notches) override { FPath.Wheel(Screen(at), notches); }
  void TouchDown(TPoint at) override { FPath.TouchDown(Screen(at)); }
  void TouchMove(TPoint at) override { FPath.TouchMove(Screen(at)); }
  void TouchUp(TPoint at) override { FPath.TouchUp(Screen(at)); }
  void Swipe(TPoint from, TPoint to, int stride) override { FPath.Swipe(Screen(from), Screen(to), stride); }

 private:
  TPoint Screen(TPoint client) const {
    Platform().ClientToScreen(FMain, &client);
    return client;
  }

  HWnd FMain;
  TInputPath FPath;
};

}  // namespace

std::unique_ptr<IScenarioHands> MakeScenarioHands(HWnd mainWindow, HWnd touchWindow, std::uint32_t stepMs) {
  return std::make_unique<TInjectedHands>(mainWindow, touchWindow, stepMs);
}

}  // namespace qx
