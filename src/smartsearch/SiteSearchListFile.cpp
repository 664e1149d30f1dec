#include "smartsearch/SiteSearchListFile.h"

#include <filesystem>
#include <fstream>

#include "base/FilePath.h"
#include "host/HostKeys.h"
#include "platform/Platform.h"
#include "text/JSONParser.h"

namespace qx {
namespace {

// A sample entry for the maker's support site; the pattern escapes '/', '.' and '-'.
constexpr const char* kDefaultLines[] = {
    "[",
    "    {",
    "        \"name\":  \"Quillmar Support\",",
    "        \"query\": \"https://www.quillmar-browser.example/support/search?q={searchTerms}&lang=ja\",",
    "        \"encode\": \"utf-8\",",
    "        \"site_list\" : [",
    "            \"https:\\\\/\\\\/www\\\\.quillmar\\\\-browser\\\\.example\\\\/support\\\\/.*\"",
    "        ]",
    "    }",
    "]",
};

void WriteDefaultFile(const TString& path) {
  std::ofstream out(FilePathOf(path), std::ios::binary | std::ios::trunc);
  const std::string& text = DefaultSiteSearchListFileText();
  out.write(text.data(), static_cast<std::streamsize>(text.size()));
}

std::unique_ptr<TSiteSearchItem> ReadItem(IJSONObject& object) {
  auto item = std::make_unique<TSiteSearchItem>();
  item->FQuery = object.GetString(u"query");
  item->FEncode = object.GetString(u"encode");
  if (const ComPtr<IJSONArray> sites = object.GetArray(u"site_list")) {
    for (std::int32_t i = 0; i < sites->GetCount(); ++i) item->FSiteList.push_back(sites->GetString(i));
  }
  return item;
}

TString FolderPath(IServiceCoreWrap& serviceCore, std::u16string_view key) {
  TString path;
  if (!serviceCore.DirectoryPath(key, true, path)) path.clear();
  return path;
}

}  // namespace

const std::string& DefaultSiteSearchListFileText() {
  static const std::string text = [] {
    std::string t = "\xEF\xBB\xBF";
    for (const char* line : kDefaultLines) (t += line) += "\r\n";
    return t;
  }();
  return text;
}

void LoadSiteSearchListFile(const TString& path, WindowHandle ownerWindow, TSiteSearchList& list) {
  std::error_code error;
  if (!std::filesystem::exists(FilePathOf(path), error)) return;
  ComPtr<IJSONValue> root;
  try {
    TJSONParser::LoadJSONFromFile(path, TJSONFileEncoding::UTF8, root);
  } catch (const EJsonParseError&) {
    const TString text = u"Failed to load: " + path;
    Platform().MessageBoxW(reinterpret_cast<HWnd>(ownerWindow), text.c_str(), u"JSON Parse Error",
                           win::MB_OK);
    return;
  }
  const ComPtr<IJSONArray> entries = root ? root->AsArray() : nullptr;
  if (!entries) return;
  for (std::int32_t i = 0; i < entries->GetCount(); ++i) {
    const ComPtr<IJSONObject> object = entries->GetObject(i);
    if (!object) continue;
    try {
      list.Add(ReadItem(*object));
    } catch (const std::exception&) {
      // One broken entry must not cost the user the rest of the list.
    }
  }
}

void LoadSiteSearchList(IServiceCoreWrap& serviceCore, TSiteSearchList& list) {
  list.Clear();
  const TString basePath =
      FolderPath(serviceCore, dir_key::UserSettingBase) + TString(kSiteSearchListFileName);
  const TString userPath =
      FolderPath(serviceCore, dir_key::UserSettingClient) + TString(kSiteSearchListFileName);
  std::error_code error;
  if (!std::filesystem::exists(FilePathOf(userPath), error)) WriteDefaultFile(userPath);
  const WindowHandle owner = serviceCore.MainWindowHandle();
  LoadSiteSearchListFile(basePath, owner, list);
  LoadSiteSearchListFile(userPath, owner, list);
}

}  // namespace qx
