#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>

#include "tabview/TabImageCacheMgr.h"
#include "tabview/TabImageFixture.h"

namespace qx {
namespace {

namespace fs = std::filesystem;

class TabImageCacheMgrTest : public TabImageHostFixture {};

TEST_F(TabImageCacheMgrTest, FolderGetsATrailingDelimiter) {
  TTabImageCacheMgr cache(wrap_.get(), DirText());
  ASSERT_FALSE(cache.CacheDir().empty());
  EXPECT_TRUE(cache.CacheDir().back() == u'/' || cache.CacheDir().back() == u'\\');
  EXPECT_EQ(cache.CacheFileName(u"{AB}"), cache.CacheDir() + u"{AB}.png");
}

TEST_F(TabImageCacheMgrTest, UnknownGuidGivesNilAndAddsNothing) {
  TTabImageCacheMgr cache(wrap_.get(), DirText());
  EXPECT_EQ(cache.GetCache(u""), nullptr);
  EXPECT_EQ(cache.GetCache(u"{00000000-0000-0000-0000-000000000001}"), nullptr);
  EXPECT_EQ(cache.Count(), 0u);
}

TEST_F(TabImageCacheMgrTest, UpdateKeepsItsOwnCopyAndTheLaterPicture) {
  TTabImageCacheMgr cache(wrap_.get(), DirText());
  auto red = MakeThumbnail(0xFFFF0000);
  auto blue = MakeThumbnail(0xFF0000FF);
  cache.UpdateCache(u"{A}", red.get());
  TBitmap* held = cache.GetCache(u"{A}");
  ASSERT_NE(held, nullptr);
  EXPECT_NE(held, red.get());
  red->Clear(0xFF00FF00);  // the caller's bitmap is its own
  EXPECT_EQ(held->PixelColor(5, 5), 0xFFFF0000u);
  cache.UpdateCache(u"{A}", blue.get());
  EXPECT_EQ(cache.Count(), 1u);
  EXPECT_EQ(cache.GetCache(u"{A}"), held);
  EXPECT_EQ(held->PixelColor(5, 5), 0xFF0000FFu);

  cache.UpdateCache(u"", blue.get());
  cache.UpdateCache(u"{B}", nullptr);
  EXPECT_EQ(cache.Count(), 1u);
  cache.RemoveCache(u"");
  cache.RemoveCache(u"{A}");
  EXPECT_EQ(cache.Count(), 0u);
  EXPECT_EQ(cache.GetCache(u"{A}"), nullptr);
}

TEST_F(TabImageCacheMgrTest, SavedPicturesComeBackFromDiskByGuid) {
  TFakeTab* a = Open(u"https://a.example/");
  TFakeTab* b = Open(u"https://b.example/");
  {
    TTabImageCacheMgr cache(wrap_.get(), DirText());
    cache.UpdateCache(GuidOf(a), MakeThumbnail(0xFF112233).get());
    cache.UpdateCache(GuidOf(b), MakeThumbnail(0xFF445566).get());
    EXPECT_TRUE(cache.SaveThumbnailCache());
  }
  EXPECT_TRUE(fs::is_regular_file(FileOf(GuidOf(a))));
  EXPECT_TRUE(fs::is_regular_file(FileOf(GuidOf(b))));
  EXPECT_FALSE(fs::exists(FileOf(GuidOf(a)).string() + ".tmp"));

  TTabImageCacheMgr later(wrap_.get(), DirText());
  TBitmap* picture = later.GetCache(GuidOf(b));
  ASSERT_NE(picture, nullptr);
  EXPECT_EQ(picture->Width(), 96);
  EXPECT_EQ(picture->Height(), 47);
  EXPECT_EQ(picture->PixelColor(10, 10), 0xFF445566u);
  EXPECT_EQ(later.Count(), 1u);
  EXPECT_EQ(later.GetCache(GuidOf(b)), picture);  // kept in memory after the first read
}

TEST_F(TabImageCacheMgrTest, DamagedOrTruncatedFileGivesNil) {
  TFakeTab* a = Open(u"https://a.example/");
  TFakeTab* b = Open(u"https://b.example/");
  {
    TTabImageCacheMgr cache(wrap_.get(), DirText());
    cache.UpdateCache(GuidOf(a), MakeThumbnail(0xFF112233).get());
    ASSERT_TRUE(cache.SaveThumbnailCache());
  }
  std::vector<std::uint8_t> bytes = ReadBytes(FileOf(GuidOf(a)));
  ASSERT_GT(bytes.size(), 40u);
  bytes.resize(bytes.size() / 2);
  WriteBytes(FileOf(GuidOf(a)), bytes);
  WriteBytes(FileOf(GuidOf(b)), {'n', 'o', 't', ' ', 'a', ' ', 'p', 'n', 'g'});

  TTabImageCacheMgr cache(wrap_.get(), DirText());
  EXPECT_EQ(cache.GetCache(GuidOf(a)), nullptr);
  EXPECT_EQ(cache.GetCache(GuidOf(b)), nullptr);
  EXPECT_EQ(cache.Count(), 0u);
}

TEST_F(TabImageCacheMgrTest, FilesOfVanishedTabsAreDeleted) {
  TFakeTab* a = Open(u"https://a.example/");
  TFakeTab* b = Open(u"https://b.example/");
  const std::u16string guidA = GuidOf(a), guidB = GuidOf(b);
  TTabImageCacheMgr cache(wrap_.get(), DirText());
  cache.UpdateCache(guidA, MakeThumbnail(0xFF112233).get());
  cache.UpdateCache(guidB, MakeThumbnail(0xFF445566).get());
  ASSERT_TRUE(cache.SaveThumbnailCache());
  WriteBytes(dir_ / "stray.txt", {'x'});
  fs::create_directory(dir_ / "subfolder");

  ASSERT_EQ(host_.Model().CloseTab(b), kOk);
  cache.RemoveCache(guidB);
  EXPECT_TRUE(fs::exists(FileOf(guidB)));  // stays until the next save
  EXPECT_TRUE(cache.SaveThumbnailCache());
  EXPECT_TRUE(fs::exists(FileOf(guidA)));
  EXPECT_FALSE(fs::exists(FileOf(guidB)));
  EXPECT_FALSE(fs::exists(dir_ / "stray.txt"));
  EXPECT_TRUE(fs::is_directory(dir_ / "subfolder"));  // only files are housekeeping's business
}

TEST_F(TabImageCacheMgrTest, FileNamesMatchWithoutRegardToCase) {
  TFakeTab* a = Open(u"https://a.example/");
  const std::u16string guid = GuidOf(a);
  const std::u16string lower = LowerCase(guid) + u".png";
  ASSERT_NE(lower, guid + u".png");
  WriteBytes(dir_ / fs::path(lower), {'x'});
  TTabImageCacheMgr cache(wrap_.get(), DirText());
  EXPECT_TRUE(cache.SaveThumbnailCache());
  EXPECT_TRUE(fs::exists(dir_ / fs::path(lower)));
}

TEST_F(TabImageCacheMgrTest, PrivateTabsNeverReachTheDisk) {
  TFakeTab* open = Open(u"https://open.example/");
  TFakeTabGroup* secret = host_.Model().AddGroup(u"secret").get();
  ASSERT_EQ(host_.Model().SetPrivate(secret, true), kOk);
  TFakeTab* hidden = Open(u"https://hidden.example/", secret);
  TFakeTab* older = Open(u"https://older.example/", secret);
  ASSERT_TRUE(wrap_->IsPrivateTabGroup(secret));

  // A file from before the group turned private: the tab still exists, so it stays.
  const std::vector<std::uint8_t> oldBytes{'o', 'l', 'd'};
  WriteBytes(FileOf(GuidOf(older)), oldBytes);

  TTabImageCacheMgr cache(wrap_.get(), DirText());
  cache.UpdateCache(GuidOf(open), MakeThumbnail(0xFF010203).get());
  cache.UpdateCache(GuidOf(hidden), MakeThumbnail(0xFF040506).get());
  cache.UpdateCache(GuidOf(older), MakeThumbnail(0xFF070809).get());
  EXPECT_TRUE(cache.SaveThumbnailCache());

  EXPECT_TRUE(fs::exists(FileOf(GuidOf(open))));
  EXPECT_FALSE(fs::exists(FileOf(GuidOf(hidden))));
  EXPECT_EQ(ReadBytes(FileOf(GuidOf(older))), oldBytes);
  // The private pictures stay in memory.
  ASSERT_NE(cache.GetCache(GuidOf(hidden)), nullptr);
  EXPECT_EQ(cache.GetCache(GuidOf(hidden))->PixelColor(1, 1), 0xFF040506u);
}

TEST_F(TabImageCacheMgrTest, EmptyPictureIsSkippedAndTheRestIsSaved) {
  TFakeTab* a = Open(u"https://a.example/");
  TFakeTab* b = Open(u"https://b.example/");
  TTabImageCacheMgr cache(wrap_.get(), DirText());
  TBitmap empty;
  cache.UpdateCache(GuidOf(a), &empty);
  cache.UpdateCache(GuidOf(b), MakeThumbnail(0xFF445566).get());
  EXPECT_TRUE(cache.SaveThumbnailCache());
  EXPECT_FALSE(fs::exists(FileOf(GuidOf(a))));
  EXPECT_TRUE(fs::exists(FileOf(GuidOf(b))));
}

TEST_F(TabImageCacheMgrTest, FolderThatIsNoFolderRaisesNothing) {
  TFakeTab* a = Open(u"https://a.example/");
  const std::vector<std::uint8_t> bytes{'k', 'e', 'e', 'p'};
  WriteBytes(dir_ / "blocker", bytes);
  TTabImageCacheMgr cache(wrap_.get(), (dir_ / "blocker" / "thumbnail").u16string());
  cache.UpdateCache(GuidOf(a), MakeThumbnail(0xFF112233).get());
  EXPECT_FALSE(cache.SaveThumbnailCache());
  EXPECT_EQ(ReadBytes(dir_ / "blocker"), bytes);
  EXPECT_EQ(cache.GetCache(u"{nothing}"), nullptr);
  EXPECT_NE(cache.GetCache(GuidOf(a)), nullptr);
}

TEST_F(TabImageCacheMgrTest, FailedWriteKeepsTheOldFileAndThoseWrittenBefore) {
  TFakeTab* a = Open(u"https://a.example/");
  TFakeTab* b = Open(u"https://b.example/");
  std::u16string first = GuidOf(a), second = GuidOf(b);
  if (second < first) std::swap(first, second);  // saving runs in GUID order
  const std::vector<std::uint8_t> oldBytes{'o', 'l', 'd'};
  WriteBytes(FileOf(second), oldBytes);
  // The temporary file of the second picture cannot be made.
  fs::create_directory(FileOf(second).string() + ".tmp");
  WriteBytes(fs::path(FileOf(second).string() + ".tmp") / "x", {'x'});

  TTabImageCacheMgr cache(wrap_.get(), DirText());
  cache.UpdateCache(first, MakeThumbnail(0xFF112233).get());
  cache.UpdateCache(second, MakeThumbnail(0xFF445566).get());
  EXPECT_FALSE(cache.SaveThumbnailCache());
  EXPECT_TRUE(fs::exists(FileOf(first)));
  EXPECT_EQ(ReadBytes(FileOf(second)), oldBytes);
}

TEST_F(TabImageCacheMgrTest, ReadOnlyFolderLosesNoFile) {
  if (geteuid() == 0) GTEST_SKIP() << "permissions do not bind the super-user";
  TFakeTab* a = Open(u"https://a.example/");
  const std::vector<std::uint8_t> stray{'s'};
  WriteBytes(dir_ / "stray.png", stray);
  fs::permissions(dir_, fs::perms::owner_read | fs::perms::owner_exec);
  TTabImageCacheMgr cache(wrap_.get(), DirText());
  cache.UpdateCache(GuidOf(a), MakeThumbnail(0xFF112233).get());
  EXPECT_FALSE(cache.SaveThumbnailCache());
  fs::permissions(dir_, fs::perms::owner_all);
  EXPECT_EQ(ReadBytes(dir_ / "stray.png"), stray);
  EXPECT_FALSE(fs::exists(FileOf(GuidOf(a))));
}

TEST_F(TabImageCacheMgrTest, WithoutHostNothingIsDeleted) {
  WriteBytes(dir_ / "x.png", {'x'});
  TTabImageCacheMgr cache(nullptr, DirText());
  cache.UpdateCache(u"{A}", MakeThumbnail(0xFF112233).get());
  EXPECT_FALSE(cache.SaveThumbnailCache());
  EXPECT_TRUE(fs::exists(dir_ / "x.png"));
}

}  // namespace
}  // namespace qx
