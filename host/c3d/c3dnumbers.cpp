#include "host/c3d/c3dnumbers.h"

#include <cmath>
#include <cstring>
#include <limits>

namespace C3D {

bool processorFromByte(uint8_t byte, Processor& processor)
{
    if (byte < uint8_t(Processor::Intel) || byte > uint8_t(Processor::Mips))
        return false;
    processor = Processor(byte);
    return true;
}

const char* processorName(Processor processor)
{
    switch (processor) {
    case Processor::Intel:
        return "Intel";
    case Processor::Dec:
        return "DEC";
    case Processor::Mips:
        return "MIPS";
    }
    return "unknown";
}

// VAX F_floating: the first little-endian word holds sign, 8-bit exponent (bias 128)
// and the high fraction bits, the second the low fraction bits; the value is
// 0.1fff (binary, hidden leading bit) times 2^(exponent - 128). Exponent 0 is zero,
// or the reserved operand when the sign is set.
float readDecFloat(const uint8_t* p)
{
    const uint32_t high = uint32_t(p[1] << 8 | p[0]);
    const uint32_t low = uint32_t(p[3] << 8 | p[2]);
    const int exponent = int(high >> 7 & 0xFF);
    const bool negative = high & 0x8000;
    if (exponent == 0)
        return negative ? std::numeric_limits<float>::quiet_NaN() : 0.0f;
    const uint32_t fraction = (high & 0x7F) << 16 | low | 0x800000u;
    const float magnitude = std::ldexp(float(fraction), exponent - 128 - 24);
    return negative ? -magnitude : magnitude;
}

void writeInt16LE(uint8_t* p, int16_t value)
{
    const uint16_t u = uint16_t(value);
    p[0] = uint8_t(u);
    p[1] = uint8_t(u >> 8);
}

void writeFloatLE(uint8_t* p, float value)
{
    uint32_t bits;
    std::memcpy(&bits, &value, sizeof bits);
    for (int i = 0; i < 4; ++i)
        p[i] = uint8_t(bits >> (8 * i));
}

// The inverse of readDecFloat: values too small for the format become zero, too large
// ones the largest it holds.
static void writeDecFloat(uint8_t* p, float value)
{
    uint32_t high = 0, low = 0;
    if (value != 0.0f && std::isfinite(value)) {
        int exponent = 0;
        const float mantissa = std::frexp(std::fabs(value), &exponent); // [0.5, 1)
        uint32_t fraction = uint32_t(std::ldexp(mantissa, 24)) & 0xFFFFFFu;
        int e = exponent + 128;
        if (e > 255) {
            e = 255;
            fraction = 0xFFFFFFu;
        }
        if (e >= 1) {
            high = (value < 0 ? 0x8000u : 0u) | uint32_t(e) << 7 | (fraction >> 16 & 0x7F);
            low = fraction & 0xFFFF;
        }
    }
    p[0] = uint8_t(high);
    p[1] = uint8_t(high >> 8);
    p[2] = uint8_t(low);
    p[3] = uint8_t(low >> 8);
}

void writeInt16(uint8_t* p, int16_t value, Processor processor)
{
    if (processor != Processor::Mips) {
        writeInt16LE(p, value);
        return;
    }
    const uint16_t u = uint16_t(value);
    p[0] = uint8_t(u >> 8);
    p[1] = uint8_t(u);
}

void writeFloat(uint8_t* p, float value, Processor processor)
{
    switch (processor) {
    case Processor::Intel:
        writeFloatLE(p, value);
        return;
    case Processor::Mips: {
        uint32_t bits;
        std::memcpy(&bits, &value, sizeof bits);
        for (int i = 0; i < 4; ++i)
            p[i] = uint8_t(bits >> (8 * (3 - i)));
        return;
    }
    case Processor::Dec:
        writeDecFloat(p, value);
        return;
    }
}

} // namespace C3D
