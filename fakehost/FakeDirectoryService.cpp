#include "fakehost/FakeDirectoryService.h"

#include "base/Text.h"
#include "fakehost/FakeString.h"
#include "host/HostKeys.h"

namespace qx {

HResult QX_STDCALL TFakeDirectoryService::GetPath(Text key, IQxIString** path) {
  if (!path) return kInvalidArg;
  *path = nullptr;
  if (!key) return kInvalidArg;
  const auto it = paths_.find(key);
  if (it == paths_.end()) return kFail;
  *path = MakeFakeString(it->second).detach();
  return kOk;
}

std::u16string TFakeDirectoryService::Path(std::u16string_view key) const {
  const auto it = paths_.find(std::u16string(key));
  return it == paths_.end() ? std::u16string() : it->second;
}

void TFakeDirectoryService::MakeDirectoryTree(const std::filesystem::path& root) {
  namespace dk = dir_key;
  const std::pair<std::u16string_view, const char*> folders[] = {
      {dk::UserSettingClient, "user/setting/client"}, {dk::UserSettingModules, "user/setting/modules"},
      {dk::UserSettingBase, "user/setting/base"},     {dk::UserTemp, "user/temp"},
      {dk::ClientPlugins, "client/plugins"},          {dk::ClientExec, "client/exec"},
      {dk::ClientScripts, "client/scripts"},          {dk::Langs, "rc/langs"},
      {dk::Sounds, "rc/sounds"},                      {dk::CurrentSkin, "rc/skins/current"},
      {dk::DefaultSkin, "rc/skins/default"},
  };
  for (const auto& [key, relative] : folders) {
    const auto folder = root / relative;
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    SetPath(key, FromUtf8(folder.string()));
  }
  const auto client = root / "user/setting/client";
  SetPath(dk::TabJson, FromUtf8((client / "tab.json").string()));
  SetPath(dk::Favorite3Json, FromUtf8((client / "favorite3.json").string()));
}

}  // namespace qx
