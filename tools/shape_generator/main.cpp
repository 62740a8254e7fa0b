// vorn_make_shapes: writes the simple shapes of ShapeTable.h as static kbm
// models into a folder.
//
//   vorn_make_shapes OUTPUT_FOLDER [SHAPE...]   all shapes, or the ones named
//   vorn_make_shapes --list                     the shapes, one a line
//
// An unknown shape or option prints the usage and exits with 2; a file that
// cannot be written is named on standard error and the exit code is 1.
#include "Graphics_Engine/Model/ModelFile.h"
#include "shape_generator/ShapeTable.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>
#include <vector>

namespace
{
void PrintUsage(std::ostream& out)
{
    out << "usage: vorn_make_shapes OUTPUT_FOLDER [SHAPE...]\n"
           "       vorn_make_shapes --list\n"
           "Writes each shape (all when none is named) as OUTPUT_FOLDER/<shape>.kbm. Shapes:\n";
    for (const ShapeTools::NamedShape& shape : ShapeTools::ShapeTable())
        out << "  " << shape.Name << std::string(12 - std::min<std::size_t>(shape.Name.size(), 11), ' ')
            << shape.Description << "\n";
}
}

int main(int argc, char** argv)
{
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    if (arguments.size() == 1 && (arguments[0] == "--list" || arguments[0] == "--help" || arguments[0] == "-h"))
    {
        if (arguments[0] == "--list")
            for (const ShapeTools::NamedShape& shape : ShapeTools::ShapeTable())
                std::cout << shape.Name << "\n";
        else
            PrintUsage(std::cout);
        return 0;
    }
    if (arguments.empty() || arguments[0].starts_with("-"))
    {
        std::cerr << "vorn_make_shapes: " << (arguments.empty() ? "no output folder given" : "unknown option \"" + arguments[0] + "\"")
                  << "\n";
        PrintUsage(std::cerr);
        return 2;
    }
    std::vector<const ShapeTools::NamedShape*> chosen;
    for (std::size_t i = 1; i < arguments.size(); ++i)
    {
        const ShapeTools::NamedShape* shape = ShapeTools::FindShape(arguments[i]);
        if (!shape)
        {
            std::cerr << "vorn_make_shapes: unknown shape \"" << arguments[i] << "\"\n";
            PrintUsage(std::cerr);
            return 2;
        }
        chosen.push_back(shape);
    }
    if (chosen.empty())
        for (const ShapeTools::NamedShape& shape : ShapeTools::ShapeTable())
            chosen.push_back(&shape);

    const std::filesystem::path folder = arguments[0];
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    int failures = 0;
    for (const ShapeTools::NamedShape* shape : chosen)
    {
        const Graphics::ModelFile model = shape->Make().Build();
        const std::vector<std::uint8_t> bytes = Graphics::WriteKbm(model);
        const std::filesystem::path path = folder / (shape->Name + ".kbm");
        std::ofstream out(path, std::ios::binary | std::ios::trunc);
        out.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
        out.close();
        if (!out)
        {
            std::cerr << "vorn_make_shapes: \"" << path.string() << "\" could not be written\n";
            ++failures;
            continue;
        }
        std::cout << path.string() << ": " << model.Vertices.size() << " vertices, " << model.Indices.size()
                  << " indices\n";
    }
    return failures == 0 ? 0 : 1;
}
