#pragma once

#include <array>
#include <string_view>

namespace qx {

// Event numbers index this table; the wrappers accept a number or the id text.
inline constexpr std::array<std::u16string_view, 24> kV3EventIds{
    u"Option.Open",
    u"Option.Apply",
    u"Option.Closed",
    u"Option.Changed",
    u"Client.Loaded",
    u"Client.Visible",
    u"Client.Initialize",
    u"Client.Initialized",
    u"Client.Finalize",
    u"XmlWidget.MenuHide",
    u"TabGroup.Changed",
    u"Browser.ExecuteJavascript",
    u"TalvokPass.Logout",
    u"TalvokPass.Login",
    u"Browser.Changed",
    u"RssFeed.EnterRegist",
    u"RssFeed.ExecuteRegist",
    u"HeadlineOption.Apply",
    u"TabFocusManager.Notify.SetFocusedTab",
    u"BrowserExternalAPI.talvokPrivateAPI",
    u"Windows.SysColorChange",
    u"Windows.DwmColorizationColorChanged",
    u"FaviconManager.Changed",
    u"Hook.IDropTarget",
};

enum V3Event : int {
  kEvOptionOpen = 0,
  kEvOptionApply = 1,
  kEvOptionClosed = 2,
  kEvOptionChanged = 3,
  kEvClientLoaded = 4,
  kEvClientVisible = 5,
  kEvClientInitialize = 6,
  kEvClientInitialized = 7,
  kEvClientFinalize = 8,
  kEvXmlWidgetMenuHide = 9,
  kEvTabGroupChanged = 10,
  kEvBrowserExecuteJavascript = 11,
  kEvTalvokPassLogout = 12,
  kEvTalvokPassLogin = 13,
  kEvBrowserChanged = 14,
  kEvRssFeedEnterRegist = 15,
  kEvRssFeedExecuteRegist = 16,
  kEvHeadlineOptionApply = 17,
  kEvTabFocusManagerNotifySetFocusedTab = 18,
  kEvBrowserExternalApiPrivate = 19,
  kEvWindowsSysColorChange = 20,
  kEvWindowsDwmColorizationColorChanged = 21,
  kEvFaviconManagerChanged = 22,
  kEvHookIDropTarget = 23,
};

// Empty for a number outside the table.
constexpr std::u16string_view V3EventId(int number) {
  return number >= 0 && number < static_cast<int>(kV3EventIds.size()) ? kV3EventIds[static_cast<std::size_t>(number)]
                                                                      : std::u16string_view{};
}

}  // namespace qx
