// CubeTreeChecks: the cube tree's two guarded conditions, shared by its files.
// Every node access by index checks "index >= 0" (and that the index is in the
// vector): a bad index is reported as an error naming the file CubeTree and a
// blank scratch node stands in, so the caller goes on harmlessly. Every push
// onto a query stack checks "sp < stack_size": a full stack is reported the
// same way and the entry is dropped.
#pragma once

#include <cstddef>
#include <cstdint>

#include "physics/CubeTree/CubeTree.h"

namespace CubeTreeChecks
{
// Reports a bad node index and returns a freshly blanked scratch node.
CubeTreeNode& BadIndex();
// Reports a push onto a full query stack.
void StackFull();

// Pushes `index` unless the stack is full, which is reported instead.
inline void Push(CubeTree::Stack& stack, int& sp, int32_t index)
{
    if (sp >= CubeTree::kStackSize) [[unlikely]]
    {
        StackFull();
        return;
    }
    stack[sp++] = index;
}

// The node at `index` among `count` nodes, or the scratch node after a report.
inline const CubeTreeNode& NodeAt(const CubeTreeNode* nodes, size_t count, int32_t index)
{
    if (index >= 0 && static_cast<size_t>(index) < count) [[likely]]
        return nodes[index];
    return BadIndex();
}

// Asks the processor to fetch the node at `index` if there is one; -1 and the like are skipped.
inline void Prefetch(const CubeTreeNode* nodes, size_t count, int32_t index)
{
    if (static_cast<uint32_t>(index) < count)
        __builtin_prefetch(nodes + index);
}
}

inline CubeTreeNode& CubeTree::At(int32_t index)
{
    if (index >= 0 && static_cast<size_t>(index) < m_Nodes.size()) [[likely]]
        return m_Nodes[index];
    return CubeTreeChecks::BadIndex();
}
