#include <cmath>
#include <limits>

#include "base/Text.h"
#include "text/JSONNumberText.h"
#include "text/JSONValueImpl.h"

namespace qx {

std::int64_t TJSONNumberImpl::GetIntValue() {
  if (!FIsFloat) return FIntValue;
  // Truncated toward zero; out of range saturates and NaN reads as 0.
  if (std::isnan(FFloatValue)) return 0;
  constexpr long double kLimit = 9223372036854775808.0L;
  if (FFloatValue >= kLimit) return std::numeric_limits<std::int64_t>::max();
  if (FFloatValue <= -kLimit) return std::numeric_limits<std::int64_t>::min();
  return static_cast<std::int64_t>(FFloatValue);
}

long double TJSONNumberImpl::GetFloatValue() {
  return FIsFloat ? FFloatValue : static_cast<long double>(FIntValue);
}

std::u16string TJSONNumberImpl::GetText() {
  return FIsFloat ? JSONFloatToStr(FFloatValue) : IntToStr(FIntValue);
}

void TJSONNumberImpl::SetFloatValue(long double Value) {
  FFloatValue = Value;
  FIntValue = 0;
  FIsFloat = true;
}

void TJSONNumberImpl::SetIntValue(std::int64_t Value) {
  FIntValue = Value;
  FFloatValue = 0;
  FIsFloat = false;
}

void TJSONNumberImpl::BuildJSONText(const TJSONCreateTextOption&, TJSONTextBuilder& builder, bool) {
  builder.Write(GetText());
}

void TJSONStringImpl::BuildJSONText(const TJSONCreateTextOption&, TJSONTextBuilder& builder, bool) {
  builder.WriteJSONString(FValue);
}

void TJSONBoolImpl::BuildJSONText(const TJSONCreateTextOption&, TJSONTextBuilder& builder, bool) {
  builder.Write(FValue ? std::u16string_view(u"true") : std::u16string_view(u"false"));
}

void TJSONNullImpl::BuildJSONText(const TJSONCreateTextOption&, TJSONTextBuilder& builder, bool) {
  builder.Write(u"null");
}

}  // namespace qx
