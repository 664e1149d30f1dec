#pragma once

#include "base/ComObject.h"
#include "base/ComPtr.h"
#include "base/Unknown.h"
#include "tabview/TabGroupViewLayoutBezier.h"
#include "tabview/TabViewGeometry.h"

namespace qx {

// The shape of the strip's map for one scroll state. Replaced, never edited.
struct ITabLayoutCalculationParameters : IUnknown {
  static constexpr TGUID IID = MakeGuid("8159C90E-3F62-4AAB-B742-46EBA08CE304");
  using Parent = IUnknown;

  virtual void QX_STDCALL GetEndPoint(TPointD& value) = 0;
  virtual double QX_STDCALL GetSlope() = 0;
  virtual void QX_STDCALL GetStartPoint(TPointD& value) = 0;
  virtual double QX_STDCALL GetStraightSpan() = 0;
  virtual void QX_STDCALL GetLeftCurve(ComPtr<ITabGroupViewLayoutBezier>& value) = 0;
  virtual void QX_STDCALL GetRightCurve(ComPtr<ITabGroupViewLayoutBezier>& value) = 0;
  virtual void QX_STDCALL SetEndPoint(TPointD value) = 0;
  virtual void QX_STDCALL SetSlope(double value) = 0;
  virtual void QX_STDCALL SetStartPoint(TPointD value) = 0;
  virtual void QX_STDCALL SetStraightSpan(double value) = 0;
  virtual void QX_STDCALL SetLeftCurve(ITabGroupViewLayoutBezier* value) = 0;
  virtual void QX_STDCALL SetRightCurve(ITabGroupViewLayoutBezier* value) = 0;
  virtual bool QX_STDCALL GetIsDefault() = 0;
  virtual void QX_STDCALL SetIsDefault(bool value) = 0;

 protected:
  ~ITabLayoutCalculationParameters() = default;
};

class TTabLayoutCalculationParametersImpl final : public TInterfacedObject<ITabLayoutCalculationParameters> {
 public:
  void QX_STDCALL GetEndPoint(TPointD& value) override { value = FEndPoint; }
  double QX_STDCALL GetSlope() override { return FSlope; }
  void QX_STDCALL GetStartPoint(TPointD& value) override { value = FStartPoint; }
  double QX_STDCALL GetStraightSpan() override { return FStraightSpan; }
  void QX_STDCALL GetLeftCurve(ComPtr<ITabGroupViewLayoutBezier>& value) override { value = FLeftCurve; }
  void QX_STDCALL GetRightCurve(ComPtr<ITabGroupViewLayoutBezier>& value) override { value = FRightCurve; }
  void QX_STDCALL SetEndPoint(TPointD value) override { FEndPoint = value; }
  void QX_STDCALL SetSlope(double value) override { FSlope = value; }
  void QX_STDCALL SetStartPoint(TPointD value) override { FStartPoint = value; }
  void QX_STDCALL SetStraightSpan(double value) override { FStraightSpan = value; }
  void QX_STDCALL SetLeftCurve(ITabGroupViewLayoutBezier* value) override { FLeftCurve = value; }
  void QX_STDCALL SetRightCurve(ITabGroupViewLayoutBezier* value) override { FRightCurve = value; }
  bool QX_STDCALL GetIsDefault() override { return FIsDefault; }
  void QX_STDCALL SetIsDefault(bool value) override { FIsDefault = value; }

 private:
  ComPtr<ITabGroupViewLayoutBezier> FLeftCurve;
  ComPtr<ITabGroupViewLayoutBezier> FRightCurve;
  TPointD FStartPoint;
  TPointD FEndPoint;
  double FSlope = 0;
  double FStraightSpan = 0;
  bool FIsDefault = false;
};

}  // namespace qx
