// The keyword tables of the shader description language: the words of the
// shader block, its flags, the fields of the sampler block and the names of
// filters, address modes and comparison functions, each with its number.
// Lookups give -100 (kNoKeyword) for a word that is not in the table.
#pragma once

#include <string>
#include <unordered_map>

namespace Graphics
{
// A table from word to number.
using KeywordMap = std::unordered_map<std::string, int>;

// What a lookup gives for a word the table lacks.
inline constexpr int kNoKeyword = -100;

// The number of `word` in `map`, or kNoKeyword.
int FindKeyword(const KeywordMap& map, const std::string& word);

// `}` -1, `{` -2, Type 0, EntryPoint 1, Vertex 2 ... Compute 7, Flag 8.
const KeywordMap& ShaderKeywords();
// Forward 0, Instanced 1: the bit numbers.
const KeywordMap& ShaderFlags();
// __SamplerDesc -3, `}` -2, `{` -1, Filter 0 ... MaxLOD 12.
const KeywordMap& SamplerKeywords();
// Wrap 1, Mirror 2, Clamp 3, Border 4, Once 5.
const KeywordMap& AddressModes();
// Never 1 ... Always 8.
const KeywordMap& ComparisonFunctions();
// Filter names to their D3D11_FILTER numbers; the plain anisotropic key is "ANISOTROPIC " with a
// trailing blank, so that no token ever matches it.
const KeywordMap& Filters();

// Numbers of the shader block's words.
enum ShaderKeyword : int
{
    KeyCloseBrace = -1,
    KeyOpenBrace = -2,
    KeyType = 0,
    KeyEntryPoint = 1,
    KeyFirstStage = 2,
    KeyFlag = 8,
};

// Numbers of the sampler block's words.
enum SamplerKeyword : int
{
    SamplerKeyOpener = -3,
    SamplerKeyCloseBrace = -2,
    SamplerKeyOpenBrace = -1,
    SamplerKeyFilter = 0,
    SamplerKeyAddressU = 1,
    SamplerKeyAddressV = 2,
    SamplerKeyAddressW = 3,
    SamplerKeyMipLODBias = 4,
    SamplerKeyMaxAnisotropy = 5,
    SamplerKeyComparisonFunc = 6,
    SamplerKeyBorderColor0 = 7,
    SamplerKeyBorderColor3 = 10,
    SamplerKeyMinLOD = 11,
    SamplerKeyMaxLOD = 12,
};
}
