// PhysicsSystem: the physics of one space. Bodies, colliders and planes join
// it from their Initialize and leave it from their Uninitialize; it owns none
// of them. Once a frame Update moves the bodies, refreshes the cube tree,
// collects the candidate pairs (the tree's, then every collider against every
// plane), runs the narrow phase on each, filters by group lists and ghost
// flags, resolves the real contacts and last delivers the collision events.
#pragma once

#include <algorithm>
#include <vector>

#include "engine/System.h"
#include "physics/CubeTree/CubeTree.h"

class Collider;
class ColliderPlane;
class Component;
class PhysicsBody;

class PhysicsSystem : public System
{
public:
    // The PhysicsSystem of the component's space, or null.
    static PhysicsSystem* Of(const Component& component);
    // Removes the first entry equal to `member` from one of the lists, keeping the order of the rest.
    template <class T, class M>
    static void Leave(std::vector<T*>& list, const M* member)
    {
        auto found = std::find(list.begin(), list.end(), member);
        if (found != list.end())
            list.erase(found);
    }

    // One frame of physics over `dt` seconds.
    void Update(float dt) override;
    Meta::Data* GetMeta() const override;

    // Every body, in the order they joined; not owned.
    std::vector<PhysicsBody*> m_Bodies;
    // The broad phase over every collider but the planes.
    CubeTree m_Tree;
    // Every collider but the planes, in the order they joined; not owned.
    std::vector<Collider*> m_Colliders;
    // Every plane collider, in the order they joined; not owned.
    std::vector<ColliderPlane*> m_Planes;
    // This frame's candidate pairs: the tree's, then each collider with each plane; storage reused.
    std::vector<CubeTree::Pair> m_Pairs;
};
