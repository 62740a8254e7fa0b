// PhysicsSystem: the physics of one space. Bodies, colliders and planes join
// it from their Initialize and leave it from their Uninitialize; it owns none
// of them. Once a frame Update moves the bodies, refreshes the cube tree,
// collects the candidate pairs (the tree's, then every collider against every
// plane), runs the narrow phase on each, filters by group lists and ghost
// flags, resolves the real contacts and last delivers the collision events.
#pragma once

#include <vector>

#include "engine/System.h"
#include "physics/CubeTree/CubeTree.h"

class Collider;
class ColliderPlane;
class PhysicsBody;

class PhysicsSystem : public System
{
public:
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
