#include "module/PluginTable.h"

#include "cabinet/CabinetDnDForm.h"
#include "cabinet/CabinetIconBarPlugin.h"
#include "module/PreviewStripExtension.h"

namespace qx {
namespace {

// The strip's cabinet drag window is the cabinet side's form.
void InstallCabinetDnDWindowMaker() {
  if (CabinetDnDWindowMaker()) return;
  SetCabinetDnDWindowMaker([](IServiceCoreWrap* serviceCore, TTabbarImageRes* imageRes, HWnd clientWindow) {
    return std::unique_ptr<ICabinetDnDWindow>(
        new TCabinetDnDForm(nullptr, serviceCore, imageRes, clientWindow));
  });
}

template <class T>
ComPtr<IUnknown> CreatePlugin(IQxIServiceCore* serviceCore) {
  InstallCabinetDnDWindowMaker();
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
