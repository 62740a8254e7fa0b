-- Operators of the math types, reached through their registered operator methods.
local sum = Vector3D(1, 2, 3) + Vector3D(1, 1, 1)
local difference = Vector3D(5, 5, 5) - Vector3D(1, 2, 3)
local scaled = Vector3D(1, 2, 3) * 2
local halved = Vector3D(2, 4, 6) / 2
local q = Quaternion(1, 2, 3, 4)
local negated = -q
local product = q * Quaternion(0, 0, 0, 1)
local quaternionScaled = q * 2
local quaternionDifference = q - Quaternion(1, 1, 1, 1)
local copy = Vector3D()
copy:assign(Vector3D(7, 8, 9))
return {
    sumX = sum.x, sumY = sum.y, sumZ = sum.z,
    differenceX = difference.x,
    scaledZ = scaled.z,
    halvedY = halved.y,
    negatedX = negated.x, negatedW = negated.w,
    productX = product.x, productW = product.w,
    quaternionScaledY = quaternionScaled.y,
    quaternionDifferenceZ = quaternionDifference.z,
    equal = Vector3D(1, 2, 3) == Vector3D(1, 2, 3),
    unequal = Vector3D(1, 2, 3) == Vector3D(3, 2, 1),
    less = Vector3D(1, 1, 1) < Vector3D(2, 2, 2),
    lessEqual = Vector3D(1, 1, 1) <= Vector3D(1, 2, 2),
    assignedY = copy.y,
    pointPlusVector = (Point3D(1, 1, 1) + Vector3D(1, 2, 3)).z,
    colourSum = (Color(0.25, 0, 0, 1) + Color(0.25, 0, 0, 0)).r,
    type = getmetatable(sum).__type,
}
