-- The room tour: builds every room of the data folder in turn through the room
-- manager, frames it with a camera from above and saves a picture of it as
-- "<TourFolder>/<name>.png". Then it rewrites the file of the first room with
-- pits, every pit filled with floor, waits until the file watcher has read the
-- room again, builds it once more ("<name>-edited.png") and ends the game. Each step prints a
-- "Tour:" line for the test to read.

TourFolder = os.getenv("VORN_TOUR_FOLDER") or "."
-- Frames a room stands before its picture is taken, so that it has settled and been drawn.
SettleFrames = 6
-- Seconds to wait for the watcher to read the edited file before giving up.
ReloadSeconds = 15

-- The room files' names, sorted.
local function RoomNames()
    local names = {}
    for file in lfs.dir(DataDirectory() .. "Rooms") do
        local name = file:match("^(.+)%.txt$")
        if name then
            names[#names + 1] = name
        end
    end
    table.sort(names)
    return names
end

-- Number of pit tiles in the room's grid as edited.
local function PitCount(room)
    local count = 0
    for _, row in ipairs(room.RoomFloor.RoomVec) do
        for _, value in ipairs(row) do
            if value == 2 or value == 3 then
                count = count + 1
            end
        end
    end
    return count
end

-- Builds the room called `name` and puts the camera where it sees the whole room.
local function Build(name)
    local rooms = RoomManager.Get()
    -- One biome draw for every build, so that a room and its rebuild differ only by the edit.
    Random.Seed(7)
    rooms:SetBiome("Cave")
    rooms:PickRandomMainBiome()
    rooms:SetCurrentRoom(name)
    rooms:CreateCurrentRoom()
    local room = rooms:GetCurrentRoom()
    local grid = room.RoomFloor.RoomVec
    local across = 0
    for _, row in ipairs(grid) do
        across = math.max(across, #row)
    end
    local extent = math.max(across * room.GridSize.x, #grid * room.GridSize.y)
    local view = camera.Camera.ViewVector
    local position = camera.Transform.Position
    local distance = extent * 0.85 + 10
    position.x = -view.x * distance
    position.y = -7.5 - view.y * distance
    position.z = -view.z * distance
    local pits = PitCount(room)
    if pits > 0 and edited == nil then
        edited = name
    end
    print("Tour: built " .. name .. ", biome " .. rooms:GetCurrentBiomeName() .. ", pits " .. pits)
end

-- Asks for the picture of the room called `name` once it has settled.
local function Picture(file)
    GraphicsEngine.Get():ScreenshotAfter(SettleFrames, TourFolder .. "/" .. file .. ".png")
end

function Initialize()
    local space = SpaceManager.Get():GetSpace(Space.Level)
    space.Graphics.GlobalAmbient = Color(0.35, 0.35, 0.35, 1)
    camera = space:CreateObject(Archetype.Find("TourCamera"))
    camera.Camera:SetAsPrimaryCamera()
    names = RoomNames()
    index = 0
    wait = 0
    phase = "rooms"
    edited = nil
end

-- Rewrites the file of the room called `name` with its pits filled with floor.
local function FillPits(name)
    local path = DataDirectory() .. "Rooms/" .. name .. ".txt"
    local file = io.open(path, "r")
    local text = file:read("*a")
    file:close()
    local head, rows, tail = text:match("^(.-RoomFloor%s*{)(.-)(}.*)$")
    rows = rows:gsub("%f[%d][23]%f[%D]", "1")
    file = io.open(path, "w")
    file:write(head .. rows .. tail)
    file:close()
    print("Tour: edited " .. name)
end

function Update(dt)
    wait = wait - 1
    if wait > 0 then
        return
    end
    if phase == "rooms" then
        index = index + 1
        if index > #names then
            phase = edited and "edit" or "end"
            -- The file's time is kept in whole seconds: write it a second after it was read.
            elapsed = 0
            wait = 0
            return
        end
        Build(names[index])
        Picture(names[index])
        wait = SettleFrames + 2
    elseif phase == "edit" then
        elapsed = elapsed + dt
        if elapsed >= 1.5 then
            FillPits(edited)
            phase = "reload"
            elapsed = 0
        end
    elseif phase == "reload" then
        elapsed = elapsed + dt
        RoomManager.Get():SetCurrentRoom(edited)
        if PitCount(RoomManager.Get():GetCurrentRoom()) == 0 or elapsed > ReloadSeconds then
            Build(edited)
            Picture(edited .. "-edited")
            wait = SettleFrames + 2
            phase = "end"
        end
    elseif phase == "end" then
        print("Tour: done")
        Manager.Get():EndGame()
        phase = "over"
    end
end
