#include "smartsearch/PageSearchRequest.h"

#include <vector>

#include "platform/Platform.h"
#include "text/EncodeDetect.h"

namespace qx {
namespace {

constexpr std::uint32_t kMaxUrlLength = 2083;
constexpr std::u16string_view kSearchParameterNames[] = {u"query", u"q", u"p", u"search", u"s"};

TString HostName(std::u16string_view url) {
  const TString text(url);
  std::vector<char16_t> host(kMaxUrlLength + 1, u'\0');
  UrlComponentsW parts;
  parts.lpszHostName = host.data();
  parts.dwHostNameLength = static_cast<std::uint32_t>(host.size());
  if (!Platform().InternetCrackUrlW(text.c_str(), static_cast<std::uint32_t>(text.size()), win::ICU_DECODE,
                                    &parts))
    return {};
  return TString(host.data(), parts.dwHostNameLength);
}

struct TNameValue {
  TString Name;
  TString Value;
};

std::vector<TNameValue> SplitQuery(std::u16string_view query) {
  std::vector<TNameValue> pieces;
  std::size_t start = 0;
  while (true) {
    const std::size_t end = query.find(u'&', start);
    const std::u16string_view piece =
        query.substr(start, end == std::u16string_view::npos ? end : end - start);
    const std::size_t equals = piece.find(u'=');
    if (equals == std::u16string_view::npos)
      pieces.push_back({TString(), TString(piece)});
    else
      pieces.push_back({TString(piece.substr(0, equals)), TString(piece.substr(equals + 1))});
    if (end == std::u16string_view::npos) return pieces;
    start = end + 1;
  }
}

bool IsSearchParameterName(std::u16string_view name) {
  const TString lower = LowerCase(name);
  for (auto known : kSearchParameterNames) {
    if (lower == known) return true;
  }
  return false;
}

}  // namespace

TString SearchUrlDomainPart(std::u16string_view url) {
  const TString host = HostName(url);
  const std::size_t dot = host.find(u'.');
  if (dot != TString::npos && host.find(u'.', dot + 1) != TString::npos) return host.substr(dot + 1);
  return host;
}

bool IsSameSearchDomain(std::u16string_view domainA, std::u16string_view domainB) {
  const TString a = LowerCase(domainA), b = LowerCase(domainB);
  const TString& shorter = a.size() <= b.size() ? a : b;
  const TString& longer = a.size() <= b.size() ? b : a;
  if (shorter.empty()) return false;
  const std::size_t at = longer.find(shorter);
  return at != TString::npos && at + shorter.size() == longer.size();
}

bool TryParseSearchUrl(std::u16string_view url, std::u16string_view activeUri, TString& keyword,
                       TString& request, bool& sameDomain) {
  keyword.clear();
  request.clear();
  sameDomain = IsSameSearchDomain(SearchUrlDomainPart(url), SearchUrlDomainPart(activeUri));
  if (!sameDomain) return false;
  const TString lower = LowerCase(url);
  if (lower.find(u"search") == TString::npos && lower.find(u"cse?") == TString::npos) return false;
  const std::size_t question = url.find(u'?');
  if (question == std::u16string_view::npos) return false;
  std::vector<TNameValue> pieces = SplitQuery(url.substr(question + 1));
  bool found = false;
  for (auto& piece : pieces) {
    if (IsSearchParameterName(piece.Name)) {
      keyword = piece.Value;
      piece.Value = u"{searchTerms}";
      found = true;
      break;
    }
  }
  if (!found) return false;
  request = TString(url.substr(0, question)) + u"?";
  for (std::size_t i = 0; i < pieces.size(); ++i) {
    if (i > 0) request += u'&';
    request += pieces[i].Name.empty() ? pieces[i].Value : pieces[i].Name + u"=" + pieces[i].Value;
  }
  return true;
}

bool FindPageSearchRequest(IServiceCoreWrap& serviceCore, std::u16string_view referer, TString& keyword,
                           TString& request) {
  const TString activeUri = serviceCore.ActiveBrowserUri();
  bool sameDomain = false;
  if (TryParseSearchUrl(activeUri, activeUri, keyword, request, sameDomain)) return true;
  if (!referer.empty() && TryParseSearchUrl(referer, activeUri, keyword, request, sameDomain)) return true;
  ComPtr<IQxIBrowser> browser;
  serviceCore.ActiveBrowser(browser);
  std::vector<TString> history;
  serviceCore.GetBackHistoryUris(browser.get(), history);
  for (const TString& uri : history) {
    if (TryParseSearchUrl(uri, activeUri, keyword, request, sameDomain)) return true;
    if (!sameDomain) break;
  }
  return false;
}

TPageSearch FindPageSearch(IServiceCoreWrap& serviceCore, const TSiteSearchList& siteList,
                           std::u16string_view referer) {
  TPageSearch result;
  if (const TSiteSearchItem* item = siteList.FindItem(serviceCore.ActiveBrowserUri())) {
    result.Request = item->FQuery;
    result.CharSet = item->FEncode;
    if (!result.Request.empty()) return result;
    result = {};
  }
  ComPtr<IQxITab> tab;
  serviceCore.ActiveTab(tab);
  if (tab && serviceCore.GetTabText(tab.get(), u"search_form_url", result.Request) &&
      !result.Request.empty()) {
    serviceCore.GetTabText(tab.get(), u"search_form_charset", result.CharSet);
    return result;
  }
  TString keyword;
  result = {};
  if (FindPageSearchRequest(serviceCore, referer, keyword, result.Request))
    DetectQueryCharset(keyword, result.CharSet);
  return result;
}

}  // namespace qx
