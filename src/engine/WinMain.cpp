#include "engine/WinMain.h"

#include "Graphics2D_Engine/D2DGraphics.h"
#include "Graphics_Engine/GraphicsEngine.h"
#include "Graphics_Engine/Spaces/GraphicsSpace.h"
#include "editor/EditorSystem.h"
#include "editor/GuiInput.h"
#include "engine/ArchetypeManager.h"
#include "engine/CrashTest.h"
#include "engine/FileWatcher.h"
#include "engine/Files.h"
#include "engine/FrameRateController.h"
#include "engine/GameObject.h"
#include "engine/GameStateManager.h"
#include "engine/Log.h"
#include "engine/Manager.h"
#include "engine/Options.h"
#include "engine/Profiler.h"
#include "engine/SpaceManager.h"
#include "engine/Window.h"
#include "input/Automation.h"
#include "input/InputRecorder.h"
#include "physics/PhysicsSystem.h"
#include "engine/Random.h"
#include "rooms/RoomManager.h"
#include "platform/CrashHandler.h"
#include "sound/SoundSpace.h"
#include "sound/SoundSystem.h"
#include "utilities/DocumentationGen/GenerateAutocomplete.h"
#include "utilities/DocumentationGen/GenerateDocumentation.h"
#include "utilities/Meta/Registration.h"
#include "utilities/Serialization/Serializer.h"
#include "utilities/lua/LuaSystem.h"
#include "utilities/lua/VirtualSystem.h"

#include <cstdlib>
#include <ctime>
#include <string>

namespace
{
// The type of "nothing", registered last so that scripts and documentation can name it.
struct Void
{
};

// The command-line tools asked for: each writes its files at its start-up step, and the game then
// exits without running a frame.
struct ToolRequests
{
    // --gen-autocomplete: the Lua completion file, once the command line is read.
    bool autocomplete = false;
    // --gendoc: the HTML reference, at the end of start-up.
    bool documentation = false;
    // The reference's folder: the option's value, or the default.
    std::string documentationFolder;
};

void AddStartupOptions(ToolRequests& tools)
{
    using Engine::Options;
    Options::RegisterOption("gen-autocomplete", [&tools](const char*) { tools.autocomplete = true; });
    Options::RegisterOption("datadir", [](const char* value) {
        if (value)
            Util::SetDataDirectory(value);
    });
    // Standard output already is the terminal here.
    Options::RegisterOption("Console", [](const char*) {});
    Options::RegisterOption("RemoveFileErrors", [](const char*) { Util::SetTolerantRead(true); });
    Options::RegisterOption("gendoc", [&tools](const char* value) {
        tools.documentation = true;
        tools.documentationFolder = value ? value : DocGen::kDefaultDocumentationFolder;
    });
    Options::RegisterOption("seed", [](const char* value) {
        if (value && *value)
            Util::Random::Seed(static_cast<std::uint32_t>(std::strtoul(value, nullptr, 10)));
        else
            LOG("WARNING", "Option --seed needs a number, such as --seed=5489.");
    });
    Options::RegisterOption("profile", [](const char*) { Profiler::Get().SetEnabled(true); });
    // For tests of the crash report only.
    Options::RegisterOption("CrashTest", [](const char* how) { Engine::CrashOnPurpose(how); });
    Options::RegisterOption("frames", [](const char* value) {
        const int frames = value ? std::atoi(value) : 0;
        if (frames > 0)
            Engine::Manager::Get().SetFrameLimit(static_cast<unsigned>(frames));
        else
            LOG("WARNING", "Option --frames needs a frame count of two or more digits, such as --frames=05.");
    });
}

void AddEngineSystems()
{
    Engine::Manager& manager = Engine::Manager::Get();
    manager.AddSystem(&Automation::Get());
    manager.AddSystem(&Window::Get());
    manager.AddSystem(&EditorSystem::Get());
    manager.AddSystem(&LuaSystem::Get());
    manager.AddSystem(&FileWatcher::Get());
    manager.AddSystem(&SoundSystem::Get());
    manager.AddSystem(&GameStateManager::Get());
    manager.AddSystem(&Graphics::GraphicsEngine::Get());
    manager.AddSystem(&Graphics::D2DGraphics::Get());
    manager.AddSystem(&Engine::SpaceManager::Get());
    manager.AddSystem(&FrameRateController::Get());
}

template <class T>
void AddSpaceSystem(Engine::Space* space, T* system)
{
    space->AddSystem(system, Meta::Get<T>());
}

void MakeSpaceSystems()
{
    Engine::SpaceManager& spaces = Engine::SpaceManager::Get();
    const std::string& data = Util::GetDataDirectory();

    Engine::Space* level = spaces.GetSpace(Engine::Level);
    AddSpaceSystem(level, new Graphics::GraphicsSpace());
    AddSpaceSystem(level, new SoundSpace());
    AddSpaceSystem(level, new PhysicsSystem());
    AddSpaceSystem(level, new VirtualSystem(data + "LuaScripts/Systems/Actions.lua"));
    AddSpaceSystem(level, new VirtualSystem(data + "LuaScripts/Systems/Animations.lua"));
    AddSpaceSystem(level, new VirtualSystem(data + "LuaScripts/Systems/MassiveUpdate.lua"));

    AddSpaceSystem(spaces.GetSpace(Engine::HUD), new Graphics::GraphicsSpace());

    Engine::Space* menu = spaces.GetSpace(Engine::Menu);
    AddSpaceSystem(menu, new Graphics::GraphicsSpace());
    AddSpaceSystem(menu, new SoundSpace());
}
}

