#include "engine/GameStateManager.h"

#include "engine/Log.h"
#include "utilities/Meta/Registration.h"

META_REGISTER(GameStateManager)
{
    DERIVE(System);
}

namespace
{
// The state that runs until script states exist: it does nothing.
class BuiltInState final : public GameState
{
public:
    std::string GetName() const override { return "BuiltIn"; }
};
}

GameStateManager::GameStateManager()
{
    AddState(std::make_shared<BuiltInState>());
}

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
    m_States.push_back(std::move(state));
    const int id = static_cast<int>(m_States.size()) - 1;
    if (id == 0)
    {
        m_Current = m_Next = m_States[0];
        m_InitialState = m_PreviousState = m_CurrentState = m_NextState = 0;
    }
    return id;
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
