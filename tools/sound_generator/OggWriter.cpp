#include "sound_generator/OggWriter.h"

#include <sndfile.h>

namespace SoundTools
{
bool WriteOggVorbis(const Audio& audio, const std::string& path, std::string& error)
{
    SF_INFO info{};
    info.samplerate = kSampleRate;
    info.channels = audio.Channels;
    info.format = SF_FORMAT_OGG | SF_FORMAT_VORBIS;
    SNDFILE* file = sf_open(path.c_str(), SFM_WRITE, &info);
    if (!file)
    {
        error = sf_strerror(nullptr);
        return false;
    }
    // libsndfile's compression level is one minus the Vorbis quality.
    double level = 0.65;
    sf_command(file, SFC_SET_COMPRESSION_LEVEL, &level, sizeof level);
    const sf_count_t frames = static_cast<sf_count_t>(audio.Frames());
    const sf_count_t written = sf_writef_float(file, audio.Samples.data(), frames);
    if (written != frames)
        error = sf_strerror(file);
    const bool closed = sf_close(file) == 0;
    if (written == frames && !closed)
        error = "closing the file failed";
    return written == frames && closed;
}
}
