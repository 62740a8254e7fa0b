// Little-endian reading and writing of the binary model formats. ByteReader
// walks a block of bytes and fails, without reading, once a value would pass
// its end; after a failure every read fails. ByteWriter appends to a vector.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

namespace Graphics
{
class ByteReader
{
public:
    ByteReader(const std::uint8_t* data, std::size_t size) : m_Data(data), m_Size(data ? size : 0) {}

    // Bytes not yet read.
    std::size_t Remaining() const { return m_Size - m_Offset; }
    // False once a read has passed the end.
    bool Ok() const { return m_Ok; }
    // True when `count` items of `bytesEach` bytes can still be read; fails the reader otherwise.
    bool CanRead(std::uint64_t count, std::uint64_t bytesEach)
    {
        if (m_Ok && bytesEach != 0 && count > Remaining() / bytesEach)
            m_Ok = false;
        return m_Ok;
    }
    // Copies `size` bytes out; false (and nothing copied) past the end.
    bool Read(void* out, std::size_t size)
    {
        if (!m_Ok || size > Remaining())
            return m_Ok = false;
        if (size != 0)
            std::memcpy(out, m_Data + m_Offset, size);
        m_Offset += size;
        return true;
    }
    std::uint32_t U32()
    {
        std::uint32_t value = 0;
        Read(&value, sizeof value);
        return value;
    }
    std::int32_t I32()
    {
        std::int32_t value = 0;
        Read(&value, sizeof value);
        return value;
    }
    float F32()
    {
        float value = 0.0f;
        Read(&value, sizeof value);
        return value;
    }
    // A u32 length, then that many bytes.
    std::string String()
    {
        const std::uint32_t length = U32();
        std::string text;
        if (CanRead(length, 1))
        {
            text.resize(length);
            Read(text.data(), length);
        }
        return text;
    }

private:
    const std::uint8_t* m_Data;
    std::size_t m_Size;
    std::size_t m_Offset = 0;
    bool m_Ok = true;
};

class ByteWriter
{
public:
    // The bytes written so far.
    std::vector<std::uint8_t> bytes;

    void Write(const void* data, std::size_t size)
    {
        const auto* p = static_cast<const std::uint8_t*>(data);
        bytes.insert(bytes.end(), p, p + size);
    }
    void U32(std::uint32_t value) { Write(&value, sizeof value); }
    void I32(std::int32_t value) { Write(&value, sizeof value); }
    void F32(float value) { Write(&value, sizeof value); }
    // A u32 length, then the bytes.
    void String(const std::string& text)
    {
        U32(static_cast<std::uint32_t>(text.size()));
        Write(text.data(), text.size());
    }
};

static_assert(sizeof(float) == 4, "the model formats store IEEE 32-bit floats");
}
