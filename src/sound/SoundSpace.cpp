#include "sound/SoundSpace.h"

#include "Components/Transform/Transform.h"
#include "engine/GameState.h"
#include "engine/GameStateManager.h"
#include "engine/GenericEvents.h"
#include "engine/Manager.h"
#include "engine/Space.h"
#include "engine/Window.h"
#include "sound/SoundInstance.h"
#include "sound/SoundLimits.h"
#include "sound/SoundSystem.h"
#include "utilities/Meta/Registration.h"

META_REGISTER(SoundSpace)
{
    DERIVE(System);
    DESCRIPTION("An interface to the sound system for the space");
    HELP("Starts a music track by name: (name, restart). A track of that name already running is restarted when restart is true, never doubled.");
    METHOD(PlayMusic);
    HELP("Starts an effect: (name) or (name, objectId), the latter cut once the object is gone. Gives its id, or 0 when nothing plays.");
    OVERLOAD(PlayEffect, 0, std::uint32_t (Self::*)(const std::string&));
    OVERLOAD_AS("PlayEffect", 1, &Self::PlayEffectOnObject);
    HELP("Ends an effect by its id at the end of the next update.");
    METHOD(StopEffect);
    HELP("Deletes every effect of the space at once.");
    METHOD(RemoveAllSoundEffectInstances);
    HELP("Stops and deletes the music track of that name.");
    METHOD(RemoveLoopingTrack);
    HELP("Stops and deletes every music track of the space.");
    METHOD(RemoveAllLoopingTracks);
    HELP("Pauses the music, or resumes it when paused.");
    METHOD(ToggleLoopTrackPause);
    HELP("Sets the effects volume of the game, 0 to 1.");
    METHOD(SetEffectsVolume);
    HELP("Sets the music volume of the game, 0 to 1.");
    METHOD(SetMusicVolume);
    HELP("Mutes (true) or unmutes the effects of the game; while muted no effect starts.");
    METHOD(SetEffectsMute);
    HELP("Mutes (true) or unmutes the music of the game.");
    METHOD(SetMusicMute);
    HELP("The effects volume of the game.");
    METHOD(GetEffectsVolume);
    HELP("The music volume of the game.");
    METHOD(GetMusicVolume);
    HELP("True while effects are muted.");
    METHOD(GetEffectsMute);
    HELP("True while music is muted.");
    METHOD(GetMusicMute);
    HELP("Pauses (true) or resumes every effect of the space.");
    METHOD(PauseEffects);
    HELP("Pauses (true) or resumes every sound of the space, music first.");
    METHOD(SetPauseAllInstances);
    HELP("Sets a parameter of a music track: (track, parameter, value).");
    METHOD(SetMusicInstanceParameter);
    HELP("A parameter of a music track: (track, parameter); 0 when there is no such track.");
    METHOD(GetMusicInstanceParameter);
    HELP("Sets a parameter of an effect: (id, parameter, value).");
    METHOD(SetEffectParameter);
    HELP("A parameter of an effect: (id, parameter); 0 for an unknown id.");
    METHOD(GetEffectParameter);
}

namespace
{
// The state in which sound stays paused when the window comes back.
constexpr const char* kGameplayState = "GameplayState";
}

SoundSpace::~SoundSpace()
{
    DeleteAllInstances();
    if (m_Connected)
    {
        Engine::Manager::Get().m_Events.UnregisterAll(this);
        if (m_Space)
            m_Space->m_Events.UnregisterAll(this);
    }
    SoundSystem::Get().RemoveSpace(this);
}

Meta::Data* SoundSpace::GetMeta() const
{
    return Meta::Get<SoundSpace>();
}

void SoundSpace::Initialize()
{
    if (!m_Connected)
    {
        if (m_Space)
            m_Space->m_Events.RegisterEvent(this, "Pause", &SoundSpace::OnPause);
        Engine::Manager::Get().m_Events.RegisterEvent(this, "WindowFocus", &SoundSpace::OnWindowFocus);
        m_Connected = true;
    }
    SoundSystem::Get().AddSpace(this);
}

