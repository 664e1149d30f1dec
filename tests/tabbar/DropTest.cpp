#include <fstream>

#include "runtime/OleDnDUtils.h"
#include "tabbar/OleDropItems.h"
#include "tabbar/ParentFormFixture.h"

namespace qx {
namespace {

namespace fs = std::filesystem;

class DropTest : public ParentFormTest {
 protected:
  std::u16string Write(const std::string& name, const std::string& contents) {
    const fs::path path = dir_ / name;
    std::ofstream(path, std::ios::binary) << contents;
    return path.u16string();
  }
  std::vector<std::u16string> Opened() {
    std::vector<std::u16string> uris;
    for (const auto& call : host_.Dock().NavigateCalls()) uris.push_back(call.Uri);
    return uris;
  }
  // A shell link whose link info names target as its local base path (ANSI).
  static std::string ShellLink(const std::string& target) {
    std::string data(0x4C, '\0');
    data[0] = 0x4C;
    data[0x14] = 0x2;  // has link info
    std::string info(0x1C, '\0');
    info[4] = 0x1C;  // header size
    info[8] = 0x1;   // volume id and local base path
    info[0x10] = 0x1C;
    info += target + '\0';
    info[0] = static_cast<char>(info.size());
    return data + info;
  }
};

TEST_F(DropTest, DroppedUrlsAndShortcutsOpenInNewTabs) {
  TTabbarParentForm& form = MakeForm();
  TDragObject text;
  text.Data = std::u16string(u"ttp://cut.example/");
  TDragOperation operation = TDragOperation::None;
  form.DragOver(text, {20, 20}, operation);
  EXPECT_EQ(operation, TDragOperation::Link);
  form.DragDrop(text, {20, 20});
  EXPECT_EQ(Opened(), (std::vector<std::u16string>{u"http://cut.example/"}));

  TDragObject files;
  files.Files = {Write("site.URL",
                       "[DEFAULT]\r\nBASEURL=http://no/\r\n[InternetShortcut]\r\nURL=https://a.example/\r\n"),
                 Write("plain.txt", "https://not-read/"), Write("broken.url", "[InternetShortcut]\nIcon=1\n"),
                 Write("broken.lnk", "\x4C\0\0\0garbage"), Write("doc.lnk", ShellLink("file:///c/doc.html"))};
  form.DragDrop(files, {20, 20});
  EXPECT_EQ(Opened(), (std::vector<std::u16string>{u"http://cut.example/", u"https://a.example/",
                                                   u"file:///c/doc.html"}));
  // Text of no known scheme opens nothing.
  TDragObject words;
  words.Data = std::u16string(u"just words");
  OpenDroppedItems(wrap_.get(), words);
  EXPECT_EQ(Opened().size(), 3u);
}

TEST(DroppedUrlTest, SchemesAreKnownIgnoringCaseAndTheRedirectorIsCut) {
  TScopedPortableOs os;
  EXPECT_EQ(ResolveDroppedUrl(u"TTP://a/"), u"hTTP://a/");
  EXPECT_EQ(ResolveDroppedUrl(u"HTTP://b/"), u"HTTP://b/");
  EXPECT_EQ(ResolveDroppedUrl(u"http://jmp.x/?c.example/d"), u"http://c.example/d");
  EXPECT_EQ(ResolveDroppedUrl(u"mailto:x@y"), u"mailto:x@y");
  EXPECT_EQ(ResolveDroppedUrl(u"FTP://f/"), u"FTP://f/");
  EXPECT_EQ(ResolveDroppedUrl(u"gopher://g/"), u"");
  EXPECT_EQ(ResolveDroppedUrl(u"/no/such/file.url"), u"");
}

TEST(ClipboardFormatTest, StandardFormatsHaveFixedIdsAndRegisteredOnesOneIdPerName) {
  TScopedPortableOs os;
  const auto& names = ClipboardFormatNames();
  ASSERT_EQ(names.size(), 42u);
  EXPECT_EQ(names.front().Name, u"CF_BITMAP");
  EXPECT_EQ(names[21].Name, u"CF_WAVE");
  EXPECT_EQ(names[22].Name, u"Shell IDList Array");
  EXPECT_EQ(names.back().Name, u"Netscape Bookmark");
  EXPECT_EQ(ClipboardFormatOf(u"CF_HDROP"), 15u);
  const std::uint32_t url = ClipboardFormatOf(u"UniformResourceLocatorW");
  EXPECT_GE(url, 0xC000u);
  EXPECT_EQ(ClipboardFormatOf(u"UniformResourceLocatorW"), url);
  EXPECT_NE(ClipboardFormatOf(u"FileNameW"), url);
  EXPECT_EQ(ClipboardFormatOf(u"No Such Format"), 0u);
}

}  // namespace
}  // namespace qx
