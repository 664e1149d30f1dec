#include <vector>

#include "ResourcesFixture.h"
#include "resources/FaviconCache.h"
#include "resources/ResourceFiles.h"

namespace qx::test {
namespace {

class FaviconCacheTest : public ResourcesTest {
 protected:
  FaviconCacheTest() {
    host_.Favicons().StoreDefaultIcon(SolidPng(32, 32, TAlphaColors::Black));
    cache_ = std::make_unique<TFaviconCacheFMX>(wrap_.get(), 16);
    cache_->InitializeEvents();
    cache_->OnNotifyUpdate = [this](TFaviconCacheFMX* sender, const TString& uri, ISharedFMXBitmap* favicon) {
      EXPECT_EQ(sender, cache_.get());
      updates_.push_back({uri, favicon});
    };
  }

  IQxITab* Open(std::u16string_view uri) { return host_.Model().OpenTab(uri).get(); }
  ComPtr<ISharedFMXBitmap> Get(IQxITab* tab) {
    ComPtr<ISharedFMXBitmap> favicon;
    cache_->GetFavicon(tab, 0, favicon);
    return favicon;
  }

  struct TUpdate {
    TString uri;
    ComPtr<ISharedFMXBitmap> favicon;
  };
  std::unique_ptr<TFaviconCacheFMX> cache_;
  std::vector<TUpdate> updates_;
};

TEST_F(FaviconCacheTest, EmptyUriGivesTheDefaultIconWithoutAnEntryOrNullWithoutTheFile) {
  auto favicon = Get(Open(u""));
  ASSERT_TRUE(favicon);
  EXPECT_TRUE(cache_->IsDefaultFaviconBitmap(favicon.get()));
  EXPECT_EQ(favicon->GetWidth(), 16);
  EXPECT_EQ(favicon->GetBitmap()->PixelColor(8, 8), TAlphaColors::Black);
  EXPECT_EQ(cache_->ItemCount(), 0u);
  EXPECT_TRUE(host_.Favicons().Requests().empty());
  EXPECT_FALSE(cache_->IsDefaultFaviconBitmap(nullptr));

  std::filesystem::remove(host_.Favicons().DefaultPath());
  TFaviconCacheFMX cache(wrap_.get(), 12);
  ComPtr<ISharedFMXBitmap> none;
  cache.GetFavicon(Open(u""), 0, none);
  EXPECT_FALSE(none);
  EXPECT_FALSE(cache.IsDefaultFaviconBitmap(none.get()));
}

TEST_F(FaviconCacheTest, UnknownSiteIsFetchedOnceAndArrivesLater) {
  const std::u16string uri = u"https://a.example/";
  IQxITab* tab = Open(uri);
  host_.Favicons().SetSiteIcon(uri, SolidPng(32, 32, TAlphaColors::Red));
  auto first = Get(tab);
  EXPECT_TRUE(cache_->IsDefaultFaviconBitmap(first.get()));
  auto second = Get(tab);
  EXPECT_TRUE(cache_->IsDefaultFaviconBitmap(second.get()));
  ASSERT_EQ(host_.Favicons().Requests().size(), 1u);
  EXPECT_EQ(host_.Favicons().Requests()[0], uri);
  const TFaviconDictItem* item = cache_->Item(uri);
  ASSERT_NE(item, nullptr);
  EXPECT_TRUE(item->Requested());
  EXPECT_FALSE(item->Done());

  EXPECT_EQ(host_.Favicons().AnswerRequests(), 1u);
  ASSERT_EQ(updates_.size(), 1u);
  EXPECT_EQ(updates_[0].uri, uri);
  ASSERT_TRUE(updates_[0].favicon);
  EXPECT_EQ(updates_[0].favicon->GetWidth(), 16);
  EXPECT_EQ(updates_[0].favicon->GetBitmap()->PixelColor(4, 4), TAlphaColors::Red);
  EXPECT_TRUE(cache_->Item(uri)->Done());
  auto now = Get(tab);
  EXPECT_EQ(now.get(), updates_[0].favicon.get());
  EXPECT_FALSE(cache_->IsDefaultFaviconBitmap(now.get()));
  EXPECT_EQ(host_.Favicons().Requests().size(), 1u);
}

TEST_F(FaviconCacheTest, KnownUriIsAnsweredWithoutTouchingTheDisk) {
  const std::u16string uri = u"https://known.example/";
  host_.Favicons().StoreFavicon(uri, SolidPng(16, 16, TAlphaColors::Blue));
  IQxITab* tab = Open(uri);
  auto first = Get(tab);
  ASSERT_TRUE(first);
  EXPECT_FALSE(cache_->IsDefaultFaviconBitmap(first.get()));
  EXPECT_TRUE(cache_->Item(uri)->Done());
  EXPECT_FALSE(cache_->Item(uri)->Requested());
  const auto calls = ResourceFileCallCount();
  for (int i = 0; i < 50; ++i) EXPECT_EQ(Get(tab).get(), first.get());
  EXPECT_EQ(ResourceFileCallCount(), calls);
  // A site still being fetched costs no file access either.
  IQxITab* pending = Open(u"https://pending.example/");
  Get(pending);
  const auto afterRequest = ResourceFileCallCount();
  EXPECT_TRUE(cache_->IsDefaultFaviconBitmap(Get(pending).get()));
  EXPECT_EQ(ResourceFileCallCount(), afterRequest);
}

TEST_F(FaviconCacheTest, FailedFetchLeavesTheItemAndIsNotRetried) {
  const std::u16string uri = u"https://fails.example/";
  IQxITab* tab = Open(uri);
  Get(tab);
  host_.Favicons().SetFailing(true);
  host_.Favicons().AnswerRequests();
  EXPECT_TRUE(updates_.empty());
  EXPECT_FALSE(cache_->Item(uri)->Done());
  EXPECT_TRUE(cache_->IsDefaultFaviconBitmap(Get(tab).get()));
  EXPECT_EQ(host_.Favicons().Requests().size(), 1u);
  EXPECT_EQ(host_.Favicons().PendingCount(), 0u);
}

TEST_F(FaviconCacheTest, SiteResolvingToTheDefaultPathCountsAsNone) {
  // The host answers an unknown site with its default icon's path, and that file exists.
  const std::u16string uri = u"https://nofavicon.example/";
  EXPECT_TRUE(std::filesystem::exists(host_.Favicons().PathOf(uri)));
  IQxITab* tab = Open(uri);
  EXPECT_TRUE(cache_->IsDefaultFaviconBitmap(Get(tab).get()));
  EXPECT_FALSE(cache_->Item(uri)->Done());
  EXPECT_EQ(host_.Favicons().Requests().size(), 1u);
}

TEST_F(FaviconCacheTest, ReplacedFileIsReloadedWhenTheHostSaysItChanged) {
  const std::u16string uri = u"https://changes.example/";
  host_.Favicons().StoreFavicon(uri, SolidPng(16, 16, TAlphaColors::Red));
  IQxITab* tab = Open(uri);
  EXPECT_EQ(Get(tab)->GetBitmap()->PixelColor(1, 1), TAlphaColors::Red);
  host_.Favicons().StoreFavicon(uri, SolidPng(16, 16, TAlphaColors::Lime));
  ASSERT_EQ(updates_.size(), 1u);
  EXPECT_EQ(updates_[0].favicon->GetBitmap()->PixelColor(1, 1), TAlphaColors::Lime);
  EXPECT_EQ(Get(tab)->GetBitmap()->PixelColor(1, 1), TAlphaColors::Lime);
  // Events for a URI the cache never saw, and other phases of the event, change nothing.
  host_.Favicons().StoreFavicon(u"https://other.example/", SolidPng(16, 16, TAlphaColors::Blue));
  EXPECT_EQ(updates_.size(), 1u);
  EXPECT_EQ(cache_->Item(u"https://other.example/"), nullptr);
}

TEST_F(FaviconCacheTest, DamagedIconFileGivesNoBitmapAndNoCrash) {
  const std::u16string uri = u"https://broken.example/";
  host_.Favicons().SetSiteIcon(uri, {0x89, 'P', 'N', 'G', 1, 2, 3});
  IQxITab* tab = Open(uri);
  Get(tab);
  EXPECT_NO_THROW(host_.Favicons().AnswerRequests());
  EXPECT_TRUE(cache_->Item(uri)->Done());
  EXPECT_FALSE(cache_->Item(uri)->Favicon());
  EXPECT_TRUE(updates_.empty());
  EXPECT_TRUE(cache_->IsDefaultFaviconBitmap(Get(tab).get()));
}

TEST_F(FaviconCacheTest, WithoutAFaviconManagerTheItemStaysAsCreated) {
  host_.RemoveService("FaviconManagerV3");
  const std::u16string uri = u"https://alone.example/";
  IQxITab* tab = Open(uri);
  EXPECT_TRUE(cache_->IsDefaultFaviconBitmap(Get(tab).get()));
  EXPECT_FALSE(cache_->Item(uri)->Requested());
  EXPECT_FALSE(cache_->Item(uri)->Done());
}

TEST_F(FaviconCacheTest, UnregisteredCacheHearsNothing) {
  const std::u16string uri = u"https://quiet.example/";
  host_.Favicons().SetSiteIcon(uri, SolidPng(16, 16, TAlphaColors::Red));
  Get(Open(uri));
  cache_->UnInitializeEvents();
  host_.Favicons().AnswerRequests();
  EXPECT_TRUE(updates_.empty());
  EXPECT_FALSE(cache_->Item(uri)->Done());
}

TEST_F(FaviconCacheTest, SharedManagerLoadsOncePerPathAndScales) {
  auto manager = MakeCom<TSharedFaviconManager>(12);
  const auto path = root_ / "icons" / "a.png";
  WritePng(path, 48, 24, TAlphaColors::Red);
  ComPtr<ISharedFMXBitmap> a, b;
  manager->LoadFavicon(path.u16string(), a);
  ASSERT_TRUE(a);
  EXPECT_EQ(a->GetWidth(), 12);
  EXPECT_EQ(a->GetHeight(), 12);
  const auto calls = ResourceFileCallCount();
  manager->LoadFavicon(path.u16string(), b);
  EXPECT_EQ(a.get(), b.get());
  EXPECT_EQ(ResourceFileCallCount(), calls);
  manager->RemoveFavicon(path.u16string());
  manager->LoadFavicon(path.u16string(), b);
  EXPECT_NE(a.get(), b.get());
  manager->LoadFavicon((root_ / "icons" / "missing.png").u16string(), b);
  EXPECT_FALSE(b);
  EXPECT_EQ(manager->Count(), 1u);
}

TEST_F(FaviconCacheTest, ThousandPathsEvictTheTwoHundredLeastRecentlyUsed) {
  auto manager = MakeCom<TSharedFaviconManager>(4);
  const auto bytes = SolidPng(4, 4, TAlphaColors::Red);
  std::vector<std::u16string> paths;
  for (int i = 0; i < 1000; ++i) {
    const auto path = root_ / "many" / ("icon" + std::to_string(i) + ".png");
    WriteBytes(path, bytes);
    paths.push_back(path.u16string());
  }
  ComPtr<ISharedFMXBitmap> bitmap;
  for (int i = 0; i < 999; ++i) {
    os_->AdvanceClock(1);
    manager->LoadFavicon(paths[static_cast<std::size_t>(i)], bitmap);
  }
  EXPECT_EQ(manager->Count(), 999u);
  // The first fifty are used again, so they are no longer the oldest.
  for (int i = 0; i < 50; ++i) {
    os_->AdvanceClock(1);
    manager->LoadFavicon(paths[static_cast<std::size_t>(i)], bitmap);
  }
  EXPECT_EQ(manager->Count(), 999u);
  os_->AdvanceClock(1);
  manager->LoadFavicon(paths[999], bitmap);
  EXPECT_TRUE(bitmap);
  EXPECT_EQ(manager->Count(), 800u);
  for (int i = 0; i < 50; ++i) EXPECT_TRUE(manager->Contains(paths[static_cast<std::size_t>(i)])) << i;
  for (int i = 50; i < 250; ++i) EXPECT_FALSE(manager->Contains(paths[static_cast<std::size_t>(i)])) << i;
  for (int i = 250; i < 1000; ++i) EXPECT_TRUE(manager->Contains(paths[static_cast<std::size_t>(i)])) << i;
}

TEST_F(FaviconCacheTest, EvictionCanDropTheBitmapJustHandedOut) {
  auto manager = MakeCom<TSharedFaviconManager>(4);
  const auto bytes = SolidPng(4, 4, TAlphaColors::Red);
  ComPtr<ISharedFMXBitmap> bitmap;
  // All loaded at the same tick: the one just loaded may be among the evicted, yet the
  // caller's reference keeps it alive.
  for (int i = 0; i < 1000; ++i) {
    const auto path = root_ / "same" / ("icon" + std::to_string(i) + ".png");
    WriteBytes(path, bytes);
    manager->LoadFavicon(path.u16string(), bitmap);
  }
  EXPECT_EQ(manager->Count(), 800u);
  ASSERT_TRUE(bitmap);
  EXPECT_EQ(bitmap->GetWidth(), 4);
}

TEST_F(FaviconCacheTest, FakeManagerAnswersCachedFilesAndCanAnswerAtOnce) {
  const std::u16string uri = u"https://atonce.example/";
  ComPtr<IQxIString> file;
  EXPECT_EQ(host_.Favicons().GetFaviconFile(uri.c_str(), file.put()), kFalse);
  EXPECT_FALSE(file);
  host_.Favicons().SetSiteIcon(uri, SolidPng(16, 16, TAlphaColors::Red));
  host_.Favicons().SetAnswerAtOnce(true);
  IQxITab* tab = Open(uri);
  // The answer comes inside the request: the call that asked still hands out the
  // default icon, the notification and the next call have the site's own.
  EXPECT_TRUE(cache_->IsDefaultFaviconBitmap(Get(tab).get()));
  EXPECT_EQ(updates_.size(), 1u);
  EXPECT_FALSE(cache_->IsDefaultFaviconBitmap(Get(tab).get()));
  EXPECT_EQ(host_.Favicons().GetFaviconFile(uri.c_str(), file.put()), kOk);
  EXPECT_TRUE(file);
}

}  // namespace
}  // namespace qx::test
