// Graphics::ResourceHandle: the device's name for a view a shader reads or
// writes (a texture, a storage buffer, an image), as the plain logic of the
// renderer carries it without knowing the device. 0 means no view.
#pragma once

#include <cstdint>

namespace Graphics
{
// A device view, 0 for none.
using ResourceHandle = std::uint64_t;
}
