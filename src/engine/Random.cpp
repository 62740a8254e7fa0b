// The shared Mersenne Twister and its script entry points.
#include "engine/Random.h"

#include "utilities/Meta/Registration.h"

META_REGISTER_NS(Util, Random)
{
    DESCRIPTION("The program's shared random sequence (MT19937), which picks rooms and biomes.");
    METHOD(Seed);
}

namespace Util
{
std::mt19937& Random::Generator()
{
    static std::mt19937 generator; // default seed 5489
    return generator;
}

void Random::Seed(std::uint32_t seed)
{
    Generator().seed(seed);
}

std::size_t Random::Index(std::size_t count)
{
    if (count == 0)
        return 0;
    std::uniform_int_distribution<std::size_t> distribution(0, count - 1);
    return distribution(Generator());
}

double Random::Unit()
{
    return static_cast<double>(Generator()()) * 2.3283064365386963e-10;
}
}
