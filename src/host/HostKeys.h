#pragma once

#include <string_view>

namespace qx {

namespace prop_key {
inline constexpr std::u16string_view BookmarkPass3Pass = u"client.BookmarkV3-Pass3Pass";
inline constexpr std::u16string_view BookmarkPass3UserName = u"client.BookmarkV3-Pass3UserName";
inline constexpr std::u16string_view DefaultBrowserGuid = u"client.ClientSetting-DefaultBrowserGuid";
inline constexpr std::u16string_view UseTalvokConnect = u"client.TalvokPass-UseTalvokConnect";
inline constexpr std::u16string_view TabLockWithNavigationLock = u"client.TabDockSetting-TabLockWithNavigationLock";
inline constexpr std::u16string_view FullScreenToolbarPinned = u"client.Window-FullScreenToolbarPinned";
inline constexpr std::u16string_view TabLeftDblClick = u"client.TabDockSetting-LeftDblClick";
inline constexpr std::u16string_view TabRightClick = u"client.TabDockSetting-RightClick";
inline constexpr std::u16string_view TabWheelClick = u"client.TabDockSetting-WheelClick";
inline constexpr std::u16string_view CabinetStartupScreen = u"client.Cabinet-StartupScreen";
inline constexpr std::u16string_view SearchBarCount = u"client.SearchBarSetting-Count";
inline constexpr std::u16string_view SearchBarDefaultEngineAction = u"client.SearchBarSetting-DefaultEngineAction";
inline constexpr std::u16string_view SearchBarItem = u"client.SearchBarSetting-Item";
inline constexpr std::u16string_view SearchBarShowSmartSearch = u"client.SearchBarSetting-ShowSmartSearch";
inline constexpr std::u16string_view SearchBarSmartSearchCustomButtonCount =
    u"client.SearchBarSetting-SmartSearchCustomButtonCount";
inline constexpr std::u16string_view SmartSearchDefaultSearch = u"client.SmartSearch-DefaultSearch";
inline constexpr std::u16string_view SmartSearchMenuSearch = u"client.SmartSearch-MenuSearch";
inline constexpr std::u16string_view SmartSearchSearch = u"client.SmartSearch-Search";
inline constexpr std::u16string_view SmartSearchSiteSearch = u"client.SmartSearch-SiteSearch";
inline constexpr std::u16string_view ProductName = u"app.product.name";
inline constexpr std::u16string_view LocaleDisplayName = u"app.locale.displayname";
}  // namespace prop_key

namespace dir_key {
inline constexpr std::u16string_view UserSettingClient = u"user.setting.client";
inline constexpr std::u16string_view UserSettingModules = u"user.setting.modules";
inline constexpr std::u16string_view UserSettingBase = u"user.setting.base";
inline constexpr std::u16string_view UserTemp = u"user.temp";
inline constexpr std::u16string_view ClientPlugins = u"client.plugins";
inline constexpr std::u16string_view ClientExec = u"client.exec";
inline constexpr std::u16string_view ClientScripts = u"client.scripts";
inline constexpr std::u16string_view Langs = u"rc.langs";
inline constexpr std::u16string_view Sounds = u"rc.sounds";
inline constexpr std::u16string_view CurrentSkin = u"rc.skins.current";
inline constexpr std::u16string_view DefaultSkin = u"rc.skins.default";
inline constexpr std::u16string_view TabJson = u"file.tab.json";
inline constexpr std::u16string_view Favorite3Json = u"file.favorite3.json";
}  // namespace dir_key

namespace tab_key {
inline constexpr std::u16string_view Uri = u"uri";
inline constexpr std::u16string_view Title = u"title";
inline constexpr std::u16string_view CreateTime = u"create-time";
inline constexpr std::u16string_view StatusNaviLock = u"status-navi-lock";
inline constexpr std::u16string_view InitBrowserGuid = u"init-browser-guid";
inline constexpr std::u16string_view TabId = u"tab-id";
}  // namespace tab_key

namespace browser_key {
inline constexpr std::u16string_view Uri = u"uri";
inline constexpr std::u16string_view Title = u"title";
inline constexpr std::u16string_view EngineId = u"engine-id";
inline constexpr std::u16string_view BrowserId = u"browser-id";
inline constexpr std::u16string_view WindowHandle = u"window-handle";
inline constexpr std::u16string_view ZoomRatio = u"zoom-ratio";
inline constexpr std::u16string_view BackHistory = u"__back-history";
inline constexpr std::u16string_view WebBrowser2 = u"__iwebbrowser2";
}  // namespace browser_key

namespace group_key {
inline constexpr std::u16string_view Private = u"private";
}  // namespace group_key

namespace page_key {
inline constexpr std::u16string_view Security = u"client.Security";
}  // namespace page_key

namespace event_key {
inline constexpr std::u16string_view Id = u"id";
inline constexpr std::u16string_view Event = u"event";
inline constexpr std::u16string_view Timing = u"timing";
inline constexpr std::u16string_view TabId = u"tab-id";
inline constexpr std::u16string_view NewTabId = u"new-tab-id";
inline constexpr std::u16string_view UriId = u"uri-id";
inline constexpr std::u16string_view Result = u"result";
inline constexpr std::u16string_view MenuId = u"menu-id";
inline constexpr std::u16string_view MenuParentId = u"menu-parent-id";
inline constexpr std::u16string_view MenuWindowHandle = u"menu-window-handle";
}  // namespace event_key

namespace tab_event {
inline constexpr std::u16string_view SetActiveTab = u"SetActiveTab";
inline constexpr std::u16string_view AddTab = u"AddTab";
inline constexpr std::u16string_view InsertTab = u"InsertTab";
inline constexpr std::u16string_view RemoveTab = u"RemoveTab";
inline constexpr std::u16string_view SetTabIndex = u"SetTabIndex";
inline constexpr std::u16string_view SwapTab = u"SwapTab";
inline constexpr std::u16string_view RemoveTabSection = u"RemoveTabSection";
inline constexpr std::u16string_view SetCurrentGroup = u"SetCurrentGroup";
inline constexpr std::u16string_view SetProperty = u"SetProperty";
}  // namespace tab_event

namespace open_key {
inline constexpr std::u16string_view New = u"new";
inline constexpr std::u16string_view Activate = u"activate";
inline constexpr std::u16string_view ReuseBlank = u"reuseblank";
inline constexpr std::u16string_view NoBrowser = u"nobrowser";
inline constexpr std::u16string_view EffectKeyboard = u"effect-keyboard";
inline constexpr std::u16string_view TabGuid = u"tab-guid";
inline constexpr std::u16string_view FromTabGuid = u"from-tab-guid";
inline constexpr std::u16string_view BrowserGuid = u"browser-guid";
inline constexpr std::u16string_view Post = u"post";
inline constexpr std::u16string_view Individual = u"individual";
}  // namespace open_key

namespace script_key {
inline constexpr std::u16string_view Code = u"code";
inline constexpr std::u16string_view ScriptId = u"script-id";
inline constexpr std::u16string_view ForceEnableScript = u"force-enable-script";
inline constexpr std::u16string_view BrowserId = u"browser-id";
inline constexpr std::u16string_view Result = u"result";
}  // namespace script_key

// "engine-id" of a browser of the Chromium class.
inline constexpr std::u16string_view kChromiumEngineClassGuid = u"{5CF1B41A-5C79-4b9b-AA10-F28040264CFF}";

namespace widget_name {
inline constexpr std::u16string_view MainWindow = u"MainWindow";
inline constexpr std::u16string_view BrowserAreaWidget = u"BrowserAreaWidget";
inline constexpr std::u16string_view TitleMenuWidget = u"TitleMenuWidget";
}  // namespace widget_name

// Classes of the bars that stand above the strip in the host's rebar.
namespace rebar_widget {
inline constexpr std::u16string_view BookmarkBar = u"BookmarkBarWidget";
inline constexpr std::u16string_view CabinetBar = u"CabinetBarWidget";
}  // namespace rebar_widget

// Ids under which the module registers its popup menus with the host.
namespace popup_menu_id {
inline constexpr std::u16string_view NewTab = u"newtab-popup-menu";
inline constexpr std::u16string_view TabGroupbar = u"tabgroupbar-popup-menu";
}  // namespace popup_menu_id

}  // namespace qx
