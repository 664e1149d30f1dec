// Host events raised on another thread: run under ThreadSanitizer with the other
// threaded tests.

#include "tabbar/FrameEventsFixture.h"

namespace qx {
namespace {

TEST_F(FrameEventsTest, EventsFromAnotherThreadArriveOnTheNextTickAndNeverAfterTheFrame) {
  Initialized();
  const std::u16string before = MirrorText();
  host_.Events().SetDeliverOnWorkerThread(true);
  Open(u"https://a.example/");
  host_.Events().SetDeliverOnWorkerThread(false);
  EXPECT_EQ(MirrorText(), before);
  ASSERT_GT(SharedQueue(), 0u);
  for (int i = 0; i < 50 && SharedQueue() > 0; ++i) Advance(10);
  EXPECT_EQ(MirrorText(), HostText());

  // Handed over just before the frame goes: the queued deliveries run on an
  // empty token, not on the freed frame.
  host_.Events().SetDeliverOnWorkerThread(true);
  Open(u"https://b.example/");
  host_.Model().ThumbnailReady(group_->ActiveTab());
  host_.Events().SetDeliverOnWorkerThread(false);
  ASSERT_GT(SharedQueue(), 0u);
  frame_.reset();
  for (int i = 0; i < 50 && SharedQueue() > 0; ++i) Advance(10);
  EXPECT_EQ(SharedQueue(), 0u);
}

}  // namespace
}  // namespace qx
