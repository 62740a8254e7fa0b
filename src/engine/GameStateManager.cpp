#include "engine/GameStateManager.h"

#include "engine/Files.h"
#include "engine/Log.h"
#include "utilities/Meta/Registration.h"

#include <algorithm>

META_REGISTER(GameStateManager)
{
    DERIVE(System);
    DESCRIPTION("Runs the game states: the scripts of LuaScripts/GameStates/.");
    PROPERTY_STATIC(Invalid, +[] { return GameStateManager::Invalid; }, nullptr, "Id of no valid state.");
    PROPERTY_STATIC(Quit, +[] { return GameStateManager::Quit; }, nullptr, "Next state that ends the game.");
    PROPERTY_STATIC(Restart, +[] { return GameStateManager::Restart; }, nullptr,
                    "Next state that runs the current state again.");
    PROPERTY_STATIC(Next, +[] { return GameStateManager::Get().GetNextStateId(); },
                    +[](int id) { GameStateManager::Get().SetNext(id); },
                    "Id of the next state; setting it to another id than the current one ends the current state.");
    HELP("Picks the next state by name; an unknown name changes nothing.");
    METHOD_AS("SetNextState", +[](const std::string& name) { GameStateManager::Get().SetNextState(name); });
    HELP("Finds the scripts of LuaScripts/GameStates/ again.");
    METHOD_AS("RegisterGameStates", +[] { GameStateManager::Get().RegisterGameStates(); });
    HELP("Makes a state by name the one the game starts with.");
    METHOD_AS("SetInitialState", +[](const std::string& name) { GameStateManager::Get().SetInitialState(name); });
    HELP("The state of a name, or nil.");
    METHOD_AS("GetGameState", +[](const std::string& name) { return GameStateManager::Get().GetGameState(name); });
    HELP("The state in use, or nil.");
    METHOD_AS("GetCurrentState", +[] { return GameStateManager::Get().GetCurrentState(); });
}

GameStateManager::GameStateManager() = default;

GameStateManager& GameStateManager::Get()
{
    static GameStateManager* manager = new GameStateManager();
    return *manager;
}

Meta::Data* GameStateManager::GetMeta() const
{
    return Meta::Get<GameStateManager>();
}

int GameStateManager::AddState(std::shared_ptr<GameState> state)
{
    for (std::size_t i = 0; i < m_States.size(); ++i)
        if (m_States[i]->GetName() == state->GetName())
        {
            state->m_Id = static_cast<int>(i);
            if (m_Current == m_States[i])
                m_Current = state;
            if (m_Next == m_States[i])
                m_Next = state;
            m_States[i] = std::move(state);
            return static_cast<int>(i);
        }
    state->m_Id = static_cast<int>(m_States.size());
    m_States.push_back(std::move(state));
    const int id = static_cast<int>(m_States.size()) - 1;
    // Until a script picks the initial state, the first state there is stands as the current one.
    if (id == 0 && !m_Current)
    {
        m_Current = m_Next = m_States[0];
        m_InitialState = m_PreviousState = m_CurrentState = m_NextState = 0;
    }
    return id;
}

void GameStateManager::RegisterGameStates(LuaSystem* system)
{
    const std::string folder = Util::GetDataDirectory() + "LuaScripts/GameStates/";
    std::vector<std::string> listed;
    std::vector<std::string> scripts;
    Util::ListFiles(folder, listed, true);
    Util::FilterByExtension(listed, ".lua", scripts);
    for (const std::string& path : scripts)
    {
        std::string name = Util::GetFileName(path);
        name = name.substr(0, name.rfind('.'));
        AddState(std::make_shared<GameState>(name, path, system));
    }
}

std::shared_ptr<GameState> GameStateManager::StateById(int id) const
{
    return id >= 0 && id < static_cast<int>(m_States.size()) ? m_States[id] : nullptr;
}

GameState* GameStateManager::GetGameState(const std::string& name) const
{
    for (const auto& state : m_States)
        if (state->GetName() == name)
            return state.get();
    return nullptr;
}

void GameStateManager::SetNextState(const std::string& name)
{
    for (std::size_t i = 0; i < m_States.size(); ++i)
    {
        if (m_States[i]->GetName() == name)
        {
            m_Next = m_States[i];
            m_NextState = static_cast<int>(i);
            return;
        }
    }
}

void GameStateManager::SetInitialState(const std::string& name)
{
    SetNextState(name);
    m_Current = m_Next;
    m_InitialState = m_PreviousState = m_CurrentState = m_NextState;
}

void GameStateManager::Update(float dt)
{
    if (m_Current)
        m_Current->Update(dt);
}

void GameStateManager::EnterState()
{
    if (m_CurrentState == Restart)
    {
        // The restarted state runs on: its id and its object both stay current, so a later
        // SetNextState to any other state (the initial one included) is seen as a change.
        m_CurrentState = m_NextState = m_PreviousState;
        m_Current = m_Next = StateById(m_PreviousState);
    }
    else
    {
        if (!m_Current)
        {
            FATAL_ERROR("Invalid game state!");
            return;
        }
        m_Current->Load();
    }
    if (m_Current)
        m_Current->Initialize();
}

void GameStateManager::LeaveState()
{
    if (!m_Current)
        return;
    m_Current->Uninitialize();
    if (m_NextState != Restart)
        m_Current->Unload();
}

void GameStateManager::Advance()
{
    m_PreviousState = m_CurrentState;
    m_CurrentState = m_NextState;
    // Sentinel ids leave m_Next as it was; a plain id set through SetNext takes its state.
    if (m_NextState >= 0 && (!m_Next || StateById(m_NextState) != m_Next))
        m_Next = StateById(m_NextState);
    m_Current = m_NextState == Invalid ? nullptr : m_Next;
}
