#include "tabbar/TabbarFormLayout.h"

#include "resources/ImageButton.h"
#include "tabview/TalvokScrollBox.h"
#include "toolkit/StoredLayout.h"

namespace qx {

const std::string& TabbarFrameLayoutText() {
  static const std::string text = R"(
object TabbarFrame: TFrame
  Width = 450
  Height = 54
  OnResize = FrameResize
  object TabbarBottomImage: TImage
    Align = Bottom
    Height = 1
    WrapMode = Tile
  end
  object TabbarBackLayout: TLayout
    Align = Client
    Height = 53
    object imgTabbarLeft: TImage
      Align = Left
      Width = 64
      WrapMode = Original
      object btnGroup: TImageButton
        Position.X = 20
        Position.Y = 15
        Width = 28
        Height = 28
        OnClick = btnGroupClick
      end
    end
    object imgTabbarRight: TImage
      Align = Right
      Width = 64
      WrapMode = Original
      object btnAddTab: TImageButton
        Position.X = 16
        Position.Y = 15
        Width = 28
        Height = 28
        OnClick = btnAddTabClick
      end
    end
    object imgTabbarMiddle: TImage
      Align = Client
      WrapMode = Stretch
      object TabScrollBox: TScrollBox
        Align = Client
        Margins.Left = -8
        Margins.Right = -8
        ShowScrollBars = False
        UseSmallScrollBars = True
        MouseTracking = True
      end
    end
  end
  object imgActiveTab: TImage
    HitTest = False
    Position.X = 200
    Position.Y = 4
    Width = 98
    Height = 24
    Visible = False
    object ActiveTabIndicatorFloatAnimation: TFloatAnimation
      Duration = 0.15
      PropertyName = 'Position.X'
    end
  end
  object HideTitleTimer: TTimer
    Enabled = False
    Interval = 100
  end
  object ShowActiveTabTitleTimer: TTimer
    Enabled = False
    Interval = 10
  end
  object ActiveCenterTimer: TTimer
    Enabled = False
    Interval = 600
    OnTimer = ActiveCenterTimerTimer
  end
  object UpdateCloseBtnTimer: TTimer
    Enabled = False
    Interval = 350
  end
  object tmCheckCabinetMode: TTimer
    Enabled = False
    Interval = 600
  end
  object TabbarWidthAnimation: TFloatAnimation
    Duration = 0.2
  end
end
)";
  return text;
}

void RegisterTabbarFrameClasses() {
  if (!TComponentRegistry::IsRegistered("TImageButton"))
    TComponentRegistry::RegisterClass("TImageButton",
                                      [](TFmxObject* owner) { return new TImageButton(owner); });
  TalvokScrollBoxUnit::TTalvokScrollBox::RegisterClass();
}

}  // namespace qx
