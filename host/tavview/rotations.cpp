#include "host/tavview/rotations.h"

#include <cmath>

Vector axisAngleDegrees(float x, float y, float z, float w)
{
    const double n = std::sqrt(double(x) * x + double(y) * y + double(z) * z + double(w) * w);
    if (!(n > 0))
        return Vector(0, 0, 0);
    // q and -q are the same rotation: take the one with w >= 0, so the angle stays within 180.
    const double s = w < 0 ? -1.0 / n : 1.0 / n;
    const double vx = x * s, vy = y * s, vz = z * s, vw = std::min(1.0, w * s);
    const double sinHalf = std::sqrt(vx * vx + vy * vy + vz * vz);
    if (sinHalf < 1e-12)
        return Vector(0, 0, 0);
    const double angle = 2 * std::atan2(sinHalf, vw) * 180.0 / M_PI;
    const double k = angle / sinHalf;
    return Vector(float(vx * k), float(vy * k), float(vz * k));
}

Take rotationTake(const Take& take)
{
    Take r;
    r.name = take.name;
    r.rate = take.rate;
    r.firstFrame = take.firstFrame;
    r.units = QStringLiteral("deg");
    r.frames.trackerInfo = take.frames.trackerInfo;
    r.frames.reserve(take.frames.size());
    for (const TAV::Frame& f : take.frames) {
        TAV::Frame out;
        out.id = f.id;
        out.time = f.time;
        out.rigids = f.rigids;
        for (TAV::Rigid& s : out.rigids) {
            const Vector a = axisAngleDegrees(s.pose[3], s.pose[4], s.pose[5], s.pose[6]);
            s.pose[0] = a.x, s.pose[1] = a.y, s.pose[2] = a.z;
        }
        r.frames.append(out);
    }
    r.frames.setProperty<double>(TAV::StoreProperty::frequency, take.rate);
    r.frames.setProperty<QList<qint64>>(TAV::StoreProperty::timeLut, take.timeLut());
    return r;
}
