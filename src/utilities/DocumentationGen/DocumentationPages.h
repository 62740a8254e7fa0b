// The text of the script reference's pages: a class page and a group page
// filled from their templates, and the index. Pure text in, text out; the files
// are written by GenerateDocumentation.
//
// Class and group pages live side by side in "Files/", so they link to each
// other by file name and to the style sheet as "../style.css"; the index sits
// above them and links to "Files/<group>.html". A type name becomes a link
// wherever a page exists for it.
//
// Markers of the class template: "GROUP", "..\style.css" (or "../style.css"),
// "COMPONENTNAME", "COMPONENTCOMMENT", "DERIVED", "DEPENDENCIES",
// "LISTCOMPONENTS" and "<!--COMPONENTSTUFF-->". Markers of the group template:
// "GROUPNAME", the style link, "LISTCOMPONENTS" and "<!--GROUPSTUFF-->".
#pragma once

#include "utilities/DocumentationGen/DocumentationGroups.h"

#include <string>
#include <unordered_set>
#include <vector>

namespace DocGen
{
// The names of the classes that have a page.
using PageNames = std::unordered_set<std::string>;

// The title of the index page.
inline constexpr const char* kIndexTitle = "Vorn Documentation";

// A type's name as the reference shows it ("void" for no type), as a link when it has a page.
std::string TypeText(const Meta::Data* type, const PageNames& pages);
// The body that goes at "<!--COMPONENTSTUFF-->": constructors, members, properties and methods, and
// an enumeration's values.
std::string ClassBody(const Meta::Data& type, const PageNames& pages);
// The page of one class, from the class template.
std::string ClassPage(const std::string& pageTemplate, const Meta::Data& type, const DocumentationGroup& group,
                      const PageNames& pages);
// The page of one group, from the group template; its list links to every group.
std::string GroupPage(const std::string& pageTemplate, const DocumentationGroup& group,
                      const std::vector<DocumentationGroup>& groups, const PageNames& pages);
// The index: the title and a list of links to the group pages.
std::string IndexPage(const std::vector<DocumentationGroup>& groups);
}
