#include "smartsearch/EngineMenuDocument.h"

namespace qx {
namespace {

void AppendEscaped(TString& out, std::u16string_view text) {
  for (char16_t c : text) {
    switch (c) {
      case u'&':
        out += u"&amp;";
        break;
      case u'<':
        out += u"&lt;";
        break;
      case u'>':
        out += u"&gt;";
        break;
      case u'"':
        out += u"&quot;";
        break;
      case u'\'':
        out += u"&apos;";
        break;
      default:
        out += c;
    }
  }
}

void AppendAttribute(TString& out, std::int32_t number, std::u16string_view value) {
  out += u' ';
  out += MenuAttributeName(number);
  out += u"=\"";
  AppendEscaped(out, value);
  out += u'"';
}

}  // namespace

std::u16string_view MenuAttributeName(std::int32_t number) {
  switch (number) {
    case menu_attribute::Kind:
      return u"item";
    case menu_attribute::Action:
      return u"action";
    case menu_attribute::DisplayName:
      return u"text";
    case menu_attribute::Icon:
      return u"icon";
    case menu_attribute::Script:
      return u"script";
    default:
      return {};
  }
}

TString EngineMenuXml(const std::vector<TEngineMenuItem>& items) {
  TString xml = u"<menu>";
  for (const TEngineMenuItem& item : items) {
    xml += u'<';
    xml += MenuAttributeName(menu_attribute::Kind);
    AppendAttribute(xml, menu_attribute::Action, item.ActionName);
    AppendAttribute(xml, menu_attribute::Icon, item.Icon);
    AppendAttribute(xml, menu_attribute::DisplayName, item.DisplayName);
    AppendAttribute(xml, menu_attribute::Script, item.Script);
    xml += u"/>";
  }
  xml += u"</menu>";
  return xml;
}

ComPtr<IQxIXmlElement> MakeEngineMenuDocument(IServiceCoreWrap& core,
                                              const std::vector<TEngineMenuItem>& items) {
  ComPtr<IQxIXmlService> xml;
  core.XmlService(xml);
  if (!xml) return nullptr;
  const TString text = EngineMenuXml(items);
  ComPtr<IQxIXmlElement> root;
  if (Failed(xml->Parse(text.c_str(), root.put()))) return nullptr;
  return root;
}

}  // namespace qx
