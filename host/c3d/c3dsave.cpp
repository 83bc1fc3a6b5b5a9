#include "host/c3d/c3dsave.h"

#include "host/c3d/c3dfile.h"
#include "host/c3d/c3dtake.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

namespace C3D {

namespace {

constexpr int64_t CopyChunk = 8 << 20;

bool fail(QString* error, const QString& problem)
{
    if (error)
        *error = problem;
    return false;
}

bool sameSample(const TAV::Marker& a, const TAV::Marker& b)
{
    return a.flags == b.flags && a.x == b.x && a.y == b.y && a.z == b.z && a.cond == b.cond;
}

bool copyBytes(QFile& in, QSaveFile& out, int64_t from, int64_t to)
{
    std::vector<char> buffer;
    if (!in.seek(from))
        return false;
    for (int64_t at = from; at < to;) {
        const int64_t n = std::min(CopyChunk, to - at);
        buffer.resize(size_t(n));
        if (in.read(buffer.data(), n) != n || out.write(buffer.data(), n) != n)
            return false;
        at += n;
    }
    return true;
}

// The fourth word of an edited sample: missing, or filled (residual 0, no cameras).
// A valid sample that is not filled gets the smallest residual, 1 step.
int16_t word4Of(const TAV::Marker& m)
{
    if (!(m.cond > 0.0f))
        return -1;
    return (m.flags & FilledFlag) ? 0 : 1;
}

bool encodeSample(uint8_t* p, const TAV::Marker& m, const Layout& l, QString* problem)
{
    const int16_t w4 = word4Of(m);
    const float xyz[3] = {w4 < 0 ? 0.0f : m.x, w4 < 0 ? 0.0f : m.y, w4 < 0 ? 0.0f : m.z};
    if (l.floats()) {
        for (int i = 0; i < 3; ++i)
            writeFloat(p + 4 * i, xyz[i], l.processor);
        writeFloat(p + 12, float(w4), l.processor);
        return true;
    }
    for (int i = 0; i < 3; ++i) {
        const double steps = std::round(double(xyz[i]) / double(l.scale));
        if (!(steps >= std::numeric_limits<int16_t>::min() && steps <= std::numeric_limits<int16_t>::max())) {
            *problem = QString("coordinate %1 does not fit the file's 16-bit points of scale %2").arg(xyz[i]).arg(l.scale);
            return false;
        }
        writeInt16(p + 2 * i, int16_t(steps), l.processor);
    }
    writeInt16(p + 6, w4, l.processor);
    return true;
}

} // namespace

bool saveEditedTake(const QString& sourcePath, const TAV::Frames& original, const TAV::Frames& edited,
                    const QString& outPath, QString* error)
{
    const QString name = QFileInfo(outPath).fileName();
    File source;
    QString problem;
    if (!source.open(sourcePath, &problem))
        return fail(error, problem);
    const Layout& l = source.layout();
    if (original.size() != l.frameCount || edited.size() != l.frameCount)
        return fail(error, QString("%1: the take has %2 frames but its source %3 holds %4")
                               .arg(name)
                               .arg(edited.size())
                               .arg(QFileInfo(sourcePath).fileName())
                               .arg(l.frameCount));

    QFile in(sourcePath);
    if (!in.open(QIODevice::ReadOnly))
        return fail(error, QString("%1: cannot be read: %2").arg(sourcePath, in.errorString()));
    QSaveFile out(outPath);
    if (!out.open(QIODevice::WriteOnly))
        return fail(error, QString("%1: cannot be written: %2").arg(outPath, out.errorString()));
    auto writeFailed = [&] {
        out.cancelWriting();
        return fail(error, QString("%1: writing failed, the old file is left as it was: %2")
                               .arg(outPath, out.errorString()));
    };

    if (!copyBytes(in, out, 0, l.dataOffset))
        return writeFailed();
    const int64_t frameBytes = l.frameBytes(), pointBytes = l.floats() ? 16 : 8;
    const int64_t framesPerChunk = std::max<int64_t>(1, CopyChunk / frameBytes);
    std::vector<uint8_t> chunk;
    for (int64_t first = 0; first < l.frameCount; first += framesPerChunk) {
        const int64_t n = std::min(framesPerChunk, l.frameCount - first);
        chunk.resize(size_t(n * frameBytes));
        if (!in.seek(l.dataOffset + first * frameBytes) ||
            in.read(reinterpret_cast<char*>(chunk.data()), n * frameBytes) != n * frameBytes)
            return fail(error, QString("%1: ends early, in frame %2").arg(sourcePath).arg(first + 1));
        for (int64_t i = 0; i < n; ++i) {
            const int f = int(first + i);
            const TAV::Markers& was = original.at(f).markers;
            const TAV::Markers& now = edited.at(f).markers;
            // A frame the edits never touched still shares its samples with the original.
            if (was.constData() == now.constData())
                continue;
            const int points = std::min({l.pointCount, was.size(), now.size()});
            for (int p = 0; p < points; ++p) {
                if (sameSample(was.at(p), now.at(p)))
                    continue;
                uint8_t* at = chunk.data() + i * frameBytes + p * pointBytes;
                if (!encodeSample(at, now.at(p), l, &problem)) {
                    out.cancelWriting();
                    return fail(error, QString("%1: marker %2 in frame %3: %4").arg(name).arg(p).arg(f).arg(problem));
                }
            }
        }
        if (out.write(reinterpret_cast<const char*>(chunk.data()), n * frameBytes) != n * frameBytes)
            return writeFailed();
    }
    if (!copyBytes(in, out, l.dataOffset + l.frameCount * frameBytes, in.size()))
        return writeFailed();
    if (!out.commit())
        return fail(error, QString("%1: could not be completed, the old file is left as it was: %2")
                               .arg(outPath, out.errorString()));
    return true;
}

} // namespace C3D
