#include "bench/synthtake.h"

#include "modules/core/frametimes.h"
#include "modules/core/sampleflags.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <string>
#include <vector>

namespace {

// splitmix64: small, fast, and the same sequence on every platform.
class Random {
public:
    explicit Random(uint64_t seed) : state(seed) {}
    uint64_t next()
    {
        uint64_t z = (state += 0x9E3779B97F4A7C15ull);
        z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ull;
        z = (z ^ (z >> 27)) * 0x94D049BB133111EBull;
        return z ^ (z >> 31);
    }
    double unit() { return double(next() >> 11) * 0x1.0p-53; }
    double between(double lo, double hi) { return lo + (hi - lo) * unit(); }
    // A stretch of frames with an exponential tail of this mean, 1 to cap+1 long.
    int stretch(double mean, int cap) { return 1 + int(std::min(double(cap), -std::log(1.0 - unit()) * mean)); }

private:
    uint64_t state;
};

// A sine advanced one frame at a time by a rotation: one multiply-add per frame
// instead of a sin() per sample, which would dominate a long take's generation.
class Oscillator {
public:
    Oscillator() = default;
    Oscillator(double hz, double phase, double rate)
        : c(std::cos(phase)), s(std::sin(phase)), dc(std::cos(2 * M_PI * hz / rate)), ds(std::sin(2 * M_PI * hz / rate))
    {
    }
    double sine() const { return s; }
    double cosine() const { return c; }
    void step()
    {
        const double nc = c * dc - s * ds;
        s = s * dc + c * ds;
        c = nc;
    }

private:
    double c = 1, s = 0, dc = 1, ds = 0;
};

struct Sample {
    float p[7];
    float cond;
    uint32_t flags;
};

// One marker or rigid body: a point on the walker, with its own occlusions and
// poor stretches. Tracks are independent, so a take can be made frame by frame or
// track by track with the same result.
class TrackModel {
public:
    TrackModel(const TakeShape& shape, int index, bool rigid)
        : rng((uint64_t(shape.seed) << 32) ^ (uint64_t(index) << 1) ^ (rigid ? 1u : 0u))
    {
        // The walker is the same for every track of a take.
        Random walker(shape.seed);
        roamX = Oscillator(walker.between(0.010, 0.016), walker.between(0, 6.28), shape.rate);
        roamY = Oscillator(walker.between(0.014, 0.020), walker.between(0, 6.28), shape.rate);
        const double step = walker.between(0.85, 1.1);

        base[0] = rng.between(-300, 300);
        base[1] = rng.between(-300, 300);
        base[2] = rng.between(100, 1700);
        const double amp0[3] = {rng.between(20, 300), rng.between(10, 100), rng.between(10, 80)};
        for (int a = 0; a < 3; ++a) {
            amp[a] = amp0[a];
            gait[a] = Oscillator(step * (a == 2 ? 2 : 1), rng.between(0, 6.28), shape.rate);
        }
        turn = Oscillator(rng.between(0.02, 0.08), rng.between(0, 6.28), shape.rate);
        if (rigid) {
            // A solved body is lost less often than a single marker, but goes poor
            // whenever too few of its markers are seen.
            gapChance = 1.0 / 2000;
            gapMean = 10;
            poorChance = 1.0 / 800;
            poorMean = 30;
            canFill = false;
        } else {
            gapChance = rng.unit() < 0.15 ? 1.0 / 60 : 1.0 / 400; // some markers hide often
            gapMean = 15;
            poorChance = 1.0 / 1500;
            poorMean = 20;
            canFill = true;
        }
    }

    Sample next()
    {
        Sample s;
        const double roam[3] = {1500 * roamX.sine(), 1200 * roamY.sine(), 0};
        for (int a = 0; a < 3; ++a)
            s.p[a] = float(base[a] + amp[a] * gait[a].sine() + roam[a] + rng.between(-0.25, 0.25));
        // A unit quaternion turning about the vertical.
        s.p[3] = s.p[4] = 0;
        s.p[5] = float(turn.sine());
        s.p[6] = float(turn.cosine());
        step();

        if (gapLeft == 0 && poorLeft == 0) {
            const double u = rng.unit();
            if (u < gapChance) {
                gapLeft = rng.stretch(gapMean, 200);
                gapFilled = canFill && gapLeft <= 10 && rng.unit() < 0.5;
            } else if (u < gapChance + poorChance) {
                poorLeft = 4 + rng.stretch(poorMean, 150);
                poorCond = float(rng.between(0.1, 0.5));
            }
        }
        s.flags = 0;
        if (gapLeft > 0) {
            --gapLeft;
            if (gapFilled) { // an interpolated position: fair, and marked filled
                s.cond = 1.0f;
                s.flags = FilledFlag;
            } else {
                s.p[0] = s.p[1] = s.p[2] = 0;
                s.cond = 0;
            }
        } else if (poorLeft > 0) {
            --poorLeft;
            s.cond = poorCond;
        } else {
            s.cond = float(rng.between(1.6, 2.6));
            if (rng.unit() < 0.002)
                s.cond = 0.35f; // one bad sample amid good ones
        }
        return s;
    }

private:
    void step()
    {
        roamX.step();
        roamY.step();
        for (Oscillator& g : gait)
            g.step();
        turn.step();
    }

