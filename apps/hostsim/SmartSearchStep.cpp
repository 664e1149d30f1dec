#include "SmartSearchStep.h"

#include <string>

#include "InputPath.h"
#include "PagePictures.h"
#include "ScenarioDisplay.h"
#include "base/Text.h"
#include "toolkit/Canvas.h"

namespace qx {
namespace {

constexpr char16_t kSelection[] = u"lighthouse";
constexpr char16_t kResultUri[] = u"https://search.example/?q=";
// The selection in the page's client coordinates: a word of its heading, high enough for
// the popup to fit below it.
constexpr TRect kSelectionRect{300, 88, 380, 104};

// Smart search on, a default engine, two engines with a button each (their icons are
// the pages' site icons) and a third that only the engine menu offers.
void ConfigureEngines(TFakeHost& host) {
  TFakePropertyService& properties = host.Properties();
  properties.Set(u"client.SearchBarSetting-ShowSmartSearch", u"true");
  properties.Set(u"client.SearchBarSetting-SmartSearchCustomButtonCount", u"2");
  const char16_t* engines[] = {
      uR"({"ActionName":"QuillmarSearch","Request":"https://search.example/?q={searchTerms}"})",
      uR"({"ActionName":"news","Request":"https://page2.example/?q={searchTerms}","Guid":"{5A0F0002-5E00-4000-8000-000000000002}","Name":"News","Icon":"https://page2.example/"})",
      uR"({"ActionName":"maps","Request":"https://page3.example/?q={searchTerms}","Guid":"{5A0F0003-5E00-4000-8000-000000000003}","Name":"Maps","Icon":"https://page3.example/"})",
      uR"({"ActionName":"wiki","Request":"https://page4.example/?q={searchTerms}","Guid":"{5A0F0004-5E00-4000-8000-000000000004}","Name":"Wiki","Icon":"https://page4.example/"})",
  };
  // The host's language file has the popup's two texts.
  host.Translator().SetTranslation(u"検索", u"検索");
  host.Translator().SetTranslation(u"このサイトで検索", u"このサイトで検索");
  properties.Set(u"client.SearchBarSetting-Count", IntToStr(static_cast<int>(std::size(engines))));
  for (std::size_t i = 0; i < std::size(engines); ++i)
    properties.Set(u"client.SearchBarSetting-Item" + IntToStr(static_cast<int>(i)), engines[i]);
}

// The host window with page over its page area; mark, if not empty, is drawn as a selection.
void ShowPage(TStripScenario& scenario, std::unique_ptr<TBitmap> page, const TRect& mark) {
  TRect client{};
  Platform().GetClientRect(scenario.MainWindow(), &client);
  const int pageTop = kStripTop + kStripHeight;
  if (mark.Width() > 0) {
    TCanvas& canvas = page->Canvas();
    canvas.BeginScene();
    canvas.FillRect(TRectF(static_cast<float>(mark.Left), static_cast<float>(mark.Top - pageTop),
                           static_cast<float>(mark.Right), static_cast<float>(mark.Bottom - pageTop)),
                    0xFF3390FFu, 0.6f);
    canvas.EndScene();
  }
  ShowWindowPicture(scenario.MainWindow(),
                    *DrawHostWindow(client.Width(), client.Height(), kStripTop, kStripHeight, page.get()));
}

// A result page: white, with grey lines where the results stand.
std::unique_ptr<TBitmap> DrawResultPage(int width, int height) {
  auto page = std::make_unique<TBitmap>(width, height);
  page->Clear(0xFFFFFFFFu);
  TCanvas& canvas = page->Canvas();
  canvas.BeginScene();
  for (int line = 0; line < 4; ++line) {
    const auto top = static_cast<float>(14 + line * 24);
    canvas.FillRect(TRectF(24, top, 240, top + 6), 0xFF1A0DABu, 1);
    canvas.FillRect(TRectF(24, top + 10, 420, top + 14), 0xFFBDBDBDu, 1);
  }
  canvas.EndScene();
  return page;
}

TPoint ToScreen(HWnd window, TPoint client) {
  Platform().ClientToScreen(window, &client);
  return client;
}

}  // namespace

void ConfigureSmartSearch(TFakeHost& host) { ConfigureEngines(host); }

void PlaySmartSearchSteps(TStripScenario& scenario, const TSnap& snap) {
  TFakeHost& host = scenario.Host();
  TFakeTabGroup* group = host.Model().ActiveGroup();
  TFakeTab* tab = group ? group->ActiveTab() : nullptr;
  if (!tab || !tab->Browser()) return;
  ConfigureEngines(host);
  TRect client{};
  Platform().GetClientRect(scenario.MainWindow(), &client);
  const int pageTop = kStripTop + kStripHeight;
  // The host's page area, which the popup keeps inside.
  host.Widgets().SetWidgetRect(u"BrowserAreaWidget", 0, pageTop, client.Width(), client.Height());

  // A drag over a word of the page; the host reports the release with its screen point.
  const HWnd main = scenario.MainWindow();
  TInputPath hands(main);
  const TPoint from = ToScreen(main, {kSelectionRect.Left, kSelectionRect.Bottom - 4});
  const TPoint to = ToScreen(main, {kSelectionRect.Right, kSelectionRect.Bottom - 4});
  hands.Press(from);
  hands.Glide(to);
  hands.Release(to);
  tab->Browser()->Page().Selection = kSelection;
  ShowPage(scenario, DrawPagePicture(scenario.ActivePage(), client.Width(), client.Height() - pageTop),
           kSelectionRect);
  host.Events().FireFromHost(u"QxInputHandler.IPC",
                             {{u"Action", u"#LU " + IntToStr(to.X) + u" " + IntToStr(to.Y)}});
  snap("smart-search", "a word selected in the page: the smart search popup comes up beside it");

  const HWnd popup = Platform().FindWindowW(nullptr, u"SmartSearch");
  TRect rect{};
  if (!popup || !Platform().IsWindowVisible(popup) || !Platform().GetWindowRect(popup, &rect)) return;
  // The default search button: the wide one at the popup's left, 14 in and 30 down.
  const TPoint button{rect.Left + 14 + 40, rect.Top + 30 + 15};
  const std::size_t searchesBefore = host.SearchEngines().Searches().size();
  hands.Glide(button);
  hands.Wait(100);
  hands.Press(button);
  hands.Release(button);
  // The host runs the search the module asked for and opens its result in a new tab.
  if (host.SearchEngines().Searches().size() > searchesBefore) {
    const std::u16string keyword = host.SearchEngines().Searches().back().Keyword;
    TFakeOpenTab how;
    how.After = tab;
    how.Title = keyword + u" - Search";
    ComPtr<TFakeTab> result = host.Model().OpenTab(kResultUri + keyword, how);
    host.Model().FinishLoading(result.get());
    ShowPage(scenario, DrawResultPage(client.Width(), client.Height() - pageTop), {});
  }
  snap("searched", "the default search clicked: the popup goes and the result opens in a new tab");

  // A wheel turn in the page hides a popup that is still up.
  if (Platform().IsWindowVisible(popup))
    host.Events().FireFromHost(u"QxInputHandler.IPC", {{u"Action", u"#WH"}});
}

}  // namespace qx
