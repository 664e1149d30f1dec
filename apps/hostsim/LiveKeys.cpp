#include "LiveKeys.h"

#include "SmartSearchStep.h"
#include "base/Text.h"

namespace qx {
namespace {

TLiveStep HostStep(TLiveStepKind kind) {
  TLiveStep step;
  step.Kind = kind;
  return step;
}

TLiveStep PageStep(TLiveStepKind kind, int page) {
  TLiveStep step = HostStep(kind);
  step.Page = page;
  return step;
}

// The word the S key selects: one the search engines find.
constexpr char kSelectedText[] = "lighthouse";

}  // namespace

int TLiveKeys::PageOf(const TFakeTab* tab) const {
  if (!tab) return 0;
  const std::u16string guid = tab->GuidText();
  for (int number = 1; number < FNextPage; ++number)
    if (FScenario.GuidOfPage(number) == guid) return number;
  return 0;
}

TLiveKeyAction TLiveKeys::Map(SDL_Keycode key) const {
  TLiveKeyAction action;
  TFakeHost& host = FScenario.Host();
  TFakeTabGroup* group = host.Model().ActiveGroup();
  switch (key) {
    case SDLK_ESCAPE:
      action.Command = TLiveCommand::Quit;
      break;
    case SDLK_r:
      action.Command = TLiveCommand::ToggleRecording;
      break;
    case SDLK_p:
      action.Command = TLiveCommand::Capture;
      break;
    case SDLK_a: {
      TLiveStep add = HostStep(TLiveStepKind::AddPages);
      add.First = add.Last = FNextPage;
      action.Steps = {add, PageStep(TLiveStepKind::Select, FNextPage)};
      break;
    }
    case SDLK_w:
      if (const int page = PageOf(group ? group->ActiveTab() : nullptr))
        action.Steps.push_back(PageStep(TLiveStepKind::Close, page));
      break;
    case SDLK_g:
      if (!host.Model().Groups().empty()) {
        TLiveStep step = HostStep(TLiveStepKind::SwitchGroup);
        const auto count = static_cast<std::int32_t>(host.Model().Groups().size());
        step.Group = (host.Model().GroupIndex(group) + 1) % count;
        action.Steps.push_back(step);
      }
      break;
    case SDLK_c:
      action.Steps.push_back(
          HostStep(host.InCabinet() ? TLiveStepKind::CloseCabinet : TLiveStepKind::OpenCabinet));
      break;
    case SDLK_s: {
      TLiveStep step = HostStep(TLiveStepKind::SelectText);
      step.Text = kSelectedText;
      action.Steps.push_back(step);
      break;
    }
    default:
      if (key >= SDLK_1 && key <= SDLK_9 && group) {
        const auto tabs = group->FlatTabs();
        const auto index = static_cast<std::size_t>(key - SDLK_1);
        if (index < tabs.size())
          if (const int page = PageOf(tabs[index].get()))
            action.Steps.push_back(PageStep(TLiveStepKind::Select, page));
      }
      break;
  }
  return action;
}

void TLiveKeys::ShowActivePage() {
  TFakeTabGroup* group = FScenario.Host().Model().ActiveGroup();
  // Selecting the active tab again changes nothing in the host and repaints its window.
  FScenario.SelectPage(PageOf(group ? group->ActiveTab() : nullptr));
}

void TLiveKeys::SelectText(const std::string& text) {
  TFakeHost& host = FScenario.Host();
  TFakeTabGroup* group = host.Model().ActiveGroup();
  TFakeTab* tab = group ? group->ActiveTab() : nullptr;
  if (!tab || !tab->Browser()) return;
  ConfigureSmartSearch(host);
  TRect client{};
  Platform().GetClientRect(FScenario.MainWindow(), &client);
  const int pageTop = kStripTop + kStripHeight;
  host.Widgets().SetWidgetRect(u"BrowserAreaWidget", 0, pageTop, client.Width(), client.Height());
  tab->Browser()->Page().Selection = FromUtf8(text);
  // The host reports the end of the selecting drag, in the middle of the page, at its screen point.
  TPoint end{client.Width() / 2, (pageTop + client.Height()) / 2};
  Platform().ClientToScreen(FScenario.MainWindow(), &end);
  host.Events().FireFromHost(u"QxInputHandler.IPC",
                             {{u"Action", u"#LU " + IntToStr(end.X) + u" " + IntToStr(end.Y)}});
}

void TLiveKeys::Apply(const TLiveStep& step) {
  TFakeHost& host = FScenario.Host();
  TFakeTabModel& model = host.Model();
  switch (step.Kind) {
    case TLiveStepKind::AddPages:
      FScenario.AddPages(step.First, step.Last);
      FNextPage = std::max(FNextPage, step.Last + 1);
      break;
    case TLiveStepKind::Select:
      FScenario.SelectPage(step.Page);
      break;
    case TLiveStepKind::Close:
      if (TFakeTab* tab = model.TabByGuid(FScenario.GuidOfPage(step.Page))) model.CloseTab(tab);
      ShowActivePage();
      break;
    case TLiveStepKind::SwitchGroup:
      if (step.Group >= 0 && static_cast<std::size_t>(step.Group) < model.Groups().size())
        model.SwitchGroup(model.Groups()[static_cast<std::size_t>(step.Group)].get());
      ShowActivePage();
      break;
    case TLiveStepKind::OpenCabinet:
      host.SetInCabinet(true);
      break;
    case TLiveStepKind::CloseCabinet:
      host.SetInCabinet(false);
      break;
    case TLiveStepKind::SelectText:
      SelectText(step.Text);
      break;
    default:
      break;
  }
}

}  // namespace qx