    Random rng;
    Oscillator roamX, roamY, turn, gait[3];
    double base[3] = {}, amp[3] = {};
    double gapChance = 0, poorChance = 0;
    double gapMean = 0, poorMean = 0;
    bool canFill = false;
    int gapLeft = 0, poorLeft = 0;
    bool gapFilled = false;
    float poorCond = 0;
};

TAV::Marker marker(uint32_t id, int64_t frame, const Sample& s)
{
    return TAV::Marker{id, s.flags, frame, s.p[0], s.p[1], s.p[2], s.cond};
}

TAV::Rigid rigid(uint32_t id, int64_t frame, const Sample& s)
{
    return TAV::Rigid{id, s.flags, frame, {s.p[0], s.p[1], s.p[2], s.p[3], s.p[4], s.p[5], s.p[6]}, s.cond};
}

std::vector<TrackModel> models(const TakeShape& shape, int count, bool rigid)
{
    std::vector<TrackModel> m;
    m.reserve(size_t(count));
    for (int i = 0; i < count; ++i)
        m.emplace_back(shape, i, rigid);
    return m;
}

QList<qint64> timeLut(const TakeShape& shape) { return frameTimes(shape.frames, shape.rate); }

void describe(const TakeShape& shape, TAV::Frames& store)
{
    for (int i = 0; i < shape.markers; ++i)
        store.markerInfo.emplace_back(uint32_t(i), 0, "M" + std::to_string(i), "");
    for (int i = 0; i < shape.rigids; ++i)
        store.trackerInfo.emplace_back(uint32_t(i), "rigid", "RB" + std::to_string(i), "", std::vector<uint32_t>());
}

} // namespace

Take synthTake(const TakeShape& shape)
{
    Take take;
    take.name = QStringLiteral("synthetic take, %1 markers, %2 rigid bodies, %3 frames")
                    .arg(shape.markers)
                    .arg(shape.rigids)
                    .arg(shape.frames);
    take.rate = shape.rate;
    take.units = QStringLiteral("mm");

    std::vector<TrackModel> markers = models(shape, shape.markers, false);
    std::vector<TrackModel> rigids = models(shape, shape.rigids, true);
    TAV::Frames& frames = take.frames;
    describe(shape, frames);
    frames.reserve(shape.frames);
    for (int f = 0; f < shape.frames; ++f) {
        TAV::Frame frame;
        frame.id = uint32_t(f);
        frame.time = f;
        frame.markers.reserve(shape.markers);
        for (int i = 0; i < shape.markers; ++i)
            frame.markers.append(marker(uint32_t(i), f, markers[size_t(i)].next()));
        frame.rigids.reserve(shape.rigids);
        for (int i = 0; i < shape.rigids; ++i)
            frame.rigids.append(rigid(uint32_t(i), f, rigids[size_t(i)].next()));
        frames.append(std::move(frame));
    }
    frames.setProperty<double>(TAV::StoreProperty::frequency, shape.rate);
    frames.setProperty<QList<qint64>>(TAV::StoreProperty::timeLut, timeLut(shape));
    frames.setProperty<qint64>(TAV::StoreProperty::firstFrame, 0);
    frames.setProperty<QString>("units", take.units);
    return take;
}

void synthTracks(const TakeShape& shape, TAV::Frames& tracks)
{
    tracks = TAV::Frames();
    describe(shape, tracks);
    const int ids = std::max(shape.markers, shape.rigids);
    tracks.reserve(ids);
    for (int id = 0; id < ids; ++id) {
        TAV::Frame track;
        track.id = uint32_t(id);
        track.time = -1;
        if (id < shape.markers) {
            TrackModel model(shape, id, false);
            track.markers.reserve(shape.frames);
            for (int f = 0; f < shape.frames; ++f)
                track.markers.append(marker(uint32_t(id), f, model.next()));
        }
        if (id < shape.rigids) {
            TrackModel model(shape, id, true);
            track.rigids.reserve(shape.frames);
            for (int f = 0; f < shape.frames; ++f)
                track.rigids.append(rigid(uint32_t(id), f, model.next()));
        }
        tracks.append(std::move(track));
    }
    tracks.setProperty<double>(TAV::StoreProperty::frequency, shape.rate);
    tracks.setProperty<QList<qint64>>(TAV::StoreProperty::timeLut, timeLut(shape));
}

TrackSelection allTracks(const TakeShape& shape)
{
    TrackSelection s;
    for (int i = 0; i < shape.markers; ++i)
        s.markers.append(i);
    for (int i = 0; i < shape.rigids; ++i)
        s.rigids.append(i);
    return s;
}

TAV::Frames runTrack(int runs)
{
    const float conds[4] = {2.0f, 0.0f, 2.0f, 0.3f};
    TAV::Frame track;
    track.id = 0;
    int frame = 0;
    for (int r = 0; r < runs; ++r)
        for (int k = 0; k <= r % 5; ++k, ++frame)
            track.markers.append(TAV::Marker{0, 0, frame, float(r % 7), 1.f, 2.f, conds[r % 4]});
    TAV::Frames tracks;
    tracks.append(track);
    return tracks;
}
