#include "utilities/Meta/Any.h"

#include "utilities/Meta/Registration.h"

#include <gtest/gtest.h>

#include <string>

namespace
{
// Counts live instances, to see that Anys neither leak nor delete twice.
struct Counted
{
    Counted() { ++s_Live; }
    Counted(const Counted& other) : value(other.value) { ++s_Live; }
    ~Counted() { --s_Live; }
    int value = 0;
    static inline int s_Live = 0;
};

// A type that can be made but not copied.
struct Unique
{
    Unique() = default;
    Unique(const Unique&) = delete;
};
}

META_REGISTER(Counted)
{
}

META_REGISTER(Unique)
{
}

TEST(AnyTest, CopyOfAnAnyHoldsItsOwnValue)
{
    {
        Meta::Any first = Meta::Any::Make(Counted());
        first.Get<Counted>()->value = 3;
        Meta::Any second = first;
        EXPECT_NE(second.m_Value, first.m_Value);
        EXPECT_EQ(second.Get<Counted>()->value, 3);
        second.Get<Counted>()->value = 4;
        EXPECT_EQ(first.Get<Counted>()->value, 3);
        EXPECT_EQ(Counted::s_Live, 2);
        first = second;
        EXPECT_EQ(first.Get<Counted>()->value, 4);
    }
    EXPECT_EQ(Counted::s_Live, 0);
}

TEST(AnyTest, AnyRefToAValueDoesNotDeleteIt)
{
    auto* value = new Counted();
    {
        Meta::AnyRef reference(value, Meta::Get<Counted>());
        Meta::Any passedOn = reference;
        EXPECT_EQ(passedOn.m_Value, value);
        EXPECT_FALSE(passedOn.Owns());
    }
    EXPECT_EQ(Counted::s_Live, 1);
    delete value;
}

TEST(AnyTest, OwnedCopyOfAReferenceComesFromCloning)
{
    Counted original;
    original.value = 9;
    Meta::AnyRef reference = Meta::AnyRef::To(original);
    Meta::Any copy(Meta::Get<Counted>()->m_Info->Clone(reference.m_Value), Meta::Get<Counted>());
    EXPECT_EQ(copy.Get<Counted>()->value, 9);
    EXPECT_NE(copy.m_Value, &original);
}

TEST(AnyTest, MovedAnyLeavesNothingBehindToDelete)
{
    {
        Meta::Any first = Meta::Any::Make(Counted());
        Meta::Any second = std::move(first);
        EXPECT_TRUE(first.IsEmpty());
        EXPECT_EQ(Counted::s_Live, 1);
    }
    EXPECT_EQ(Counted::s_Live, 0);
}

TEST(AnyTest, GetChecksTheType)
{
    Meta::Any number = Meta::Any::Make(5);
    EXPECT_NE(number.Get<int>(), nullptr);
    EXPECT_EQ(number.Get<float>(), nullptr);
    EXPECT_EQ(Meta::Any().Get<int>(), nullptr);
}

TEST(AnyTest, TypeWithoutCopyConstructorCannotBeCopiedAndClonesToNull)
{
    const Meta::Data* type = Meta::Get<Unique>();
    EXPECT_FALSE(type->m_Info->CanCopy());
    Unique original;
    EXPECT_EQ(type->m_Info->Clone(&original), nullptr);
    void* made = type->New();
    EXPECT_NE(made, nullptr);
    type->m_Info->Delete(made);
    EXPECT_TRUE(Meta::Get<Counted>()->m_Info->CanCopy());
}

TEST(AnyTest, InstanceOperationsIgnoreNull)
{
    const Meta::ClassInfo* info = Meta::Get<Counted>()->m_Info;
    info->Construct(nullptr);
    info->CopyConstruct(nullptr, nullptr);
    info->Destruct(nullptr);
    info->Delete(nullptr);
    EXPECT_EQ(info->Clone(nullptr), nullptr);
    EXPECT_EQ(Counted::s_Live, 0);
}

TEST(AnyTest, ConstructAndDestructWorkInPlace)
{
    alignas(Counted) unsigned char storage[sizeof(Counted)];
    const Meta::ClassInfo* info = Meta::Get<Counted>()->m_Info;
    info->Construct(storage);
    EXPECT_EQ(Counted::s_Live, 1);
    info->Destruct(storage);
    EXPECT_EQ(Counted::s_Live, 0);
}

namespace
{
// Counts live instances like Counted, but nobody registers it.
struct Unregistered
{
    Unregistered() { ++s_Live; }
    Unregistered(const Unregistered&) { ++s_Live; }
    ~Unregistered() { --s_Live; }
    static inline int s_Live = 0;
};

// A class with a method that returns an unregistered type by value.
struct Maker
{
    Unregistered Make() const { return Unregistered(); }
};
}

META_REGISTER(Maker)
{
    METHOD(Make);
}

TEST(AnyTest, ValueOfATypeNobodyRegisteredIsDeleted)
{
    {
        Meta::Any value = Meta::Any::Make(Unregistered());
        EXPECT_FALSE(Meta::Get<Unregistered>()->IsRegistered());
        EXPECT_EQ(Unregistered::s_Live, 1);
        Meta::Any copy = value;
        EXPECT_EQ(Unregistered::s_Live, 2);
    }
    EXPECT_EQ(Unregistered::s_Live, 0);
}

TEST(AnyTest, MethodResultOfAnUnregisteredTypeIsDeleted)
{
    Maker maker;
    {
        Meta::Any result = Meta::Get<Maker>()->FindMethod("Make")->Call(&maker);
        EXPECT_FALSE(result.IsEmpty());
        EXPECT_EQ(Unregistered::s_Live, 1);
    }
    EXPECT_EQ(Unregistered::s_Live, 0);
}

TEST(AnyTest, OwnedValueAssignedToAnAnyRefThroughAnAnyReferenceIsDeleted)
{
    Counted elsewhere;
    {
        Meta::AnyRef reference = Meta::AnyRef::To(elsewhere);
        Meta::Any& slot = reference;
        slot = Meta::Any::Make(Counted());
        EXPECT_TRUE(reference.Owns());
        EXPECT_EQ(Counted::s_Live, 2);
    }
    EXPECT_EQ(Counted::s_Live, 1);
}
