#include "utilities/DocumentationGen/HtmlText.h"

namespace DocGen
{
std::string EscapeHtml(std::string_view text)
{
    std::string out;
    out.reserve(text.size());
    for (char c : text)
    {
        switch (c)
        {
        case '&': out += "&amp;"; break;
        case '<': out += "&lt;"; break;
        case '>': out += "&gt;"; break;
        case '"': out += "&quot;"; break;
        default: out += c;
        }
    }
    return out;
}

std::string PageFileName(std::string_view name)
{
    std::string file;
    for (char c : name)
        file += (c == '/' || c == '\\' || c == '\0' || c == ':' || c == '*' || c == '?' || c == '|') ? '_' : c;
    if (file.empty() || file == "." || file == "..")
        file = "_" + file;
    return file + ".html";
}

std::string EncodeHref(std::string_view fileName)
{
    static const char* const kHex = "0123456789ABCDEF";
    std::string out;
    for (char c : fileName)
    {
        const unsigned char byte = static_cast<unsigned char>(c);
        const bool plain = (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') || (byte >= '0' && byte <= '9') ||
                           byte == '-' || byte == '.' || byte == '_';
        if (plain)
            out += c;
        else
        {
            out += '%';
            out += kHex[byte >> 4];
            out += kHex[byte & 15];
        }
    }
    return out;
}

std::string Link(std::string_view href, std::string_view text)
{
    return "<a href=\"" + std::string(href) + "\">" + EscapeHtml(text) + "</a>";
}

std::string PageLink(std::string_view name)
{
    return Link(EncodeHref(PageFileName(name)), name);
}

std::string FillTemplate(std::string_view text, const std::vector<Marker>& markers)
{
    std::string out;
    out.reserve(text.size());
    std::size_t at = 0;
    while (at < text.size())
    {
        const Marker* found = nullptr;
        for (const Marker& marker : markers)
            if (!marker.first.empty() && text.compare(at, marker.first.size(), marker.first) == 0)
            {
                found = &marker;
                break;
            }
        if (found)
        {
            out += found->second;
            at += found->first.size();
        }
        else
            out += text[at++];
    }
    return out;
}
}
