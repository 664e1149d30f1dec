#pragma once

#include "base/ComObject.h"
#include "base/Unknown.h"
#include "tabview/TabViewGeometry.h"

namespace qx {

// A cubic piece of the strip's map: X straight, Y curve coordinates.
struct ITabGroupViewLayoutBezier : IUnknown {
  static constexpr TGUID IID = MakeGuid("099E6022-6BB4-4CFF-AD80-FE594C4F1D69");
  using Parent = IUnknown;

  virtual TPointD QX_STDCALL GetControlPoint1() = 0;
  virtual TPointD QX_STDCALL GetControlPoint2() = 0;
  virtual TPointD QX_STDCALL GetEndPoint() = 0;
  virtual TPointD QX_STDCALL GetStartPoint() = 0;
  virtual void QX_STDCALL SetControlPoint1(const TPointD& value) = 0;
  virtual void QX_STDCALL SetControlPoint2(const TPointD& value) = 0;
  virtual void QX_STDCALL SetEndPoint(const TPointD& value) = 0;
  virtual void QX_STDCALL SetStartPoint(const TPointD& value) = 0;

 protected:
  ~ITabGroupViewLayoutBezier() = default;
};

class TTabGroupViewLayoutBezierImpl final : public TInterfacedObject<ITabGroupViewLayoutBezier> {
 public:
  TPointD QX_STDCALL GetControlPoint1() override { return FControlPoint1; }
  TPointD QX_STDCALL GetControlPoint2() override { return FControlPoint2; }
  TPointD QX_STDCALL GetEndPoint() override { return FEndPoint; }
  TPointD QX_STDCALL GetStartPoint() override { return FStartPoint; }
  void QX_STDCALL SetControlPoint1(const TPointD& value) override { FControlPoint1 = value; }
  void QX_STDCALL SetControlPoint2(const TPointD& value) override { FControlPoint2 = value; }
  void QX_STDCALL SetEndPoint(const TPointD& value) override { FEndPoint = value; }
  void QX_STDCALL SetStartPoint(const TPointD& value) override { FStartPoint = value; }

 private:
  TPointD FStartPoint;
  TPointD FEndPoint;
  TPointD FControlPoint1;
  TPointD FControlPoint2;
};

}  // namespace qx
