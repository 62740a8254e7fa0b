// The math types as the registry (and so scripts, files and the editor) see them.
#include "Components/Transform/Transform.h"
#include "engine/Math/Color.h"
#include "engine/Math/Quaternion.h"
#include "engine/Math/Vector3D.h"
#include "utilities/Meta/Registration.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

TEST(MathRegistrationTest, ConstLookupFindsTheSameType)
{
    ASSERT_NE(Meta::FindData("Vector3D"), nullptr);
    EXPECT_EQ(Meta::FindData("const Vector3D"), Meta::FindData("Vector3D"));
    EXPECT_EQ(Meta::FindData("Vector3D")->m_Namespace, "Math");
}

TEST(MathRegistrationTest, EveryTypeHasADefaultAndAComponentWiseConstructor)
{
    for (const char* name : {"Vector2D", "Point2D", "Vector3D", "Point3D", "Vector4D", "Point4D", "Color", "Quaternion"})
    {
        const Meta::Data* type = Meta::FindData(name);
        ASSERT_NE(type, nullptr) << name;
        ASSERT_EQ(type->m_Constructors.size(), 2u) << name;
        EXPECT_TRUE(type->m_Constructors[0].m_Arguments.empty()) << name;
        EXPECT_EQ(type->m_Constructors[1].m_Arguments.size(), type->m_Members.Size()) << name;
    }
}

TEST(MathRegistrationTest, ScriptConstructorsMakeValues)
{
    std::vector<Meta::Any> xyz = {Meta::Any::Make(1.0f), Meta::Any::Make(2.0f), Meta::Any::Make(3.0f)};
    Meta::Any vector = Meta::Get<Math::Vector3D>()->m_Constructors[1].m_Make(xyz);
    ASSERT_NE(vector.Get<Math::Vector3D>(), nullptr);
    EXPECT_EQ(*vector.Get<Math::Vector3D>(), Math::Vector3D(1, 2, 3));

    std::vector<Meta::Any> red = {Meta::Any::Make(1.0f), Meta::Any::Make(0.0f), Meta::Any::Make(0.0f),
                                  Meta::Any::Make(1.0f)};
    Meta::Any color = Meta::Get<Math::Color>()->m_Constructors[1].m_Make(red);
    EXPECT_EQ(color.Get<Math::Color>()->r, 1.0f);
    EXPECT_EQ(color.Get<Math::Color>()->a, 1.0f);

    std::vector<Meta::Any> none;
    Meta::Any identity = Meta::Get<Math::Quaternion>()->m_Constructors[0].m_Make(none);
    EXPECT_EQ(identity.Get<Math::Quaternion>()->w, 1.0f);

    std::vector<Meta::Any> wrong = {Meta::Any::Make(1)};
    EXPECT_TRUE(Meta::Get<Math::Vector3D>()->m_Constructors[1].m_Make(wrong).IsEmpty());
}

TEST(MathRegistrationTest, OperatorsAndMethodsAreCalledByTheirNames)
{
    Math::Vector3D a(1, 2, 3);
    std::vector<Meta::Any> other = {Meta::Any::Make(Math::Vector3D(1, 1, 1))};
    Meta::Any sum = Meta::Get<Math::Vector3D>()->FindMethod("operator+")->Call(&a, other);
    EXPECT_EQ(*sum.Get<Math::Vector3D>(), Math::Vector3D(2, 3, 4));
    EXPECT_FLOAT_EQ(*Meta::Get<Math::Vector3D>()->FindMethod("Length")->Call(&a).Get<float>(), a.Length());

    const auto* minus = Meta::Get<Math::Quaternion>()->FindOverloads("operator-");
    ASSERT_NE(minus, nullptr);
    EXPECT_EQ(minus->size(), 2u);
    EXPECT_NE(Meta::Get<Math::Color>()->FindMethod("__print"), nullptr);
    EXPECT_NE(Meta::Get<Math::Quaternion>()->FindMethod("CreateFromEuler"), nullptr);
}

TEST(MathRegistrationTest, TransformMembersCarryTheirHelpText)
{
    const Meta::Data* transform = Meta::Get<Transform>();
    const std::vector<std::string> names = {"Position", "Offset", "Scale", "Rotation"};
    ASSERT_EQ(transform->m_Members.Size(), names.size());
    for (std::size_t i = 0; i < names.size(); ++i)
        EXPECT_EQ(transform->m_Members.Items()[i].first, names[i]);
    EXPECT_EQ(transform->FindMember("Position")->m_Description, "The position of the object in the world");
    EXPECT_EQ(transform->FindMember("Rotation")->m_Type, Meta::Get<Math::Quaternion>());
    Transform object;
    EXPECT_EQ(transform->FindMember("Scale")->Get(&object).Get<Math::Vector3D>(), &object.m_Scale);
}
