#include "physics/Collider.h"

#include "Components/Transform/Transform.h"
#include "engine/GameObject.h"
#include "engine/Space.h"
#include "engine/TestComponents.h"
#include "physics/ColliderPlane.h"
#include "physics/ColliderSphere.h"
#include "physics/PhysicsSystem.h"
#include "support/ReportCapture.h"
#include "utilities/Meta/Data.h"

#include <gtest/gtest.h>

namespace
{
struct PhysicsSpace
{
    PhysicsSpace() : space(Engine::Level), system(new PhysicsSystem())
    {
        space.AddSystem(system, Meta::Get<PhysicsSystem>());
    }
    Engine::Space space;
    PhysicsSystem* system;
};
}

TEST(ColliderTest, ColliderJoinsTheTreeAndListOfItsSpaceAndLeavesWhenDestroyed)
{
    PhysicsSpace physics;
    GameObject* object = physics.space.CreateObject(MakeArchetype("SphereHolder", {"Transform", "ColliderSphere"}));
    auto* sphere = object->GetComponent<ColliderSphere>();
    ASSERT_NE(sphere, nullptr);
    EXPECT_EQ(sphere->transform, object->GetComponent<Transform>());
    ASSERT_EQ(physics.system->m_Colliders.size(), 1u);
    EXPECT_EQ(physics.system->m_Colliders[0], sphere);
    EXPECT_EQ(physics.system->m_Tree.GetRoot(), 0);
    EXPECT_TRUE(physics.system->m_Planes.empty());

    object->Destroy();
    physics.space.GarbageCollectObjects();
    EXPECT_TRUE(physics.system->m_Colliders.empty());
    EXPECT_EQ(physics.system->m_Tree.GetRoot(), -1);
}

TEST(ColliderTest, PlaneJoinsThePlaneListOnlyAndHasNoLeaf)
{
    PhysicsSpace physics;
    GameObject* object = physics.space.CreateObject(MakeArchetype("PlaneHolder", {"Transform", "ColliderPlane"}));
    auto* plane = object->GetComponent<ColliderPlane>();
    ASSERT_NE(plane, nullptr);
    ASSERT_EQ(physics.system->m_Planes.size(), 1u);
    EXPECT_EQ(physics.system->m_Planes[0], plane);
    EXPECT_TRUE(physics.system->m_Colliders.empty());
    EXPECT_EQ(physics.system->m_Tree.GetRoot(), -1);
    object->Destroy();
    physics.space.GarbageCollectObjects();
    EXPECT_TRUE(physics.system->m_Planes.empty());
}

TEST(ColliderTest, ColliderWithoutTransformIsReportedAndStillJoins)
{
    PhysicsSpace physics;
    ReportCapture reports;
    GameObject* object = physics.space.CreateObject(MakeArchetype("BareSphere", {"ColliderSphere"}));
    GameObject* plane = physics.space.CreateObject(MakeArchetype("BarePlane", {"ColliderPlane"}));
    EXPECT_TRUE(reports.Holds("PhysicsBody needs transform component"));
    EXPECT_TRUE(reports.Holds("Collider::Initialize"));
    EXPECT_TRUE(reports.Holds("ColliderPlane::Initialize"));
    EXPECT_EQ(object->GetComponent<ColliderSphere>()->transform, nullptr);
    EXPECT_EQ(physics.system->m_Colliders.size(), 1u);
    EXPECT_EQ(physics.system->m_Planes.size(), 1u);
    (void)plane;
}

TEST(ColliderTest, EveryShapeIsAComponentThatDependsOnPhysicsBody)
{
    for (const char* name :
         {"Collider", "ColliderAxisCube", "ColliderCube", "ColliderSphere", "ColliderArc", "ColliderPlane"})
    {
        const Meta::Data* type = Meta::FindData(name);
        ASSERT_NE(type, nullptr) << name;
        EXPECT_TRUE(type->IsDerivedFrom(Meta::Get<Component>())) << name;
        ASSERT_EQ(type->m_Dependencies.size(), 1u) << name;
        EXPECT_EQ(type->m_Dependencies[0], "PhysicsBody") << name;
    }
}

TEST(ColliderTest, BaseColliderAnswersTheOriginForEveryQuery)
{
    Collider base;
    EXPECT_EQ(base.type, 0);
    EXPECT_EQ(base.GetSupport(Math::Vector3D(1.0f, 2.0f, 3.0f)), Math::Point3D());
    EXPECT_EQ(base.ToLocal(Math::Point3D(4.0f, 5.0f, 6.0f)), Math::Point3D());
    EXPECT_EQ(base.ToWorld(Math::Point3D(4.0f, 5.0f, 6.0f)), Math::Point3D());
}
