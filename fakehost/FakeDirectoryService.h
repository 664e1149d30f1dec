#pragma once

#include <filesystem>
#include <map>
#include <string>

#include "base/ComObject.h"
#include "host/QuillmarV3Interface.h"

namespace qx {

// Folders and files of the host by directory key; paths come without a trailing delimiter.
class TFakeDirectoryService : public TInterfacedObject<IQxIDirectoryService> {
 public:
  HResult QX_STDCALL GetPath(Text key, IQxIString** path) override;

  void SetPath(std::u16string_view key, std::u16string_view path) { paths_[std::u16string(key)] = path; }
  void RemovePath(std::u16string_view key) { paths_.erase(std::u16string(key)); }
  std::u16string Path(std::u16string_view key) const;
  // Gives every directory key a folder under root and makes the folders; the two file
  // keys name files in the client settings folder, which are not made.
  void MakeDirectoryTree(const std::filesystem::path& root);

 private:
  std::map<std::u16string, std::u16string> paths_;
};

}  // namespace qx
