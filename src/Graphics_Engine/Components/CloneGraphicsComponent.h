// CloneGraphicsComponent: the Clone of every graphics component, a copy of its
// values that belongs to no object yet (no owner, no Transform until it is
// initialized on its new object).
#pragma once

#include "engine/Component.h"

namespace Graphics
{
// A copy of `component` with no owner and no Transform.
template <class T>
Component* CloneGraphicsComponent(const T& component)
{
    T* copy = new T(component);
    copy->m_Owner = nullptr;
    copy->m_Transform = nullptr;
    return copy;
}
}
