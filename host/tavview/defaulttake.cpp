#include "host/tavview/take.h"

#include "modules/core/sampleflags.h"
#include "math/vector.h"

#include <cmath>
#include <string>

namespace {

const int frameCount = 600;
const double rate = 100.0;
const float good = 2.0f, fair = 0.8f, poor = 0.3f;

// What happens to one track over a stretch of frames [first, last].
struct Event {
    int id;
    bool rigid;
    int first, last;
    float cond;        // 0 for an occlusion gap
    uint32_t flags;
};

// Every feature the graph shades, spread over the tracks selected by default
// (markers 1 to 3 and rigid body 0) and a few more.
const Event events[] = {
    {1, false, 100, 139, 0.f, 0},          // a long occlusion
    {1, false, 400, 405, 0.f, 0},          // a short one
    {2, false, 220, 259, poor, 0},         // poor samples
    {2, false, 300, 349, fair, 0},         // fair samples
    {2, false, 560, 575, 0.f, 0},
    {3, false, 150, 179, good, FilledFlag}, // filled by a gap filler
    {3, false, 480, 519, 0.f, 0},
    {4, false, 50, 89, fair, 0},
    {5, false, 30, 34, poor, 0},
    {5, false, 170, 174, poor, 0},
    {5, false, 310, 314, poor, 0},
    {5, false, 450, 454, poor, 0},
    {0, true, 250, 289, 0.f, 0},
    {1, true, 500, 539, poor, 0},
};

const char* const markerNames[] = {"HEAD", "LSHO", "RSHO", "LELB", "RELB", "LWRA"};
const char* const rigidNames[] = {"Pelvis", "Wand"};
const int markerCount = int(sizeof(markerNames) / sizeof(*markerNames));
const int rigidCount = int(sizeof(rigidNames) / sizeof(*rigidNames));

// A smooth, gait-like movement in millimetres, different for each track.
Vector position(int track, int frame)
{
    const double t = frame / rate, phase = 0.7 * track;
    const double w = 2.0 * M_PI * 0.9;
    return Vector(float(250 + 40 * track + 120 * std::sin(w * t + phase)),
                  float(150 * track - 300 + 60 * std::cos(w * t + phase)),
                  float(1000 + 60 * track + 35 * std::sin(2 * w * t + phase)));
}

struct Quaternion {
    float x, y, z, w;
};

// A body swaying about a tilted axis, up to 40 degrees either way, each body
// turned further than the one before.
Quaternion orientation(int body, int frame)
{
    const double t = frame / rate, w = 2.0 * M_PI * 0.9;
    const double degrees = 20.0 * body + 40.0 * std::sin(w * t + 0.5 * body);
    const double half = degrees * M_PI / 360.0, s = std::sin(half);
    const double ax = 0.3, ay = 0.5, az = 0.812404; // unit length
    return {float(ax * s), float(ay * s), float(az * s), float(std::cos(half))};
}

void applyEvents(int id, bool rigid, int frame, float& cond, uint32_t& flags)
{
    for (const Event& e : events)
        if (e.id == id && e.rigid == rigid && frame >= e.first && frame <= e.last) {
            cond = e.cond;
            flags = e.flags;
        }
}

} // namespace

Take defaultTake()
{
    Take take;
    take.name = QStringLiteral("built-in take");
    take.rate = rate;
    take.firstFrame = 1;
    take.units = QStringLiteral("mm");

    TAV::Frames& frames = take.frames;
    frames.reserve(frameCount);
    for (int f = 0; f < frameCount; ++f) {
        TAV::Frame frame;
        frame.id = uint32_t(f);
        frame.time = f;
        for (int i = 0; i < markerCount; ++i) {
            TAV::Marker m{uint32_t(i), 0, f, 0, 0, 0, good};
            applyEvents(i, false, f, m.cond, m.flags);
            if (m.cond > 0) {
                const Vector p = position(i, f);
                m.x = p.x, m.y = p.y, m.z = p.z;
            }
            frame.markers.append(m);
        }
        for (int i = 0; i < rigidCount; ++i) {
            TAV::Rigid r{uint32_t(i), 0, f, {0, 0, 0, 0, 0, 0, 1}, good};
            applyEvents(i, true, f, r.cond, r.flags);
            if (r.cond > 0) {
                const Vector p = position(markerCount + i, f);
                r.pose[0] = p.x, r.pose[1] = p.y, r.pose[2] = p.z;
                const Quaternion q = orientation(i, f);
                r.pose[3] = q.x, r.pose[4] = q.y, r.pose[5] = q.z, r.pose[6] = q.w;
            }
            frame.rigids.append(r);
        }
        frames.append(frame);
    }
    for (int i = 0; i < markerCount; ++i)
        frames.markerInfo.emplace_back(uint32_t(i), 0, markerNames[i], "kind=marker");
    for (int i = 0; i < rigidCount; ++i)
        frames.trackerInfo.emplace_back(uint32_t(i), "rigid", rigidNames[i], "", std::vector<uint32_t>());
    frames.setProperty<double>(TAV::StoreProperty::frequency, rate);
    frames.setProperty<qint64>(TAV::StoreProperty::firstFrame, take.firstFrame);
    frames.setProperty<QString>("units", take.units);
    frames.setProperty<QList<qint64>>(TAV::StoreProperty::timeLut, take.timeLut());
    return take;
}
