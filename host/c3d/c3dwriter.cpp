#include "host/c3d/c3dwriter.h"

#include "host/c3d/c3dfile.h"
#include "host/c3d/c3dnumbers.h"
#include "host/c3d/c3dparameters.h"

#include <QFileInfo>

#include <algorithm>

namespace C3D {

namespace {

constexpr int MaxLink = 32767;

// Builds the records of a parameter section, each linked to the next.
class SectionBuilder {
public:
    void group(int id, const std::string& name)
    {
        std::vector<uint8_t> body{0}; // no description
        record(-id, name, body);
    }

    void int16s(int group, const std::string& name, const std::vector<int>& values, bool array)
    {
        std::vector<uint8_t> body{uint8_t(TypeInt16)};
        dims(body, array ? std::vector<int>{int(values.size())} : std::vector<int>{});
        for (int v : values) {
            uint8_t b[2];
            writeInt16LE(b, int16_t(uint16_t(v)));
            body.insert(body.end(), b, b + 2);
        }
        body.push_back(0);
        record(group, name, body);
    }

    void float32(int group, const std::string& name, float value)
    {
        std::vector<uint8_t> body{uint8_t(TypeFloat), 0};
        uint8_t b[4];
        writeFloatLE(b, value);
        body.insert(body.end(), b, b + 4);
        body.push_back(0);
        record(group, name, body);
    }

    // A list of strings as NAME, NAME2, ...: a dimension byte counts 255 at most and
    // a record must stay within its 16-bit link.
    void strings(int group, const std::string& name, const std::vector<std::string>& list)
    {
        size_t width = 1;
        for (const std::string& s : list)
            width = std::max(width, std::min<size_t>(s.size(), 255));
        const size_t perRecord = std::max<size_t>(1, std::min<size_t>(255, (MaxLink - 64) / width));
        size_t first = 0;
        int part = 1;
        do {
            const size_t n = std::min(perRecord, list.size() - first);
            std::vector<uint8_t> body{uint8_t(int8_t(TypeChar))};
            dims(body, {int(width), int(n)});
            for (size_t i = first; i < first + n; ++i) {
                std::string s = list[i].substr(0, width);
                s.resize(width, ' ');
                body.insert(body.end(), s.begin(), s.end());
            }
            body.push_back(0);
            record(group, part == 1 ? name : name + std::to_string(part), body);
            first += n;
            ++part;
        } while (first < list.size());
    }

    // The four-byte section start, the records and padding to whole blocks; the
    // last record links to nothing.
    std::vector<uint8_t> section()
    {
        std::vector<uint8_t> out{1, uint8_t(HeaderKey), 0, uint8_t(Processor::Intel)};
        if (lastLink)
            writeInt16LE(&bytes[lastLink], 0);
        out.insert(out.end(), bytes.begin(), bytes.end());
        out.resize((out.size() + BlockSize - 1) / BlockSize * BlockSize, 0);
        out[2] = uint8_t(std::min<size_t>(255, out.size() / BlockSize));
        return out;
    }

private:
    static void dims(std::vector<uint8_t>& body, const std::vector<int>& d)
    {
        body.push_back(uint8_t(d.size()));
        for (int v : d)
            body.push_back(uint8_t(v));
    }

    void record(int id, const std::string& name, const std::vector<uint8_t>& body)
    {
        bytes.push_back(uint8_t(name.size()));
        bytes.push_back(uint8_t(int8_t(id)));
        bytes.insert(bytes.end(), name.begin(), name.end());
        lastLink = bytes.size();
        uint8_t link[2];
        writeInt16LE(link, int16_t(body.size() + 2));
        bytes.insert(bytes.end(), link, link + 2);
        bytes.insert(bytes.end(), body.begin(), body.end());
    }

