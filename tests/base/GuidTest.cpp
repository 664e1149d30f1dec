#include <gtest/gtest.h>

#include "base/Guid.h"

namespace qx {
namespace {

constexpr TGUID kSample = MakeGuid("{B44F6CDA-9925-40E8-9B8F-9227DA15ED4C}");

TEST(GuidTest, ParsesWithOrWithoutBracesAndFormatsUpperCaseWithBraces) {
  EXPECT_EQ(kSample.D1, 0xB44F6CDAu);
  EXPECT_EQ(kSample.D2, 0x9925);
  EXPECT_EQ(kSample.D3, 0x40E8);
  EXPECT_EQ(kSample.D4[0], 0x9B);
  EXPECT_EQ(kSample.D4[7], 0x4C);
  EXPECT_EQ(TryParseGuid(u"b44f6cda-9925-40e8-9b8f-9227da15ed4c"), kSample);

  EXPECT_EQ(GuidToString(kSample), u"{B44F6CDA-9925-40E8-9B8F-9227DA15ED4C}");
  EXPECT_EQ(TryParseGuid(GuidToString(kSample)), kSample);
}

TEST(GuidTest, RejectsMalformedText) {
  EXPECT_FALSE(TryParseGuid(u""));
  EXPECT_FALSE(TryParseGuid(u"{B44F6CDA-9925-40E8-9B8F-9227DA15ED4C"));
  EXPECT_FALSE(TryParseGuid(u"B44F6CDA-9925-40E8-9B8F_9227DA15ED4C"));
  EXPECT_FALSE(TryParseGuid(u"G44F6CDA-9925-40E8-9B8F-9227DA15ED4C"));
  EXPECT_FALSE(TryParseGuid(u"{B44F6CDA-9925-40E8-9B8F-9227DA15ED4C]"));
  EXPECT_FALSE(TryParseGuid(u"B44F6CDA-9925-40E8-9B8F-9227DA15ED4\u0130"));
}

TEST(GuidTest, NewGuidsAreDistinctVersion4) {
  const TGUID a = NewGuid(), b = NewGuid();
  EXPECT_NE(a, b);
  EXPECT_EQ(a.D3 >> 12, 4);
  EXPECT_EQ(a.D4[0] & 0xC0, 0x80);
}

}  // namespace
}  // namespace qx
