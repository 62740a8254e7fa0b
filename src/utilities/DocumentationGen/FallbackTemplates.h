// The plain templates and style sheet the documentation generator uses when the
// data directory's "DocumentationGen/" lacks one: the same markers as the files
// there, with no styling beyond the basics.
#pragma once

namespace DocGen
{
// The class page's template.
inline constexpr const char* kFallbackClassTemplate =
    "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n<title>COMPONENTNAME</title>\n"
    "<link rel=\"stylesheet\" href=\"../style.css\">\n</head>\n<body>\n"
    "<p><a href=\"../index.html\">Vorn Documentation</a> | GROUP</p>\n<h1>COMPONENTNAME</h1>\n"
    "<p>COMPONENTCOMMENT</p>\n<p>DERIVED</p>\n<p>DEPENDENCIES</p>\n<!--COMPONENTSTUFF-->\n"
    "<ul>\nLISTCOMPONENTS</ul>\n</body>\n</html>\n";
// The group page's template.
inline constexpr const char* kFallbackGroupTemplate =
    "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n<title>GROUPNAME</title>\n"
    "<link rel=\"stylesheet\" href=\"../style.css\">\n</head>\n<body>\n"
    "<p><a href=\"../index.html\">Vorn Documentation</a></p>\n<h1>GROUPNAME</h1>\n<!--GROUPSTUFF-->\n"
    "<ul>\nLISTCOMPONENTS</ul>\n</body>\n</html>\n";
// The style sheet.
inline constexpr const char* kFallbackStyle = "body { font-family: sans-serif; margin: 2em; }\n";
}
