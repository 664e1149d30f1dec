#include <algorithm>

#include "fakehost/FakeEnginePainter.h"
#include "tabbar/FrameEventsFixture.h"

namespace qx {
namespace {

class FrameThumbnailTest : public FrameEventsTest {
 protected:
  std::size_t Snapshots(TFakeTab* tab) {
    const auto& commands = host_.Model().Commands();
    return static_cast<std::size_t>(std::count_if(
        commands.begin(), commands.end(),
        [&](const TFakeBrowserCommand& c) { return c.Command == u"snapshot" && c.TabId == GuidOf(tab); }));
  }
  // Long enough for every queued capture and its picture's cross-fade.
  void Settle(int ms = 1000) {
    for (int t = 0; t < ms; t += 10) Advance(10);
  }
  static TAlphaColor Corner(const TBitmap* bitmap) {
    return bitmap && bitmap->Width() > 0 ? bitmap->PixelColor(0, 0) : 0;
  }
};

TEST_F(FrameThumbnailTest, EachTabShowsAndCachesTheSnapshotOfItsOwnPage) {
  TTabbarFrame& frame = Initialized();
  TFakeTab* a = Open(u"https://a.example/");
  TFakeTab* b = Open(u"https://b.example/");
  host_.Model().ThumbnailReady(a);
  host_.Model().ThumbnailReady(b);
  host_.Model().ThumbnailReady(a);  // the list keeps both requests of a; each asks again
  Platform().ProcessMessages();
  EXPECT_EQ(frame.DelayTask()->Count(), 3u);
  EXPECT_TRUE(frame.DelayTask()->TaskExists(u"UpdateTabImage-" + GuidOf(a)));
  Settle();
  EXPECT_EQ(Snapshots(a), 2u);
  EXPECT_EQ(Snapshots(b), 1u);

  const TFakeBrowserCommand& request = host_.Model().Commands().back();
  EXPECT_EQ(ParamValue(request.Parameters, u"width"), u"96");
  EXPECT_EQ(ParamValue(request.Parameters, u"height"), u"47");
  EXPECT_EQ(ParamValue(request.Parameters, u"mime"), u"image/png");
  EXPECT_EQ(ParamValue(request.Parameters, u"center-image"), u"true");
  EXPECT_EQ(ParamValue(request.Parameters, u"thumbnail"), u"true");
  EXPECT_TRUE(HasParam(request.Parameters, u"browser-cx"));
  EXPECT_TRUE(HasParam(request.Parameters, u"browser-cy"));

  for (TFakeTab* tab : {a, b}) {
    const TAlphaColor page = PageSnapshotColour(tab->TextValue(u"uri"));
    const TBitmap* cached = frame.TabImageCacheMgr()->GetCache(GuidOf(tab));
    ASSERT_NE(cached, nullptr);
    EXPECT_EQ(cached->Width(), 96);
    EXPECT_EQ(Corner(cached), page);
    EXPECT_EQ(Corner(&ImageOf(tab)->Thumbnail()->Bitmap()), page);
  }
  EXPECT_NE(PageSnapshotColour(u"https://a.example/"), PageSnapshotColour(u"https://b.example/"));
}

TEST_F(FrameThumbnailTest, ABlankPageGetsTheBlankPictureWithoutAskingTheBrowser) {
  TTabbarFrame& frame = Initialized();
  TFakeTab* blank = Open(u"about:blank");
  host_.Model().ThumbnailReady(blank);
  Settle();
  EXPECT_EQ(Snapshots(blank), 0u);
  EXPECT_TRUE(ImageOf(blank)->HasThumbnail());
  EXPECT_EQ(frame.TabImageCacheMgr()->Count(), 0u);
}

TEST_F(FrameThumbnailTest, ATabThatClosedBeforeItsSnapshotGetsNothing) {
  TTabbarFrame& frame = Initialized();
  TFakeTab* kept = Open(u"https://a.example/");
  TFakeTab* closed = Open(u"https://b.example/");
  const std::u16string closedId = GuidOf(closed);
  host_.Model().ThumbnailReady(closed);
  host_.Model().ThumbnailReady(kept);
  Platform().ProcessMessages();
  ASSERT_TRUE(frame.DelayTask()->TaskExists(u"UpdateTabImage-" + closedId));
  host_.Model().CloseTab(closed);
  EXPECT_FALSE(frame.DelayTask()->TaskExists(u"UpdateTabImage-" + closedId));

  // Closed while the strip waits for a drag: its image stays, its host tab is gone,
  // and every try fails quietly.
  TFakeTab* dragged = Open(u"https://c.example/");
  host_.Model().ThumbnailReady(dragged);
  frame.SetWaitUpdateTabbar(true);
  host_.Model().CloseTab(dragged);
  Settle(3000);
  frame.SetWaitUpdateTabbar(false);
  const auto& commands = host_.Model().Commands();
  EXPECT_EQ(
      std::count_if(commands.begin(), commands.end(), [](const auto& c) { return c.Command == u"snapshot"; }),
      1);
  EXPECT_EQ(frame.TabImageCacheMgr()->Count(), 1u);
  EXPECT_EQ(frame.TabImageCacheMgr()->GetCache(closedId), nullptr);
  EXPECT_EQ(frame.DelayTask()->Count(), 0u);
}

TEST_F(FrameThumbnailTest, AFailingSnapshotIsTriedTenMoreTimesAndALaterReportStartsAgain) {
  TTabbarFrame& frame = Initialized();
  TFakeTab* tab = Open(u"https://a.example/");
  tab->Browser()->Page().SnapshotFails = true;
  host_.Model().ThumbnailReady(tab);
  Settle(600);
  EXPECT_EQ(Snapshots(tab), 3u);
  EXPECT_EQ(frame.TabImageLoadRetryCount(ImageOf(tab)), 3);
  Settle(5000);
  EXPECT_EQ(Snapshots(tab), 11u);
  EXPECT_EQ(frame.DelayTask()->Count(), 0u);
  EXPECT_FALSE(ImageOf(tab)->HasThumbnail());

  // Counting starts over, and a try that succeeds ends the series.
  host_.Model().ThumbnailReady(tab);
  Settle(400);
  EXPECT_EQ(Snapshots(tab), 13u);
  tab->Browser()->Page().SnapshotFails = false;
  Settle(1000);
  EXPECT_EQ(Snapshots(tab), 14u);
  EXPECT_EQ(frame.DelayTask()->Count(), 0u);
  EXPECT_EQ(Corner(frame.TabImageCacheMgr()->GetCache(GuidOf(tab))),
            PageSnapshotColour(u"https://a.example/"));
}

TEST_F(FrameThumbnailTest, APrivateTabsPictureIsShownButNeverWritten) {
  TTabbarFrame& frame = Initialized();
  TFakeTab* tab = Open(u"https://a.example/");
  host_.Model().SetPrivate(group_, true);
  host_.Model().ThumbnailReady(tab);
  Settle();
  EXPECT_EQ(Corner(&ImageOf(tab)->Thumbnail()->Bitmap()), PageSnapshotColour(u"https://a.example/"));
  frame.SaveThumbnailCache();
  EXPECT_FALSE(std::filesystem::exists(frame.TabImageCacheMgr()->CacheFileName(GuidOf(tab))));
  host_.Model().SetPrivate(group_, false);
  frame.SaveThumbnailCache();
  EXPECT_TRUE(std::filesystem::exists(frame.TabImageCacheMgr()->CacheFileName(GuidOf(tab))));
}

}  // namespace
}  // namespace qx
