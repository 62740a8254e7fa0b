#include "Components/Transform/Transform.h"

#include "utilities/Meta/Registration.h"

META_REGISTER(Transform)
{
    DERIVE(Component);
    DESCRIPTION("Holds transformation data for the object.");
}

Meta::Data* Transform::GetMeta() const
{
    return Meta::Get<Transform>();
}
