// Reading a generated script reference back in the tests: every page's text and
// the links it holds, resolved to files.
#pragma once

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

// The text of a file, or "" when it cannot be read.
inline std::string ReadText(const std::filesystem::path& path)
{
    std::ifstream file(path, std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

// Every href="..." of a page, as written.
inline std::vector<std::string> HrefsOf(const std::string& page)
{
    std::vector<std::string> hrefs;
    const std::string open = "href=\"";
    for (std::size_t at = page.find(open); at != std::string::npos; at = page.find(open, at + 1))
    {
        const std::size_t start = at + open.size();
        const std::size_t end = page.find('"', start);
        if (end == std::string::npos)
            break;
        hrefs.push_back(page.substr(start, end - start));
    }
    return hrefs;
}

// A link's path with its %XX escapes decoded.
inline std::string DecodeHref(const std::string& href)
{
    std::string out;
    for (std::size_t i = 0; i < href.size(); ++i)
    {
        if (href[i] == '%' && i + 2 < href.size())
        {
            out += static_cast<char>(std::stoi(href.substr(i + 1, 2), nullptr, 16));
            i += 2;
        }
        else
            out += href[i];
    }
    return out;
}

// Every .html file under the folder.
inline std::vector<std::filesystem::path> PagesUnder(const std::filesystem::path& folder)
{
    std::vector<std::filesystem::path> pages;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder))
        if (entry.path().extension() == ".html")
            pages.push_back(entry.path());
    return pages;
}
