#include "SmartSearchStep.h"

#include <string>

#include "PagePictures.h"
#include "ScenarioDisplay.h"
#include "base/Text.h"
#include "toolkit/Canvas.h"

namespace qx {
namespace {

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

bool SelectTextInPage(TStripScenario& scenario, IScenarioHands& hands, std::u16string_view text) {
  TFakeHost& host = scenario.Host();
  TFakeTabGroup* group = host.Model().ActiveGroup();
  TFakeTab* tab = group ? group->ActiveTab() : nullptr;
  if (!tab || !tab->Browser()) return false;
  ConfigureEngines(host);
  TRect client{};
  Platform().GetClientRect(scenario.MainWindow(), &client);
  const int pageTop = kStripTop + kStripHeight;
  // The host's page area, which the popup keeps inside.
  host.Widgets().SetWidgetRect(u"BrowserAreaWidget", 0, pageTop, client.Width(), client.Height());

  // A drag over a word of the page; the host reports the release with its screen point.
  const TPoint from{kSelectionRect.Left, kSelectionRect.Bottom - 4};
  const TPoint to{kSelectionRect.Right, kSelectionRect.Bottom - 4};
  hands.Press(from);
  hands.Glide(to, kDefaultStride);
  hands.Release(to);
  tab->Browser()->Page().Selection = std::u16string(text);
  ShowPage(scenario, DrawPagePicture(scenario.ActivePage(), client.Width(), client.Height() - pageTop),
           kSelectionRect);
  const TPoint screen = ToScreen(scenario.MainWindow(), to);
  host.Events().FireFromHost(u"QxInputHandler.IPC",
                             {{u"Action", u"#LU " + IntToStr(screen.X) + u" " + IntToStr(screen.Y)}});
  return true;
}

void OpenRequestedSearches(TStripScenario& scenario, std::size_t& served) {
  TFakeHost& host = scenario.Host();
  const auto& searches = host.SearchEngines().Searches();
  for (; served < searches.size(); ++served) {
    TFakeTabGroup* group = host.Model().ActiveGroup();
    const std::u16string keyword = searches[served].Keyword;
    TFakeOpenTab how;
    how.After = group ? group->ActiveTab() : nullptr;
    how.Title = keyword + u" - Search";
    ComPtr<TFakeTab> result = host.Model().OpenTab(kResultUri + keyword, how);
    host.Model().FinishLoading(result.get());
    TRect client{};
    Platform().GetClientRect(scenario.MainWindow(), &client);
    ShowPage(scenario, DrawResultPage(client.Width(), client.Height() - kStripTop - kStripHeight), {});
  }
}

}  // namespace qx
