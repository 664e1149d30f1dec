// Editing a group's title in place, on its name label.

#include "host/QuillmarV3Interface.h"
#include "tabbar/TabbarParentForm.h"

namespace qx {

bool TTabbarParentForm::EditingGroupTitle() const { return TitleInplaceEdit_->Visible(); }

void TTabbarParentForm::lbGroupName_0Click(TFmxObject* sender) {
  if (auto* label = dynamic_cast<TLabel*>(sender)) StartEditGroupTitle(label);
}

void TTabbarParentForm::EditGroupTitle() {
  const std::int32_t current = CurrentGroupIndex();
  if (current >= 0) StartEditGroupTitle(FGroups[static_cast<std::size_t>(current)].Name);
}

void TTabbarParentForm::StartEditGroupTitle(TLabel* label) {
  if (static_cast<std::int32_t>(label->Tag) != CurrentGroupIndex()) return;
  TTitleInplaceEdit* edit = TitleInplaceEdit_;
  edit->SetParent(label);
  edit->SetAlign(TAlignLayout::Client);
  edit->Margins().SetLeft(10);
  edit->Margins().SetRight(10);
  edit->Caret().Visible = true;
  edit->Tag = label->Tag;
  edit->SetText(label->Text);
  edit->TextSettings.Font.Family = label->TextSettings.Font.Family;
  edit->SetCaretPosition(static_cast<int>(label->Text.size()));
  edit->SetVisible(true);
  // The form's window takes the focus so the edit gets the keys.
  IPlatform& os = Platform();
  const HWnd window = FormHandle();
  FLastFocus = os.GetFocus();
  if (FLastFocus != window)
    os.SetFocus(window);
  else
    FLastFocus = nullptr;
  edit->SetFocus();
}

void TTabbarParentForm::TitleInplaceEditKeyDown(int& key, char16_t& keyChar, TShiftState) {
  if (key == win::VK_RETURN) {
    HideEditAndUpdateTitle(false);
    key = 0;
    keyChar = 0;
  } else if (key == win::VK_ESCAPE) {
    HideEditAndUpdateTitle(true);
    key = 0;
    keyChar = 0;
  }
}

void TTabbarParentForm::TitleInplaceEditExit() { HideEditAndUpdateTitle(false); }

void TTabbarParentForm::HideEditAndUpdateTitle(bool cancel) {
  if (!TitleInplaceEdit_->Visible() || !TabGroupbarBackLayout_->Visible()) return;
  TTitleInplaceEdit* edit = TitleInplaceEdit_;
  const auto index = static_cast<std::int32_t>(edit->Tag);
  // Hidden first: the focus changes below come back here and must find nothing to do.
  edit->SetVisible(false);
  if (!cancel && index >= 0 && index < kTabGroupCount) {
    const TString text = edit->Text();
    ComPtr<IQxITabGroup> group;
    if (GroupAt(index, group)) FServiceCore->SetTabGroupProperty(group.get(), u"title", text);
    FGroups[static_cast<std::size_t>(index)].Name->SetText(text);
    FGroups[static_cast<std::size_t>(index)].NameShadow->SetText(text);
  }
  if (FLastFocus) {
    const HWnd last = FLastFocus;
    FLastFocus = nullptr;
    Platform().SetFocus(last);
  }
}

}  // namespace qx
