#include "utilities/DocumentationGen/DocumentationPages.h"

#include "utilities/DocumentationGen/HtmlText.h"
#include "utilities/Meta/Data.h"
#include "utilities/Meta/EnumMeta.h"
#include "utilities/Meta/Member.h"
#include "utilities/Meta/Method.h"
#include "utilities/Meta/Property.h"

namespace DocGen
{
namespace
{
// The type name as text, linked when a page exists for it.
std::string NameText(const std::string& name, const PageNames& pages)
{
    return pages.count(name) ? PageLink(name) : EscapeHtml(name);
}

// "A, B, C" of the argument types.
std::string ArgumentList(const std::vector<Meta::Data*>& arguments, const PageNames& pages)
{
    std::string text;
    for (std::size_t i = 0; i < arguments.size(); ++i)
    {
        if (i > 0)
            text += ", ";
        text += TypeText(arguments[i], pages);
    }
    return text;
}

// One entry of a list of values: "<dt>type <b>name</b></dt>" and its comment.
std::string ValueEntry(const Meta::DataInfo& value, const PageNames& pages, bool readOnly)
{
    return "<dt>" + TypeText(value.m_Type, pages) + " <b>" + EscapeHtml(value.m_Name) + "</b>" +
           (readOnly ? " <i>read-only</i>" : "") + "</dt>\n  <dd>" + EscapeHtml(value.m_Description) + " </dd>\n";
}

// One entry of the list of methods.
std::string MethodEntry(const Meta::Method& method, const PageNames& pages)
{
    return "<dt>" + TypeText(method.m_ReturnType, pages) + " <b>" + EscapeHtml(method.m_Name) + "</b>(" +
           ArgumentList(method.m_ArgTypes, pages) + ")</dt>\n  <dd>" + EscapeHtml(method.m_Description) + " </dd>\n";
}

// The links of the group's classes, as list items.
std::string ClassList(const DocumentationGroup& group)
{
    std::string text;
    for (const Meta::Data* type : group.m_Classes)
        text += "<li>" + PageLink(type->m_Name) + "</li>\n";
    return text;
}
}

std::string TypeText(const Meta::Data* type, const PageNames& pages)
{
    if (!type)
        return NameText("void", pages);
    if (type->m_Name.empty())
        return "?";
    return NameText(type->m_Name, pages);
}

std::string ClassBody(const Meta::Data& type, const PageNames& pages)
{
    std::string body = "<h3><u> Constructors </u></h3>\n<dl>\n";
    for (const Meta::Constructor& constructor : type.m_Constructors)
        body += "<dt><b>" + EscapeHtml(type.m_Name) + "</b>(" + ArgumentList(constructor.m_Arguments, pages) +
                ")</dt>\n";
    body += "</dl>\n";

    body += "<h3><u> Members </u></h3>\n<dl>\n";
    for (const auto& [name, member] : type.m_Members.Items())
        body += ValueEntry(*member, pages, false);
    body += "</dl>\n";

    body += "<h3><u> Properties </u></h3>\n<dl>\n";
    for (const auto& [name, property] : type.m_Properties.Items())
    {
        // The space an object lives in is reached through its own class, and the hook through which
        // scripts add properties holds no value.
        if ((property->m_Type && property->m_Type->m_Name == "Space") || name == Meta::kNewPropertyName)
            continue;
        body += ValueEntry(*property, pages, !property->CanSet());
    }
    body += "</dl>\n";

    body += "<h3><u> Methods </u></h3>\n<dl>\n";
    for (const auto& [name, method] : type.m_Methods.Items())
        body += MethodEntry(*method, pages);
    for (const auto& [name, forms] : type.m_Overloads.Items())
        for (const auto& form : *forms)
            body += MethodEntry(*form, pages);
    body += "</dl>\n";

    // An enumeration also lists its named values.
    if (type.m_IsEnum)
        if (const auto* values = Meta::EnumMeta::GetValues(type.m_Name))
        {
            body += "<h3><u> Values </u></h3>\n<dl>\n";
            for (const auto& [name, value] : *values)
                body += "<dt><b>" + EscapeHtml(name) + "</b> = " + std::to_string(value) + "</dt>\n";
            body += "</dl>\n";
        }
    return body;
}

std::string ClassPage(const std::string& pageTemplate, const Meta::Data& type, const DocumentationGroup& group,
                      const PageNames& pages)
{
    std::string derived;
    if (type.m_Parent && !type.m_Parent->m_Name.empty())
        derived = "Parent Class: " + NameText(type.m_Parent->m_Name, pages);
    std::string dependencies;
    if (!type.m_Dependencies.empty())
    {
        dependencies = type.m_Dependencies.size() > 1 ? "<u>Dependencies:</u> " : "<u>Dependency:</u> ";
        for (std::size_t i = 0; i < type.m_Dependencies.size(); ++i)
            dependencies += (i > 0 ? ", " : "") + NameText(type.m_Dependencies[i], pages);
    }
    std::string page = FillTemplate(pageTemplate, {
                                                      {"GROUP", "Group: " + PageLink(group.m_Name)},
                                                      {"..\\style.css", "../style.css"},
                                                      {"COMPONENTNAME", EscapeHtml(type.m_Name)},
                                                      {"COMPONENTCOMMENT", EscapeHtml(type.m_Description)},
                                                      {"DERIVED", derived},
                                                      {"DEPENDENCIES", dependencies},
                                                      {"LISTCOMPONENTS", ClassList(group)},
                                                      {"<!--COMPONENTSTUFF-->", ClassBody(type, pages)},
                                                  });
    return page;
}

std::string GroupPage(const std::string& pageTemplate, const DocumentationGroup& group,
                      const std::vector<DocumentationGroup>& groups, const PageNames& pages)
{
    std::string table = "<table id = \"contents\">\n<tr>\n<td><dl>\n";
    for (const Meta::Data* type : group.m_Classes)
        table += "<dt><b>" + NameText(type->m_Name, pages) + "</b></dt>\n<dd>" + EscapeHtml(type->m_Description) +
                 "</dd>\n";
    table += "</dl></td>\n</tr>\n</table>\n";
    std::string groupList;
    for (const DocumentationGroup& other : groups)
        groupList += "<li>" + PageLink(other.m_Name) + "</li>\n";
    return FillTemplate(pageTemplate, {
                                          {"GROUPNAME", EscapeHtml(group.m_Name)},
                                          {"..\\style.css", "../style.css"},
                                          {"LISTCOMPONENTS", groupList},
                                          {"<!--GROUPSTUFF-->", table},
                                      });
}

std::string IndexPage(const std::vector<DocumentationGroup>& groups)
{
    std::string page = std::string("<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n<title>") +
                       kIndexTitle + "</title>\n<link rel=\"stylesheet\" href=\"style.css\">\n</head>\n<body>\n" +
                       "<header>\n<h1>" + kIndexTitle + "</h1>\n</header>\n<main>\n" +
                       "<p>The classes scripts can use, by group.</p>\n<ul>\n";
    for (const DocumentationGroup& group : groups)
        page += "<li>" + Link("Files/" + EncodeHref(PageFileName(group.m_Name)), group.m_Name) + "</li>\n";
    page += "</ul>\n</main>\n</body>\n</html>\n";
    return page;
}
}