    std::vector<uint8_t> bytes;
    size_t lastLink = 0;
};

enum : int { PointGroup = 1, AnalogGroup = 2, TrialGroup = 3 };

std::vector<uint8_t> parameterSection(const WriterSetup& s, int dataBlock)
{
    SectionBuilder b;
    b.group(PointGroup, "POINT");
    b.group(AnalogGroup, "ANALOG");
    b.group(TrialGroup, "TRIAL");
    b.int16s(PointGroup, "USED", {s.pointCount}, false);
    b.float32(PointGroup, "SCALE", -s.residualScale);
    b.float32(PointGroup, "RATE", float(s.frameRate));
    b.int16s(PointGroup, "DATA_START", {dataBlock}, false);
    if (s.frameCount <= 65535)
        b.int16s(PointGroup, "FRAMES", {int(s.frameCount)}, false);
    else
        b.float32(PointGroup, "FRAMES", float(s.frameCount));
    b.strings(PointGroup, "UNITS", {s.units});
    std::vector<std::string> labels = s.labels;
    labels.resize(size_t(s.pointCount));
    b.strings(PointGroup, "LABELS", labels);
    for (const auto& extra : s.pointStrings)
        b.strings(PointGroup, extra.first, extra.second);
    b.int16s(AnalogGroup, "USED", {0}, false);
    b.float32(AnalogGroup, "RATE", float(s.frameRate));
    const int64_t last = s.firstFrame + s.frameCount - 1;
    b.int16s(TrialGroup, "ACTUAL_START_FIELD", {int(s.firstFrame & 0xFFFF), int(s.firstFrame >> 16 & 0xFFFF)}, true);
    b.int16s(TrialGroup, "ACTUAL_END_FIELD", {int(last & 0xFFFF), int(last >> 16 & 0xFFFF)}, true);
    return b.section();
}

std::vector<uint8_t> headerBlock(const WriterSetup& s, int dataBlock)
{
    std::vector<uint8_t> h(BlockSize, 0);
    h[0] = 2;
    h[1] = uint8_t(HeaderKey);
    const auto word = [&h](int at, int64_t v) { writeInt16LE(&h[size_t(at)], int16_t(uint16_t(v))); };
    // The header's frame numbers are 16 bits: a longer take is clipped here and
    // complete in TRIAL and POINT:FRAMES.
    const int64_t first = std::min<int64_t>(s.firstFrame, 65535);
    const int64_t last = std::min<int64_t>(s.firstFrame + s.frameCount - 1, 65535);
    word(2, s.pointCount);
    word(6, first);
    word(8, std::max<int64_t>(last, 0));
    writeFloatLE(&h[12], -s.residualScale);
    word(16, dataBlock);
    writeFloatLE(&h[20], float(s.frameRate));
    return h;
}

} // namespace

float fourthWord(int cameras, int residualSteps)
{
    return float((cameras & 0x7F) << 8 | (residualSteps & 0xFF));
}

bool Writer::fail(QString* error, const QString& problem)
{
    if (error)
        *error = QFileInfo(file.fileName()).fileName() + ": " + problem;
    if (file.isOpen())
        file.close();
    return false;
}

bool Writer::open(const QString& path, const WriterSetup& s, QString* error)
{
    setup = s;
    written = 0;
    file.setFileName(path);
    if (s.pointCount < 1 || s.pointCount > 65535)
        return fail(error, QString("cannot hold %1 points (1 to 65535)").arg(s.pointCount));
    if (s.frameCount < 0 || s.firstFrame < 1 || s.firstFrame + s.frameCount - 1 > 0xFFFFFFFFLL)
        return fail(error, "has frame numbers outside 1 to 2^32 - 1");
    if (!(s.frameRate > 0) || !(s.residualScale > 0))
        return fail(error, "needs a positive frame rate and residual scale");

    // The data block is written into the section, which decides where data starts.
    const std::vector<uint8_t> sizing = parameterSection(s, 0);
    const size_t blocks = sizing.size() / BlockSize;
    if (blocks > 255)
        return fail(error, "has more labels than a parameter section can hold");
    const int dataBlock = int(2 + blocks);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return fail(error, "cannot be written: " + file.errorString());
    const std::vector<uint8_t> header = headerBlock(s, dataBlock);
    const std::vector<uint8_t> section = parameterSection(s, dataBlock);
    if (file.write(reinterpret_cast<const char*>(header.data()), qint64(header.size())) != qint64(header.size()) ||
        file.write(reinterpret_cast<const char*>(section.data()), qint64(section.size())) != qint64(section.size()))
        return fail(error, "cannot be written: " + file.errorString());
    frameBuffer.assign(size_t(s.pointCount) * 16, 0);
    return true;
}

bool Writer::writeFrame(const float* values)
{
    if (!file.isOpen() || written >= setup.frameCount)
        return false;
    for (size_t i = 0; i < size_t(setup.pointCount) * 4; ++i)
        writeFloatLE(&frameBuffer[i * 4], values[i]);
    if (file.write(reinterpret_cast<const char*>(frameBuffer.data()), qint64(frameBuffer.size())) !=
        qint64(frameBuffer.size()))
        return false;
    ++written;
    return true;
}

bool Writer::close(QString* error)
{
    if (!file.isOpen())
        return fail(error, "is not open");
    if (written != setup.frameCount)
        return fail(error, QString("got %1 of %2 frames").arg(written).arg(setup.frameCount));
    const qint64 pad = (BlockSize - file.pos() % BlockSize) % BlockSize;
    if (file.write(QByteArray(int(pad), '\0')) != pad || !file.flush())
        return fail(error, "cannot be written: " + file.errorString());
    file.close();
    return true;
}

} // namespace C3D
