#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "base/Text.h"
#include "tests/platform/TestWindows.h"

namespace qx::test {
namespace {

using namespace win;

WndProc gOldProc = nullptr;
std::vector<std::uint32_t> gSubclassSeen;

LResult QX_STDCALL SubclassProc(HWnd hwnd, std::uint32_t msg, WParam wParam, LParam lParam) {
  gSubclassSeen.push_back(msg);
  if (msg == WM_USER + 7) return 77;  // answered here, never reaches the old procedure
  return Platform().CallWindowProcW(gOldProc, hwnd, msg, wParam, lParam);
}

LResult QX_STDCALL FailingCreateProc(HWnd hwnd, std::uint32_t msg, WParam wParam, LParam lParam) {
  if (msg == WM_CREATE) return -1;
  return Platform().DefWindowProcW(hwnd, msg, wParam, lParam);
}

LResult QX_STDCALL TransparentProc(HWnd hwnd, std::uint32_t msg, WParam wParam, LParam lParam) {
  if (msg == WM_NCHITTEST) return HTTRANSPARENT;
  return Platform().DefWindowProcW(hwnd, msg, wParam, lParam);
}

struct TSearch {
  HWnd found = nullptr;
  std::u16string className;
  int visited = 0;
};

// The host-window search: this process only, class name ignoring case, stop at the first.
std::int32_t QX_STDCALL SearchProc(HWnd hwnd, LParam lParam) {
  auto* search = reinterpret_cast<TSearch*>(lParam);
  ++search->visited;
  std::uint32_t pid = 0;
  Platform().GetWindowThreadProcessId(hwnd, &pid);
  if (pid != Platform().GetCurrentProcessId()) return 1;
  char16_t buffer[256];
  const std::int32_t n = Platform().GetClassNameW(hwnd, buffer, 256);
  if (SameText(std::u16string(buffer, static_cast<std::size_t>(n)), search->className)) {
    search->found = hwnd;
    return 0;
  }
  return 1;
}

std::int32_t QX_STDCALL CountProc(HWnd, LParam lParam) {
  ++*reinterpret_cast<int*>(lParam);
  return 1;
}

HWnd Bogus() { return reinterpret_cast<HWnd>(static_cast<std::uintptr_t>(0xDEAD0)); }

using WindowTest = PlatformTest;

TEST_F(WindowTest, RegisterClassRefusesTakenNamesIgnoringCase) {
  const std::uint16_t atom = P().RegisterClassW(u"TalvokRDUtilWindow", &RecordingProc);
  EXPECT_NE(atom, 0);
  EXPECT_EQ(P().RegisterClassW(u"talvokrdutilwindow", &SecondProc), 0);
  WndProc proc = nullptr;
  ASSERT_TRUE(P().GetClassInfoW(u"TALVOKRDUTILWINDOW", &proc));
  EXPECT_EQ(proc, &RecordingProc);
  EXPECT_FALSE(P().GetClassInfoW(u"Other", &proc));
  EXPECT_EQ(P().RegisterClassW(nullptr, &RecordingProc), 0);
  EXPECT_EQ(P().RegisterClassW(u"NoProc", nullptr), 0);
}

TEST_F(WindowTest, ClassWithLiveWindowsCannotBeUnregistered) {
  HWnd hwnd = MakeWindow();
  ASSERT_NE(hwnd, nullptr);
  EXPECT_FALSE(P().UnregisterClassW(kTestClass));
  EXPECT_TRUE(P().DestroyWindow(hwnd));
  EXPECT_TRUE(P().UnregisterClassW(kTestClass));
  EXPECT_FALSE(P().UnregisterClassW(kTestClass));
  // Re-registering with another procedure takes effect for new windows.
  ASSERT_NE(P().RegisterClassW(kTestClass, &SecondProc), 0);
  HWnd second = P().CreateWindowExW(0, kTestClass, u"", 0, 0, 0, 1, 1, nullptr, nullptr);
  EXPECT_EQ(P().SendMessageW(second, WM_USER, 0, 0), 1000);
}

TEST_F(WindowTest, CreationSendsCreateMessagesWithTheUserData) {
  P().RegisterClassW(kTestClass, &RecordingProc);
  int payload = 5;
  HWnd hwnd = P().CreateWindowExW(WS_EX_TOOLWINDOW, kTestClass, u"title", WS_POPUP, 3, 4, 30, 40, nullptr, &payload);
  ASSERT_NE(hwnd, nullptr);
  EXPECT_EQ(Messages(hwnd), (std::vector<std::uint32_t>{WM_NCCREATE, WM_CREATE, WM_SIZE, WM_MOVE}));
  // The create structure is only valid during the call; check what was passed then.
  const TRecord& create = Log()[1];
  EXPECT_NE(create.lParam, 0);
  EXPECT_EQ(Log()[2].lParam, MakeLParam(30, 40));
  EXPECT_EQ(Log()[3].lParam, MakeLParam(3, 4));
  EXPECT_EQ(static_cast<std::uint32_t>(P().GetWindowLongW(hwnd, GWL_EXSTYLE)), WS_EX_TOOLWINDOW);
  EXPECT_EQ(static_cast<std::uint32_t>(P().GetWindowLongW(hwnd, GWL_STYLE)), WS_POPUP);
}

LResult QX_STDCALL CreateParamsProc(HWnd hwnd, std::uint32_t msg, WParam wParam, LParam lParam) {
  if (msg == WM_NCCREATE) {
    auto* cs = reinterpret_cast<CreateStructW*>(lParam);
    Platform().SetWindowLongPtrW(hwnd, GWLP_USERDATA, reinterpret_cast<LongPtr>(cs->lpCreateParams));
  }
  return Platform().DefWindowProcW(hwnd, msg, wParam, lParam);
}

TEST_F(WindowTest, CreateParamsReachTheProcedure) {
  P().RegisterClassW(u"Params", &CreateParamsProc);
  int payload = 5;
  HWnd hwnd = P().CreateWindowExW(0, u"Params", u"", 0, 0, 0, 1, 1, nullptr, &payload);
  EXPECT_EQ(P().GetWindowLongPtrW(hwnd, GWLP_USERDATA), reinterpret_cast<LongPtr>(&payload));
}

TEST_F(WindowTest, FailedCreationLeavesNoWindow) {
  P().RegisterClassW(u"Failing", &FailingCreateProc);
  EXPECT_EQ(P().CreateWindowExW(0, u"Failing", u"", 0, 0, 0, 1, 1, nullptr, nullptr), nullptr);
  EXPECT_EQ(Os().WindowCount(), 0u);
  EXPECT_EQ(P().CreateWindowExW(0, u"NoSuchClass", u"", 0, 0, 0, 1, 1, nullptr, nullptr), nullptr);
  // A child needs a parent.
  EXPECT_EQ(MakeWindow(WS_CHILD, nullptr), nullptr);
}

TEST_F(WindowTest, DestroySendsDestroyTopDownAndNcDestroyBottomUp) {
  HWnd parent = MakeWindow();
  HWnd child = MakeWindow(WS_CHILD, parent);
  HWnd grandChild = MakeWindow(WS_CHILD, child);
  Log().clear();
  EXPECT_TRUE(P().DestroyWindow(parent));
  std::vector<std::pair<HWnd, std::uint32_t>> seen;
  for (const TRecord& r : Log()) seen.emplace_back(r.hwnd, r.msg);
  const std::vector<std::pair<HWnd, std::uint32_t>> expected{
      {parent, WM_DESTROY},       {child, WM_DESTROY},       {grandChild, WM_DESTROY},
      {grandChild, WM_NCDESTROY}, {child, WM_NCDESTROY},     {parent, WM_NCDESTROY}};
  EXPECT_EQ(seen, expected);
  EXPECT_FALSE(P().IsWindow(parent));
  EXPECT_FALSE(P().IsWindow(child));
  EXPECT_FALSE(P().IsWindow(grandChild));
  EXPECT_FALSE(P().DestroyWindow(parent));
  EXPECT_EQ(Os().WindowCount(), 0u);
}

TEST_F(WindowTest, DestroyingAnOwnerDestroysOwnedPopups) {
  HWnd owner = MakeWindow();
  HWnd popup = MakeWindow(WS_POPUP, owner);
  EXPECT_EQ(P().GetParent(popup), owner);
  EXPECT_EQ(P().GetWindow(popup, GW_OWNER), owner);
  P().DestroyWindow(owner);
  EXPECT_FALSE(P().IsWindow(popup));
}

TEST_F(WindowTest, SubclassingChainsThroughCallWindowProc) {
  HWnd hwnd = MakeWindow();
  gSubclassSeen.clear();
  gOldProc = reinterpret_cast<WndProc>(
      P().SetWindowLongPtrW(hwnd, GWLP_WNDPROC, reinterpret_cast<LongPtr>(&SubclassProc)));
  EXPECT_EQ(gOldProc, &RecordingProc);
  EXPECT_EQ(P().GetWindowLongPtrW(hwnd, GWLP_WNDPROC), reinterpret_cast<LongPtr>(&SubclassProc));
  Log().clear();
  P().SendMessageW(hwnd, WM_USER + 1, 2, 3);
  EXPECT_EQ(P().SendMessageW(hwnd, WM_USER + 7, 0, 0), 77);
  EXPECT_EQ(gSubclassSeen, (std::vector<std::uint32_t>{WM_USER + 1, WM_USER + 7}));
  ASSERT_EQ(Log().size(), 1u);
  EXPECT_EQ(Log()[0].msg, WM_USER + 1);
  EXPECT_EQ(Log()[0].wParam, 2u);
  EXPECT_EQ(Log()[0].lParam, 3);
  // Restoring puts the original back in front.
  P().SetWindowLongPtrW(hwnd, GWLP_WNDPROC, reinterpret_cast<LongPtr>(gOldProc));
  P().SendMessageW(hwnd, WM_USER + 7, 0, 0);
  EXPECT_EQ(gSubclassSeen.size(), 2u);
  EXPECT_EQ(Log().back().msg, WM_USER + 7);
  // A null procedure is refused.
  EXPECT_EQ(P().SetWindowLongPtrW(hwnd, GWLP_WNDPROC, 0), 0);
  EXPECT_EQ(P().GetWindowLongPtrW(hwnd, GWLP_WNDPROC), reinterpret_cast<LongPtr>(&RecordingProc));
}

TEST_F(WindowTest, ProcedureAddressesNeedThePointerSizedCallWhenWide) {
  HWnd hwnd = MakeWindow();
  if (sizeof(LongPtr) > sizeof(std::int32_t)) {
    EXPECT_EQ(P().GetWindowLongW(hwnd, GWLP_WNDPROC), 0);
    EXPECT_EQ(P().SetWindowLongW(hwnd, GWLP_WNDPROC, 1234), 0);
  }
  EXPECT_EQ(P().GetWindowLongPtrW(hwnd, GWLP_WNDPROC), reinterpret_cast<LongPtr>(&RecordingProc));
  // The default procedure as a class procedure behaves as the default procedure.
  WndProc def = P().DefWindowProcAddress();
  ASSERT_NE(def, nullptr);
  ASSERT_NE(P().RegisterClassW(u"Plain", def), 0);
  HWnd plain = P().CreateWindowExW(0, u"Plain", u"", 0, 0, 0, 1, 1, nullptr, nullptr);
  ASSERT_NE(plain, nullptr);
  EXPECT_EQ(P().SendMessageW(plain, WM_NCCREATE, 0, 0), 1);
  EXPECT_TRUE(P().SetWindowTextW(plain, u"x"));
  EXPECT_EQ(P().GetWindowTextLengthW(plain), 1);
}

TEST_F(WindowTest, StyleBitsAndUserDataRoundTrip) {
  HWnd hwnd = MakeWindow(WS_POPUP | WS_CAPTION);
  std::uint32_t style = static_cast<std::uint32_t>(P().GetWindowLongW(hwnd, GWL_STYLE));
  EXPECT_EQ(style, WS_POPUP | WS_CAPTION);
  style = (style & ~(WS_POPUP | WS_CAPTION)) | WS_CHILD;
  const auto old = static_cast<std::uint32_t>(P().SetWindowLongW(hwnd, GWL_STYLE, static_cast<std::int32_t>(style)));
  EXPECT_EQ(old, WS_POPUP | WS_CAPTION);
  EXPECT_EQ(static_cast<std::uint32_t>(P().GetWindowLongW(hwnd, GWL_STYLE)), WS_CHILD);
  EXPECT_EQ(P().SetWindowLongPtrW(hwnd, GWLP_USERDATA, 1234), 0);
  EXPECT_EQ(P().GetWindowLongPtrW(hwnd, GWLP_USERDATA), 1234);
  EXPECT_EQ(P().SetWindowLongW(hwnd, GWL_EXSTYLE, static_cast<std::int32_t>(WS_EX_LAYERED)), 0);
  EXPECT_EQ(static_cast<std::uint32_t>(P().GetWindowLongW(hwnd, GWL_EXSTYLE)), WS_EX_LAYERED);
  EXPECT_EQ(P().GetWindowLongPtrW(hwnd, 12345), 0);
}

TEST_F(WindowTest, SetParentMovesTheWindowBetweenParents) {
  HWnd host = MakeWindow(WS_VISIBLE, nullptr, {100, 50, 500, 450});
  HWnd other = MakeWindow(WS_VISIBLE, nullptr, {0, 0, 10, 10});
  HWnd form = MakeWindow(WS_POPUP, nullptr, {5, 6, 25, 26});
  EXPECT_EQ(P().GetParent(form), nullptr);
  EXPECT_EQ(P().SetParent(form, host), P().GetDesktopWindow());
  EXPECT_EQ(P().GetParent(form), host);
  EXPECT_TRUE(P().IsChild(host, form));
  EXPECT_EQ(P().GetWindow(host, GW_CHILD), form);
  // Coordinates stay the same numbers, now relative to the new parent.
  TRect r;
  ASSERT_TRUE(P().GetWindowRect(form, &r));
  EXPECT_EQ(r, (TRect{105, 56, 125, 76}));
  EXPECT_EQ(P().SetParent(form, other), host);
  EXPECT_FALSE(P().IsChild(host, form));
  EXPECT_EQ(P().GetWindow(host, GW_CHILD), nullptr);
  EXPECT_EQ(P().SetParent(form, nullptr), other);
  EXPECT_EQ(P().GetParent(form), nullptr);
  // No cycles, no unknown parents.
  HWnd child = MakeWindow(WS_CHILD, form);
  EXPECT_EQ(P().SetParent(form, child), nullptr);
  EXPECT_EQ(P().SetParent(form, form), nullptr);
  EXPECT_EQ(P().SetParent(form, Bogus()), nullptr);
  EXPECT_EQ(P().GetParent(child), form);
}

TEST_F(WindowTest, CoordinatesFollowTheParentChain) {
  HWnd top = MakeWindow(WS_VISIBLE, nullptr, {100, 50, 600, 450});
  HWnd mid = MakeWindow(WS_CHILD | WS_VISIBLE, top, {10, 20, 210, 220});
  HWnd leaf = MakeWindow(WS_CHILD | WS_VISIBLE, mid, {1, 2, 31, 42});
  TRect r;
  ASSERT_TRUE(P().GetWindowRect(leaf, &r));
  EXPECT_EQ(r, (TRect{111, 72, 141, 112}));
  ASSERT_TRUE(P().GetClientRect(leaf, &r));
  EXPECT_EQ(r, (TRect{0, 0, 30, 40}));
  TPoint p{5, 5};
  ASSERT_TRUE(P().ClientToScreen(leaf, &p));
  EXPECT_EQ(p, (TPoint{116, 77}));
  ASSERT_TRUE(P().ScreenToClient(mid, &p));
  EXPECT_EQ(p, (TPoint{6, 7}));
  // Moving an ancestor moves the descendants on screen.
  ASSERT_TRUE(P().MoveWindow(top, 0, 0, 500, 400, true));
  ASSERT_TRUE(P().GetWindowRect(leaf, &r));
  EXPECT_EQ(r, (TRect{11, 22, 41, 62}));
}

TEST_F(WindowTest, SetWindowPosReportsOnlyWhatChanged) {
  HWnd hwnd = MakeWindow(0, nullptr, {0, 0, 10, 10});
  Log().clear();
  ASSERT_TRUE(P().SetWindowPos(hwnd, nullptr, 5, 6, 0, 0, SWP_NOSIZE | SWP_NOZORDER));
  EXPECT_EQ(Messages(hwnd), (std::vector<std::uint32_t>{WM_WINDOWPOSCHANGING, WM_WINDOWPOSCHANGED, WM_MOVE}));
  EXPECT_EQ(Log().back().lParam, MakeLParam(5, 6));
  Log().clear();
  ASSERT_TRUE(P().SetWindowPos(hwnd, nullptr, 0, 0, 20, 30, SWP_NOMOVE | SWP_NOZORDER));
  EXPECT_EQ(Messages(hwnd), (std::vector<std::uint32_t>{WM_WINDOWPOSCHANGING, WM_WINDOWPOSCHANGED, WM_SIZE}));
  EXPECT_EQ(Log().back().lParam, MakeLParam(20, 30));
  Log().clear();
  // Same bounds again: the change notification comes, but no WM_MOVE or WM_SIZE.
  ASSERT_TRUE(P().SetWindowPos(hwnd, nullptr, 5, 6, 20, 30, SWP_NOZORDER));
  EXPECT_EQ(Messages(hwnd), (std::vector<std::uint32_t>{WM_WINDOWPOSCHANGING, WM_WINDOWPOSCHANGED}));
  TRect r;
  P().GetWindowRect(hwnd, &r);
  EXPECT_EQ(r, (TRect{5, 6, 25, 36}));
}

std::uint32_t gPosFlags = 0;
LResult QX_STDCALL PosFlagsProc(HWnd hwnd, std::uint32_t msg, WParam wParam, LParam lParam) {
  if (msg == WM_WINDOWPOSCHANGED) gPosFlags = reinterpret_cast<const WindowPos*>(lParam)->flags;
  return Platform().DefWindowProcW(hwnd, msg, wParam, lParam);
}

TEST_F(WindowTest, ShowWindowAnswersFormerVisibilityAndReportsTheChange) {
  P().RegisterClassW(u"PosFlags", &PosFlagsProc);
  HWnd parent = MakeWindow(WS_VISIBLE);
  HWnd hwnd = P().CreateWindowExW(0, u"PosFlags", u"", WS_CHILD, 0, 0, 5, 5, parent, nullptr);
  EXPECT_FALSE(P().IsWindowVisible(hwnd));
  EXPECT_FALSE(P().ShowWindow(hwnd, SW_SHOWNA));
  EXPECT_TRUE(gPosFlags & SWP_SHOWWINDOW);
  EXPECT_TRUE(P().IsWindowVisible(hwnd));
  EXPECT_TRUE(P().ShowWindow(hwnd, SW_SHOWNA));
  P().ShowWindow(parent, SW_HIDE);
  EXPECT_FALSE(P().IsWindowVisible(hwnd));  // a hidden parent hides its children
  EXPECT_TRUE(P().GetWindowLongW(hwnd, GWL_STYLE) & static_cast<std::int32_t>(WS_VISIBLE));
  gPosFlags = 0;
  EXPECT_TRUE(P().ShowWindow(hwnd, SW_HIDE));
  EXPECT_TRUE(gPosFlags & SWP_HIDEWINDOW);
  EXPECT_FALSE(gPosFlags & SWP_SHOWWINDOW);
}

TEST_F(WindowTest, ZOrderFollowsSetWindowPos) {
  HWnd parent = MakeWindow();
  HWnd a = MakeWindow(WS_CHILD, parent);
  HWnd b = MakeWindow(WS_CHILD, parent);
  HWnd c = MakeWindow(WS_CHILD, parent);
  // New windows go on top.
  EXPECT_EQ(P().GetWindow(parent, GW_CHILD), c);
  EXPECT_EQ(P().GetWindow(c, GW_HWNDNEXT), b);
  EXPECT_EQ(P().GetWindow(a, GW_HWNDPREV), b);
  P().SetWindowPos(c, HWND_BOTTOM, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
  EXPECT_EQ(P().GetWindow(parent, GW_CHILD), b);
  EXPECT_EQ(P().GetWindow(b, GW_HWNDLAST), c);
  P().SetWindowPos(b, a, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
  EXPECT_EQ(P().GetWindow(parent, GW_CHILD), a);
  EXPECT_EQ(P().GetWindow(a, GW_HWNDNEXT), b);
  P().SetWindowPos(c, HWND_TOPMOST, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
  EXPECT_EQ(P().GetWindow(parent, GW_CHILD), c);
  EXPECT_TRUE(static_cast<std::uint32_t>(P().GetWindowLongW(c, GWL_EXSTYLE)) & WS_EX_TOPMOST);
}

TEST_F(WindowTest, FindWindowMatchesClassAndTitleIgnoringCase) {
  P().RegisterClassW(u"MoorLandingWindow", &RecordingProc);
  HWnd landing = P().CreateWindowExW(0, u"MoorLandingWindow", u"Landing", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr);
  HWnd plain = MakeWindow(0, nullptr, {0, 0, 1, 1}, u"Plain");
  HWnd hidden = P().CreateWindowExW(0, u"MoorLandingWindow", u"Msg", 0, 0, 0, 1, 1, HWND_MESSAGE, nullptr);
  ASSERT_NE(hidden, nullptr);
  EXPECT_EQ(P().FindWindowW(u"moorlandingwindow", nullptr), landing);
  EXPECT_EQ(P().FindWindowW(nullptr, u"PLAIN"), plain);
  EXPECT_EQ(P().FindWindowW(u"MoorLandingWindow", u"Plain"), nullptr);
  EXPECT_EQ(P().FindWindowW(nullptr, u"Msg"), nullptr);  // message-only windows are not searched
  EXPECT_EQ(P().FindWindowW(u"Nothing", nullptr), nullptr);
  EXPECT_EQ(P().GetParent(hidden), nullptr);
}

TEST_F(WindowTest, EnumWindowsFindsTheClassInThisProcessOnly) {
  P().RegisterClassW(u"MoorLandingWindow", &RecordingProc);
  HWnd ours = P().CreateWindowExW(0, u"MoorLandingWindow", u"", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr);
  HWnd foreign = P().CreateWindowExW(0, u"MoorLandingWindow", u"", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr);
  MakeWindow();
  ASSERT_TRUE(Os().SetWindowProcessId(foreign, P().GetCurrentProcessId() + 1));
  // The foreign one is in front: the search must skip it.
  EXPECT_EQ(P().GetWindow(ours, GW_HWNDPREV), foreign);
  TSearch search{nullptr, u"MOORLANDINGWINDOW", 0};
  EXPECT_FALSE(P().EnumWindows(&SearchProc, reinterpret_cast<LParam>(&search)));
  EXPECT_EQ(search.found, ours);
  TSearch none{nullptr, u"Absent", 0};
  EXPECT_TRUE(P().EnumWindows(&SearchProc, reinterpret_cast<LParam>(&none)));
  EXPECT_EQ(none.found, nullptr);
  EXPECT_EQ(none.visited, 3);
  int count = 0;
  P().CreateWindowExW(0, kTestClass, u"", 0, 0, 0, 1, 1, HWND_MESSAGE, nullptr);
  EXPECT_TRUE(P().EnumWindows(&CountProc, reinterpret_cast<LParam>(&count)));
  EXPECT_EQ(count, 3);
  EXPECT_FALSE(P().EnumWindows(nullptr, 0));
}

TEST_F(WindowTest, ClassNameAndTextCopyWithTermination) {
  HWnd hwnd = MakeWindow(0, nullptr, {0, 0, 1, 1}, u"Hello");
  char16_t buffer[4] = {u'x', u'x', u'x', u'x'};
  EXPECT_EQ(P().GetClassNameW(hwnd, buffer, 4), 3);
  EXPECT_EQ(std::u16string(buffer), u"QxT");
  EXPECT_EQ(P().GetWindowTextLengthW(hwnd), 5);
  char16_t text[16];
  EXPECT_EQ(P().GetWindowTextW(hwnd, text, 16), 5);
  EXPECT_EQ(std::u16string(text), u"Hello");
  EXPECT_TRUE(P().SetWindowTextW(hwnd, u"Bye"));
  EXPECT_EQ(Log().back().msg, WM_SETTEXT);
  EXPECT_EQ(P().GetWindowTextW(hwnd, text, 16), 3);
  EXPECT_EQ(std::u16string(text), u"Bye");
  EXPECT_EQ(P().GetClassNameW(hwnd, nullptr, 4), 0);
  EXPECT_EQ(P().GetClassNameW(hwnd, buffer, 0), 0);
}

TEST_F(WindowTest, WindowFromPointSkipsTransparentWindows) {
  HWnd top = MakeWindow(WS_VISIBLE, nullptr, {0, 0, 100, 100});
  HWnd child = MakeWindow(WS_CHILD | WS_VISIBLE, top, {10, 10, 50, 50});
  EXPECT_EQ(P().WindowFromPoint({20, 20}), child);
  EXPECT_EQ(P().WindowFromPoint({60, 60}), top);
  EXPECT_EQ(P().WindowFromPoint({500, 500}), P().GetDesktopWindow());
  P().SetWindowLongPtrW(child, GWLP_WNDPROC, reinterpret_cast<LongPtr>(&TransparentProc));
  EXPECT_EQ(P().WindowFromPoint({20, 20}), top);
  P().ShowWindow(top, SW_HIDE);
  EXPECT_EQ(P().WindowFromPoint({20, 20}), P().GetDesktopWindow());
}

TEST_F(WindowTest, UnknownHandlesAnswerFailure) {
  HWnd bogus = Bogus();
  HWnd gone = MakeWindow();
  P().DestroyWindow(gone);
  for (HWnd h : {bogus, gone, static_cast<HWnd>(nullptr)}) {
    TRect r{1, 2, 3, 4};
    TPoint p{1, 1};
    char16_t buffer[8] = {u'a', 0};
    std::uint32_t pid = 77;
    EXPECT_FALSE(P().IsWindow(h));
    EXPECT_FALSE(P().DestroyWindow(h));
    EXPECT_EQ(P().GetWindowLongPtrW(h, GWL_STYLE), 0);
    EXPECT_EQ(P().SetWindowLongPtrW(h, GWLP_USERDATA, 5), 0);
    EXPECT_EQ(P().GetWindowLongW(h, GWL_STYLE), 0);
    EXPECT_EQ(P().SetParent(h, nullptr), nullptr);
    EXPECT_EQ(P().GetParent(h), nullptr);
    EXPECT_EQ(P().GetWindow(h, GW_CHILD), nullptr);
    EXPECT_FALSE(P().SetWindowPos(h, nullptr, 0, 0, 1, 1, 0));
    EXPECT_FALSE(P().MoveWindow(h, 0, 0, 1, 1, true));
    EXPECT_FALSE(P().GetWindowRect(h, &r));
    EXPECT_EQ(r, (TRect{1, 2, 3, 4}));
    EXPECT_FALSE(P().GetClientRect(h, &r));
    EXPECT_FALSE(P().ShowWindow(h, SW_SHOW));
    EXPECT_FALSE(P().IsWindowVisible(h));
    EXPECT_FALSE(P().ClientToScreen(h, &p));
    EXPECT_FALSE(P().ScreenToClient(h, &p));
    EXPECT_FALSE(P().InvalidateRect(h == nullptr ? bogus : h, nullptr, false));
    EXPECT_FALSE(P().UpdateWindow(h));
    EXPECT_EQ(P().GetClassNameW(h, buffer, 8), 0);
    EXPECT_EQ(P().GetWindowTextW(h, buffer, 8), 0);
    EXPECT_FALSE(P().SetWindowTextW(h, u"x"));
    EXPECT_EQ(P().GetWindowThreadProcessId(h, &pid), 0u);
    EXPECT_EQ(pid, 77u);
    EXPECT_EQ(P().SendMessageW(h, WM_USER, 0, 0), 0);
    EXPECT_EQ(P().SetTimer(h, 1, 10), 0u);
    EXPECT_FALSE(P().KillTimer(h, 1));
    EXPECT_EQ(P().SetCapture(h), nullptr);
    EXPECT_EQ(P().SetFocus(h), nullptr);
    EXPECT_FALSE(P().IsChild(h, h));
    EXPECT_EQ(Os().InjectMouse(h, WM_LBUTTONDOWN, 1, 1, 0), 0);
    EXPECT_FALSE(Os().SetWindowSurface(h, 0, 0, nullptr));
  }
  EXPECT_FALSE(P().PostMessageW(bogus, WM_USER, 0, 0));
  EXPECT_FALSE(P().PostMessageW(gone, WM_USER, 0, 0));
  Msg msg;
  EXPECT_EQ(P().GetMessageW(&msg, bogus, 0, 0), -1);
  EXPECT_EQ(P().GetMessageW(nullptr, nullptr, 0, 0), -1);
  EXPECT_FALSE(P().PeekMessageW(nullptr, nullptr, 0, 0, PM_REMOVE));
  EXPECT_EQ(P().DispatchMessageW(nullptr), 0);
  EXPECT_EQ(P().CallWindowProcW(nullptr, bogus, WM_USER, 0, 0), 0);
  EXPECT_FALSE(P().DestroyWindow(P().GetDesktopWindow()));
}

}  // namespace
}  // namespace qx::test
