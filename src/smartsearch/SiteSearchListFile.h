#pragma once

// The file site_search_list.json: the application's copy in the base settings folder and
// the user's copy in the client settings folder.

#include <string>

#include "base/Text.h"
#include "host/ServiceCoreWrapIntf.h"
#include "smartsearch/SiteSearchItem.h"

namespace qx {

inline constexpr std::u16string_view kSiteSearchListFileName = u"site_search_list.json";

// The list a user starts with, as the bytes written to disk (UTF-8 with a byte order mark).
const std::string& DefaultSiteSearchListFileText();

// Appends the entries of one file. A missing file adds nothing; a file that does not
// parse shows "Failed to load: <path>" in a message box owned by ownerWindow and adds
// nothing. Elements that are not objects, or that fail while being read, are skipped.
void LoadSiteSearchListFile(const TString& path, WindowHandle ownerWindow, TSiteSearchList& list);

// Empties list, writes the default list to the user's folder if the user has no file,
// then reads the base file and the user's file, in that order.
void LoadSiteSearchList(IServiceCoreWrap& serviceCore, TSiteSearchList& list);

}  // namespace qx
