#include "Components/Transform/Transform.h"

#include "utilities/Meta/Registration.h"

META_REGISTER(Transform)
{
    DERIVE(Component);
    DESCRIPTION("Holds transformation data for the object.");
    MEMBER(m_Position, "The position of the object in the world");
    MEMBER(m_Offset, "A graphical offset to nudge the model of an object.");
    MEMBER(m_Scale, "The scale of the object.");
    MEMBER(m_Rotation, "The rotation of the object.");
}

Meta::Data* Transform::GetMeta() const
{
    return Meta::Get<Transform>();
}
