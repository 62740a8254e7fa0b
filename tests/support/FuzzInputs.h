// The inputs a fuzz regression test reads again: the files of a folder (the
// kept crashes of tests/data/<Target>/ or the seeds of fuzz/seeds/<Target>/),
// in name order, and their bytes.
#pragma once

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

// The plain files of `folder` in name order; none when the folder does not exist.
inline std::vector<std::filesystem::path> InputsIn(const std::filesystem::path& folder)
{
    std::vector<std::filesystem::path> inputs;
    if (!std::filesystem::is_directory(folder))
        return inputs;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        if (entry.is_regular_file())
            inputs.push_back(entry.path());
    std::sort(inputs.begin(), inputs.end());
    return inputs;
}

// The whole file as bytes.
inline std::string Contents(const std::filesystem::path& path)
{
    std::ifstream file(path, std::ios::binary);
    std::ostringstream bytes;
    bytes << file.rdbuf();
    return bytes.str();
}
