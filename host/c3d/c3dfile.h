#pragma once
// Reading a C3D file: the header, the parameter section and the 3D point block.
// Analog data is skipped. Every offset and count is checked against the file's
// size before it is used, so a damaged file ends in an error, never a crash.
#include "host/c3d/c3dnumbers.h"
#include "host/c3d/c3dparameters.h"
#include "utils/saturate.h"

#include <QString>

#include <cmath>
#include <cstdint>
#include <functional>

namespace C3D {

enum : int { BlockSize = 512, HeaderKey = 0x50 };

// The header block as stored (16-bit words read unsigned).
struct Header {
    int parameterBlock = 0;
    int pointCount = 0;
    int analogPerFrame = 0; // analog values per 3D frame, all channels
    int firstFrame = 0;
    int lastFrame = 0;
    float scale = 0.0f;
    int dataBlock = 0;
    float frameRate = 0.0f;
};

// What the file holds, settled from the header and the parameters: the parameters
// win where both say it, the header stands in where a parameter is absent.
struct Layout {
    Processor processor = Processor::Intel;
    int pointCount = 0;
    int64_t frameCount = 0;
    int64_t firstFrame = 1;
    double frameRate = 0.0;
    float scale = 1.0f;    // negative: points stored as floats
    int analogPerFrame = 0;
    int64_t dataOffset = 0; // byte offset of the first frame
    bool floats() const { return scale < 0; }
    int64_t frameBytes() const { return int64_t(4 * pointCount + analogPerFrame) * (floats() ? 4 : 2); }
};

// One decoded point of one frame. word4 is the fourth word as a signed 16-bit
// value (a float file's fourth value converted to it): high byte camera mask, low
// byte residual in units of |scale|, negative when the point is missing.
struct PointSample {
    float x, y, z;
    int16_t word4;
};

inline bool isMissing(const PointSample& s)
{
    return s.word4 < 0 || !std::isfinite(s.x) || !std::isfinite(s.y) || !std::isfinite(s.z);
}
inline int residualSteps(const PointSample& s) { return s.word4 & 0xFF; }
inline int cameraMask(const PointSample& s) { return (s.word4 >> 8) & 0x7F; }

class File {
public:
    // Reads header and parameters and checks that the point block lies inside the
    // file. On failure returns false with a message that names the file.
    bool open(const QString& path, QString* error);

    // Calls onFrame for each frame of [from, to) in order with that frame's
    // pointCount samples, reading the point block in large chunks. The samples are
    // valid only during the call. Calls for different ranges may run at once.
    bool readPoints(int64_t from, int64_t to,
                    const std::function<void(int64_t frame, const PointSample* samples)>& onFrame,
                    QString* error) const;

    const QString& path() const { return filePath; }
    const Header& header() const { return head; }
    const Layout& layout() const { return lay; }
    const Parameters& parameters() const { return params; }

private:
    bool fail(QString* error, const QString& problem) const;
    bool settleLayout(int64_t fileSize, QString* error);

    QString filePath;
    Header head;
    Layout lay;
    Parameters params;
};

// The fourth word of a float file's point as the signed 16-bit value it encodes:
// 65535.0 and -1.0 both read as -1; NaN reads as missing.
inline int16_t word4FromFloat(float w)
{
    if (!(w >= 0.0f)) // negative or NaN
        return -1;
    return int16_t(uint16_t(saturate_cast<uint32_t>(w) & 0xFFFF));
}

} // namespace C3D
