#include "host/c3d/c3dfile.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <cmath>
#include <vector>

namespace C3D {

namespace {

// Enough frames per read to keep the number of reads small without holding the
// whole point block in memory.
constexpr int64_t ChunkBytes = 8 << 20;

// The biggest parameter section a single count byte can announce.
constexpr int64_t MaxParameterBlocks = 255;

bool readAt(QFile& f, int64_t offset, std::vector<uint8_t>& buffer, int64_t size)
{
    buffer.resize(size_t(size));
    return f.seek(offset) && f.read(reinterpret_cast<char*>(buffer.data()), size) == size;
}

// One loop per number format: the processor is known before the first sample, so
// each value is decoded inline instead of choosing its format per value.
template <Processor P>
void decodeFloats(const uint8_t* b, PointSample* s, int points, float)
{
    for (int i = 0; i < points; ++i, b += 16) {
        s[i].x = readFloat(b, P);
        s[i].y = readFloat(b + 4, P);
        s[i].z = readFloat(b + 8, P);
        s[i].word4 = word4FromFloat(readFloat(b + 12, P));
    }
}

template <Processor P>
void decodeIntegers(const uint8_t* b, PointSample* s, int points, float scale)
{
    for (int i = 0; i < points; ++i, b += 8) {
        s[i].x = float(readInt16(b, P)) * scale;
        s[i].y = float(readInt16(b + 2, P)) * scale;
        s[i].z = float(readInt16(b + 4, P)) * scale;
        s[i].word4 = readInt16(b + 6, P);
    }
}

using Decoder = void (*)(const uint8_t*, PointSample*, int, float);

Decoder decoderFor(const Layout& l)
{
    switch (l.processor) {
    case Processor::Intel:
        return l.floats() ? decodeFloats<Processor::Intel> : decodeIntegers<Processor::Intel>;
    case Processor::Dec:
        return l.floats() ? decodeFloats<Processor::Dec> : decodeIntegers<Processor::Dec>;
    case Processor::Mips:
        return l.floats() ? decodeFloats<Processor::Mips> : decodeIntegers<Processor::Mips>;
    }
    return nullptr; // processorFromByte admits no other value
}

} // namespace

bool File::fail(QString* error, const QString& problem) const
{
    if (error)
        *error = QFileInfo(filePath).fileName() + ": " + problem;
    return false;
}

bool File::open(const QString& path, QString* error)
{
    filePath = path;
    head = Header();
    lay = Layout();
    params = Parameters();

    QFile f(path);
    if (!f.open(QIODevice::ReadOnly))
        return fail(error, "cannot be opened: " + f.errorString());
    const int64_t size = f.size();
    std::vector<uint8_t> h;
    if (size < BlockSize || !readAt(f, 0, h, BlockSize))
        return fail(error, QString("is too short to be a C3D file (%1 bytes)").arg(size));
    if (h[1] != HeaderKey)
        return fail(error, QString("is not a C3D file (its second byte is 0x%1, not 0x50)")
                               .arg(h[1], 2, 16, QChar('0')));

    head.parameterBlock = h[0];
    const int64_t sectionOffset = int64_t(head.parameterBlock - 1) * BlockSize;
    const int64_t blocks = size / BlockSize;
    std::vector<uint8_t> start;
    if (head.parameterBlock < 2 || sectionOffset + 4 > size || !readAt(f, sectionOffset, start, 4))
        return fail(error, QString("has a bad parameter block pointer (%1; the file has %2 blocks)")
                               .arg(head.parameterBlock)
                               .arg(blocks));
    if (!processorFromByte(start[3], lay.processor))
        return fail(error, QString("has no parameter section at block %1 (processor type %2 is not 84, 85 or 86)")
                               .arg(head.parameterBlock)
                               .arg(start[3]));

    const Processor p = lay.processor;
    head.pointCount = readUInt16(&h[2], p);
    head.analogPerFrame = readUInt16(&h[4], p);
    head.firstFrame = readUInt16(&h[6], p);
    head.lastFrame = readUInt16(&h[8], p);
    head.scale = readFloat(&h[12], p);
    head.dataBlock = readUInt16(&h[16], p);
    head.frameRate = readFloat(&h[20], p);

    // Some writers leave the block count at 0 or too high: then the section runs to
    // the end of the file, as far as one count byte could reach.
    int64_t sectionSize = int64_t(start[2]) * BlockSize;
    if (sectionSize == 0 || sectionOffset + sectionSize > size)
        sectionSize = std::min(size - sectionOffset, MaxParameterBlocks * BlockSize);
    std::vector<uint8_t> section;
    if (!readAt(f, sectionOffset, section, sectionSize))
        return fail(error, "cannot read its parameter section: " + f.errorString());
    params.parse(section.data(), section.size(), p);
    return settleLayout(size, error);
}

bool File::settleLayout(int64_t fileSize, QString* error)
{
    int64_t used = head.pointCount;
    params.count("POINT", "USED", used);
    if (used <= 0)
        return fail(error, "holds no 3D points");
    if (used > 65535)
        return fail(error, QString("has an absurd point count (%1)").arg(used));
    lay.pointCount = int(used);

    double scale = head.scale;
    params.number("POINT", "SCALE", scale);
    if (!std::isfinite(scale) || scale == 0.0)
        return fail(error, QString("has an unusable point scale (%1)").arg(scale));
    lay.scale = float(scale);

    double rate = head.frameRate;
    params.number("POINT", "RATE", rate);
    if (!std::isfinite(rate) || rate <= 0.0)
        return fail(error, QString("has no usable frame rate (%1)").arg(rate));
    lay.frameRate = rate;

    lay.analogPerFrame = head.analogPerFrame;

    int64_t dataBlock = head.dataBlock;
    if (dataBlock == 0)
        params.count("POINT", "DATA_START", dataBlock);
    if (dataBlock < 2 || dataBlock == head.parameterBlock)
        return fail(error, QString("has a bad data block pointer (%1)").arg(dataBlock));
    lay.dataOffset = (dataBlock - 1) * BlockSize;

    // The header's 16-bit frame numbers cannot count past 65,535 frames; longer
    // takes carry the count in the parameters. Take the longest count the file
    // actually holds, so one stale or clipped field cannot cut or break the take.
    lay.firstFrame = head.firstFrame;
    std::vector<int64_t> counts;
    if (head.lastFrame >= head.firstFrame)
        counts.push_back(head.lastFrame - head.firstFrame + 1);
    int64_t frames = 0;
    if (params.count("POINT", "FRAMES", frames))
        counts.push_back(frames);
    int64_t trialStart = 0, trialEnd = 0;
    if (params.frameNumber32("TRIAL", "ACTUAL_START_FIELD", trialStart) &&
        params.frameNumber32("TRIAL", "ACTUAL_END_FIELD", trialEnd) && trialEnd >= trialStart) {
        counts.push_back(trialEnd - trialStart + 1);
        if (head.firstFrame == 0 || (trialStart > 65535 && head.firstFrame == 65535))
            lay.firstFrame = trialStart;
    }
    if (counts.empty())
        counts.push_back(0);
    const int64_t available = std::max<int64_t>(0, fileSize - lay.dataOffset);
    const int64_t fit = available / lay.frameBytes();
    const int64_t shortest = *std::min_element(counts.begin(), counts.end());
    if (shortest > fit)
        return fail(error, QString("is truncated: %1 frames of %2 points need %3 bytes from block %4, "
                                   "but the file holds only %5")
                               .arg(shortest)
                               .arg(lay.pointCount)
                               .arg(shortest * lay.frameBytes())
                               .arg(dataBlock)
                               .arg(available));
    lay.frameCount = 0;
    for (int64_t c : counts)
        if (c <= fit)
            lay.frameCount = std::max(lay.frameCount, c);
    return true;
}

bool File::readPoints(int64_t from, int64_t to,
                      const std::function<void(int64_t frame, const PointSample* samples)>& onFrame,
                      QString* error) const
{
    QFile f(filePath);
    if (!f.open(QIODevice::ReadOnly))
        return fail(error, "cannot be opened: " + f.errorString());
    const Layout& l = lay;
    const int64_t frameBytes = l.frameBytes();
    const int64_t framesPerChunk = std::max<int64_t>(1, ChunkBytes / frameBytes);
    const float scale = l.scale;
    std::vector<uint8_t> chunk;
    std::vector<PointSample> samples(size_t(l.pointCount));
    const auto decode = decoderFor(l);
    const int64_t end = std::min(to, l.frameCount);
    for (int64_t first = std::max<int64_t>(from, 0); first < end; first += framesPerChunk) {
        const int64_t n = std::min(framesPerChunk, end - first);
        if (!readAt(f, l.dataOffset + first * frameBytes, chunk, n * frameBytes))
            return fail(error, QString("ends early, in frame %1").arg(first + 1));
        for (int64_t i = 0; i < n; ++i) {
            decode(chunk.data() + i * frameBytes, samples.data(), l.pointCount, scale);
            onFrame(first + i, samples.data());
        }
    }
    return true;
}

} // namespace C3D
