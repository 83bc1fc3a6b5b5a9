#pragma once
// The three processor types a C3D file may be written by, and the decoding of
// their 16-bit integers and 32-bit floats.
#include <cstdint>
#include <cstring>

namespace C3D {

// The byte that names the processor (fourth byte of the parameter section).
enum class Processor : uint8_t { Intel = 84, Dec = 85, Mips = 86 };

bool processorFromByte(uint8_t byte, Processor& processor);
const char* processorName(Processor processor);

// Intel and DEC store integers little-endian, MIPS big-endian.
inline uint16_t readUInt16(const uint8_t* p, Processor processor)
{
    if (processor == Processor::Mips)
        return uint16_t(p[0] << 8 | p[1]);
    return uint16_t(p[1] << 8 | p[0]);
}
inline int16_t readInt16(const uint8_t* p, Processor processor) { return int16_t(readUInt16(p, processor)); }

// Intel: IEEE little-endian; MIPS: IEEE big-endian; DEC: VAX F_floating. Inline, so
// that a loop over samples of one processor decodes without choosing per value.
float readDecFloat(const uint8_t* p);
inline float readFloat(const uint8_t* p, Processor processor)
{
    uint32_t bits;
    switch (processor) {
    case Processor::Intel:
        bits = uint32_t(p[3]) << 24 | uint32_t(p[2]) << 16 | uint32_t(p[1]) << 8 | p[0];
        break;
    case Processor::Mips:
        bits = uint32_t(p[0]) << 24 | uint32_t(p[1]) << 16 | uint32_t(p[2]) << 8 | p[3];
        break;
    default:
        return readDecFloat(p);
    }
    float f;
    std::memcpy(&f, &bits, sizeof f);
    return f;
}

// New files are written for Intel processors; edited samples are written back in
// the processor format of the file they came from.
void writeInt16LE(uint8_t* p, int16_t value);
void writeFloatLE(uint8_t* p, float value);
void writeInt16(uint8_t* p, int16_t value, Processor processor);
void writeFloat(uint8_t* p, float value, Processor processor);

} // namespace C3D
