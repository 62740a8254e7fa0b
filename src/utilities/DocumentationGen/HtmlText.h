// Small text helpers of the documentation generator: escaping text for HTML,
// the file name and link of a class's page, and filling a template's markers.
//
// Templates are filled in one pass: at each place of the text the markers are
// tried in the order given, and the first that matches is replaced. Inserted
// text is never searched again, so a comment that happens to hold a marker's
// word stays as it was written.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace DocGen
{
// A marker of a template and the text that replaces it.
using Marker = std::pair<std::string, std::string>;

// The text with &, <, > and " written as HTML entities.
std::string EscapeHtml(std::string_view text);
// The file name of the page of a class or group: the name, characters a file name cannot hold
// replaced by '_', then ".html".
std::string PageFileName(std::string_view name);
// A file name as it goes into an href: bytes other than letters, digits and "-._" percent-encoded.
std::string EncodeHref(std::string_view fileName);
// <a href="href">text</a>, the text escaped.
std::string Link(std::string_view href, std::string_view text);
// The link to the page of a class or group named `name`, from a page in the same folder.
std::string PageLink(std::string_view name);
// The template with every occurrence of each marker replaced, in one pass (see above).
std::string FillTemplate(std::string_view text, const std::vector<Marker>& markers);
}
