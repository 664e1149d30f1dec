#include "smartsearch/SmartSearchFormDesign.h"

namespace qx {

const std::string& SmartSearchFormDesign() {
  static const std::string design = R"(object SmartSearchForm: TSmartSearchForm
  BorderStyle = None
  FormStyle = Popup
  Transparency = True
  Caption = 'SmartSearch'
  ClientWidth = 347
  ClientHeight = 90
  object BackgroundLayout: TLayout
    Align = Client
    object imgBackground: TImage
      Align = Client
    end
  end
  object ButtonLayout: TLayout
    Align = Client
    object DefaultSearchButton: TImageButton
      Align = Left
      Margins.Left = 14
      Margins.Top = 30
      Margins.Bottom = 30
      Width = 161
      Height = 30
      OnClick = DefaultSearchButtonClick
      object DefaultSearchButtonRootLayout: TLayout
        Align = Client
        HitTest = False
        object lbSearchShadow: TLabel
          Align = Client
          Opacity = 0.22
          Margins.Left = 2
          Margins.Top = -1
          Margins.Right = 7
          Margins.Bottom = 1
          TextSettings.Font.Style = [fsBold]
          Text = '検索'
        end
        object imgLupe: TImage
          Align = Left
          HitTest = False
          Margins.Left = 7
          Width = 20
          Height = 30
        end
        object lbSearch: TLabel
          Align = Client
          Margins.Left = 2
          Margins.Right = 7
          TextSettings.Font.Style = [fsBold]
          TextSettings.FontColor = $FFDCDCDC
          Text = '検索'
        end
      end
    end
    object PageSearchButtonLayout: TLayout
      Align = Right
      Width = 32
      Height = 90
    end
    object SearchButtonsLayout: TLayout
      Align = Client
      Margins.Top = 30
      Margins.Right = 17
      Margins.Bottom = 30
      object MoreButton: TImageButton
        Align = Right
        Width = 15
        Height = 30
      end
    end
  end
  object tmAutoSearchMenuShow: TTimer
    Enabled = False
    Interval = 600
  end
  object tmCheckEngineMenuMouseLeave: TTimer
    Enabled = False
    Interval = 20
  end
  object tmUpdateHovered: TTimer
    Enabled = False
    Interval = 20
  end
end
)";
  return design;
}

}  // namespace qx
