#include "fakehost/FakeFactoryService.h"

#include "base/Text.h"
#include "fakehost/FakeArray.h"
#include "fakehost/FakeBuilders.h"
#include "fakehost/FakeCom.h"
#include "fakehost/FakeDictionary.h"
#include "fakehost/FakeStringArray.h"
#include "fakehost/FakeStringDictionary.h"
#include "host/ServiceIds.h"

namespace qx {
namespace {

bool IsObject(std::u16string_view name, std::string_view shortName) {
  return SameText(name, FromAscii(ServiceId(shortName)));
}

}  // namespace

HResult QX_STDCALL TFakeFactoryService::CreateObject(Text name, IUnknown** object) {
  if (!object) return kInvalidArg;
  *object = nullptr;
  if (!name) return kInvalidArg;
  const std::u16string_view id(name);
  namespace fo = factory_object;
  if (IsObject(id, fo::QxIStringDictionary)) return HandOutUnknown(MakeCom<TFakeStringDictionary>(), object);
  if (IsObject(id, fo::QxIDictionary)) return HandOutUnknown(MakeCom<TFakeDictionary>(), object);
  if (IsObject(id, fo::QxIArray)) return HandOutUnknown(MakeCom<TFakeArray>(), object);
  if (IsObject(id, fo::QxIStringArray)) return HandOutUnknown(MakeCom<TFakeStringArray>(), object);
  if (IsObject(id, fo::QxIStringBuilder)) return HandOutUnknown(MakeCom<TFakeStringBuilder>(), object);
  if (IsObject(id, fo::QxIVariantBuilder)) return HandOutUnknown(MakeCom<TFakeVariantBuilder>(), object);
  if (IsObject(id, fo::QxIHandleBuilder)) return HandOutUnknown(MakeCom<TFakeHandleBuilder>(), object);
  return kFail;
}

}  // namespace qx
