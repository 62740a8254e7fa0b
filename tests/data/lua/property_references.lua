-- `obj` is a GameObject with a Transform; `bare` is one without.
obj.Transform.Position.x = 1
local position = obj.Transform.Position
local detached = position.__copy(position)
detached.y = 50
obj.Transform.Scale = Vector3D(2, 2, 2)

-- A property reference: the path Transform, Position, z on one table.
local transform = obj.Transform
local reference = getmetatable(transform).__index(transform, "Position", true)
reference = getmetatable(reference).__index(reference, "z", true)
reference.assign(reference, 7)

-- The value member's own assign copies a value into the object.
obj.Transform.Offset:assign(Vector3D(4, 5, 6))

local bareReference = getmetatable(bare).__index(bare, "Transform", true)
bareReference = getmetatable(bareReference).__index(bareReference, "Position", true)
return {
    x = obj.Transform.Position.x,
    y = obj.Transform.Position.y,
    detachedY = detached.y,
    z = obj.Transform.Position.z,
    referencePath = #reference.__propref,
    referenceCopy = reference.__copy(reference),
    scale = obj.Transform.Scale.y,
    offset = obj.Transform.Offset.z,
    bareTransform = bare.Transform == nil,
    barePath = bareReference.__copy(bareReference) == nil,
    rotationW = obj.Transform.Rotation.w,
}
