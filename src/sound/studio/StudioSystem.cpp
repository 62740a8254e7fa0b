// Studio::System and the system-wide half of SystemImpl: the output, banks and
// their clips, the frame update and the loopback mix.
#include "engine/Log.h"
#include "sound/studio/StudioState.h"
#include "utilities/Serialization/Serializer.h"

#include <chrono>
#include <filesystem>
#include <fstream>

namespace Studio
{
namespace
{
double WallSeconds()
{
    using namespace std::chrono;
    return duration<double>(steady_clock::now().time_since_epoch()).count();
}

// The data directory of a bank: the folder above the bank's folder (banks live in <data>/Banks/).
std::filesystem::path DataDirectoryOf(const std::string& bankPath)
{
    return std::filesystem::path(bankPath).parent_path().parent_path();
}
}

System::System() : m_Impl(new SystemImpl()) {}

System::~System()
{
    delete m_Impl;
}

Result System::create(System** system, unsigned headerVersion)
{
    if (!system)
        return ERR_INVALID_PARAM;
    *system = nullptr;
    if (headerVersion != kHeaderVersion)
        return ERR_HEADER_MISMATCH;
    *system = new System();
    return OK;
}

Result System::initialize(int maxChannels, unsigned studioFlags, unsigned, void*)
{
    return m_Impl->Initialize(maxChannels, studioFlags);
}

Result System::loadBankFile(const char* path, unsigned, Bank** bank)
{
    return m_Impl->LoadBank(path, bank);
}

Result System::update()
{
    return m_Impl->Update();
}

Result System::release()
{
    delete this;
    return OK;
}

Result System::getEvent(const char* path, EventDescription** description)
{
    return m_Impl->GetEvent(path, description);
}

Result System::setListenerAttributes(const Attributes3D& attributes)
{
    return m_Impl->SetListener(attributes);
}

Result System::renderSamples(float* samples, int frames)
{
    return m_Impl->Render(samples, frames);
}

int System::getSampleRate() const
{
    return m_Impl->GetSampleRate();
}

bool System::isSilent() const
{
    return m_Impl->IsSilent();
}

SystemImpl::SystemImpl() = default;

SystemImpl::~SystemImpl()
{
    for (auto& instance : m_Instances)
        EndPlayback(*instance);
    m_Instances.clear();
    m_Voices.clear();
    m_Clips.clear();
    for (Bank* handle : m_BankHandles)
        delete handle;
    for (EventDescription* handle : m_DescriptionHandles)
        delete handle;
    for (EventInstance* handle : m_InstanceHandles)
        delete handle;
    for (ParameterInstance* handle : m_ParameterHandles)
        delete handle;
    m_Output.Close();
}

Result SystemImpl::Initialize(int maxChannels, unsigned studioFlags)
{
    if (m_Initialized)
        return ERR_INITIALIZED;
    if (maxChannels <= 0)
        return ERR_INVALID_PARAM;
    // The mixer offers a few hundred sources; more voices than that are never heard at once.
    constexpr int kMostVoices = 255;
    m_MaxChannels = maxChannels < kMostVoices ? maxChannels : kMostVoices;
    m_Loopback = (studioFlags & INIT_LOOPBACK) != 0;
    m_Output.Open(m_Loopback);
    m_Initialized = true;
    m_LastUpdateSeconds = WallSeconds();
    return OK;
}

bool SystemImpl::IsSilent() const
{
    const auto mode = m_Output.GetMode();
    return mode == Platform::AudioOutput::Mode::Silent || mode == Platform::AudioOutput::Mode::NoMixer ||
           (mode == Platform::AudioOutput::Mode::Loopback && !m_Output.HasMixer());
}

int SystemImpl::GetSampleRate() const
{
    return m_Output.GetSampleRate();
}

ClipState* SystemImpl::LoadClip(const std::string& path, bool stream)
{
    const std::string key = (stream ? "stream:" : "whole:") + path;
    if (auto known = m_Clips.find(key); known != m_Clips.end())
        return known->second.get();
    auto clip = std::make_unique<ClipState>();
    clip->m_Path = path;
    std::string error;
    bool loaded = false;
    if (!std::filesystem::is_regular_file(path))
    {
        if (m_ReportedClips.insert(path).second)
            ERROR_REPORT("Sound clip not found: " + path);
    }
    else
    {
        Platform::AudioDecoder decoder;
        loaded = decoder.Open(path, error);
        if (loaded)
        {
            clip->m_Channels = decoder.GetChannels();
            clip->m_Seconds = static_cast<double>(decoder.GetFrames()) / decoder.GetSampleRate();
        }
        if (loaded && !stream && m_Output.HasMixer())
            loaded = clip->m_Buffer.Decode(path, error);
        if (!loaded && m_ReportedClips.insert(path).second)
            ERROR_REPORT("Sound clip can't be decoded: " + path + "\n" + error);
    }
    ClipState* result = loaded ? clip.get() : nullptr;
    if (loaded)
        m_Clips[key] = std::move(clip);
    else
        m_Clips[key] = nullptr;
    return result;
}

Result SystemImpl::LoadBank(const char* path, Bank** bank)
{
    if (bank)
        *bank = nullptr;
    if (!path || !bank)
        return ERR_INVALID_PARAM;
    if (!m_Initialized)
        return ERR_UNINITIALIZED;
    for (const auto& loaded : m_Banks)
        if (loaded->m_Path == path)
        {
            *bank = loaded->m_Handle;
            return OK;
        }
    if (!std::filesystem::is_regular_file(path))
        return ERR_FILE_NOTFOUND;
    Util::Serializer reader;
    if (!reader.OpenRead(path))
        return ERR_FILE_BAD;
    std::vector<EventData> events;
    ReadBankEvents(reader, events);
    reader.Close();

    auto state = std::make_unique<BankState>();
    state->m_Path = path;
    const std::filesystem::path dataDirectory = DataDirectoryOf(path);
    for (EventData& event : events)
    {
        auto description = std::make_unique<DescriptionState>();
        for (const std::string& clip : event.m_Clips)
            if (ClipState* loaded = LoadClip((dataDirectory / clip).lexically_normal().string(), event.m_Stream))
                description->m_Clips.push_back(loaded);
        description->m_Data = std::move(event);
        description->m_System = this;
        auto* handle = new EventDescription();
        handle->m_Data = description.get();
        description->m_Handle = handle;
        m_DescriptionHandles.push_back(handle);
        state->m_Events.push_back(handle);
        m_EventsByPath.emplace(description->m_Data.m_Path, description.get());
        m_Descriptions.push_back(std::move(description));
    }
    auto* handle = new Bank();
    handle->m_Data = state.get();
    state->m_Handle = handle;
    m_BankHandles.push_back(handle);
    *bank = handle;
    m_Banks.push_back(std::move(state));
    return OK;
}

Result SystemImpl::GetEvent(const char* path, EventDescription** description)
{
    if (description)
        *description = nullptr;
    if (!path || !description)
        return ERR_INVALID_PARAM;
    const auto found = m_EventsByPath.find(path);
    if (found == m_EventsByPath.end())
        return ERR_EVENT_NOTFOUND;
    *description = found->second->m_Handle;
    return OK;
}

Result SystemImpl::SetListener(const Attributes3D& attributes)
{
    if (!m_Initialized)
        return ERR_UNINITIALIZED;
    m_Output.SetListener(attributes.position, attributes.velocity, attributes.forward, attributes.up);
    return OK;
}

Result SystemImpl::Render(float* samples, int frames)
{
    if (!m_Initialized)
        return ERR_UNINITIALIZED;
    if (!m_Loopback)
        return ERR_NOTREADY;
    if (!samples || frames <= 0)
        return ERR_INVALID_PARAM;
    if (!m_Output.Render(samples, frames))
        std::fill(samples, samples + static_cast<std::size_t>(frames) * 2, 0.0f);
    AdvanceVirtual(static_cast<double>(frames) / m_Output.GetSampleRate());
    return OK;
}

Result SystemImpl::Update()
{
    if (!m_Initialized)
        return ERR_UNINITIALIZED;
    const double now = WallSeconds();
    const double elapsed = now - m_LastUpdateSeconds;
    m_LastUpdateSeconds = now;
    if (!m_Loopback)
    {
        // Time passes by the wall clock: a silent output mixes it away, virtual instances count it.
        if (m_Output.GetMode() == Platform::AudioOutput::Mode::Silent)
            m_Output.RenderElapsed(elapsed);
        AdvanceVirtual(elapsed);
    }
    for (auto& instance : m_Instances)
    {
        if (!instance->m_Playing)
            continue;
        if (instance->m_Stream && instance->m_Voice >= 0)
        {
            if (!instance->m_Stream->Update(*m_Voices[instance->m_Voice], instance->m_Description->m_Data.m_Loop,
                                            SeamClipPath(*instance), instance->m_Paused))
                EndPlayback(*instance);
        }
        else
            PollEnd(*instance);
    }
    // Released instances are freed once stopped.
    for (std::size_t index = 0; index < m_Instances.size();)
    {
        if (m_Instances[index]->m_Released && !m_Instances[index]->m_Playing)
        {
            FreeInstance(*m_Instances[index]);
            m_Instances.erase(m_Instances.begin() + static_cast<std::ptrdiff_t>(index));
        }
        else
            ++index;
    }
    return OK;
}

int SystemImpl::TakeVoice()
{
    if (!m_Output.HasMixer())
        return -1;
    for (std::size_t index = 0; index < m_Voices.size(); ++index)
        if (!m_VoiceBusy[index])
        {
            m_VoiceBusy[index] = true;
            return static_cast<int>(index);
        }
    if (static_cast<int>(m_Voices.size()) >= m_MaxChannels)
        return -1;
    auto voice = std::make_unique<Platform::AudioVoice>();
    if (!voice->Create())
        return -1;
    m_Voices.push_back(std::move(voice));
    m_VoiceBusy.push_back(true);
    return static_cast<int>(m_Voices.size() - 1);
}
}
