// The playlist as XSPF. The one user of tinyxml2.
#include <tinyxml2.h>

#include "tools/output.h"
#include "tools/text.h"

namespace zvplaylist {
namespace {

void element(tinyxml2::XMLPrinter& xml, const char* name, const std::string& text) {
  if (text.empty()) return;
  xml.OpenElement(name);
  // XML has no form at all for control characters.
  xml.PushText(printable(text).c_str());
  xml.CloseElement();
}

void track_element(tinyxml2::XMLPrinter& xml, const track& entry) {
  xml.OpenElement("track");
  element(xml, "location", uri_of(entry.location));
  element(xml, "title", entry.title);
  element(xml, "creator", joined(entry.artists));
  element(xml, "album", entry.album);
  if (entry.seconds != 0) element(xml, "duration", std::to_string(uint64_t{entry.seconds} * 1000));
  xml.CloseElement();
}

}  // namespace

std::string render_xspf(const playlist& tracks) {
  tinyxml2::XMLPrinter xml;
  xml.PushHeader(false, true);
  xml.OpenElement("playlist");
  xml.PushAttribute("version", "1");
  xml.PushAttribute("xmlns", "http://xspf.org/ns/0/");
  xml.OpenElement("trackList");
  for (const ranked_track& place : tracks) track_element(xml, *place.entry);
  xml.CloseElement();
  xml.CloseElement();
  return xml.CStr();
}

}  // namespace zvplaylist
