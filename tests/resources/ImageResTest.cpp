#include "ResourcesFixture.h"
#include "apps/skingen/SkinPictures.h"
#include "resources/BitmapResourceMgr.h"
#include "resources/CabinetIconBarImageRes.h"
#include "resources/CabinetImageRes.h"
#include "resources/ResourceFiles.h"
#include "resources/SharedBitmap.h"
#include "resources/SmartSearchImageRes.h"
#include "resources/TabbarImageRes.h"

namespace qx::test {
namespace {

using ImageResTest = ResourcesTest;

TEST_F(ImageResTest, BasePathComesFromTheHostsSkinPathWithADelimiterOrIsTheBareDelimiter) {
  TTabbarImageRes res(wrap_.get());
  EXPECT_EQ(res.Extension(), u".png");
  EXPECT_EQ(ToPathOf(res.BasePath()), StripFolder() / "");
  EXPECT_EQ(res.BasePath().back(), kPathDelim);
  TCabinetImageRes cabinet(u"/some/folder");
  EXPECT_EQ(cabinet.BasePath(), TString(u"/some/folder") + kPathDelim);

  TSmartSearchImageRes unknown(wrap_.get(), u"nosuchscheme://x/");
  EXPECT_EQ(unknown.BasePath(), TString(1, kPathDelim));
  EXPECT_EQ(unknown.SmartSearchLupe(), nullptr);
  host_.RemoveService("GraphicResourceService");
  TCabinetIconBarImageRes noService(wrap_.get());
  EXPECT_EQ(noService.BasePath(), TString(1, kPathDelim));
  EXPECT_EQ(noService.FaviconBase(), nullptr);
  TTabbarImageRes noHost(nullptr);
  EXPECT_EQ(noHost.TabClose(), nullptr);
}

TEST_F(ImageResTest, GetterLoadsOnceAndKeepsTheBitmapAndAsksAgainForAMissingFile) {
  WritePng(StripFolder() / "TabClose.png", 22, 22, TAlphaColors::Red);
  TTabbarImageRes res(wrap_.get());
  TBitmap* close = res.TabClose();
  ASSERT_NE(close, nullptr);
  EXPECT_EQ(close->Width(), 22);
  EXPECT_EQ(close->PixelColor(3, 3), TAlphaColors::Red);
  const auto calls = ResourceFileCallCount();
  EXPECT_EQ(res.TabClose(), close);
  EXPECT_EQ(ResourceFileCallCount(), calls);
  // The set keeps its picture even when the skin changes under it.
  WritePng(StripFolder() / "TabClose.png", 22, 22, TAlphaColors::Blue);
  EXPECT_EQ(res.TabClose()->PixelColor(3, 3), TAlphaColors::Red);

  const auto before = ResourceFileCallCount();
  EXPECT_EQ(res.TabBlank(), nullptr);
  EXPECT_EQ(res.TabBlank(), nullptr);
  EXPECT_EQ(ResourceFileCallCount(), before + 2);
  WritePng(StripFolder() / "TabBlank.png", 96, 47, TAlphaColors::White);
  ASSERT_NE(res.TabBlank(), nullptr);
  EXPECT_EQ(res.TabBlank()->Height(), 47);
}

TEST_F(ImageResTest, DamagedOrTruncatedPictureLeavesNullAndTheSetWorking) {
  WriteBytes(StripFolder() / "TabActive.png",
             {0x89, 'P', 'N', 'G', 0x0D, 0x0A, 0x1A, 0x0A, 0, 0, 0, 13, 'I', 'H'});
  auto good = SolidPng(8, 8, TAlphaColors::Lime);
  WriteBytes(StripFolder() / "TabBlank.png",
             std::vector<std::uint8_t>(good.begin(), good.begin() + good.size() / 2));
  WriteBytes(StripFolder() / "TabBoundHovered.png", {'n', 'o', 't', ' ', 'a', ' ', 'p', 'n', 'g'});
  WriteBytes(StripFolder() / "TabProgress.png", {});
  WritePng(StripFolder() / "TabClose.png", 22, 22, TAlphaColors::Red);
  TTabbarImageRes res(wrap_.get());
  EXPECT_NO_THROW({
    EXPECT_EQ(res.TabActive(), nullptr);
    EXPECT_EQ(res.TabBlank(), nullptr);
    EXPECT_EQ(res.TabBoundHovered(), nullptr);
    EXPECT_EQ(res.TabProgress(), nullptr);
  });
  EXPECT_NE(res.TabClose(), nullptr);
  // A repaired file is picked up by the next call.
  WritePng(StripFolder() / "TabActive.png", 98, 49, TAlphaColors::Blue);
  EXPECT_NE(res.TabActive(), nullptr);
}

// Each key reads the file of its own name: every picture gets a width of its own.
TEST_F(ImageResTest, EveryKeyLoadsTheFileOfItsName) {
  EXPECT_EQ(TCabinetImageRes::Keys().size(), 2u);
  EXPECT_EQ(TSmartSearchImageRes::Keys().size(), 27u);
  EXPECT_EQ(TCabinetIconBarImageRes::Keys().size(), 12u);
  const auto& keys = TTabbarImageRes::Keys();
  ASSERT_EQ(keys.size(), 128u);
  for (std::size_t i = 0; i < keys.size(); ++i) {
    WritePng(StripFolder() / (ToUtf8(std::u16string(keys[i])) + ".png"), static_cast<int>(i) + 1, 1,
             TAlphaColors::Red);
  }
  TTabbarImageRes res(wrap_.get());
  for (std::size_t i = 0; i < keys.size(); ++i) {
    TBitmap* picture = res.ByKey(keys[i]);
    ASSERT_NE(picture, nullptr) << ToUtf8(std::u16string(keys[i]));
    EXPECT_EQ(picture->Width(), static_cast<int>(i) + 1) << ToUtf8(std::u16string(keys[i]));
  }
  EXPECT_EQ(res.ByKey(u"TabbarAdd4Pressed"), res.TabbarAdd4Pressed());
  EXPECT_EQ(res.ByKey(u"TabGroupActiveMune"), res.TabGroupActiveMune());
  EXPECT_EQ(res.ByKey(u"NoSuchKey"), nullptr);
}

TEST_F(ImageResTest, SliceCutsEqualPartsAndTheGettersKeepTheirOwnPieces) {
  TBitmap strip(10, 2);
  for (int x = 0; x < 10; ++x)
    for (int y = 0; y < 2; ++y)
      strip.Bits()[y * 10 + x] = PremultiplyColor(0xFF000000u | static_cast<TAlphaColor>(x * 20));
  auto right = SliceBitmap(&strip, 3, 2);
  ASSERT_NE(right, nullptr);
  EXPECT_EQ(right->Width(), 3);
  EXPECT_EQ(right->Height(), 2);
  EXPECT_EQ(right->PixelColor(0, 0), 0xFF000000u | 120u);
  EXPECT_EQ(right->PixelColor(2, 1), 0xFF000000u | 160u);
  auto middle = SliceBitmap(&strip, 3, 1);
  EXPECT_EQ(middle->PixelColor(0, 0), 0xFF000000u | 60u);
  EXPECT_EQ(SliceBitmap(nullptr, 3, 0), nullptr);

  TBitmap sheet(30, 20);
  sheet.Canvas().FillRect(TRectF(0, 0, 10, 20), TAlphaColors::Red, 1);
  sheet.Canvas().FillRect(TRectF(10, 0, 20, 20), TAlphaColors::Lime, 1);
  sheet.Canvas().FillRect(TRectF(20, 0, 30, 20), TAlphaColors::Blue, 1);
  std::filesystem::create_directories(StripFolder());
  sheet.SaveToFile(StripFolder() / "TabNameBackground3.png");
  TTabbarImageRes res(wrap_.get());
  TBitmap* left = res.TabNameBackground3Left();
  TBitmap* fill = res.TabNameBackground3Fill();
  TBitmap* last = res.TabNameBackground3Right();
  ASSERT_TRUE(left && fill && last);
  EXPECT_NE(left, fill);
  EXPECT_EQ(res.TabNameBackground3Left(), left);
  EXPECT_EQ(left->PixelColor(5, 5), TAlphaColors::Red);
  EXPECT_EQ(fill->PixelColor(5, 5), TAlphaColors::Lime);
  EXPECT_EQ(last->PixelColor(5, 5), TAlphaColors::Blue);
  EXPECT_EQ(res.TabNameBackground1Left(), nullptr);  // no source, no slice
  TCabinetIconBarImageRes bar(wrap_.get());
  EXPECT_EQ(bar.CabinetbarItemHoveredFill(), nullptr);
}

TEST_F(ImageResTest, SolidAndSharedBitmaps) {
  auto solid = MakeSolidBitmap(0xFF6A6A6Au, 97.6f, 46.4f);
  EXPECT_EQ(solid->Width(), 98);
  EXPECT_EQ(solid->Height(), 46);
  EXPECT_EQ(solid->PixelColor(97, 45), 0xFF6A6A6Au);

  auto shared = MakeSharedBitmap(std::make_unique<TBitmap>(12, 7));
  EXPECT_EQ(shared->GetWidth(), 12);
  EXPECT_EQ(shared->GetHeight(), 7);
  shared->SetTag(-5);
  EXPECT_EQ(shared->GetTag(), -5);
  auto empty = MakeSharedBitmap(nullptr);
  EXPECT_EQ(empty->GetWidth(), 0);
  EXPECT_EQ(empty->GetHeight(), 0);
  EXPECT_EQ(empty->GetBitmap(), nullptr);
}

TEST_F(ImageResTest, SystemFontHeightsBecomeToolkitSizesAtTheScreensResolution) {
  EXPECT_EQ(MulDiv(-16, 96, 120), -13);
  EXPECT_EQ(MulDiv(15, 96, 144), 10);
  EXPECT_EQ(MulDiv(5, 1, 2), 3);
  EXPECT_EQ(MulDiv(-5, 1, 2), -3);
  EXPECT_EQ(MulDiv(1, 1, 0), -1);
  os_->SetLogPixelsY(120);
  EXPECT_FLOAT_EQ(FontSizeFromSystemFont(-16, 0), 13.0f);
  EXPECT_FLOAT_EQ(FontSizeFromSystemFont(-16, -1), 12.0f);
  os_->SetLogPixelsY(96);
  EXPECT_FLOAT_EQ(FontSizeFromSystemFont(-12, 0), 12.0f);
}

TEST_F(ImageResTest, DefaultSkinDrawsEveryKeyOfEverySet) {
  for (const auto* keys : {&TTabbarImageRes::Keys(), &TCabinetImageRes::Keys(), &TSmartSearchImageRes::Keys(),
                           &TCabinetIconBarImageRes::Keys()}) {
    for (auto key : *keys) {
      auto picture = skin::DrawPicture(ToUtf8(key));
      ASSERT_NE(picture, nullptr) << ToUtf8(key);
      EXPECT_FALSE(picture->IsEmpty()) << ToUtf8(key);
      // Something is drawn: not every pixel is transparent.
      bool inked = false;
      for (int i = 0; i < picture->Width() * picture->Height() && !inked; ++i)
        inked = (picture->Bits()[i] >> 24) != 0;
      EXPECT_TRUE(inked) << ToUtf8(key);
    }
  }
  // A drawn skin read back through the image set gives the same pictures.
  auto close = skin::DrawPicture("TabClose");
  std::filesystem::create_directories(StripFolder());
  close->SaveToFile(StripFolder() / "TabClose.png");
  TTabbarImageRes res(wrap_.get());
  ASSERT_NE(res.TabClose(), nullptr);
  EXPECT_EQ(res.TabClose()->PixelColor(11, 11), close->PixelColor(11, 11));
}

}  // namespace
}  // namespace qx::test
