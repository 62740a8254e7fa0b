// CubeBoxTests: the overlap test of the cube tree's pair listing. Two boxes
// overlap unless on some axis one's minimum exceeds the other's maximum, so
// boxes that merely touch overlap, and a NaN makes no axis apart.
//
// The pair listing tests one node against one leaf, or against up to four
// leaves at once. Where the processor has SSE the comparisons run on all axes,
// or all four leaves, together; they are the same comparisons, so the answers
// are the same as those of the plain test, which stands in elsewhere.
#pragma once

#include <cstddef>
#include <cstdint>

#if defined(__SSE2__)
#include <immintrin.h>
#endif

#include "physics/CubeTree/CubeTreeNode.h"

namespace CubeBoxTests
{
// True when the nodes' boxes overlap or touch.
inline bool Overlaps(const CubeTreeNode& a, const CubeTreeNode& b)
{
    // The six tests are combined without branches, as their outcome is hard to predict.
    const bool apart = (a.min.x > b.max.x) | (a.min.y > b.max.y) | (a.min.z > b.max.z) | (b.min.x > a.max.x) |
                       (b.min.y > a.max.y) | (b.min.z > a.max.z);
    return !apart;
}

// Most leaves tested at once.
constexpr int kGroupSize = 4;

#if defined(__SSE2__)
// The node's box is read as two rows of four floats: the maximum corner and the minimum's x, then
// the minimum corner and four bytes of padding. Only the first three lanes of each count.
static_assert(offsetof(CubeTreeNode, min) == offsetof(CubeTreeNode, max) + 12, "min follows max");
static_assert(offsetof(CubeTreeNode, collider) >= offsetof(CubeTreeNode, min) + 16, "room to read min as four floats");

// One leaf's box, ready to be tested against nodes.
struct LeafBox
{
    __m128 min;
    __m128 max;
};

// The box of the leaf `leaf`.
inline LeafBox BoxOf(const CubeTreeNode& leaf)
{
    return {_mm_setr_ps(leaf.min.x, leaf.min.y, leaf.min.z, 0.0f), _mm_setr_ps(leaf.max.x, leaf.max.y, leaf.max.z, 0.0f)};
}

// True when the node's box overlaps or touches the leaf's.
inline bool Overlaps(const CubeTreeNode& node, const LeafBox& leaf)
{
    const __m128 max = _mm_loadu_ps(&node.max.x);
    const __m128 min = _mm_loadu_ps(&node.min.x);
    const __m128 apart = _mm_or_ps(_mm_cmpgt_ps(min, leaf.max), _mm_cmpgt_ps(leaf.min, max));
    return (_mm_movemask_ps(apart) & 7) == 0;
}

// Up to four leaves' boxes, one lane per leaf and one row per coordinate.
struct GroupBoxes
{
    __m128 minX, minY, minZ, maxX, maxY, maxZ;
};

// The boxes of `count` leaves; the lanes past them hold zeros, which the caller must ignore.
inline GroupBoxes BoxesOf(const CubeTreeNode* const* leaves, int count)
{
    alignas(16) float rows[6][kGroupSize] = {};
    for (int i = 0; i < count; ++i)
    {
        rows[0][i] = leaves[i]->min.x;
        rows[1][i] = leaves[i]->min.y;
        rows[2][i] = leaves[i]->min.z;
        rows[3][i] = leaves[i]->max.x;
        rows[4][i] = leaves[i]->max.y;
        rows[5][i] = leaves[i]->max.z;
    }
    return {_mm_load_ps(rows[0]), _mm_load_ps(rows[1]), _mm_load_ps(rows[2]),
            _mm_load_ps(rows[3]), _mm_load_ps(rows[4]), _mm_load_ps(rows[5])};
}

// Bit i set when the node's box overlaps or touches leaf i's.
inline uint32_t Overlapping(const CubeTreeNode& node, const GroupBoxes& group)
{
    // Each coordinate of the node is spread over four lanes from the two rows read from the node.
    const __m128 max = _mm_loadu_ps(&node.max.x);
    const __m128 min = _mm_loadu_ps(&node.min.x);
    __m128 apart = _mm_cmpgt_ps(_mm_shuffle_ps(min, min, 0x00), group.maxX);
    apart = _mm_or_ps(apart, _mm_cmpgt_ps(_mm_shuffle_ps(min, min, 0x55), group.maxY));
    apart = _mm_or_ps(apart, _mm_cmpgt_ps(_mm_shuffle_ps(min, min, 0xAA), group.maxZ));
    apart = _mm_or_ps(apart, _mm_cmpgt_ps(group.minX, _mm_shuffle_ps(max, max, 0x00)));
    apart = _mm_or_ps(apart, _mm_cmpgt_ps(group.minY, _mm_shuffle_ps(max, max, 0x55)));
    apart = _mm_or_ps(apart, _mm_cmpgt_ps(group.minZ, _mm_shuffle_ps(max, max, 0xAA)));
    return static_cast<uint32_t>(~_mm_movemask_ps(apart)) & 0xFu;
}
#else
// One leaf's box, ready to be tested against nodes.
using LeafBox = CubeTreeNode;

// The box of the leaf `leaf`.
inline LeafBox BoxOf(const CubeTreeNode& leaf)
{
    return leaf;
}

// Up to four leaves' boxes.
struct GroupBoxes
{
    CubeTreeNode leaves[kGroupSize];
    int count;
};

// The boxes of `count` leaves.
inline GroupBoxes BoxesOf(const CubeTreeNode* const* leaves, int count)
{
    GroupBoxes group{};
    for (int i = 0; i < count; ++i)
        group.leaves[i] = *leaves[i];
    group.count = count;
    return group;
}

// Bit i set when the node's box overlaps or touches leaf i's.
inline uint32_t Overlapping(const CubeTreeNode& node, const GroupBoxes& group)
{
    uint32_t bits = 0;
    for (int i = 0; i < group.count; ++i)
        bits |= Overlaps(node, group.leaves[i]) ? 1u << i : 0u;
    return bits;
}
#endif
}