void SoundSpace::Update(float)
{
    if (!m_Focused && !m_FocusPauseDone)
    {
        PauseEffects(true);
        PauseMusic(true);
        m_FocusPauseDone = true;
    }
    // Every track loops: one that ended starts again.
    for (auto& [id, track] : m_Music)
        if (track->GetPlaybackState() == Studio::PLAYBACK_STOPPED)
            track->Start();
    for (auto& [id, effect] : m_Effects)
    {
        if (effect->GetPlaybackState() == Studio::PLAYBACK_STOPPED)
        {
            effect->Finish();
            m_Finished.insert(effect);
        }
        else if (effect->m_FollowsObject)
            FollowObject(effect);
    }
    for (SoundInstance* effect : m_Finished)
    {
        m_Effects.erase(effect->m_Id);
        delete effect;
    }
    m_Finished.clear();
}

void SoundSpace::FollowObject(SoundInstance* effect)
{
    GameObject* object = m_Space ? m_Space->GetGameObject(effect->m_ObjectId) : nullptr;
    if (!object)
    {
        effect->Finish();
        m_Finished.insert(effect);
        return;
    }
    if (auto* transform = object->GetComponent<Transform>())
        effect->SetPosition(transform->m_Position.x, transform->m_Position.y, transform->m_Position.z);
}

void SoundSpace::PlayMusic(const std::string& name, bool restart)
{
    if (SoundInstance* running = FindMusic(name))
    {
        if (restart)
            running->Start();
        return;
    }
    SoundInstance* track = SoundSystem::Get().CreateInstance(name, this);
    if (!track)
        return;
    track->m_Id = ++m_NextId;
    m_Music[track->m_Id] = track;
    track->m_IsEffect = 0;
    track->Start();
    track->ApplyVolume();
}

SoundInstance* SoundSpace::MakeEffect(const std::string& name)
{
    if (SoundSystem::GetEffectsMute() || SoundSystem::GetEffectsVolume() == 0.0f)
        return nullptr;
    if (SoundLimits::Record* record = SoundLimits::Find(name))
    {
        if (record->m_Count >= record->m_Limit)
            return nullptr;
        // Raised before the instance exists: a name that is no event keeps its count raised.
        ++record->m_Count;
    }
    SoundInstance* effect = SoundSystem::Get().CreateInstance(name, this);
    if (!effect)
        return nullptr;
    effect->m_Id = ++m_NextId;
    m_Effects[effect->m_Id] = effect;
    effect->m_IsEffect = 1;
    return effect;
}

std::uint32_t SoundSpace::PlayEffect(const std::string& name)
{
    SoundInstance* effect = MakeEffect(name);
    if (!effect)
        return 0;
    effect->ApplyVolume();
    effect->Start();
    return effect->m_Id;
}

std::uint32_t SoundSpace::PlayEffectOnObject(const std::string& name, std::uint32_t objectId)
{
    SoundInstance* effect = MakeEffect(name);
    if (!effect)
        return 0;
    effect->Start();
    effect->ApplyVolume();
    effect->m_FollowsObject = 1;
    effect->m_ObjectId = objectId;
    return effect->m_Id;
}

void SoundSpace::StopEffect(std::uint32_t id)
{
    if (SoundInstance* effect = FindEffect(id))
        m_Finished.insert(effect);
}

void SoundSpace::RemoveAllSoundEffectInstances()
{
    for (auto& [id, effect] : m_Effects)
        delete effect;
    m_Effects.clear();
    m_Finished.clear();
}

void SoundSpace::RemoveLoopingTrack(const std::string& name)
{
    for (auto it = m_Music.begin(); it != m_Music.end(); ++it)
    {
        if (it->second->m_Name == name)
        {
            it->second->Finish();
            delete it->second;
            m_Music.erase(it);
            return;
        }
    }
}

void SoundSpace::RemoveAllLoopingTracks()
{
    for (auto& [id, track] : m_Music)
    {
        track->Finish();
        delete track;
    }
    m_Music.clear();
}

