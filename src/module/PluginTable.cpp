#include "module/PluginTable.h"

#include "cabinet/CabinetIconBarPlugin.h"
#include "module/PreviewStripExtension.h"

namespace qx {
namespace {

template <class T>
ComPtr<IUnknown> CreatePlugin(IQxIServiceCore* serviceCore) {
  ComPtr<T> plugin = MakeCom<T>();
  plugin->Create(serviceCore);
  ComPtr<IUnknown> identity;
  plugin->QueryInterface(IUnknown::IID, identity.put_void());
  return identity;
}

}  // namespace

const char* const kPluginIds[kPluginCount] = {"PreviewStripPlugin", "CabinetIconBarControl"};
const TPluginFactory kPluginClasses[kPluginCount] = {&CreatePlugin<TPrevewStripPluginImpl>,
                                                     &CreatePlugin<TCabinetIconBarPluginImpl>};

}  // namespace qx
