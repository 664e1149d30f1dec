// The places where the real system and the emulation could part ways: message order,
// capture loss, real timers, DPI, clipboard formats and file names beyond ASCII.

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <filesystem>
#include <fstream>
#include <set>
#include <utility>
#include <vector>

#include "platform/Platform.h"
#include "runtime/OleDnDUtils.h"
#include "toolkit/Bitmap.h"
#include "toolkit/Canvas.h"

#ifndef NOMINMAX
#define NOMINMAX
#endif
#define WIN32_LEAN_AND_MEAN
#include <windows.h>

namespace qx::test {
namespace {

using namespace win;

std::vector<std::pair<HWnd, std::uint32_t>>& Seen() {
  static std::vector<std::pair<HWnd, std::uint32_t>> seen;
  return seen;
}
std::vector<LParam>& SeenLParams() {
  static std::vector<LParam> lParams;
  return lParams;
}

LResult QX_STDCALL Recording(HWnd hwnd, std::uint32_t msg, WParam wParam, LParam lParam) {
  Seen().emplace_back(hwnd, msg);
  SeenLParams().push_back(lParam);
  return Platform().DefWindowProcW(hwnd, msg, wParam, lParam);
}

constexpr char16_t kClass[] = u"QxWin32Recording";

class Win32Platform : public ::testing::Test {
 protected:
  Win32Platform() {
    Seen().clear();
    SeenLParams().clear();
    if (!P().GetClassInfoW(kClass, nullptr)) P().RegisterClassW(kClass, &Recording);
  }
  ~Win32Platform() override {
    for (HWnd hwnd : FWindows)
      if (P().IsWindow(hwnd)) P().DestroyWindow(hwnd);
  }
  IPlatform& P() { return Platform(); }
  HWnd Make(std::uint32_t style, HWnd parent, TRect r = {3, 4, 33, 44}) {
    HWnd hwnd =
        P().CreateWindowExW(0, kClass, u"", style, r.Left, r.Top, r.Width(), r.Height(), parent, nullptr);
    if (!parent) FWindows.push_back(hwnd);
    return hwnd;
  }
  // The messages of one window among the ones asked for, in the order they came.
  static std::vector<std::uint32_t> Only(HWnd hwnd, std::initializer_list<std::uint32_t> wanted) {
    std::vector<std::uint32_t> out;
    for (const auto& [who, msg] : Seen())
      if (who == hwnd && std::find(wanted.begin(), wanted.end(), msg) != wanted.end()) out.push_back(msg);
    return out;
  }

