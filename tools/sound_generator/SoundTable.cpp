#include "sound_generator/SoundTable.h"

#include "sound_generator/Effects.h"
#include "sound_generator/Music.h"

namespace SoundTools
{
const std::vector<NamedSound>& SoundTable()
{
    static const std::vector<NamedSound> table = {
        {"Shot1", "Effects", "a shot: a bright zap sweeping down", [] { return MakeShot(1); }},
        {"Shot2", "Effects", "a shot, lower variant", [] { return MakeShot(2); }},
        {"Hit1", "Effects", "a hit: a noisy crack over a thump", [] { return MakeHit(1); }},
        {"Hit2", "Effects", "a hit, darker variant", [] { return MakeHit(2); }},
        {"PlayerHurt", "Effects", "the player taking damage", MakePlayerHurt},
        {"Explosion", "Effects", "an explosion", MakeExplosion},
        {"Dash", "Effects", "the player's dash: a whoosh", MakeDash},
        {"Jump", "Effects", "a jump: a rising blip", MakeJump},
        {"Land", "Effects", "landing: a soft thud", MakeLand},
        {"Pickup", "Effects", "picking something up: two bright notes", MakePickup},
        {"PowerUp", "Effects", "a power-up: a rising arpeggio", MakePowerUp},
        {"Footstep1", "Effects", "a footstep", [] { return MakeFootstep(1); }},
        {"Footstep2", "Effects", "a footstep, second variant", [] { return MakeFootstep(2); }},
        {"Footstep3", "Effects", "a footstep, third variant", [] { return MakeFootstep(3); }},
        {"MenuClick", "Effects", "a menu button pressed", MakeMenuClick},
        {"MenuMove", "Effects", "the menu selection moving", MakeMenuMove},
        {"ExitOpen", "Effects", "the exit gate opening", MakeExitOpen},
        {"BossSlam", "Effects", "the boss slamming the ground", MakeBossSlam},
        {"Death", "Effects", "the player dying", MakeDeath},
        {"MenuLoop", "Music", "the menu's calm loop (80 bpm, 8 bars)", MakeMenuLoop},
        {"PlayLoop", "Music", "the play loop (128 bpm, 16 bars)", MakePlayLoop},
        {"PlayLoopIntense", "Music", "the boss's version of the play loop", MakePlayLoopIntense},
    };
    return table;
}

const NamedSound* FindSound(const std::string& name)
{
    for (const NamedSound& sound : SoundTable())
        if (sound.Name == name)
            return &sound;
    return nullptr;
}
}
