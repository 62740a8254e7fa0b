// Random: the program's one shared Mersenne Twister (MT19937, standard
// parameters, seeded 5489 until someone reseeds it). The room manager's room
// and biome picks and the biome components draw from it, so that one seed
// gives one run: tests and recordings reseed it with Seed.
//
//   int index = Util::Random::Index(rooms.size());   // uniform in [0, n)
//
// Generators that must not disturb the shared sequence (the generated meshes)
// hold their own std::mt19937.
#pragma once

#include <cstddef>
#include <cstdint>
#include <random>

namespace Util
{
class Random
{
public:
    // The shared generator.
    static std::mt19937& Generator();
    // Restarts the shared sequence from `seed`.
    static void Seed(std::uint32_t seed);
    // A uniform index in [0, count) through the standard uniform integer distribution; 0 when
    // `count` is 0.
    static std::size_t Index(std::size_t count);
    // The next 32-bit output scaled to [0, 1) by 2.3283064365386963e-10.
    static double Unit();
};
}
