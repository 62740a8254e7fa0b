// The built Game binary, headless, on a data folder of the test's own: a script
// makes an object from an archetype, rewrites the archetype's file while the
// game runs, and makes objects until the reloaded archetype shows.
#include "support/ShellCommand.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace
{
// Each frame: the first makes an object; once the clock has moved on, the file gets a new scale;
// from then on each frame makes an object until one shows the new scale, prints both and ends the game.
const char* kDebugScript = R"(
local frame, first, start, path, written = 0, nil, nil, nil, false
function DebugUpdate()
    frame = frame + 1
    local space = SpaceManager.Get():GetSpace(Space.Level)
    if frame == 1 then
        first = space:CreateObject(Archetype.Find("Crate"))
        start = os.time()
        return
    end
    if not written then
        if os.time() >= start + 2 then
            local file = io.open(CRATE_PATH, "w")
            file:write("Transform\n{\n  Scale { 5 5 5 }\n}\n")
            file:close()
            written = true
        end
        return
    end
    local later = space:CreateObject(Archetype.Find("Crate"))
    if later.Transform.Scale.x == 5 then
        print("reloaded: first " .. first.Transform.Scale.x .. " later " .. later.Transform.Scale.x ..
              " same id " .. tostring(later:GetArchetype() == first:GetArchetype()))
        Manager.Get():EndGame()
    end
    later:Destroy()
end
)";
}

TEST(ArchetypeHotReloadGameTest, AFileEditedWhileTheGameRunsIsSeenByTheNextCreateObjectAndNotByEarlierObjects)
{
    TempFolder folder;
    const std::string crate = folder.Write("Data/Archetypes/Crate.txt", "Transform\n{\n  Scale { 2 2 2 }\n}\n");
    folder.Write("Data/LuaScripts/DebugScript.lua", "CRATE_PATH = \"" + crate + "\"\n" + kDebugScript);

    // At most about ten seconds: the script ends the game as soon as the reload shows.
    const std::string command = "cd \"" + std::filesystem::path(VORN_GAME_PATH).parent_path().string() +
                                "\" && SDL_VIDEODRIVER=offscreen SDL_AUDIODRIVER=dummy VORN_DIALOG_ANSWER=ignore "
                                "VORN_APPDATA_DIR=\"" + folder.Path() + "AppData/\" \"" VORN_GAME_PATH "\" --frames=600 "
                                "--datadir=\"" + folder.Path() + "Data/\" 2>&1";
    int exitCode = -1;
    const std::string output = RunShellCommand(command, exitCode);

    EXPECT_EQ(exitCode, 0) << output;
    EXPECT_NE(output.find("reloaded: first 2 later 5 same id true"), std::string::npos) << output;
}
