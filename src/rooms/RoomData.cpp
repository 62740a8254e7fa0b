// The tile grid's bounds and its text form.
#include "rooms/RoomData.h"

#include "utilities/Serialization/Serializer.h"

#include <algorithm>
#include <limits>
#include <sstream>
#include <string>

std::size_t RoomData::Width(const std::vector<std::vector<int>>& grid)
{
    std::size_t width = 0;
    for (const std::vector<int>& row : grid)
        width = std::max(width, row.size());
    return width;
}

void RoomData::ComputeBounds()
{
    constexpr float kMax = std::numeric_limits<float>::max();
    Left = kMax;
    Right = -kMax;
    Top = -kMax;
    Bottom = kMax;
    const float w = static_cast<float>(Width(RoomVec));
    const float h = static_cast<float>(Height(RoomVec));
    for (std::size_t r = 0; r < RoomVec.size(); ++r)
        for (std::size_t c = 0; c < RoomVec[r].size(); ++c)
        {
            if (RoomVec[r][c] == 0)
                continue;
            const float x = static_cast<float>(c) - w * 0.5f - 0.5f;
            const float z = static_cast<float>(r) - h * 0.5f - 0.5f;
            Left = std::min(Left, x);
            Right = std::max(Right, x);
            Top = std::max(Top, z);
            Bottom = std::min(Bottom, z);
        }
}

namespace Util
{
template <>
void WriteValue<RoomData>(Serializer& serializer, const RoomData& value)
{
    std::iostream& out = serializer.m_Stream;
    out << "{\n";
    for (const std::vector<int>& row : value.RoomVec)
    {
        serializer.WriteIndent();
        for (std::size_t c = 0; c < row.size(); ++c)
            out << (c ? " " : "") << row[c];
        out << '\n';
    }
    serializer.WriteIndent();
    out << '}';
}

template <>
void ReadValue<RoomData>(Serializer& serializer, RoomData& value)
{
    std::iostream& in = serializer.m_Stream;
    if (!serializer.ReadUntil('{'))
        return;
    // The rest of the brace's line.
    std::string line;
    std::getline(in, line);
    value.RoomVec.clear();
    while (std::getline(in, line))
    {
        const std::size_t first = line.find_first_not_of(" \t\r");
        if (first != std::string::npos && line[first] == '}')
        {
            // Whatever follows the brace on its line belongs to the block around this one.
            if (first + 1 < line.size())
                serializer.PutBack(line.size() - first - 1 + (in.eof() ? 0 : 1));
            return;
        }
        std::istringstream numbers(line);
        std::vector<int> row;
        int number = 0;
        while (numbers >> number)
            row.push_back(number);
        value.RoomVec.push_back(std::move(row));
    }
    // The input ended inside the block: keep the rows read, leave the stream usable for the caller.
    in.clear(std::ios::eofbit);
}
}
