#include "utilities/DocumentationGen/GenerateDocumentation.h"

#include "engine/Files.h"
#include "engine/Log.h"
#include "engine/Space.h"
#include "engine/SpaceManager.h"
#include "utilities/DocumentationGen/DocumentationPages.h"
#include "utilities/DocumentationGen/FallbackTemplates.h"
#include "utilities/DocumentationGen/HtmlText.h"
#include "utilities/Meta/Registration.h"

#include <filesystem>
#include <fstream>
#include <sstream>
#include <system_error>

namespace
{
// The pseudo-class "void", so that a method without a result has a type name with a page.
struct VoidType
{
};

void RegisterVoid()
{
    if (!Meta::FindData("void"))
        Meta::Register<VoidType>("void", "").m_Size = 0;
}

// The whole text of a file into `text`; false when it cannot be read.
bool ReadWhole(const std::string& path, std::string& text)
{
    std::ifstream file(path, std::ios::binary);
    if (!file)
        return false;
    std::ostringstream stream;
    stream << file.rdbuf();
    text = stream.str();
    return true;
}

// A template of the data directory, or the built-in one (reported) when it cannot be read.
std::string ReadTemplate(const std::string& path, const char* fallback)
{
    std::string text;
    if (ReadWhole(path, text))
        return text;
    LOG("WARNING", "Documentation template not found: \"" + path + "\". The built-in template is used.");
    return fallback;
}

bool WriteWhole(const std::string& path, const std::string& text)
{
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file << text;
    file.close();
    if (!file)
    {
        LOG("ERROR", "Could not write the documentation page \"" + path + "\".");
        return false;
    }
    return true;
}

// The types each space files as its systems.
DocGen::SpaceSystemTypes FindSpaceSystems()
{
    DocGen::SpaceSystemTypes types;
    Engine::SpaceManager& spaces = Engine::SpaceManager::Get();
    for (unsigned i = 0; Engine::Space* space = spaces.GetSpace(i); ++i)
        for (const auto& [key, system] : space->m_SystemsByType)
            types.insert(key);
    return types;
}

std::string WithSlash(std::string folder)
{
    if (folder.empty())
        folder = DocGen::kDefaultDocumentationFolder;
    for (char& c : folder)
        if (c == '\\')
            c = '/';
    if (folder.back() != '/')
        folder += '/';
    return folder;
}
}

bool GenerateDocumentation(const std::string& requestedFolder, const std::string& dataDirectory)
{
    using namespace DocGen;
    // 1. "void" names the result of methods that give none.
    RegisterVoid();
    // 2. The folder and its "Files/".
    const std::string folder = WithSlash(requestedFolder);
    std::error_code error;
    std::filesystem::create_directories(folder + "Files", error);
    if (!std::filesystem::is_directory(folder + "Files"))
    {
        LOG("ERROR", "Could not make the documentation folder \"" + folder + "Files/\".");
        return false;
    }
    // 3. The style sheet.
    const std::string source = dataDirectory + "DocumentationGen/";
    std::string style;
    if (!ReadWhole(source + "style.css", style))
    {
        LOG("WARNING", "Documentation style sheet not found: \"" + source + "style.css\". The built-in one is used.");
        style = kFallbackStyle;
    }
    bool written = WriteWhole(folder + "style.css", style);
    // 4. The templates.
    const std::string classTemplate = ReadTemplate(source + "ComponentTemplate.html", kFallbackClassTemplate);
    const std::string groupTemplate = ReadTemplate(source + "GroupTemplate.html", kFallbackGroupTemplate);
    // 5 to 7. The seven groups, each sorted.
    const std::vector<DocumentationGroup> groups = MakeGroups(Meta::AllTypes(), FindSpaceSystems());
    PageNames pages;
    for (const DocumentationGroup& group : groups)
        for (const Meta::Data* type : group.m_Classes)
            pages.insert(type->m_Name);
    // 8. The pages of each group's classes, the group pages, the index.
    for (const DocumentationGroup& group : groups)
    {
        for (const Meta::Data* type : group.m_Classes)
            written &= WriteWhole(folder + "Files/" + PageFileName(type->m_Name),
                                  ClassPage(classTemplate, *type, group, pages));
        written &= WriteWhole(folder + "Files/" + PageFileName(group.m_Name),
                              GroupPage(groupTemplate, group, groups, pages));
    }
    written &= WriteWhole(folder + "index.html", IndexPage(groups));
    if (written)
        LOG("Info", "Documentation written to \"" + folder + "\".");
    return written;
}

bool GenerateDocumentation()
{
    return GenerateDocumentation(DocGen::kDefaultDocumentationFolder, Util::GetDataDirectory());
}
