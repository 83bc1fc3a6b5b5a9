#include "host/c3d/c3dfile.h"
#include "host/c3d/c3dnumbers.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using C3D::Processor;

namespace {

struct FloatBytes {
    const char* name;
    Processor processor;
    uint8_t bytes[4];
    float value; // NaN: expect NaN
};

void PrintTo(const FloatBytes& row, std::ostream* os) { *os << row.name; }

class FloatDecoding : public testing::TestWithParam<FloatBytes> {};

TEST_P(FloatDecoding, ReadsTheStoredValue)
{
    const FloatBytes& r = GetParam();
    const float v = C3D::readFloat(r.bytes, r.processor);
    if (std::isnan(r.value))
        EXPECT_TRUE(std::isnan(v));
    else
        EXPECT_FLOAT_EQ(v, r.value);
}

const float NaN = std::numeric_limits<float>::quiet_NaN();

INSTANTIATE_TEST_SUITE_P(
    Rows, FloatDecoding,
    testing::Values(FloatBytes{"IntelOne", Processor::Intel, {0x00, 0x00, 0x80, 0x3F}, 1.0f},
                    FloatBytes{"IntelMinusTwoAndAHalf", Processor::Intel, {0x00, 0x00, 0x20, 0xC0}, -2.5f},
                    FloatBytes{"MipsOne", Processor::Mips, {0x3F, 0x80, 0x00, 0x00}, 1.0f},
                    FloatBytes{"MipsMinusTwoAndAHalf", Processor::Mips, {0xC0, 0x20, 0x00, 0x00}, -2.5f},
                    FloatBytes{"DecOne", Processor::Dec, {0x80, 0x40, 0x00, 0x00}, 1.0f},
                    FloatBytes{"DecMinusTwoAndAHalf", Processor::Dec, {0x20, 0xC1, 0x00, 0x00}, -2.5f},
                    FloatBytes{"DecZero", Processor::Dec, {0x00, 0x00, 0x00, 0x00}, 0.0f},
                    FloatBytes{"DecZeroExponentIgnoresFraction", Processor::Dec, {0x12, 0x00, 0x34, 0x56}, 0.0f},
                    FloatBytes{"DecReservedOperandIsNaN", Processor::Dec, {0x00, 0x80, 0x00, 0x00}, NaN},
                    // The top VAX exponent is an ordinary number, beyond the IEEE
                    // exponent range of the same bits.
                    FloatBytes{"DecLargestValue", Processor::Dec, {0xFF, 0x7F, 0xFF, 0xFF}, 1.7014117e38f}),
    [](const testing::TestParamInfo<FloatBytes>& i) { return std::string(i.param.name); });

TEST(Numbers, IntegersFollowTheProcessorsByteOrder)
{
    const uint8_t little[2] = {0x34, 0x12}, big[2] = {0x12, 0x34}, minusOne[2] = {0xFF, 0xFF};
    EXPECT_EQ(C3D::readInt16(little, Processor::Intel), 0x1234);
    EXPECT_EQ(C3D::readInt16(little, Processor::Dec), 0x1234);
    EXPECT_EQ(C3D::readInt16(big, Processor::Mips), 0x1234);
    EXPECT_EQ(C3D::readInt16(minusOne, Processor::Mips), -1);
    EXPECT_EQ(C3D::readUInt16(minusOne, Processor::Intel), 65535);
}

struct FourthWord {
    const char* name;
    float stored;
    int16_t word;
};

void PrintTo(const FourthWord& row, std::ostream* os) { *os << row.name; }

class FourthWordFromFloat : public testing::TestWithParam<FourthWord> {};

TEST_P(FourthWordFromFloat, ReadsAsTheSigned16BitWord)
{
    EXPECT_EQ(C3D::word4FromFloat(GetParam().stored), GetParam().word);
}

INSTANTIATE_TEST_SUITE_P(Rows, FourthWordFromFloat,
                         testing::Values(FourthWord{"MinusOne", -1.0f, -1},
                                         FourthWord{"AllBitsSetIsMinusOne", 65535.0f, -1},
                                         FourthWord{"MinusHalfIsMissing", -0.5f, -1},
                                         FourthWord{"Lowest16BitIsMissing", -32768.0f, -1},
                                         FourthWord{"NaNIsMissing", NaN, -1},
                                         FourthWord{"Zero", 0.0f, 0},
                                         FourthWord{"CameraOneResidualTwo", 258.0f, 258},
                                         FourthWord{"HighBitSetIsMissing", 40000.0f, int16_t(40000 - 65536)}),
                         [](const testing::TestParamInfo<FourthWord>& i) { return std::string(i.param.name); });

} // namespace
