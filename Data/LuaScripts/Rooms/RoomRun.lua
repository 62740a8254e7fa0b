-- A run through the rooms of Data/Rooms: the room manager picks each room by
-- the run's difficulty and draws its biome, builds it into the level space,
-- and these helpers point the level's camera at the player's start and find
-- the room's exit (the placed object of the "Exit" archetype). Positions are
-- read from the room's placed objects as written in its file, so they are
-- known before the room is built. Loaded by Global.lua, so a change of this
-- file is live at the next room.

-- Height of the floor's top, and the camera's distance from the player along its view.
RoomFloorY = -7.5
RoomCameraDistance = 30

-- The first placed object of `room` made from the archetype `name`, or nil.
function FindPlacedObject(room, name)
    local id = Archetype.Find(name)
    if id == 0 then
        return nil
    end
    local index = 0
    local object = room:GetGameObject(index)
    while object ~= nil do
        if object:GetArchetype() == id then
            return object
        end
        index = index + 1
        object = room:GetGameObject(index)
    end
    return nil
end

-- Position (x, y, z) of the first placed object of `room` made from `name`; nil when there is none.
function PlacedPosition(room, name)
    local object = FindPlacedObject(room, name)
    if object == nil then
        return nil
    end
    local position = object.Transform.Position
    return position.x, position.y, position.z
end

-- The world rectangle the room's floor and pits cover, as (left, back, right, front) in x and z,
-- from the grid's bounds, which are known once the room is built. The room build centres the box of
-- a tile (column c, row r) of a w by h grid at ((c - w / 2) * size, (r - h / 2) * size), and the
-- bounds are c - w / 2 - 0.5 in tiles: the left edge of the leftmost open tile.
function RoomArea(room)
    local floor = room.RoomFloor
    local size = room.GridSize
    if floor.Left > floor.Right then
        return -size.x, -size.y, size.x, size.y
    end
    return floor.Left * size.x, floor.Bottom * size.y, (floor.Right + 1) * size.x, (floor.Top + 1) * size.y
end

-- Makes the level's camera in `space` and returns it; nil when the archetype is missing.
function CreateRoomCamera(space)
    local id = Archetype.Find("Camera")
    if id == 0 then
        print("The rooms need an archetype called \"Camera\".")
        return nil
    end
    return space:CreateObject(id)
end

-- Readies `space` for the built `room`: the ambient light, and `camera` looking at the player's
-- start from its distance, kept inside the room.
function ShowRoom(space, room, camera)
    local left, back, right, front = RoomArea(room)
    space.Graphics.GlobalAmbient = Color(0.3, 0.3, 0.3, 1)
    if camera == nil then
        return
    end
    local x, y, z = PlacedPosition(room, "Player")
    if x == nil then
        x, y, z = (left + right) * 0.5, RoomFloorY, (back + front) * 0.5
    end
    local view = camera.Camera.ViewVector
    local position = camera.Transform.Position
    position.x = x - view.x * RoomCameraDistance
    position.y = y - view.y * RoomCameraDistance
    position.z = z - view.z * RoomCameraDistance
    local controller = camera.CameraController
    controller.MinZoom = RoomCameraDistance
    controller.Min_X = left
    controller.Max_X = right
    controller.Min_Z = back
    controller.Max_Z = front
    camera.Camera:SetAsPrimaryCamera()
end
