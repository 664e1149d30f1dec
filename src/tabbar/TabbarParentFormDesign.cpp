#include "tabbar/TabbarParentFormDesign.h"

#include <array>
#include <cstdio>
#include <string>

namespace qx {

namespace {

constexpr std::array<TAlphaColor, 6> kGroupColors = {0xFF6E9CC6u, 0xFF989898u, 0xFFBE9C68u,
                                                     0xFFC68468u, 0xFF7AA476u, 0xFF9A809Au};

constexpr char kHead[] = R"(object TabbarParentForm: TTabbarParentForm
  BorderStyle = None
  ClientWidth = 828
  ClientHeight = 54
  object BackGroundLayout: TLayout
    Align = Client
    object imgBackGroundBottom: TImage
      Align = Bottom
      Height = 1
      WrapMode = Tile
      HitTest = False
    end
    object imgBackGround: TImage
      Align = Client
      WrapMode = Tile
      OnDragOver = imgBackGroundDragOver
      OnDragDrop = imgBackGroundDragDrop
    end
  end
  object TabbarChildFrame: TImage
    Align = HorzCenter
    Width = 450
    Height = 54
    WrapMode = Tile
  end
  object TabGroupbarBackLayout: TLayout
    Align = Client
    Margins.Right = 12
    Visible = False
    object imgTabGroupbarBackBottom: TImage
      Align = Bottom
      Height = 1
      WrapMode = Tile
      HitTest = False
    end
    object imgTabGroupbarBack: TImage
      Align = Client
      Margins.Right = -12
      WrapMode = Tile
      OnMouseDown = GroupbarMouseDown
      object GroupButtonLayout: TLayout
        Align = HorzCenter
        Width = 800
        Margins.Right = 14
        Margins.Bottom = -1
        OnMouseDown = GroupbarMouseDown
        object TabGroupbarExitButtonBackLayout: TLayout
          Align = Left
          Width = 36
          object TabGroupbarExitButtonBack: TImage
            Align = Client
            WrapMode = Tile
          end
          object TabGroupbarExitButtonBackBottom: TImage
            Align = Bottom
            Height = 1
            WrapMode = Tile
            HitTest = False
          end
          object btnExitCabinet: TImageButton
            Position.X = 4
            Position.Y = 16
            Width = 28
            Height = 28
          end
        end
        object imgGroupbarLeft: TImage
          Align = Left
          Width = 20
          Margins.Left = 9
          WrapMode = Stretch
          HitTest = False
        end
        object imgGroupbarRight: TImage
          Align = Right
          Width = 20
          Margins.Right = 9
          WrapMode = Stretch
          HitTest = False
        end
        object imgGroupbarFill: TImage
          Align = Client
          WrapMode = Stretch
          HitTest = False
        end
)";

constexpr char kGroup[] = R"(        object GroupLayout_{i}: TGroupLayout
          Width = 110
          Height = 54
          Tag = {i}
          HitTest = True
          OnClick = GroupLayout_0Click
          object imgActive_{i}: TImage
            Position.X = -9
            Width = 128
            Height = 54
            WrapMode = Stretch
            HitTest = False
          end
          object imgGroupColor_{i}: TGroupColorImage
            Position.X = 41
            Position.Y = 13
            Width = 28
            Height = 28
            WrapMode = Original
            HitTest = False
            Tag = {i}
          end
          object btnGroupMenu_{i}: TImageButton
            Position.X = 69
            Position.Y = 13
            Width = 12
            Height = 28
            Tag = {i}
            OnClick = btnGroupMenu_0Click
          end
          object lbGroupNameShadow_{i}: TLabel
            Align = Top
            Margins.Top = 35
            Height = 19
            Tag = {i}
            TextSettings.HorzAlign = Center
            TextSettings.Font.Style = [fsBold]
            TextSettings.FontColor = $38000000
            object lbGroupName_{i}: TLabel
              Align = Client
              Margins.Top = -1
              Margins.Bottom = 1
              Tag = {i}
              TextSettings.HorzAlign = Center
              TextSettings.Font.Style = [fsBold]
              TextSettings.FontColor = ${colour}
              OnClick = lbGroupName_0Click
            end
          end
          object DragOverLayout_{i}: TLayout
            Visible = False
            HitTest = False
            object DragOverImageLeft_{i}: TImage
              Align = Left
              Width = 16
              WrapMode = Stretch
              HitTest = False
            end
            object DragOverImageRight_{i}: TImage
              Align = Right
              Width = 16
              WrapMode = Stretch
              HitTest = False
            end
            object DragOverImageFill_{i}: TImage
              Align = Client
              WrapMode = Stretch
              HitTest = False
            end
          end
        end
)";

constexpr char kSeparator[] = R"(        object imgSeparator_{i}: TImage
          Width = 1
          Height = 54
          WrapMode = Stretch
          HitTest = False
        end
)";

constexpr char kTail[] = R"(        object TitleInplaceEdit: TTitleInplaceEdit
          Visible = False
        end
      end
    end
  end
end
)";

void ReplaceAll(std::string& text, const std::string& from, const std::string& to) {
  for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size()))
    text.replace(at, from.size(), to);
}

// One group's part of the layout: {i} is the index, {colour} its name colour.
std::string ForGroup(const char* pattern, int i) {
  std::string text = pattern;
  char colour[9];
  std::snprintf(colour, sizeof colour, "%08X", static_cast<unsigned>(GroupNameColor(i)));
  ReplaceAll(text, "{colour}", colour);
  ReplaceAll(text, "{i}", std::to_string(i));
  return text;
}

}  // namespace

TAlphaColor GroupNameColor(int index) { return kGroupColors[static_cast<std::size_t>(index)]; }

const std::string& TabbarParentFormDesign() {
  static const std::string design = [] {
    std::string text = kHead;
    for (int i = 0; i < 6; ++i) {
      if (i > 0) text += ForGroup(kSeparator, i);
      text += ForGroup(kGroup, i);
    }
    return text + kTail;
  }();
  return design;
}

}  // namespace qx
