#include "runtime/SystemLanguage.h"

#include <cstdlib>
#include <string>

namespace qx {
namespace {

struct TLanguage {
  const char* Name;  // "ll" or "ll_CC"
  int Id;
};

// Region-specific entries first; a bare language takes the first entry of its language.
constexpr TLanguage kLanguages[] = {
    {"ja_JP", 0x0411}, {"en_US", 0x0409}, {"en_GB", 0x0809}, {"en_AU", 0x0C09}, {"en_CA", 0x1009},
    {"de_DE", 0x0407}, {"de_AT", 0x0C07}, {"de_CH", 0x0807}, {"fr_FR", 0x040C}, {"fr_CA", 0x0C0C},
    {"es_ES", 0x0C0A}, {"es_MX", 0x080A}, {"it_IT", 0x0410}, {"ko_KR", 0x0412}, {"zh_CN", 0x0804},
    {"zh_TW", 0x0404}, {"zh_HK", 0x0C04}, {"ru_RU", 0x0419}, {"pt_BR", 0x0416}, {"pt_PT", 0x0816},
    {"nl_NL", 0x0413}, {"pl_PL", 0x0415}, {"sv_SE", 0x041D}, {"tr_TR", 0x041F}, {"uk_UA", 0x0422},
};

}  // namespace

int LanguageIdOfLocaleName(std::string_view locale, int defaultValue) {
  // "ja_JP.UTF-8@variant" -> "ja_JP"; "en-GB" is taken like "en_GB".
  std::string name(locale.substr(0, locale.find_first_of(".@")));
  for (char& c : name) {
    if (c == '-') c = '_';
  }
  if (name.size() < 2) return defaultValue;
  for (const TLanguage& l : kLanguages) {
    if (name == l.Name) return l.Id;
  }
  const std::string language = name.substr(0, name.find('_'));
  for (const TLanguage& l : kLanguages) {
    if (std::string_view(l.Name).substr(0, 2) == language) return l.Id;
  }
  return defaultValue;
}

int GetSystemDefaultLanguage(int defaultValue) {
  for (const char* variable : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
    const char* value = std::getenv(variable);
    if (value && *value) return LanguageIdOfLocaleName(value, defaultValue);
  }
  return defaultValue;
}

}  // namespace qx