 private:
  std::vector<HWnd> FWindows;
};

TEST_F(Win32Platform, CreationSendsTheEmulatedMessagesInTheSameOrder) {
  HWnd parent = Make(WS_POPUP, nullptr, {0, 0, 200, 200});
  Seen().clear();
  SeenLParams().clear();
  HWnd child = Make(WS_CHILD, parent);
  ASSERT_NE(child, nullptr);
  // The system sends more (WM_NCCALCSIZE, ...), but the ones the emulation sends come in
  // its order, with the size and place the emulation reports.
  EXPECT_EQ(Only(child, {WM_NCCREATE, WM_CREATE, WM_SIZE, WM_MOVE}),
            (std::vector<std::uint32_t>{WM_NCCREATE, WM_CREATE, WM_SIZE, WM_MOVE}));
  for (std::size_t i = 0; i < Seen().size(); ++i) {
    if (Seen()[i].second == WM_SIZE) {
      EXPECT_EQ(SeenLParams()[i], MakeLParam(30, 40));
    }
    if (Seen()[i].second == WM_MOVE) {
      EXPECT_EQ(SeenLParams()[i], MakeLParam(3, 4));
    }
  }
  EXPECT_EQ(P().GetParent(child), parent);
}

TEST_F(Win32Platform, DestroySendsDestroyTopDownAndNcDestroyBottomUp) {
  HWnd parent = Make(WS_POPUP, nullptr);
  HWnd child = Make(WS_CHILD, parent);
  HWnd grandChild = Make(WS_CHILD, child);
  Seen().clear();
  ASSERT_TRUE(P().DestroyWindow(parent));
  std::vector<std::pair<HWnd, std::uint32_t>> order;
  for (const auto& entry : Seen())
    if (entry.second == WM_DESTROY || entry.second == WM_NCDESTROY) order.push_back(entry);
  const std::vector<std::pair<HWnd, std::uint32_t>> expected{
      {parent, WM_DESTROY},       {child, WM_DESTROY},   {grandChild, WM_DESTROY},
      {grandChild, WM_NCDESTROY}, {child, WM_NCDESTROY}, {parent, WM_NCDESTROY}};
  EXPECT_EQ(order, expected);
  EXPECT_FALSE(P().IsWindow(child));
  EXPECT_FALSE(P().DestroyWindow(parent));
}

TEST_F(Win32Platform, CaptureLossIsToldToTheWindowThatHadIt) {
  HWnd first = Make(WS_POPUP | WS_VISIBLE, nullptr);
  HWnd second = Make(WS_POPUP | WS_VISIBLE, nullptr);
  P().SetCapture(first);
  ASSERT_EQ(P().GetCapture(), first);
  Seen().clear();
  SeenLParams().clear();
  P().SetCapture(second);
  ASSERT_EQ(Only(first, {WM_CAPTURECHANGED}).size(), 1u);
  for (std::size_t i = 0; i < Seen().size(); ++i)
    if (Seen()[i].second == WM_CAPTURECHANGED) {
      EXPECT_EQ(SeenLParams()[i], reinterpret_cast<LParam>(second));
    }
  Seen().clear();
  SeenLParams().clear();
  EXPECT_TRUE(P().ReleaseCapture());
  EXPECT_EQ(P().GetCapture(), nullptr);
  ASSERT_EQ(Only(second, {WM_CAPTURECHANGED}).size(), 1u);
  EXPECT_EQ(SeenLParams().back(), 0);
}

TEST_F(Win32Platform, WindowTimerNeverTicksFasterThanAsked) {
  HWnd hwnd = Make(WS_POPUP, nullptr);
  ASSERT_EQ(P().SetTimer(hwnd, 9, 10), 9u);
  const std::uint32_t start = P().timeGetTime();
  int ticks = 0;
  Msg msg;
  while (ticks < 5 && P().GetMessageW(&msg, hwnd, 0, 0) > 0) {
    if (msg.message == WM_TIMER && msg.wParam == 9) ++ticks;
    P().DispatchMessageW(&msg);
  }
  const std::uint32_t elapsed = P().timeGetTime() - start;
  EXPECT_TRUE(P().KillTimer(hwnd, 9));
  EXPECT_FALSE(P().KillTimer(hwnd, 9));
  EXPECT_EQ(ticks, 5);
  // The system's timer granularity may stretch a period, never shorten five of them.
  EXPECT_GE(elapsed, 40u);
  EXPECT_LT(elapsed, 5000u);
}

struct TMmState {
  std::atomic<int> Ticks{0};
  std::atomic<std::uint32_t> Thread{0};
  HANDLE Done = nullptr;
};

void QX_STDCALL MmTick(std::uint32_t, std::uint32_t, ULongPtr user, ULongPtr, ULongPtr) {
  auto* state = reinterpret_cast<TMmState*>(user);
  state->Thread = Platform().GetCurrentThreadId();
  if (++state->Ticks == 10) SetEvent(state->Done);
}

TEST_F(Win32Platform, MultimediaTimerTicksAtTenMillisecondsOnItsOwnThread) {
  TMmState state;
  state.Done = CreateEventW(nullptr, TRUE, FALSE, nullptr);
  const std::uint32_t start = P().timeGetTime();
  const std::uint32_t id = P().timeSetEvent(10, 1, &MmTick, reinterpret_cast<ULongPtr>(&state),
                                            TIME_PERIODIC | TIME_CALLBACK_FUNCTION);
  ASSERT_NE(id, 0u);
  const DWORD waited = WaitForSingleObject(state.Done, 5000);
  const std::uint32_t elapsed = P().timeGetTime() - start;
  EXPECT_EQ(P().timeKillEvent(id), 0u);
  // Once killed the id is gone: the module's second kill on unload must be harmless.
  EXPECT_NE(P().timeKillEvent(id), 0u);
  const int afterKill = state.Ticks;
  // No callback may come after the kill answered, or an unloaded module would be called.
  WaitForSingleObject(GetCurrentProcess(), 40);
  EXPECT_EQ(state.Ticks, afterKill);
  CloseHandle(state.Done);
  ASSERT_EQ(waited, WAIT_OBJECT_0);
  EXPECT_NE(state.Thread.load(), P().GetCurrentThreadId());
  EXPECT_GE(elapsed, 90u);
  EXPECT_LT(elapsed, 2000u);
}

TEST_F(Win32Platform, ScreenDpiIsAnOrdinaryValue) {
  // The strip scales its fonts by this; a failed query answers 0 and would hide the text.
  const std::int32_t dpi = P().GetLogPixelsY();
  EXPECT_GE(dpi, 72);
  EXPECT_LE(dpi, 480);
  EXPECT_GT(P().GetSystemMetrics(SM_CXDOUBLECLK), 0);
}

TEST_F(Win32Platform, DropPathFormatsAreRegisteredOnceWhateverTheCase) {
  std::set<std::uint32_t> ids;
  std::size_t registered = 0;
  for (const TClipboardFormatName& entry : ClipboardFormatNames()) {
    const std::uint32_t id = ClipboardFormatOf(entry.Name);
    if (entry.Id) {
      EXPECT_EQ(id, entry.Id);
      continue;
    }
    ++registered;
    EXPECT_GE(id, 0xC000u) << std::string(entry.Name.begin(), entry.Name.end());
    ids.insert(id);
    std::u16string upper(entry.Name);
    for (char16_t& c : upper)
      if (c >= u'a' && c <= u'z') c = static_cast<char16_t>(c - 32);
    EXPECT_EQ(P().RegisterClipboardFormatW(upper.c_str()), id);
  }
  EXPECT_EQ(ids.size(), registered);
  EXPECT_EQ(P().RegisterClipboardFormatW(u""), 0u);
}

TEST_F(Win32Platform, PicturesKeepJapaneseFileNames) {
  namespace fs = std::filesystem;
  const fs::path folder = fs::temp_directory_path() / fs::path(u"qx-\u30b5\u30e0\u30cd\u30a4\u30eb");
  std::error_code error;
  fs::remove_all(folder, error);
  ASSERT_TRUE(fs::create_directories(folder));
  const fs::path file = folder / fs::path(u"\u65e5\u672c\u8a9e\u306e\u30bf\u30d6.png");
  TBitmap picture(4, 3);
  picture.Clear(0xFF336699u);
  picture.SaveToFile(file);
  ASSERT_TRUE(fs::exists(file));
  TBitmap loaded(1, 1);
  loaded.LoadFromFile(file);
  EXPECT_EQ(loaded.Width(), 4);
  EXPECT_EQ(loaded.Height(), 3);
  TBitmapData data;
  ASSERT_TRUE(loaded.Map(TMapAccess::Read, data));
  EXPECT_EQ(data.Line(2)[3], 0xFF336699u);
  loaded.Unmap(data);
  std::size_t found = 0;
  for (const fs::directory_entry& entry : fs::directory_iterator(folder))
    found += entry.path().filename() == file.filename();
  EXPECT_EQ(found, 1u);
  fs::remove_all(folder, error);
}

}  // namespace
}  // namespace qx::test
