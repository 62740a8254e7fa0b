#include "Graphics_Engine/QuadTree/QuadTree.h"

#include "Graphics_Engine/Components/BaseGraphicsComponent.h"
#include "Graphics_Engine/Frustum.h"
#include "engine/GameObject.h"
#include "engine/Log.h"
#include "utilities/Meta/Registration.h"

#include <algorithm>

META_REGISTER_NS(Graphics, QuadTree)
{
    DESCRIPTION("The culling structure of a space: a tree of boxes over the room's grid of cells.");
    HELP("The objects within a radius of a point (a vector of game objects).");
    METHOD(GetObjectsInRadius);
    HELP("Sets the grid (lowest corner, cell size, cells along x, cells along z) and builds the tree over it.");
    METHOD(BuildGrid);
}

namespace Graphics
{
namespace
{
// How much larger than a child's box an object may reach and still go into that child.
constexpr float kLooseness = 1.05f;
// The most cells a grid may have (a room is tens of cells across).
constexpr long long kMostCells = 1 << 20;
}

Meta::Data* QuadTree::GetMeta() const
{
    return Meta::Get<QuadTree>();
}

bool QuadTree::IsLive(int index) const
{
    return index >= 0 && index < static_cast<int>(m_Objects.size()) &&
           !m_Objects[static_cast<std::size_t>(index)].Removed;
}

int QuadTree::MakeParent(const int* children, int count)
{
    QuadTreeNode parent;
    parent.Index = static_cast<int>(m_Nodes.size());
    parent.Tree = this;
    float low[3] = {0, 0, 0};
    float high[3] = {0, 0, 0};
    for (int i = 0; i < count; ++i)
    {
        const QuadTreeNode& child = m_Nodes[static_cast<std::size_t>(children[i])];
        const float childLow[3] = {child.Center.x - child.HalfSize.x, child.Center.y - child.HalfSize.y,
                                   child.Center.z - child.HalfSize.z};
        const float childHigh[3] = {child.Center.x + child.HalfSize.x, child.Center.y + child.HalfSize.y,
                                    child.Center.z + child.HalfSize.z};
        for (int axis = 0; axis < 3; ++axis)
        {
            low[axis] = i == 0 ? childLow[axis] : std::min(low[axis], childLow[axis]);
            high[axis] = i == 0 ? childHigh[axis] : std::max(high[axis], childHigh[axis]);
        }
        parent.Children[i] = children[i];
    }
    parent.Center = Math::Point3D(0.5f * (low[0] + high[0]), 0.5f * (low[1] + high[1]), 0.5f * (low[2] + high[2]));
    parent.HalfSize = Math::Vector3D(0.5f * (high[0] - low[0]), 0.5f * (high[1] - low[1]), 0.5f * (high[2] - low[2]));
    m_Nodes.push_back(std::move(parent));
    for (int i = 0; i < count; ++i)
        m_Nodes[static_cast<std::size_t>(children[i])].Parent = m_Nodes.back().Index;
    return m_Nodes.back().Index;
}

void QuadTree::BuildGrid(const Math::Point3D& origin, const Math::Vector3D& cellSize, int cellsAcross,
                         int cellsDown)
{
    if (static_cast<long long>(cellsAcross) * cellsDown > kMostCells)
    {
        LOG("WARNING", "A quad tree grid of " + std::to_string(cellsAcross) + " by " + std::to_string(cellsDown) +
                           " cells is more than a room can have; the tree is left as it was.");
        return;
    }
    m_Origin = origin;
    m_CellSize = cellSize;
    m_CellsAcross = cellsAcross;
    m_CellsDown = cellsDown;
    Build();
}

void QuadTree::Build()
{
    m_Pending.clear();
    for (std::size_t i = 0; i < m_Objects.size(); ++i)
    {
        m_Objects[i].Node = -1;
        if (!m_Objects[i].Removed)
            m_Pending.push_back(static_cast<int>(i));
    }
    m_Nodes.clear();
    m_Root = -1;
    m_NodeCount = 0;
    if (m_CellsAcross <= 0 || m_CellsDown <= 0)
        return;

    const Math::Vector3D half = m_CellSize * 0.5f;
    std::vector<int> level;
    level.reserve(static_cast<std::size_t>(m_CellsAcross) * static_cast<std::size_t>(m_CellsDown));
    for (int row = 0; row < m_CellsDown; ++row)
        for (int column = 0; column < m_CellsAcross; ++column)
        {
            QuadTreeNode leaf;
            leaf.Index = static_cast<int>(m_Nodes.size());
            leaf.Tree = this;
            leaf.Center = Math::Point3D(m_Origin.x + 0.5f * m_CellSize.x + static_cast<float>(column) * m_CellSize.x,
                                        m_Origin.y,
                                        m_Origin.z + 0.5f * m_CellSize.z + static_cast<float>(row) * m_CellSize.z);
            leaf.HalfSize = half;
            level.push_back(leaf.Index);
            m_Nodes.push_back(std::move(leaf));
        }

    // Merge while the level has at least two rows and two columns.
    int columns = m_CellsAcross;
    int rows = m_CellsDown;
    std::vector<int> next;
    while (columns >= 2 && rows >= 2)
    {
        const int nextColumns = (columns + 1) / 2;
        const int nextRows = (rows + 1) / 2;
        next.clear();
        for (int row = 0; row < nextRows; ++row)
            for (int column = 0; column < nextColumns; ++column)
            {
                const int r = 2 * row;
                const int c = 2 * column;
                const bool right = c + 1 < columns;
                const bool below = r + 1 < rows;
                int children[4];
                int count = 0;
                children[count++] = level[static_cast<std::size_t>(r * columns + c)];
                if (right)
                    children[count++] = level[static_cast<std::size_t>(r * columns + c + 1)];
                if (below)
                    children[count++] = level[static_cast<std::size_t>((r + 1) * columns + c)];
                if (right && below)
                    children[count++] = level[static_cast<std::size_t>((r + 1) * columns + c + 1)];
                // The last odd corner carries its cell up unchanged.
                next.push_back(count == 1 ? children[0] : MakeParent(children, count));
            }
        level.swap(next);
        columns = nextColumns;
        rows = nextRows;
    }
    m_Root = level.front();
    m_NodeCount = static_cast<int>(m_Nodes.size());
}

bool QuadTree::Contains(const QuadTreeNode& node, const QuadTreeObject& object) const
{
    const float center[3] = {node.Center.x, node.Center.y, node.Center.z};
    const float half[3] = {node.HalfSize.x, node.HalfSize.y, node.HalfSize.z};
    const float position[3] = {object.Position.x, object.Position.y, object.Position.z};
    const float scale[3] = {object.Scale.x, object.Scale.y, object.Scale.z};
    for (int axis = 0; axis < 3; ++axis)
    {
        const float low = center[axis] - kLooseness * half[axis];
        const float high = center[axis] + kLooseness * half[axis];
        if (!(low < position[axis] - 0.5f * scale[axis]) || !(position[axis] + 0.5f * scale[axis] < high))
            return false;
    }
    return true;
}

void QuadTree::Update()
{
    if (m_Root < 0)
        return;
    std::vector<int>& passing = m_Nodes[static_cast<std::size_t>(m_Root)].Passing;
    for (int index : m_Pending)
        if (IsLive(index))
            passing.push_back(index);
    m_Pending.clear();
    Distribute(m_Root);
}

void QuadTree::Distribute(int nodeIndex)
{
    QuadTreeNode& node = m_Nodes[static_cast<std::size_t>(nodeIndex)];
    for (int index : node.Passing)
    {
        QuadTreeObject& object = m_Objects[static_cast<std::size_t>(index)];
        if (object.Removed)
            continue;
        bool placed = false;
        for (int child : node.Children)
        {
            if (child < 0)
                continue;
            QuadTreeNode& childNode = m_Nodes[static_cast<std::size_t>(child)];
            if (Contains(childNode, object))
            {
                childNode.Passing.push_back(index);
                placed = true;
                break;
            }
        }
        if (!placed)
        {
            node.Objects.insert(index);
            object.Node = nodeIndex;
        }
    }
    node.Passing.clear();
    for (int child : node.Children)
        if (child >= 0)
            Distribute(child);
}

int QuadTree::AddObject(BaseGraphicsComponent* component, const Math::Point3D& position,
                        const Math::Vector3D& scale, const Math::Quaternion& rotation)
{
    int index;
    if (!m_FreeIndices.empty())
    {
        index = m_FreeIndices.front();
        m_FreeIndices.pop_front();
    }
    else
    {
        index = static_cast<int>(m_Objects.size());
        m_Objects.emplace_back();
    }
    QuadTreeObject& object = m_Objects[static_cast<std::size_t>(index)];
    object = QuadTreeObject();
    object.Component = component;
    object.Position = position;
    object.Scale = scale;
    object.Rotation = rotation;
    m_Pending.push_back(index);
    return index;
}

void QuadTree::UpdateObject(int index, const Math::Point3D& position, const Math::Vector3D& scale,
                            const Math::Quaternion& rotation)
{
    if (!IsLive(index))
        return;
    QuadTreeObject& object = m_Objects[static_cast<std::size_t>(index)];
    object.Position = position;
    object.Scale = scale;
    object.Rotation = rotation;
    if (object.Node >= 0)
    {
        m_Nodes[static_cast<std::size_t>(object.Node)].Objects.erase(index);
        object.Node = -1;
        m_Pending.push_back(index);
    }
}

void QuadTree::RemoveObject(int index)
{
    if (!IsLive(index))
        return;
    QuadTreeObject& object = m_Objects[static_cast<std::size_t>(index)];
    if (object.Node >= 0)
        m_Nodes[static_cast<std::size_t>(object.Node)].Objects.erase(index);
    object.Node = -1;
    object.Removed = true;
    object.Component = nullptr;
    m_FreeIndices.push_back(index);
}

void QuadTree::GetVisibleObjects(const Frustum& frustum, std::vector<int>& out) const
{
    if (m_Root < 0)
        return;
    CollectVisible(m_Nodes[static_cast<std::size_t>(m_Root)], frustum, out);
}

void QuadTree::CollectVisible(const QuadTreeNode& node, const Frustum& frustum, std::vector<int>& out) const
{
    for (int index : node.Objects)
        if (m_Objects[static_cast<std::size_t>(index)].Visible)
            out.push_back(index);
    for (int child : node.Children)
    {
        if (child < 0)
            continue;
        const QuadTreeNode& childNode = m_Nodes[static_cast<std::size_t>(child)];
        if (!frustum.IsBoxOutside(childNode.Center, childNode.HalfSize))
            CollectVisible(childNode, frustum, out);
    }
}

std::vector<GameObject*> QuadTree::GetObjectsInRadius(const Math::Point3D& point, float radius) const
{
    std::vector<GameObject*> found;
    if (m_Root >= 0)
        CollectInRadius(m_Nodes[static_cast<std::size_t>(m_Root)], point, radius * radius, found);
    return found;
}

void QuadTree::CollectInRadius(const QuadTreeNode& node, const Math::Point3D& point, float radiusSquared,
                               std::vector<GameObject*>& out) const
{
    // The box tested is half as wide as the node's own (centre plus and minus half the half size).
    const float center[3] = {node.Center.x, node.Center.y, node.Center.z};
    const float half[3] = {0.5f * node.HalfSize.x, 0.5f * node.HalfSize.y, 0.5f * node.HalfSize.z};
    const float p[3] = {point.x, point.y, point.z};
    float distanceSquared = 0.0f;
    for (int axis = 0; axis < 3; ++axis)
    {
        const float low = center[axis] - half[axis];
        const float high = center[axis] + half[axis];
        const float outside = p[axis] < low ? low - p[axis] : (p[axis] > high ? p[axis] - high : 0.0f);
        distanceSquared += outside * outside;
    }
    const bool inside = distanceSquared == 0.0f;
    if (!inside && !(distanceSquared < radiusSquared))
        return;

    for (int index : node.Objects)
    {
        const QuadTreeObject& object = m_Objects[static_cast<std::size_t>(index)];
        if (object.Position.DistanceSquared(point) < radiusSquared && object.Component &&
            object.Component->m_Owner)
            out.push_back(object.Component->m_Owner);
    }
    for (int child : node.Children)
        if (child >= 0)
            CollectInRadius(m_Nodes[static_cast<std::size_t>(child)], point, radiusSquared, out);
}
}
