#include "utilities/Meta/Any.h"

#include "utilities/Meta/ClassInfo.h"

namespace Meta
{
Any::Any(const Any& other) : m_Type(other.m_Type), m_Owned(other.m_Owned), m_Ops(other.m_Ops)
{
    if (!other.m_Owned)
        m_Value = other.m_Value;
    else if (other.m_Value && other.m_Ops)
        m_Value = other.m_Ops->Clone(other.m_Value);
}

Any::Any(Any&& other) noexcept
    : m_Value(other.m_Value), m_Type(other.m_Type), m_Owned(other.m_Owned), m_Ops(other.m_Ops)
{
    other.m_Value = nullptr;
}

Any& Any::operator=(Any other) noexcept
{
    std::swap(m_Value, other.m_Value);
    std::swap(m_Type, other.m_Type);
    std::swap(m_Owned, other.m_Owned);
    std::swap(m_Ops, other.m_Ops);
    return *this;
}

Any::~Any()
{
    if (m_Owned && m_Value && m_Ops)
        m_Ops->Delete(m_Value);
}

bool Any::Holds(const Data* type) const
{
    return m_Value && m_Type && (m_Type == type || m_Type->IsDerivedFrom(type));
}
}
