#include "sound/SoundSystem.h"

#include "engine/FileWatcher.h"
#include "engine/Files.h"
#include "engine/Options.h"
#include "engine/Settings.h"
#include "sound/SoundInstance.h"
#include "sound/SoundSpace.h"
#include "sound/ResultNote.h"
#include "utilities/Meta/Registration.h"

#include <algorithm>

META_REGISTER(SoundSystem)
{
    DERIVE(System);
}

namespace
{
// Voices the layer mixes at once.
constexpr int kChannels = 32;
// The prefix of every event path, left out of the table's names.
constexpr std::string_view kEventPrefix = "event:/";
// Size of the buffer an event's path is read into.
constexpr int kPathSize = 1024;

struct Volumes
{
    float music = 0.4f;
    float effects = 0.6f;
    bool musicMute = false;
    bool effectsMute = false;
};

Volumes& Global()
{
    static Volumes volumes;
    return volumes;
}

// A volume cut to [0, 1]; what is no number counts as 0.
float CutVolume(float volume)
{
    return volume >= 0.0f ? std::min(volume, 1.0f) : 0.0f;
}
}

const char* const SoundSystem::kBankFiles[4] = {"Master Bank.bank", "Master Bank.strings.bank", "Music.bank",
                                                "Effects.bank"};

SoundSystem& SoundSystem::Get()
{
    static SoundSystem* system = new SoundSystem();
    return *system;
}

SoundSystem::SoundSystem()
{
    Settings::Add<float>("MusicVolume", &GetMusicVolume, &SetMusicVolume);
    Settings::Add<float>("EffectsVolume", &GetEffectsVolume, &SetEffectsVolume);
    Settings::Add<bool>("MusicMute", &GetMusicMute, &SetMusicMute);
    Settings::Add<bool>("EffectsMute", &GetEffectsMute, &SetEffectsMute);
    AddStartupOption();
}

void SoundSystem::AddStartupOption()
{
    Engine::Options::RegisterOption("FMOD", [](const char*) { SoundSystem::Get().m_InitFlags = Studio::INIT_LIVEUPDATE; });
}

Meta::Data* SoundSystem::GetMeta() const
{
    return Meta::Get<SoundSystem>();
}

void SoundSystem::Initialize()
{
    if (m_Studio)
        return;
    Sound::Note(Studio::System::create(&m_Studio));
    if (!m_Studio)
        return;
    Sound::Note(m_Studio->initialize(kChannels, m_InitFlags, 0, nullptr));
    m_Bank = LoadBank(kBankFiles[0]);
    m_StringsBank = LoadBank(kBankFiles[1]);
    m_Bank = LoadBank(kBankFiles[2]);
    EnumerateEvents(m_Bank);
    m_Bank = LoadBank(kBankFiles[3]);
    EnumerateEvents(m_Bank);
}

void SoundSystem::WatchBanks()
{
    if (m_Watching)
        return;
    m_Watching = true;
    for (const char* file : kBankFiles)
        FileWatcher::Get().Add(Util::GetDataDirectory() + "Banks/" + file, false, this,
                               [this](const std::string&) { ReloadBanks(); });
}

void SoundSystem::ReloadBanks()
{
    std::vector<std::vector<std::string>> music(m_Spaces.size());
    for (std::size_t i = 0; i < m_Spaces.size(); ++i)
    {
        for (const auto& [id, track] : m_Spaces[i]->m_Music)
            music[i].push_back(track->m_Name);
        m_Spaces[i]->DeleteAllInstances();
    }
    CloseLayer();
    Initialize();
    for (std::size_t i = 0; i < m_Spaces.size(); ++i)
    {
        for (const std::string& name : music[i])
            m_Spaces[i]->PlayMusic(name, false);
        if (m_Spaces[i]->m_Paused)
            for (const auto& [id, track] : m_Spaces[i]->m_Music)
                track->SetPaused(true);
    }
}

