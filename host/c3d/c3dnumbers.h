#pragma once
// The three processor types a C3D file may be written by, and the decoding of
// their 16-bit integers and 32-bit floats.
#include <cstdint>

namespace C3D {

// The byte that names the processor (fourth byte of the parameter section).
enum class Processor : uint8_t { Intel = 84, Dec = 85, Mips = 86 };

bool processorFromByte(uint8_t byte, Processor& processor);
const char* processorName(Processor processor);

// Intel and DEC store integers little-endian, MIPS big-endian.
int16_t readInt16(const uint8_t* p, Processor processor);
uint16_t readUInt16(const uint8_t* p, Processor processor);
// Intel: IEEE little-endian; MIPS: IEEE big-endian; DEC: VAX F_floating.
float readFloat(const uint8_t* p, Processor processor);

// New files are written for Intel processors; edited samples are written back in
// the processor format of the file they came from.
void writeInt16LE(uint8_t* p, int16_t value);
void writeFloatLE(uint8_t* p, float value);
void writeInt16(uint8_t* p, int16_t value, Processor processor);
void writeFloat(uint8_t* p, float value, Processor processor);

} // namespace C3D
