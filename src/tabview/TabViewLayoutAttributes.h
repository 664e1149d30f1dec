#pragma once

#include <cstdint>

#include "base/ComObject.h"
#include "base/ComPtr.h"
#include "base/GenericList.h"
#include "base/Unknown.h"
#include "tabview/TabViewGeometry.h"

namespace qx {

// One tab's place in a layout pass. Items are chained by Next and Previous; the
// chain holds references both ways, so whoever ends with a list calls UnChain on
// its first item.
struct ITabViewLayoutAttributes : IUnknown {
  static constexpr TGUID IID = MakeGuid("3FEE096C-CC98-4728-9721-5DDD2D62BFAE");
  using Parent = IUnknown;

  virtual bool QX_STDCALL GetActive() = 0;                                   // 1
  virtual TPointD QX_STDCALL GetCenter() = 0;                                // 2
  virtual TRectD QX_STDCALL GetFrame() = 0;                                  // 3
  virtual bool QX_STDCALL GetHidden() = 0;                                   // 4
  virtual std::int32_t QX_STDCALL GetIndex() = 0;                            // 5
  virtual std::int32_t QX_STDCALL GetPrecedingCount() = 0;                   // 6
  virtual bool QX_STDCALL GetFirstInSection() = 0;                           // 7
  virtual bool QX_STDCALL GetOverlapsLeft() = 0;                             // 8
  virtual ComPtr<ITabViewLayoutAttributes> QX_STDCALL GetNext() = 0;         // 9
  virtual ComPtr<ITabViewLayoutAttributes> QX_STDCALL GetPrevious() = 0;     // 10
  virtual double QX_STDCALL GetStraightPosition() = 0;                       // 11
  virtual std::int32_t QX_STDCALL GetFollowingCount() = 0;                   // 12
  virtual bool QX_STDCALL GetLastInSection() = 0;                            // 13
  virtual bool QX_STDCALL GetOverlapsRight() = 0;                            // 14
  virtual bool QX_STDCALL GetReserved() = 0;                                 // 15
  virtual bool QX_STDCALL GetInDraggedSection() = 0;                         // 16
  virtual TRectD QX_STDCALL GetClipFrame() = 0;                              // 17
  virtual double QX_STDCALL GetZPosition() = 0;                              // 18
  virtual double QX_STDCALL GetInitialStraightPosition() = 0;                // 19
  virtual TRectF QX_STDCALL GetClipFrameF() = 0;                             // 20
  virtual void QX_STDCALL SetActive(bool value) = 0;                         // 21
  virtual void QX_STDCALL SetFrame(const TRectD& value) = 0;                 // 22
  virtual void QX_STDCALL SetHidden(bool value) = 0;                         // 23
  virtual void QX_STDCALL SetFirstInSection(bool value) = 0;                 // 24
  virtual void QX_STDCALL SetOverlapsLeft(bool value) = 0;                   // 25
  virtual void QX_STDCALL SetNext(ITabViewLayoutAttributes* value) = 0;      // 26
  virtual void QX_STDCALL SetPrevious(ITabViewLayoutAttributes* value) = 0;  // 27
  virtual void QX_STDCALL SetStraightPosition(double value) = 0;             // 28
  virtual void QX_STDCALL SetLastInSection(bool value) = 0;                  // 29
  virtual void QX_STDCALL SetOverlapsRight(bool value) = 0;                  // 30
  virtual void QX_STDCALL SetReserved(bool value) = 0;                       // 31
  virtual void QX_STDCALL SetInDraggedSection(bool value) = 0;               // 32
  virtual void QX_STDCALL SetClipFrame(const TRectD& value) = 0;             // 33
  virtual void QX_STDCALL SetZPosition(double value) = 0;                    // 34
  virtual void QX_STDCALL SetInitialStraightPosition(double value) = 0;      // 35
  virtual void QX_STDCALL SetClipFrameF(const TRectF& value) = 0;            // 36
  virtual void QX_STDCALL UnChain() = 0;                                     // 37

