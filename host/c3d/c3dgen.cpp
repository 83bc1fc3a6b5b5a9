// c3dgen: writes a synthetic C3D take for load tests, with markers that move
// smoothly, vanish in occlusion gaps, carry varying residuals with occasional poor
// spikes, and have some short gaps filled (residual 0).
#include "host/c3d/c3dwriter.h"

#include <QString>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <random>
#include <string>
#include <vector>

namespace {

struct Options {
    QString out;
    long long markers = 0;
    long long frames = 0;
    unsigned long long seed = 1;
    double rate = 100.0;
};

int usage(const char* problem)
{
    std::fprintf(stderr, "c3dgen: %s\nusage: c3dgen OUT.c3d --markers N --frames M [--seed S] [--rate HZ]\n", problem);
    return 2;
}

bool number(const char* text, long long& value)
{
    char* end = nullptr;
    value = std::strtoll(text, &end, 10);
    return end && end != text && *end == '\0';
}

// Returns 0 when the command line is complete, else the exit code after a message.
int parse(int argc, char** argv, Options& o)
{
    for (int i = 1; i < argc; ++i) {
        const char* a = argv[i];
        const bool hasValue = i + 1 < argc;
        long long v = 0;
        if (!std::strcmp(a, "--markers") || !std::strcmp(a, "--frames") || !std::strcmp(a, "--seed") ||
            !std::strcmp(a, "--rate")) {
            if (!hasValue || !number(argv[i + 1], v) || v < 0)
                return usage((std::string(a) + " needs a whole non-negative number").c_str());
            ++i;
            if (!std::strcmp(a, "--markers"))
                o.markers = v;
            else if (!std::strcmp(a, "--frames"))
                o.frames = v;
            else if (!std::strcmp(a, "--seed"))
                o.seed = (unsigned long long)v;
            else
                o.rate = double(v);
        } else if (a[0] == '-') {
            return usage((std::string("unknown option ") + a).c_str());
        } else if (o.out.isEmpty()) {
            o.out = QString::fromLocal8Bit(a);
        } else {
            return usage("only one output file");
        }
    }
    if (o.out.isEmpty())
        return usage("no output file");
    if (o.markers < 1 || o.markers > 65535)
        return usage("--markers must be 1 to 65535");
    if (o.frames < 1)
        return usage("--frames must be at least 1");
    if (o.rate < 1)
        return usage("--rate must be at least 1");
    return 0;
}

// One marker's path, occlusion and residual state.
struct Track {
    double base[3], amp[3], freq[3], phase[3];
    double residual;     // typical residual steps
    double occlusion;    // chance per frame that a gap starts
    int cameras;
    int gapLeft = 0;
    bool gapFilled = false;
};

class Take {
public:
    Take(int markers, double rate, unsigned long long seed) : rate(rate), rng(seed), tracks(size_t(markers))
    {
        std::uniform_real_distribution<double> u(0.0, 1.0);
        for (Track& t : tracks) {
            for (int a = 0; a < 3; ++a) {
                t.base[a] = (u(rng) - 0.5) * 2000.0 + (a == 2 ? 1000.0 : 0.0);
                t.amp[a] = 20.0 + u(rng) * 300.0;
                t.freq[a] = 0.2 + u(rng) * 1.5;
                t.phase[a] = u(rng) * 6.283;
            }
            t.residual = 4.0 + u(rng) * 8.0;
            t.occlusion = u(rng) < 0.15 ? 1.0 / 60.0 : 1.0 / 400.0;
            t.cameras = int(u(rng) * 127) | 0x03;
        }
    }

    // Fills one frame of {x, y, z, fourth word} values.
    void frame(long long n, std::vector<float>& v)
    {
        std::uniform_real_distribution<double> u(0.0, 1.0);
        std::normal_distribution<double> noise(0.0, 1.0);
        const double time = double(n) / rate;
        for (size_t i = 0; i < tracks.size(); ++i) {
            Track& t = tracks[i];
            float* out = &v[i * 4];
            if (t.gapLeft == 0 && u(rng) < t.occlusion) {
                t.gapLeft = 1 + int(std::min(200.0, -std::log(1.0 - u(rng)) * 15.0));
                t.gapFilled = t.gapLeft <= 10 && u(rng) < 0.5;
            }
            for (int a = 0; a < 3; ++a)
                out[a] = float(t.base[a] + t.amp[a] * std::sin(6.283 * t.freq[a] * time + t.phase[a]));
            if (t.gapLeft > 0) {
                --t.gapLeft;
                if (!t.gapFilled) {
                    out[0] = out[1] = out[2] = 0.0f;
                    out[3] = C3D::MissingFourthWord;
                    continue;
                }
                out[3] = C3D::fourthWord(0, 0);
                continue;
            }
            double steps = t.residual + noise(rng) * t.residual * 0.2;
            if (u(rng) < 0.01)
                steps *= 3.0 + u(rng) * 4.0;
            out[3] = C3D::fourthWord(t.cameras, int(std::lround(std::max(1.0, std::min(255.0, steps)))));
        }
    }

private:
    double rate;
    std::mt19937_64 rng;
    std::vector<Track> tracks;
};

} // namespace

int main(int argc, char** argv)
{
    Options o;
    if (const int bad = parse(argc, argv, o))
        return bad;

    C3D::WriterSetup setup;
    setup.pointCount = int(o.markers);
    setup.frameCount = o.frames;
    setup.frameRate = o.rate;
    for (long long i = 0; i < o.markers; ++i) {
        char label[32];
        std::snprintf(label, sizeof label, "M%04lld", i + 1);
        setup.labels.push_back(label);
    }

    C3D::Writer writer;
    QString error;
    if (!writer.open(o.out, setup, &error)) {
        std::fprintf(stderr, "c3dgen: %s\n", qPrintable(error));
        return 1;
    }
    Take take(int(o.markers), o.rate, o.seed);
    std::vector<float> values(size_t(o.markers) * 4);
    for (long long n = 0; n < o.frames; ++n) {
        take.frame(n, values);
        if (!writer.writeFrame(values.data())) {
            std::fprintf(stderr, "c3dgen: %s: write failed in frame %lld\n", qPrintable(o.out), n + 1);
            return 1;
        }
    }
    if (!writer.close(&error)) {
        std::fprintf(stderr, "c3dgen: %s\n", qPrintable(error));
        return 1;
    }
    return 0;
}