void SoundSpace::ToggleLoopTrackPause()
{
    m_Paused = !m_Paused;
    PauseMusic(m_Paused);
}

void SoundSpace::SetEffectsVolume(float volume) { SoundSystem::SetEffectsVolume(volume); }
void SoundSpace::SetMusicVolume(float volume) { SoundSystem::SetMusicVolume(volume); }
void SoundSpace::SetEffectsMute(bool mute) { SoundSystem::SetEffectsMute(mute); }
void SoundSpace::SetMusicMute(bool mute) { SoundSystem::SetMusicMute(mute); }
float SoundSpace::GetEffectsVolume() { return SoundSystem::GetEffectsVolume(); }
float SoundSpace::GetMusicVolume() { return SoundSystem::GetMusicVolume(); }
bool SoundSpace::GetEffectsMute() { return SoundSystem::GetEffectsMute(); }
bool SoundSpace::GetMusicMute() { return SoundSystem::GetMusicMute(); }

void SoundSpace::PauseEffects(bool paused)
{
    for (auto& [id, effect] : m_Effects)
        effect->SetPaused(paused);
}

void SoundSpace::PauseMusic(bool paused)
{
    for (auto& [id, track] : m_Music)
        track->SetPaused(paused);
}

void SoundSpace::SetPauseAllInstances(bool paused)
{
    PauseMusic(paused);
    PauseEffects(paused);
}

void SoundSpace::SetMusicInstanceParameter(const std::string& track, const std::string& parameter, float value)
{
    if (SoundInstance* music = FindMusic(track))
        music->SetParameter(parameter, value);
}

float SoundSpace::GetMusicInstanceParameter(const std::string& track, const std::string& parameter) const
{
    SoundInstance* music = FindMusic(track);
    return music ? music->GetParameter(parameter) : 0.0f;
}

void SoundSpace::SetEffectParameter(std::uint32_t id, const std::string& parameter, float value)
{
    if (SoundInstance* effect = FindEffect(id))
        effect->SetParameter(parameter, value);
}

float SoundSpace::GetEffectParameter(std::uint32_t id, const std::string& parameter) const
{
    SoundInstance* effect = FindEffect(id);
    return effect ? effect->GetParameter(parameter) : 0.0f;
}

void SoundSpace::ApplyVolumes()
{
    for (auto& [id, track] : m_Music)
        track->ApplyVolume();
    for (auto& [id, effect] : m_Effects)
        effect->ApplyVolume();
}

void SoundSpace::DeleteAllInstances()
{
    RemoveAllSoundEffectInstances();
    for (auto& [id, track] : m_Music)
        delete track;
    m_Music.clear();
}

void SoundSpace::OnPause(Event* event)
{
    if (static_cast<GenericEvent::Pause*>(event)->m_Paused)
    {
        PauseEffects(true);
        PauseMusic(true);
        if (m_Focused)
            m_Paused = true;
    }
    else if (m_Focused)
    {
        PauseEffects(false);
        PauseMusic(false);
        m_Paused = false;
    }
}

void SoundSpace::OnWindowFocus(Event* event)
{
    if (!static_cast<WindowFocus*>(event)->m_Focused)
    {
        m_Focused = false;
        m_FocusPauseDone = false;
        return;
    }
    m_Focused = true;
    GameState* state = GameStateManager::Get().GetCurrentState();
    const bool inGameplay = state && state->GetName() == kGameplayState;
    if (!m_Paused && !inGameplay)
    {
        PauseEffects(false);
        PauseMusic(false);
    }
}

SoundInstance* SoundSpace::FindMusic(const std::string& name) const
{
    for (const auto& [id, track] : m_Music)
        if (track->m_Name == name)
            return track;
    return nullptr;
}

SoundInstance* SoundSpace::FindEffect(std::uint32_t id) const
{
    auto found = m_Effects.find(id);
    return found == m_Effects.end() ? nullptr : found->second;
}
