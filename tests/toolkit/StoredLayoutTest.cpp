#include <gtest/gtest.h>

#include "ToolkitFixture.h"
#include "toolkit/Animation.h"
#include "toolkit/Form.h"
#include "toolkit/Frame.h"
#include "toolkit/Image.h"
#include "toolkit/TextControls.h"

namespace qx {
namespace {

class ToolkitStoredLayout : public test::ToolkitTest {};

const char* kLayout = R"(object StripFrame: TFrame
  Width = 400
  Height = 54
  // the background
  object Back: TImage
    Align = Client
    Margins.Left = -4
    Margins.Right = -4
    WrapMode = Tile
    HitTest = False
    Tag = 7
  end
  object Title: TLabel
    Position.X = 10
    Position.Y = 5
    Size.Width = 120
    Size.Height = 20
    Opacity = 0.5
    TextSettings.Font.Family = 'DejaVu Sans'
    TextSettings.Font.Style = [fsBold]
    TextSettings.FontColor = claWhite
    TextSettings.HorzAlign = Center
    TextSettings.WordWrap = True
    AutoTranslate = False
    Text = 'It'#39's '+'mine'
    OnClick = TitleClick
    object Fade: TFloatAnimation
      PropertyName = 'Opacity'
      StartValue = 0.5
      StopValue = 1
      Duration = 0.3
      Interpolation = Quintic
      AnimationType = Out
      StartFromCurrent = True
      OnFinish = FadeDone
    end
  end
  object Tick: TTimer
    Interval = 10
    Enabled = False
    OnTimer = TickTimer
  end
end
)";

TEST_F(ToolkitStoredLayout, BuildsTheTreeWithValuesAndEvents) {
  int clicks = 0, finishes = 0;
  TStoredLayoutOptions options;
  options.Handler("TitleClick", TNotifyEvent([&](TFmxObject*) { ++clicks; }))
      .Handler("FadeDone", TNotifyEvent([&](TFmxObject*) { ++finishes; }))
      .Handler("TickTimer", TNotifyEvent([](TFmxObject*) {}));
  TFrame frame(nullptr, kLayout, options);
  EXPECT_EQ(frame.Name, u"StripFrame");
  EXPECT_EQ(frame.Width(), 400);
  auto* back = FindComponentAs<TImage>(&frame, u"Back");
  ASSERT_NE(back, nullptr);
  EXPECT_EQ(back->Parent(), &frame);
  EXPECT_EQ(back->BoundsRect(), TRectF(-4, 0, 404, 54));
  EXPECT_EQ(back->WrapMode(), TImageWrapMode::Tile);
  EXPECT_FALSE(back->HitTest());
  EXPECT_EQ(back->Tag, 7);
  auto* title = FindComponentAs<TLabel>(&frame, u"Title");
  ASSERT_NE(title, nullptr);
  EXPECT_EQ(title->BoundsRect(), TRectF(10, 5, 130, 25));
  EXPECT_FLOAT_EQ(title->Opacity(), 0.5f);
  EXPECT_EQ(title->Text, u"It's mine");
  EXPECT_EQ(title->TextSettings.Font.Family, u"DejaVu Sans");
  EXPECT_EQ(title->TextSettings.Font.Style, unsigned(TFontStyle::Bold));
  EXPECT_EQ(title->TextSettings.FontColor, TAlphaColors::White);
  EXPECT_EQ(title->TextSettings.HorzAlign, TTextAlign::Center);
  EXPECT_TRUE(title->TextSettings.WordWrap);
  EXPECT_FALSE(title->AutoTranslate);
  auto* fade = FindComponentAs<TFloatAnimation>(&frame, u"Fade");
  ASSERT_NE(fade, nullptr);
  EXPECT_EQ(fade->Parent(), title);
  EXPECT_EQ(fade->Interpolation, TInterpolationType::Quintic);
  EXPECT_EQ(fade->AnimationType, TAnimationType::Out);
  EXPECT_TRUE(fade->StartFromCurrent);
  auto* tick = FindComponentAs<TTimer>(&frame, u"Tick");
  ASSERT_NE(tick, nullptr);
  EXPECT_EQ(tick->Interval(), 10);
  EXPECT_FALSE(tick->Enabled());

  title->OnClick(title);
  EXPECT_EQ(clicks, 1);
  fade->Start();
  Clock().Advance(400);
  EXPECT_FLOAT_EQ(title->Opacity(), 1);
  EXPECT_EQ(finishes, 1);
}

TEST_F(ToolkitStoredLayout, FormStyleValues) {
  TForm form;
  form.LoadLayout(R"(object Popup: TForm
  BorderStyle = None
  Transparency = True
  FormStyle = Popup
  ClientWidth = 300
  ClientHeight = 40
  object Body: TLayout
    Align = HorzCenter
    Size.Width = 100
  end
end
)");
  EXPECT_EQ(form.BorderStyle, TFmxFormBorderStyle::None);
  EXPECT_TRUE(form.Transparency);
  EXPECT_EQ(form.FormStyle, TFormStyle::Popup);
  EXPECT_EQ(form.Width(), 300);
  auto* body = FindComponentAs<TLayout>(&form, u"Body");
  ASSERT_NE(body, nullptr);
  EXPECT_EQ(body->BoundsRect(), TRectF(100, 0, 200, 40));
}

std::string ErrorOf(const std::string& text, const TStoredLayoutOptions& options = {}) {
  TFrame frame;
  try {
    frame.LoadLayout(text, options);
  } catch (const EStoredLayoutError& e) {
    return e.what();
  }
  return "no error";
}

TEST_F(ToolkitStoredLayout, ErrorsNameTheLineAndTheProblem) {
  EXPECT_EQ(ErrorOf("object F: TFrame\n  Bogus = 1\nend\n"),
            "Stored layout, line 2: unknown property Bogus of TFrame");
  EXPECT_EQ(ErrorOf("object F: TFrame\n  object X: TNoSuchClass\n  end\nend\n"),
            "Stored layout, line 2: unknown class TNoSuchClass");
  EXPECT_EQ(ErrorOf("object F: TFrame\n  OnClick = Missing\nend\n"),
            "Stored layout, line 2: no handler named Missing for OnClick");
  EXPECT_EQ(ErrorOf("object F: TFrame\n  Width = 'wide'\nend\n"),
            "Stored layout, line 2: Property Width needs a number, not text");
  EXPECT_EQ(ErrorOf("object F: TFrame\n  Align = Sideways\nend\n"),
            "Stored layout, line 2: Unknown Align value Sideways");
  EXPECT_EQ(ErrorOf("object F: TFrame\n  Width = 3\n"), "Stored layout, line 3: \"end\" missing for F");
  EXPECT_EQ(ErrorOf("object F: TFrame\n  Text = 'open\nend\n"), "Stored layout, line 2: text not closed");
  EXPECT_EQ(ErrorOf(""), "Stored layout, line 1: the layout is empty");
  EXPECT_EQ(ErrorOf("object F TFrame\nend\n"), "Stored layout, line 1: \":\" and a class name expected after F");
  TStoredLayoutOptions wrongType;
  wrongType.Handler("Click", std::function<void()>([] {}));
  EXPECT_EQ(ErrorOf("object F: TFrame\n  OnClick = Click\nend\n", wrongType),
            "Stored layout, line 2: Handler of the wrong type for event OnClick");
}

TEST_F(ToolkitStoredLayout, LegacyPropertiesAreDroppedWhenAsked) {
  TComponentRegistry::RegisterClass("TLegacyBox", [](TFmxObject* o) { return new TLayout(o); },
                                    {"UseSmallScrollBars", "MouseTracking"});
  const char* text = R"(object F: TFrame
  object Box: TLegacyBox
    UseSmallScrollBars = True
    MouseTracking = True
    Size.Width = 20
  end
end
)";
  TFrame frame(nullptr, text);
  EXPECT_EQ(FindComponentAs<TLayout>(&frame, u"Box")->Width(), 20);
  // Elsewhere they are still unknown.
  EXPECT_NE(ErrorOf("object F: TFrame\n  MouseTracking = True\nend\n").find("unknown property MouseTracking"),
            std::string::npos);
  TStoredLayoutOptions drop;
  drop.DroppedProperties = {"mousetracking"};
  EXPECT_EQ(ErrorOf("object F: TFrame\n  MouseTracking = True\nend\n", drop), "no error");
  TComponentRegistry::UnregisterClass("TLegacyBox");
}

}  // namespace
}  // namespace qx
