#pragma once

#include "base/ComObject.h"
#include "base/ComPtr.h"
#include "base/Unknown.h"
#include "tabview/TabGroupViewLayoutBezier.h"
#include "tabview/TabViewGeometry.h"

namespace qx {

// Fixes one point of the map while the pointer rests over a stack; a slope of 0
// means the pin has none of its own yet.
struct ITabGroupViewLayoutPin : IUnknown {
  static constexpr TGUID IID = MakeGuid("0FBEA931-8072-4DFC-BA42-982BB73B5BF7");
  using Parent = IUnknown;

  virtual ComPtr<ITabGroupViewLayoutBezier> QX_STDCALL GetLeftCurve() = 0;
  virtual ComPtr<ITabGroupViewLayoutBezier> QX_STDCALL GetRightCurve() = 0;
  virtual void QX_STDCALL SetLeftCurve(ITabGroupViewLayoutBezier* value) = 0;
  virtual void QX_STDCALL SetRightCurve(ITabGroupViewLayoutBezier* value) = 0;
  virtual TPointD QX_STDCALL GetPoint() = 0;
  virtual double QX_STDCALL GetSlope() = 0;
  virtual void QX_STDCALL SetPoint(const TPointD& value) = 0;
  virtual void QX_STDCALL SetSlope(double value) = 0;

 protected:
  ~ITabGroupViewLayoutPin() = default;
};

class TTabGroupViewLayoutPinImpl final : public TInterfacedObject<ITabGroupViewLayoutPin> {
 public:
  ComPtr<ITabGroupViewLayoutBezier> QX_STDCALL GetLeftCurve() override { return FLeftCurve; }
  ComPtr<ITabGroupViewLayoutBezier> QX_STDCALL GetRightCurve() override { return FRightCurve; }
  void QX_STDCALL SetLeftCurve(ITabGroupViewLayoutBezier* value) override { FLeftCurve = value; }
  void QX_STDCALL SetRightCurve(ITabGroupViewLayoutBezier* value) override { FRightCurve = value; }
  TPointD QX_STDCALL GetPoint() override { return FPoint; }
  double QX_STDCALL GetSlope() override { return FSlope; }
  void QX_STDCALL SetPoint(const TPointD& value) override { FPoint = value; }
  void QX_STDCALL SetSlope(double value) override { FSlope = value; }

 private:
  double FSlope = 0;
  TPointD FPoint;
  ComPtr<ITabGroupViewLayoutBezier> FLeftCurve;
  ComPtr<ITabGroupViewLayoutBezier> FRightCurve;
};

}  // namespace qx
