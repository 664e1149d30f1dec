#include "StripFixture.h"
#include "WindowCapture.h"
#include "common/GoldenPicture.h"

namespace qx::test {
namespace {

// The strip as the host window shows it, read back from the window's pixels, after the
// host selected page 4 and opened page 6: thumbnails by GUID from the cache, two sections,
// the active tab marked.
TEST_F(StripTest, TheStripInTheHostWindow) {
  scenario_->PrepareHost();
  ASSERT_EQ(scenario_->CreateStrip(loader_), kOk);
  scenario_->Settle(1000);
  scenario_->SelectPage(4);
  scenario_->Settle(1000);
  scenario_->AddPage();
  scenario_->Settle(1000);
  std::unique_ptr<TBitmap> window = scenario_->Capture();
  ASSERT_TRUE(window);
  TBitmap strip(window->Width(), kStripHeight);
  for (int y = 0; y < kStripHeight; ++y)
    for (int x = 0; x < window->Width(); ++x)
      strip.Bits()[static_cast<std::size_t>(y * strip.Width() + x)] = window->Pixel(x, kStripTop + y);
  ExpectMatchesGolden(strip, "e2e/golden/strip_in_host_window.png");
}

}  // namespace
}  // namespace qx::test
