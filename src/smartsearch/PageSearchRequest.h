#pragma once

// The search URL of the site being viewed: from the site list, from what the page told
// the tab, or taken from a search results address of the site itself.

#include <string>
#include <string_view>

#include "base/Text.h"
#include "host/ServiceCoreWrapIntf.h"
#include "smartsearch/SiteSearchItem.h"

namespace qx {

// The host name without its first label, as long as what remains still has a dot.
TString SearchUrlDomainPart(std::u16string_view url);
// Ignoring case, the shorter domain part must first occur in the longer one at its end.
bool IsSameSearchDomain(std::u16string_view domainA, std::u16string_view domainB);

// Takes url apart when it is on the same domain as activeUri and looks like a search: the
// first known query parameter is the keyword (still percent-encoded) and becomes
// "{searchTerms}" in request. False when no request came.
bool TryParseSearchUrl(std::u16string_view url, std::u16string_view activeUri, TString& keyword,
                       TString& request, bool& sameDomain);

// Tries the active address, then the referer, then the back history newest first, which
// ends at the first address of another domain.
bool FindPageSearchRequest(IServiceCoreWrap& serviceCore, std::u16string_view referer, TString& keyword,
                           TString& request);

struct TPageSearch {
  TString Request;  // empty: the site has no known search
  TString CharSet;
};

// The site list first, then the tab's "search_form_url", then FindPageSearchRequest with
// the charset guessed from the keyword.
TPageSearch FindPageSearch(IServiceCoreWrap& serviceCore, const TSiteSearchList& siteList,
                           std::u16string_view referer);

}  // namespace qx
