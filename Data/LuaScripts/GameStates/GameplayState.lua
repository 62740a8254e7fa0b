-- A run through the rooms. It starts at difficulty 1 with a fresh list of
-- recent rooms; each room is picked by the room manager at the run's
-- difficulty, with a main biome drawn anew, and built into the level space,
-- with the camera over the player's start. When the room's exit is reached the
-- difficulty goes up by one and the next room comes; after RoomsPerRun rooms
-- comes the boss room, and when that is done the run ends and the game goes
-- back to the title. "RunOver" (broadcast by anything: the last player down)
-- ends it sooner.
--
-- Until players can walk to it, the exit counts as reached when the room's
-- time (RoomSeconds) is up or when anything broadcasts "ExitReached" (the exit
-- gate, once it opens). The environment variable EMBERFALLOW_ROOM_SECONDS sets
-- that time, for quick runs through the rooms.
--
-- The play loop plays through the run; its "Intensity" rises to 1 in the boss
-- room, where the music turns to its busier version. Leaving a room sounds the
-- exit gate.
--
-- Each room entered prints one line:
--   Emberfallow: room <name>, biome <biome>, difficulty <d>

RoomsPerRun = 8
RoomSeconds = tonumber(os.getenv("EMBERFALLOW_ROOM_SECONDS") or "") or 20

-- The level space's sound, or nil where it has none.
local function LevelSound()
    return SpaceManager.Get():GetSpace(Space.Level).Sound
end

-- Builds the room the manager picked and shows it.
local function EnterRoom()
    local rooms = RoomManager.Get()
    rooms:CreateCurrentRoom()
    roomTime = 0
    local room = rooms:GetCurrentRoom()
    if room == nil then
        print("Emberfallow: there is no room to play.")
        return
    end
    ShowRoom(SpaceManager.Get():GetSpace(Space.Level), room, camera)
    local sound = LevelSound()
    if sound ~= nil then
        sound:SetMusicInstanceParameter("Music/Play", "Intensity", room.BossRoom and 1 or 0)
    end
    print(string.format("Emberfallow: room %s, biome %s, difficulty %g", room:GetName(),
        rooms:GetCurrentBiomeName(), rooms.Difficulty))
end

-- The room is done: the next one at a higher difficulty, or the end of the run after the boss.
local function LeaveRoom()
    local rooms = RoomManager.Get()
    local room = rooms:GetCurrentRoom()
    if room == nil or room.BossRoom then
        roomTime = -math.huge
        Manager.Get():BroadcastEvent("RunOver", ScriptEvent("RunOver"))
        return
    end
    local sound = LevelSound()
    if sound ~= nil then
        sound:PlayEffect("Effects/ExitOpen")
    end
    rooms:IncrementRoomCount()
    rooms.Difficulty = rooms.Difficulty + 1
    rooms:PickRandomMainBiome()
    rooms:PickRoom()
    EnterRoom()
end

function RunOverEvent(event)
    GameStateManager.SetNextState("TitleState")
end

function ExitReachedEvent(event)
    LeaveRoom()
end

function Load()
    print("Emberfallow: run started.")
end

function Initialize()
    this:RegisterEvent("RunOver")
    this:RegisterEvent("ExitReached")
    camera = CreateRoomCamera(SpaceManager.Get():GetSpace(Space.Level))
    local sound = LevelSound()
    if sound ~= nil then
        sound:PlayMusic("Music/Play", false)
    end
    local rooms = RoomManager.Get()
    rooms:ClearOldRooms()
    -- The manager's room count runs on from run to run: the boss comes RoomsPerRun rooms from here.
    rooms:SetRoomsUntilBoss(rooms:GetCurrentRoomCount() + RoomsPerRun)
    rooms.Difficulty = 1
    rooms:PickRandomMainBiome()
    rooms:PickRoom()
    EnterRoom()
end

function Update(dt)
    roomTime = roomTime + dt
    if roomTime >= RoomSeconds then
        LeaveRoom()
    end
end

function Uninitialize()
    camera = nil
    local sound = LevelSound()
    if sound ~= nil then
        sound:RemoveLoopingTrack("Music/Play")
    end
    SpaceManager.Get():GetSpace(Space.Level):DestroyAllGameObjects()
end
