#pragma once

#include <array>
#include <string>
#include <string_view>

#include "base/Guid.h"

namespace qx {

// Every host service, plug-in and factory object id is its short name followed by this.
inline constexpr std::string_view kHostIdSuffix = ".QxV3";

std::string ServiceId(std::string_view shortName);

enum class ServiceKind { Core, Plugin };

struct ServiceEntry {
  std::string_view ShortName;
  ServiceKind Kind;
  TGUID Iid;
};

// The host's services with the interface each is asked for.
const ServiceEntry* FindServiceEntry(std::string_view shortName);
const std::array<ServiceEntry, 31>& ServiceTable();

// Objects made through the factory service.
namespace factory_object {
inline constexpr std::string_view QxIStringDictionary = "QxIStringDictionary";
inline constexpr std::string_view QxIDictionary = "QxIDictionary";
inline constexpr std::string_view QxIArray = "QxIArray";
inline constexpr std::string_view QxIStringArray = "QxIStringArray";
inline constexpr std::string_view QxIStringBuilder = "QxIStringBuilder";
inline constexpr std::string_view QxIVariantBuilder = "QxIVariantBuilder";
inline constexpr std::string_view QxIHandleBuilder = "QxIHandleBuilder";
}  // namespace factory_object

}  // namespace qx
