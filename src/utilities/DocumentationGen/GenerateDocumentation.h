// The "gendoc" mode of the game: writes the HTML reference of the script
// interface from the type registry, and nothing else runs.
//
//   <folder>/index.html            "Vorn Documentation" and the seven groups
//   <folder>/style.css             copied from the data directory
//   <folder>/Files/<Group>.html    a table of the group's classes
//   <folder>/Files/<Class>.html    constructors, members, properties, methods
//
// The templates and the style sheet come from "DocumentationGen/" in the data
// directory (ComponentTemplate.html, GroupTemplate.html, style.css). One that is
// missing is reported and a plain built-in one takes its place, so the reference
// is always complete. Only the registrations made in code are needed: no script
// has to have run.
#pragma once

#include <string>

namespace DocGen
{
// The folder the reference goes to when the option names none, relative to the working directory.
inline constexpr const char* kDefaultDocumentationFolder = "../VornDocumentation/";
}

// Writes the reference into `folder` from the templates in `dataDirectory`; false (reported) when
// the folder cannot be made or a page cannot be written.
bool GenerateDocumentation(const std::string& folder, const std::string& dataDirectory);
// Writes the reference into the default folder from the data directory's templates.
bool GenerateDocumentation();
