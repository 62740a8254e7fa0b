// Graphics::QuadTree: the culling structure of one space. The room generator
// sets the grid (origin, cell size, cells across and down) and calls Build,
// which makes one leaf per cell and merges the levels upwards, two by two,
// into a root. Objects are records in a flat vector, found by stable indices
// (a removed index is reused first); nodes are indices into another vector,
// so the tree survives vector growth. Added and moved objects wait on the
// pending list and are placed at the next Update, from the root down, in the
// first child that loosely contains them (1.05 times the child's box),
// otherwise in the node itself. Before Build there is no root: every query
// yields nothing and objects wait on the pending list.
#pragma once

#include "engine/Math/Point3D.h"
#include "engine/Math/Quaternion.h"
#include "engine/Math/Vector3D.h"

#include <deque>
#include <set>
#include <vector>

class GameObject;

namespace Meta
{
class Data;
}

namespace Graphics
{
class BaseGraphicsComponent;
class Frustum;
class QuadTree;

// One object held by the tree.
struct QuadTreeObject
{
    // World position of the object's centre.
    Math::Point3D Position;
    // The object's scale, also its box's size for placement.
    Math::Vector3D Scale{1.0f, 1.0f, 1.0f};
    // The object's rotation.
    Math::Quaternion Rotation;
    // The component that owns the record.
    BaseGraphicsComponent* Component = nullptr;
    // The node whose set holds the object; -1 when in none.
    int Node = -1;
    // Whether queries for visible objects return it.
    bool Visible = true;
    // True once removed; the index waits for reuse.
    bool Removed = false;
};

// One node: a box, the objects it holds and its children.
struct QuadTreeNode
{
    // Centre of the node's box.
    Math::Point3D Center;
    // Half the size of the node's box.
    Math::Vector3D HalfSize;
    // Indices of the objects held here.
    std::set<int> Objects;
    // Objects passing through during distribution.
    std::vector<int> Passing;
    // Child node indices; -1 for none.
    int Children[4] = {-1, -1, -1, -1};
    // Parent node index; -1 for the root and before merging.
    int Parent = -1;
    // This node's index.
    int Index = -1;
    // The tree the node belongs to.
    QuadTree* Tree = nullptr;
};

class QuadTree
{
public:
    QuadTree() = default;
    // Copies would point their nodes at the wrong tree.
    QuadTree(const QuadTree&) = delete;
    QuadTree& operator=(const QuadTree&) = delete;

    // Makes the nodes of the grid and puts every live object on the pending list.
    void Build();
    // Sets the grid (its lowest corner, the size of a cell, cells along x and z) and builds: the
    // room generator's call, also open to scripts.
    void BuildGrid(const Math::Point3D& origin, const Math::Vector3D& cellSize, int cellsAcross, int cellsDown);
    // Places the pending objects, from the root down; nothing without a root.
    void Update();
    // A new object record (a freed index first), on the pending list; returns its index.
    int AddObject(BaseGraphicsComponent* component, const Math::Point3D& position, const Math::Vector3D& scale,
                  const Math::Quaternion& rotation);
    // Writes the object's placement; an object in a node leaves it for the pending list.
    void UpdateObject(int index, const Math::Point3D& position, const Math::Vector3D& scale,
                      const Math::Quaternion& rotation);
    // Takes the object out of its node and frees its index for reuse.
    void RemoveObject(int index);

    // Appends the indices of the visible objects of every node the frustum reaches; the root is
    // never tested, a child outside skips its whole subtree. Nothing without a root.
    void GetVisibleObjects(const Frustum& frustum, std::vector<int>& out) const;
    // The objects whose position lies strictly within `radius` of `point`, in node-walk order. A node
    // is entered when the point is in, or within the radius of, a box half as wide as the node's.
    std::vector<GameObject*> GetObjectsInRadius(const Math::Point3D& point, float radius) const;

    // The object record of an index; the index must be valid.
    QuadTreeObject& GetObject(int index) { return m_Objects[static_cast<std::size_t>(index)]; }
    const QuadTreeObject& GetObject(int index) const { return m_Objects[static_cast<std::size_t>(index)]; }
    // True for an index of a live record.
    bool IsLive(int index) const;
    // The node of an index; the index must be valid.
    const QuadTreeNode& GetNode(int index) const { return m_Nodes[static_cast<std::size_t>(index)]; }
    // The number of nodes.
    int GetNodeCount() const { return static_cast<int>(m_Nodes.size()); }
    // The root's node index, -1 before Build.
    int GetRoot() const { return m_Root; }
    // The indices waiting for the next Update.
    const std::vector<int>& GetPending() const { return m_Pending; }

    Meta::Data* GetMeta() const;

    // Corner of the grid (lowest x and z); its y is the nodes' centre height.
    Math::Point3D m_Origin;
    // Size of one cell.
    Math::Vector3D m_CellSize{1.0f, 1.0f, 1.0f};
    // Cells along x.
    int m_CellsAcross = 0;
    // Cells along z.
    int m_CellsDown = 0;
    // Nodes made by the last Build.
    int m_NodeCount = 0;

private:
    void Distribute(int node);
    bool Contains(const QuadTreeNode& node, const QuadTreeObject& object) const;
    void CollectVisible(const QuadTreeNode& node, const Frustum& frustum, std::vector<int>& out) const;
    void CollectInRadius(const QuadTreeNode& node, const Math::Point3D& point, float radiusSquared,
                         std::vector<GameObject*>& out) const;
    int MakeParent(const int* children, int count);

    int m_Root = -1;
    std::vector<QuadTreeObject> m_Objects;
    std::deque<int> m_FreeIndices;
    std::vector<QuadTreeNode> m_Nodes;
    std::vector<int> m_Pending;
};
}