 protected:
  ~ITabViewLayoutAttributes() = default;
};

using TLayoutAttributesPtr = ComPtr<ITabViewLayoutAttributes>;
using ITabViewLayoutAttributeList = IGenericList<TLayoutAttributesPtr>;

// The only implementor. The layout engine fills the fields directly; everyone
// else goes through the interface.
class TTabViewLayoutAttributesImpl final : public TInterfacedObject<ITabViewLayoutAttributes> {
 public:
  // Fields in declaration order.
  TRectD Frame;
  bool Reserved = false;
  bool FirstInSection = false;
  TLayoutAttributesPtr Next;
  bool LastInSection = false;
  double ZPosition = 0;
  bool Hidden = false;
  bool InDraggedSection = false;
  TRectD ClipFrame;
  bool OverlapsLeft = false;
  double StraightPosition = 0;
  TLayoutAttributesPtr Previous;
  bool Active = false;
  bool OverlapsRight = false;
  double InitialStraightPosition = 0;

  // Back to a fresh item's values, links dropped; the reference count stays.
  void Reset();

  bool QX_STDCALL GetActive() override { return Active; }
  TPointD QX_STDCALL GetCenter() override;
  TRectD QX_STDCALL GetFrame() override { return Frame; }
  bool QX_STDCALL GetHidden() override { return Hidden; }
  std::int32_t QX_STDCALL GetIndex() override { return GetPrecedingCount(); }
  std::int32_t QX_STDCALL GetPrecedingCount() override;
  bool QX_STDCALL GetFirstInSection() override { return FirstInSection; }
  bool QX_STDCALL GetOverlapsLeft() override { return OverlapsLeft; }
  TLayoutAttributesPtr QX_STDCALL GetNext() override { return Next; }
  TLayoutAttributesPtr QX_STDCALL GetPrevious() override { return Previous; }
  double QX_STDCALL GetStraightPosition() override { return StraightPosition; }
  std::int32_t QX_STDCALL GetFollowingCount() override;
  bool QX_STDCALL GetLastInSection() override { return LastInSection; }
  bool QX_STDCALL GetOverlapsRight() override { return OverlapsRight; }
  bool QX_STDCALL GetReserved() override { return Reserved; }
  bool QX_STDCALL GetInDraggedSection() override { return InDraggedSection; }
  TRectD QX_STDCALL GetClipFrame() override { return ClipFrame; }
  double QX_STDCALL GetZPosition() override { return ZPosition; }
  double QX_STDCALL GetInitialStraightPosition() override { return InitialStraightPosition; }
  TRectF QX_STDCALL GetClipFrameF() override;
  void QX_STDCALL SetActive(bool value) override { Active = value; }
  void QX_STDCALL SetFrame(const TRectD& value) override { Frame = value; }
  void QX_STDCALL SetHidden(bool value) override { Hidden = value; }
  void QX_STDCALL SetFirstInSection(bool value) override { FirstInSection = value; }
  void QX_STDCALL SetOverlapsLeft(bool value) override { OverlapsLeft = value; }
  void QX_STDCALL SetNext(ITabViewLayoutAttributes* value) override { Next = value; }
  void QX_STDCALL SetPrevious(ITabViewLayoutAttributes* value) override { Previous = value; }
  void QX_STDCALL SetStraightPosition(double value) override { StraightPosition = value; }
  void QX_STDCALL SetLastInSection(bool value) override { LastInSection = value; }
  void QX_STDCALL SetOverlapsRight(bool value) override { OverlapsRight = value; }
  void QX_STDCALL SetReserved(bool value) override { Reserved = value; }
  void QX_STDCALL SetInDraggedSection(bool value) override { InDraggedSection = value; }
  void QX_STDCALL SetClipFrame(const TRectD& value) override { ClipFrame = value; }
  void QX_STDCALL SetZPosition(double value) override { ZPosition = value; }
  void QX_STDCALL SetInitialStraightPosition(double value) override { InitialStraightPosition = value; }
  void QX_STDCALL SetClipFrameF(const TRectF& value) override;
  void QX_STDCALL UnChain() override;
};

// The list a layout pass hands out: one item per tab image, in strip order.
class TTabViewLayoutAttributeList final : public TGenericListImpl<TLayoutAttributesPtr> {};

}  // namespace qx
