-- The first room: a walled cave floor of 12 by 8 cells with the party, a few
-- ember crawlers, health orbs and boulders, lit by a key light, drifting
-- embers and a shaft of light, and the level's camera looking down on it.
-- Crates and stone balls drop in from above, land on the floor, the boulders
-- and each other and come to rest; the first crate prints its collisions. The
-- title shows the room behind its menus and a run plays in it until the room
-- generator builds rooms from files. Loaded by Global.lua, so a change of this
-- file is live at the next room.

-- The room's grid: 12 by 8 cells of 5 by 5, its floor at y = -7.5.
FirstRoomGrid = { Across = 12, Down = 8, Cell = 5, Left = -30, Back = -20, Floor = -7.5 }

-- The camera's distance from the player, along its view: its controller's least zoom, so that a
-- lone player keeps the camera where it starts.
FirstRoomCameraDistance = 30

-- Creates an object of the archetype `name` in `space` at (x, y, z); nil when the archetype is missing.
local function PlaceAt(space, name, x, y, z)
    local id = Archetype.Find(name)
    if id == 0 then
        print("The first room needs an archetype called \"" .. name .. "\".")
        return nil
    end
    local object = space:CreateObject(id)
    local position = object.Transform.Position
    position.x = x
    position.y = y
    position.z = z
    return object
end

-- Builds the first room in `space` and returns its camera object.
function CreateFirstRoom(space)
    local grid = FirstRoomGrid
    local floor = grid.Floor
    space.Graphics:GetQuadTree():BuildGrid(Point3D(grid.Left, floor, grid.Back),
        Vector3D(grid.Cell, 15, grid.Cell), grid.Across, grid.Down)
    space.Graphics.GlobalAmbient = Color(0.3, 0.3, 0.3, 1)

    -- The floor, two cells to a tile.
    local tile = grid.Cell * 2
    for column = 0, grid.Across / 2 - 1 do
        for row = 0, grid.Down / 2 - 1 do
            PlaceAt(space, "FloorTile", grid.Left + tile * (column + 0.5), floor, grid.Back + tile * (row + 0.5))
        end
    end

    -- The back wall and the two side walls, one block a cell; the front stays open to the camera.
    local wallY = floor + 7.5
    for column = 0, grid.Across - 1 do
        PlaceAt(space, "WallPiece", grid.Left + grid.Cell * (column + 0.5), wallY, grid.Back - grid.Cell * 0.5)
    end
    for row = 0, grid.Down - 1 do
        local z = grid.Back + grid.Cell * (row + 0.5)
        PlaceAt(space, "WallPiece", grid.Left - grid.Cell * 0.5, wallY, z)
        PlaceAt(space, "WallPiece", -grid.Left + grid.Cell * 0.5, wallY, z)
    end

    -- Boulders, crawlers, orbs, and the player in the middle.
    PlaceAt(space, "Rock", -18, floor + 1.25, -10)
    PlaceAt(space, "Rock", 20, floor + 1.25, 6)
    PlaceAt(space, "Rock", 9, floor + 1.25, -14)
    PlaceAt(space, "EmberCrawler", -8, floor + 0.5, -6)
    PlaceAt(space, "EmberCrawler", 10, floor + 0.5, -4)
    PlaceAt(space, "EmberCrawler", 4, floor + 0.5, 9)
    PlaceAt(space, "HealthOrb", -12, floor + 1, 8)
    PlaceAt(space, "HealthOrb", 15, floor + 1, -9)
    PlaceAt(space, "Player", 0, floor + 1.8, 0)

    -- The floor as the physics sees it, and what drops onto it: a stack of two crates with a ball
    -- falling on top, a crate and a ball beside the player, and a ball onto the far boulder.
    PlaceAt(space, "FloorPlaneCollision", 0, floor, 0)
    local crate = PlaceAt(space, "Crate", -6, floor + 4, -2)
    if crate ~= nil then
        crate:AddComponent("CollisionLogger")
    end
    PlaceAt(space, "Crate", -5.5, floor + 9, -2.4)
    PlaceAt(space, "StoneBall", -6.2, floor + 14, -1.8)
    PlaceAt(space, "Crate", 6, floor + 7, 3)
    PlaceAt(space, "StoneBall", 5.6, floor + 12, 3.2)
    PlaceAt(space, "StoneBall", 2.5, floor + 5, -5)
    PlaceAt(space, "StoneBall", 9.5, floor + 10, -14)

    -- The lights: the key light, three embers drifting over the floor's corners, and a shaft of light
    -- on the far boulder.
    PlaceAt(space, "KeyLight", 0, 0, 0)
    PlaceAt(space, "EmberLight", -18, floor + 2, -8)
    PlaceAt(space, "EmberLight", 19, floor + 2, 5)
    PlaceAt(space, "EmberLight", -14, floor + 2, 10)
    PlaceAt(space, "SpotLight", 9, floor + 14, -14)

    -- The camera, looking at the player from its distance; its controller follows the party from
    -- there and keeps the view inside the room.
    local camera = PlaceAt(space, "Camera", 0, 0, 0)
    if camera == nil then
        return nil
    end
    local view = camera.Camera.ViewVector
    local position = camera.Transform.Position
    position.x = -view.x * FirstRoomCameraDistance
    position.y = floor + 1.8 - view.y * FirstRoomCameraDistance
    position.z = -view.z * FirstRoomCameraDistance
    local controller = camera.CameraController
    controller.MinZoom = FirstRoomCameraDistance
    controller.Min_X = grid.Left
    controller.Max_X = -grid.Left
    controller.Min_Z = grid.Back
    controller.Max_Z = grid.Back + grid.Cell * grid.Down
    camera.Camera:SetAsPrimaryCamera()
    return camera
end
