#include "platform/portable/UrlCrack.h"

#include <algorithm>
#include <string>

#include "base/Text.h"

namespace qx {

namespace {

using namespace win;

struct TPart {
  std::size_t start = 0;
  std::size_t length = 0;
};

int HexValue(char16_t c) {
  if (c >= u'0' && c <= u'9') return c - u'0';
  if (c >= u'a' && c <= u'f') return c - u'a' + 10;
  if (c >= u'A' && c <= u'F') return c - u'A' + 10;
  return -1;
}

std::u16string Decode(std::u16string_view text) {
  std::u16string out;
  out.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == u'%' && i + 2 < text.size()) {
      const int hi = HexValue(text[i + 1]);
      const int lo = HexValue(text[i + 2]);
      if (hi >= 0 && lo >= 0) {
        out.push_back(static_cast<char16_t>(hi * 16 + lo));
        i += 2;
        continue;
      }
    }
    out.push_back(text[i]);
  }
  return out;
}

// Copies into the caller's buffer, or points into the URL when no buffer is given.
bool Fill(std::u16string_view url, TPart part, bool decode, char16_t*& buffer, std::uint32_t& length) {
  if (length == 0) return true;
  const std::u16string_view text = url.substr(part.start, part.length);
  if (!buffer) {
    buffer = const_cast<char16_t*>(url.data() + part.start);
    length = static_cast<std::uint32_t>(part.length);
    return true;
  }
  const std::u16string value = decode ? Decode(text) : std::u16string(text);
  if (value.size() + 1 > length) {
    length = static_cast<std::uint32_t>(value.size() + 1);
    return false;
  }
  std::copy(value.begin(), value.end(), buffer);
  buffer[value.size()] = 0;
  length = static_cast<std::uint32_t>(value.size());
  return true;
}

bool IsSchemeChar(char16_t c) {
  return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') || (c >= u'0' && c <= u'9') || c == u'+' ||
         c == u'-' || c == u'.';
}

}  // namespace

bool CrackUrl(std::u16string_view url, std::uint32_t flags, UrlComponentsW* components) {
  if (!components || components->dwStructSize != sizeof(UrlComponentsW)) return false;
  const std::size_t colon = url.find(u':');
  if (colon == std::u16string_view::npos || colon == 0) return false;
  if (!std::all_of(url.begin(), url.begin() + static_cast<std::ptrdiff_t>(colon), IsSchemeChar)) return false;
  const std::u16string_view scheme = url.substr(0, colon);
  std::int32_t schemeId = INTERNET_SCHEME_UNKNOWN;
  std::uint16_t port = 0;
  if (SameText(scheme, u"http")) {
    schemeId = INTERNET_SCHEME_HTTP;
    port = 80;
  } else if (SameText(scheme, u"https")) {
    schemeId = INTERNET_SCHEME_HTTPS;
    port = 443;
  } else if (SameText(scheme, u"ftp")) {
    schemeId = INTERNET_SCHEME_FTP;
    port = 21;
  } else if (SameText(scheme, u"file")) {
    schemeId = INTERNET_SCHEME_FILE;
  }

  TPart user, password, host;
  std::size_t pos = colon + 1;
  if (url.substr(pos, 2) == u"//") {
    pos += 2;
    std::size_t end = url.find_first_of(u"/?#", pos);
    if (end == std::u16string_view::npos) end = url.size();
    std::size_t hostStart = pos;
    const std::size_t at = url.substr(pos, end - pos).rfind(u'@');
    if (at != std::u16string_view::npos) {
      const std::size_t userEnd = pos + at;
      const std::size_t passColon = url.substr(pos, userEnd - pos).find(u':');
      if (passColon != std::u16string_view::npos) {
        user = {pos, passColon};
        password = {pos + passColon + 1, userEnd - pos - passColon - 1};
      } else {
        user = {pos, userEnd - pos};
      }
      hostStart = userEnd + 1;
    }
    std::size_t hostEnd = end;
    std::size_t portColon = std::u16string_view::npos;
    if (hostStart < end && url[hostStart] == u'[') {
      const std::size_t close = url.substr(hostStart, end - hostStart).find(u']');
      if (close == std::u16string_view::npos) return false;
      hostEnd = hostStart + close + 1;
      if (hostEnd < end) {
        if (url[hostEnd] != u':') return false;
        portColon = hostEnd;
      }
    } else {
      const std::size_t found = url.substr(hostStart, end - hostStart).rfind(u':');
      if (found != std::u16string_view::npos) {
        portColon = hostStart + found;
        hostEnd = portColon;
      }
    }
    if (portColon != std::u16string_view::npos) {
      const std::u16string_view digits = url.substr(portColon + 1, end - portColon - 1);
      if (!digits.empty()) {
        std::uint32_t value = 0;
        for (char16_t c : digits) {
          if (c < u'0' || c > u'9') return false;
          value = value * 10 + static_cast<std::uint32_t>(c - u'0');
          if (value > 0xFFFF) return false;
        }
        port = static_cast<std::uint16_t>(value);
      }
    }
    host = {hostStart, hostEnd - hostStart};
    pos = end;
  }
  std::size_t extraStart = url.find_first_of(u"?#", pos);
  if (extraStart == std::u16string_view::npos) extraStart = url.size();
  const TPart path{pos, extraStart - pos};
  const TPart extra{extraStart, url.size() - extraStart};

  const bool decode = (flags & (ICU_DECODE | ICU_ESCAPE)) != 0;
  UrlComponentsW& c = *components;
  c.nScheme = schemeId;
  c.nPort = port;
  bool ok = Fill(url, TPart{0, colon}, false, c.lpszScheme, c.dwSchemeLength);
  ok = Fill(url, host, decode, c.lpszHostName, c.dwHostNameLength) && ok;
  ok = Fill(url, user, decode, c.lpszUserName, c.dwUserNameLength) && ok;
  ok = Fill(url, password, decode, c.lpszPassword, c.dwPasswordLength) && ok;
  ok = Fill(url, path, decode, c.lpszUrlPath, c.dwUrlPathLength) && ok;
  ok = Fill(url, extra, decode, c.lpszExtraInfo, c.dwExtraInfoLength) && ok;
  return ok;
}

}  // namespace qx
