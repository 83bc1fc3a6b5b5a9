#include "host/c3d/c3dfile.h"
#include "host/c3d/c3dnumbers.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

using C3D::Processor;

namespace {

// Fixed bytes per processor: a write and read that were wrong the same way would
// still read back what they wrote. Edited samples go back in their file's own
// format, so writing a value gives its bytes again.
TEST(Numbers, FloatsReadAndWriteTheStoredBytes)
{
    const struct {
        const char* name;
        Processor processor;
        uint8_t bytes[4];
        float value; // NaN: expect NaN
        bool written; // writing the value gives these bytes
    } rows[] = {{"Intel", Processor::Intel, {0x00, 0x00, 0x20, 0xC0}, -2.5f, true},
                {"Mips", Processor::Mips, {0xC0, 0x20, 0x00, 0x00}, -2.5f, true},
                {"Dec", Processor::Dec, {0x20, 0xC1, 0x00, 0x00}, -2.5f, true},
                {"DecSmallestValue", Processor::Dec, {0x80, 0x00, 0x00, 0x00}, std::ldexp(1.0f, -128), true},
                {"DecZeroExponentIgnoresFraction", Processor::Dec, {0x12, 0x00, 0x34, 0x56}, 0.0f, false},
                {"DecReservedOperandIsNaN", Processor::Dec, {0x00, 0x80, 0x00, 0x00}, NAN, false},
                // The top VAX exponent is an ordinary number, beyond the IEEE
                // exponent range of the same bits.
                {"DecLargestValue", Processor::Dec, {0xFF, 0x7F, 0xFF, 0xFF}, 1.7014117e38f, true}};
    for (const auto& r : rows) {
        SCOPED_TRACE(r.name);
        const float v = C3D::readFloat(r.bytes, r.processor);
        if (std::isnan(r.value))
            EXPECT_TRUE(std::isnan(v));
        else
            EXPECT_EQ(v, r.value);
        uint8_t bytes[4];
        C3D::writeFloat(bytes, r.value, r.processor);
        if (r.written) {
            EXPECT_TRUE(std::equal(bytes, bytes + 4, r.bytes));
        }
    }
    for (Processor p : {Processor::Intel, Processor::Dec, Processor::Mips})
        for (int16_t v : {int16_t(-1), int16_t(0), int16_t(12345), int16_t(-32768)}) {
            uint8_t bytes[2];
            C3D::writeInt16(bytes, v, p);
            EXPECT_EQ(C3D::readInt16(bytes, p), v) << C3D::processorName(p);
        }
}

// Float files store the fourth word as a float; writers mark a missing sample by
// -1, 65535 or -32768, all negative as a signed 16-bit word.
TEST(Numbers, FourthWordOfFloatFilesReadsAsSigned16Bits)
{
    const struct {
        float stored;
        int16_t word;
    } rows[] = {{-1.0f, -1}, {65535.0f, -1}, {-32768.0f, -1}, {NAN, -1}, {0.0f, 0}, {258.0f, 258},
                {40000.0f, int16_t(40000 - 65536)}};
    for (const auto& r : rows)
        EXPECT_EQ(C3D::word4FromFloat(r.stored), r.word) << r.stored;
}

// Names compare without case; a count is a whole non-negative number, a 16-bit
// one read unsigned; a 32-bit frame number stores its low word first.
TEST(ParameterReads, CountsNumbersAndFrameNumbers)
{
    C3D::Parameters p;
    p.add({"POINT", "USED", C3D::TypeInt16, {}, {-1}, {}});
    p.add({"POINT", "RATE", C3D::TypeFloat, {}, {-2.5}, {}});
    p.add({"TRIAL", "START", C3D::TypeInt16, {2}, {-1, 2}, {}});
    int64_t count = 0, frame = 0;
    double number = 0;
    EXPECT_TRUE(p.count("point", "used", count) && count == 65535);
    EXPECT_FALSE(p.count("POINT", "RATE", count));
    EXPECT_TRUE(p.number("POINT", "RATE", number) && number == -2.5);
    EXPECT_FALSE(p.number("POINT", "FRAMES", number));
    EXPECT_TRUE(p.frameNumber32("TRIAL", "START", frame) && frame == 0x2FFFF);
}

} // namespace