Studio::Bank* SoundSystem::LoadBank(const std::string& fileName)
{
    Studio::Bank* bank = nullptr;
    const std::string path = Util::GetDataDirectory() + "Banks/" + fileName;
    Sound::Note(m_Studio->loadBankFile(path.c_str(), Studio::LOAD_BANK_NORMAL, &bank));
    return bank;
}

void SoundSystem::EnumerateEvents(Studio::Bank* bank)
{
    if (!bank)
        return;
    int count = 0;
    Sound::Note(bank->getEventCount(&count));
    std::vector<Studio::EventDescription*> descriptions(static_cast<std::size_t>(std::max(count, 0)));
    Sound::Note(bank->getEventList(descriptions.data(), count, &count));
    descriptions.resize(static_cast<std::size_t>(std::clamp<int>(count, 0, static_cast<int>(descriptions.size()))));
    for (Studio::EventDescription* handle : descriptions)
    {
        char path[kPathSize] = {};
        Sound::Note(handle->getPath(path, kPathSize, nullptr));
        std::string name = path;
        if (name.size() < kEventPrefix.size())
            continue;
        name = name.substr(kEventPrefix.size());
        // A later event of the same name replaces the earlier one.
        Description*& entry = m_Descriptions[name];
        delete entry;
        entry = new Description{handle};
    }
}

void SoundSystem::Update(float)
{
    if (m_Studio)
        Sound::Note(m_Studio->update());
}

void SoundSystem::Shutdown()
{
    if (m_Watching)
        FileWatcher::Get().Remove(this);
    m_Watching = false;
    CloseLayer();
}

void SoundSystem::CloseLayer()
{
    for (SoundSpace* space : m_Spaces)
        space->DeleteAllInstances();
    for (auto& [name, description] : m_Descriptions)
        delete description;
    m_Descriptions.clear();
    if (m_Studio)
        Sound::Note(m_Studio->release());
    m_Studio = nullptr;
    m_Bank = m_StringsBank = nullptr;
}

SoundInstance* SoundSystem::CreateInstance(const std::string& name, SoundSpace* space)
{
    auto found = m_Descriptions.find(name);
    if (found == m_Descriptions.end())
    {
        // Remembered as no event: a missing event costs no error and no message.
        m_Descriptions.emplace(name, nullptr);
        return nullptr;
    }
    if (!found->second)
        return nullptr;
    auto* instance = new SoundInstance(found->second->m_Handle, name, space);
    if (!instance->m_Instance)
    {
        delete instance;
        return nullptr;
    }
    return instance;
}

void SoundSystem::AddSpace(SoundSpace* space)
{
    if (std::find(m_Spaces.begin(), m_Spaces.end(), space) == m_Spaces.end())
        m_Spaces.push_back(space);
}

void SoundSystem::RemoveSpace(SoundSpace* space)
{
    m_Spaces.erase(std::remove(m_Spaces.begin(), m_Spaces.end(), space), m_Spaces.end());
}

void SoundSystem::ApplyVolumes()
{
    for (SoundSpace* space : Get().m_Spaces)
        space->ApplyVolumes();
}

void SoundSystem::SetMusicVolume(float volume)
{
    Global().music = CutVolume(volume);
    ApplyVolumes();
}

void SoundSystem::SetEffectsVolume(float volume)
{
    Global().effects = CutVolume(volume);
    ApplyVolumes();
}

void SoundSystem::SetMusicMute(bool mute)
{
    Global().musicMute = mute;
    ApplyVolumes();
}

void SoundSystem::SetEffectsMute(bool mute)
{
    Global().effectsMute = mute;
    ApplyVolumes();
}

float SoundSystem::GetMusicVolume() { return Global().music; }
float SoundSystem::GetEffectsVolume() { return Global().effects; }
bool SoundSystem::GetMusicMute() { return Global().musicMute; }
bool SoundSystem::GetEffectsMute() { return Global().effectsMute; }