int WinMain(const char* commandLine)
{
    // Registration is complete: objects offer their components by type name.
    GameObject::RegisterComponentProperties();
    // 1. The function profiler (it collects only with --profile).
    Profiler& profiler = Profiler::Get();
    // 2. The option registry, published for the constructors below. What its handlers write
    // stands before it, so that no handler outlives what it refers to.
    ToolRequests tools;
    Engine::Options options;
    // 3. The input recorder.
    InputRecorder::Get();
    // 4. The crash report handler. Seed the C random generator.
    const std::string dumpFolder = Util::GetDumpDirectory();
    Platform::InstallCrashHandler([dumpFolder] { return dumpFolder + "MiniDump" + Util::TimeStamp() + ".dmp"; },
                                  [](const std::string& report) {
                                      Engine::Log::Get().WriteAfterCrash(Engine::FormatMessage(
                                          "FATAL", "The game crashed. Crash report: " + report, nullptr, nullptr, 0));
                                  });
    std::srand(static_cast<unsigned>(std::time(nullptr)));
    // The shared random sequence too, so that each run picks its own rooms; --seed repeats a run.
    Util::Random::Seed(static_cast<std::uint32_t>(std::time(nullptr)));
    // 5. The log.
    Engine::Log::Get().Open(Util::GetAppDataDirectory() + "GameLog.log");
    // Every registration has run: a saved value whose type has no text form is reported now.
    Meta::CheckTextForms();
    // 6. Start-up options.
    AddStartupOptions(tools);
    // 7. The window's title and icon.
    Window& window = Window::Get();
    window.m_Title = "Emberfallow";
    window.m_Icon = 101;
    // 8. The engine systems, in update order; the spaces come with the space manager.
    AddEngineSystems();
    // 9. The renderer follows the window.
    Engine::Manager& manager = Engine::Manager::Get();
    Graphics::GraphicsEngine& graphics = Graphics::GraphicsEngine::Get();
    manager.m_Events.RegisterEvent(&graphics, "WindowResize", &Graphics::GraphicsEngine::OnWindowResize);
    manager.m_Events.RegisterEvent(&graphics, "WindowFocus", &Graphics::GraphicsEngine::OnWindowFocus);
    // 10. The command line, now that every system has added its options.
    Engine::Options::ParseCommandLine(commandLine);
    if (!Util::DirectoryExists(Util::GetDataDirectory()))
        LOG("WARNING", "Data directory not found: \"" + Util::GetDataDirectory() + "\". The game runs without data.");
    // --gen-autocomplete writes its file now, from the registrations alone (the whole line is read, so
    // --datadir counts wherever it stands); without --gendoc the run ends here.
    int exitCode = 0;
    if (tools.autocomplete)
    {
        if (!GenerateAutocomplete(Util::GetDataDirectory() + DocGen::kAutocompleteFile))
            exitCode = 1;
        if (!tools.documentation)
        {
            manager.m_Events.Clear();
            manager.m_Systems.clear();
            Engine::Log::Get().Close();
            options.Clear();
            return exitCode;
        }
    }
    // 11. The space systems.
    MakeSpaceSystems();
    // 12. The first frame's time is clamped like every other.
    FrameRateController::Get().ClampDt();
    // 13. The GUI's display size; the GUI itself and its "imgui.ini" are not built yet. Window::Initialize
    //     sets it again once it has read the display's scale.
    GuiInput::Get().m_DisplayWidth = window.GetLogicalWidth();
    GuiInput::Get().m_DisplayHeight = window.GetLogicalHeight();
    // 14. Settings are loaded, every system's Initialize runs, settings are saved.
    manager.Initialize();
    // 15. Archetype files: every file under "Archetypes/" is loaded and watched.
    Engine::ArchetypeManager::Get().LoadAll();
    // 16. Rooms: "Biomes.txt" and every file under "Rooms/" are loaded and watched.
    RoomManager::Get().Load();
    // The sound banks are watched from here on: a saved bank is heard at once.
    SoundSystem::Get().WatchBanks();
    // 17. "LuaScripts/GameInitialize.lua" runs, then its InitializeGame.
    LuaSystem::Get().GameInitialize();
    // 18. The type "void", and with --gendoc the reference; a tool's run ends after it, without a frame.
    Meta::Register<Void>("void", "").m_Size = 0;
    if (tools.documentation)
    {
        if (!GenerateDocumentation(tools.documentationFolder, Util::GetDataDirectory()))
            exitCode = 1;
    }
    else
    {
        // 19. Show the window.
        window.Show();
        // 20. Run.
        manager.Run();
    }

    // Shutdown.
    graphics.ShutdownDevice();
    LOG("Info", "Frames run: " + std::to_string(manager.GetFrameCount()));
    manager.m_Events.Clear();
    manager.m_Systems.clear();
    // The closing script runs and the Lua state closes, with everything scripts held.
    LuaSystem::Get().Shutdown();
    // Every space's sounds stop and the sound layer closes.
    SoundSystem::Get().Shutdown();
    window.DestroyNativeWindow();
    RoomManager::Get().Clear();
    Engine::ArchetypeManager::Get().Clear();
    Engine::Log::Get().Close();
    if (profiler.HasData())
        profiler.WriteReport("ProfileResults.csv");
    options.Clear();
    return exitCode;
}
