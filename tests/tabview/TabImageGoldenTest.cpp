// Tabs drawn over the default skin, compared with golden pictures (see
// common/GoldenPicture.h). The skin is drawn by the target qx_default_skin.

#include <gtest/gtest.h>

#include <filesystem>

#include "host/HostKeys.h"
#include "common/GoldenPicture.h"
#include "tabview/TabImage.h"
#include "tabview/TabImageFixture.h"
#include "toolkit/Application.h"
#include "toolkit/TimerService.h"

#ifndef QX_DEFAULT_SKIN_DIR
#define QX_DEFAULT_SKIN_DIR ""
#endif

namespace qx {
namespace {

namespace fs = std::filesystem;

class TabImageGoldenTest : public TabImageHostFixture {
 protected:
  TabImageGoldenTest() {
    TToolkit::Finalize();
    TTabImage::ReleaseBlankPicture();
  }
  ~TabImageGoldenTest() override {
    TTabImage::ReleaseBlankPicture();
    TToolkit::Finalize();
  }

  static fs::path SkinFolder() {
    return fs::path(QX_DEFAULT_SKIN_DIR) / "widget" / "toolbar" / "PreviewStrip";
  }
};

TEST_F(TabImageGoldenTest, TabsOverTheDefaultSkin) {
  if (!fs::is_regular_file(SkinFolder() / "TabBlank.png"))
    GTEST_SKIP() << "the default skin was not drawn (target qx_default_skin)";
  TTabbarImageRes imageRes(SkinFolder().u16string());

  TFakeTab* plainHost = Open(u"https://plain.example/");
  TFakeTab* lockedHost = Open(u"https://locked.example/");
  ASSERT_EQ(host_.Model().SetTabText(lockedHost, tab_key::StatusNaviLock, u"locked"), kOk);

  // An inactive tab with the blank picture, dimmed.
  TTabImage plain(nullptr, &imageRes, wrap_.get(), wrap_->TabIdOf(plainHost));
  plain.UpdateTabStatus();
  plain.UpdateDimAndShadow(false, true);
  plain.Position().SetX(0);

  // A protected tab with a page picture: its badge, then hovered with its close button.
  auto page = MakeThumbnail(0xFFFFFFFF);
  page->Canvas().BeginScene();
  page->Canvas().FillRect(TRectF(0, 0, 96, 10), 0xFF3A6EA5, 1);
  page->Canvas().FillRect(TRectF(8, 16, 70, 20), 0xFF9AA0A8, 1);
  page->Canvas().FillRect(TRectF(8, 26, 88, 40), 0xFFE3B341, 1);
  page->Canvas().EndScene();
  TTabImage badge(nullptr, &imageRes, wrap_.get(), wrap_->TabIdOf(lockedHost));
  badge.UpdateTabImage(page.get(), true);
  badge.UpdateTabStatus();
  badge.UpdateDimAndShadow(false, true);
  badge.Position().SetX(100);

  TTabImage hovered(nullptr, &imageRes, wrap_.get(), wrap_->TabIdOf(lockedHost));
  hovered.UpdateTabImage(page.get(), true);
  hovered.UpdateTabStatus();
  hovered.UpdateDimAndShadow(true, true);
  hovered.StartCloseButtonAnimation(true, true);
  hovered.Position().SetX(200);

  TBitmap canvasBitmap(298, 49);
  TCanvas& canvas = canvasBitmap.Canvas();
  ASSERT_TRUE(canvas.BeginScene());
  canvas.Clear(0xFF2B2F36);
  for (TTabImage* tab : {&plain, &badge, &hovered}) {
    tab->Content()->Realign();
    tab->PaintTo(canvas);
  }
  canvas.EndScene();
  test::ExpectMatchesGolden(canvasBitmap, "tabview/golden/tabs_default_skin.png");
}

}  // namespace
}  // namespace qx
