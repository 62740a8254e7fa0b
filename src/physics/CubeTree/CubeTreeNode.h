// CubeTreeNode: one node of the cube tree, held by value in the tree's vector
// and linked to its parent and children by index (-1 for none). A node is a
// leaf exactly when left is -1; a leaf holds a collider and its box, an inner
// node the union of its two children's boxes. Released nodes stay in the
// vector with their free flag set until they are reused.
//
// The box corners are three plain floats rather than Math::Point3D, whose
// virtual destructor would add a pointer to each corner: the node then fills
// exactly one 64-byte cache line, which the pair listing reads node by node.
#pragma once

#include <cstdint>

class Collider;

// One corner of a node's box.
struct CubeCorner
{
    // The first coordinate.
    float x = 0.0f;
    // The second coordinate.
    float y = 0.0f;
    // The third coordinate.
    float z = 0.0f;
};

struct alignas(64) CubeTreeNode
{
    // Index of the parent; -1 at the root.
    int32_t parent = -1;
    // Index of the left child; -1 in a leaf.
    int32_t left = -1;
    // Index of the right child; -1 in a leaf.
    int32_t right = -1;
    // Maximum corner of the node's cube.
    CubeCorner max;
    // Minimum corner of the node's cube.
    CubeCorner min;
    // The collider of a leaf; null in an inner node.
    Collider* collider = nullptr;
    // 1 when the node was released.
    uint32_t free = 0;

    // True when the node has no children.
    bool IsLeaf() const { return left == -1; }
};
