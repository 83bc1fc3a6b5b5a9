#include "host/edit/gapfill.h"

#include "modules/core/sampleflags.h"
#include "host/c3d/c3dtake.h"

#include <Eigen/Dense>
#include <Eigen/Geometry>

#include <algorithm>

const std::vector<FillMethod>& allFillMethods()
{
    static const std::vector<FillMethod> methods{FillMethod::Linear, FillMethod::Spline, FillMethod::Pattern,
                                                 FillMethod::Rigid};
    return methods;
}

QString fillMethodName(FillMethod method)
{
    switch (method) {
    case FillMethod::Linear:
        return QStringLiteral("linear");
    case FillMethod::Spline:
        return QStringLiteral("spline");
    case FillMethod::Pattern:
        return QStringLiteral("pattern");
    case FillMethod::Rigid:
        return QStringLiteral("rigid");
    }
    return QString();
}

bool fillMethodFromName(const QString& name, FillMethod& method)
{
    for (FillMethod m : allFillMethods())
        if (fillMethodName(m).compare(name, Qt::CaseInsensitive) == 0) {
            method = m;
            return true;
        }
    return false;
}

std::vector<Gap> gapsOf(const TrackReader& reader, uint32_t id, FrameSpan span, int maxLength)
{
    std::vector<Gap> gaps;
    const int n = reader.frameCount();
    const int from = std::max(span.first, 0), to = std::min(span.last, n - 1);
    if (from > to)
        return gaps;
    // Start at the beginning of a gap that reaches into the span.
    int f = from;
    while (f > 0 && !reader.valid(id, f - 1) && !reader.valid(id, f))
        --f;
    while (f <= to) {
        if (reader.valid(id, f)) {
            ++f;
            continue;
        }
        int last = f;
        while (last + 1 < n && !reader.valid(id, last + 1))
            ++last;
        const Gap g{id, f, last};
        if (f > 0 && last + 1 < n && (maxLength <= 0 || g.length() <= maxLength))
            gaps.push_back(g);
        f = last + 1;
    }
    return gaps;
}

namespace {

FillResult failed(const QString& problem)
{
    FillResult r;
    r.problem = problem;
    return r;
}

double weightAt(const Gap& gap, int frame) { return double(frame - (gap.first - 1)) / double(gap.length() + 1); }

FillResult linear(const TrackReader& reader, const Gap& gap)
{
    FillResult r;
    const Eigen::Vector3d a = reader.position(gap.id, gap.first - 1), b = reader.position(gap.id, gap.last + 1);
    for (int f = gap.first; f <= gap.last; ++f) {
        const double w = weightAt(gap, f);
        r.positions.push_back((1 - w) * a + w * b);
    }
    r.ok = true;
    return r;
}

// A natural cubic spline through the valid samples next to the gap on both sides.
FillResult spline(const TrackReader& reader, const Gap& gap)
{
    std::vector<int> before, after;
    for (int f = gap.first - 1; f >= 0 && int(before.size()) < SplineContext && reader.valid(gap.id, f); --f)
        before.push_back(f);
    for (int f = gap.last + 1; f < reader.frameCount() && int(after.size()) < SplineContext && reader.valid(gap.id, f);
         ++f)
        after.push_back(f);
    if (int(before.size()) < SplineMinimumContext || int(after.size()) < SplineMinimumContext)
        return failed(QStringLiteral("too little context for a spline: %1 valid samples before the gap and %2 "
                                     "after it, %3 needed on each side")
                          .arg(before.size())
                          .arg(after.size())
                          .arg(SplineMinimumContext));
    std::vector<int> t(before.rbegin(), before.rend());
    const int k = int(t.size()) - 1; // the knot just before the gap
    t.insert(t.end(), after.begin(), after.end());
    const int n = int(t.size());
    Eigen::MatrixXd y(n, 3);
    for (int i = 0; i < n; ++i)
        y.row(i) = reader.position(gap.id, t[size_t(i)]).transpose();

    // Second derivatives at the knots, zero at both ends.
    Eigen::MatrixXd a = Eigen::MatrixXd::Zero(n, n), rhs = Eigen::MatrixXd::Zero(n, 3);
    a(0, 0) = a(n - 1, n - 1) = 1;
    for (int i = 1; i < n - 1; ++i) {
        const double h0 = t[size_t(i)] - t[size_t(i - 1)], h1 = t[size_t(i + 1)] - t[size_t(i)];
        a(i, i - 1) = h0;
        a(i, i) = 2 * (h0 + h1);
        a(i, i + 1) = h1;
        rhs.row(i) = 6 * ((y.row(i + 1) - y.row(i)) / h1 - (y.row(i) - y.row(i - 1)) / h0);
    }
    const Eigen::MatrixXd m = a.partialPivLu().solve(rhs);

    FillResult r;
    const double t0 = t[size_t(k)], t1 = t[size_t(k + 1)], h = t1 - t0;
    for (int f = gap.first; f <= gap.last; ++f) {
        const double u = t1 - f, v = f - t0;
        const Eigen::RowVector3d p = m.row(k) * (u * u * u) / (6 * h) + m.row(k + 1) * (v * v * v) / (6 * h) +
                                     (y.row(k) - m.row(k) * h * h / 6) * u / h +
                                     (y.row(k + 1) - m.row(k + 1) * h * h / 6) * v / h;
        r.positions.push_back(p.transpose());
    }
    r.ok = true;
    return r;
}

QString donorMissing(uint32_t donor)
{
    return QStringLiteral("donor marker %1 is not valid across the gap and its edges").arg(donor);
}

FillResult pattern(const TrackReader& reader, const Gap& gap, const std::vector<uint32_t>& donors)
{
    if (donors.empty())
        return failed(QStringLiteral("a pattern fill needs a donor marker"));
    const uint32_t d = donors.front();
    if (d == gap.id)
        return failed(QStringLiteral("the donor is the marker being filled"));
    if (!reader.validThrough(d, gap.first - 1, gap.last + 1))
        return failed(donorMissing(d));
    const int l = gap.first - 1, rt = gap.last + 1;
    const Eigen::Vector3d offL = reader.position(gap.id, l) - reader.position(d, l);
    const Eigen::Vector3d offR = reader.position(gap.id, rt) - reader.position(d, rt);
    FillResult r;
    for (int f = gap.first; f <= gap.last; ++f) {
        const double w = weightAt(gap, f);
        r.positions.push_back(reader.position(d, f) + (1 - w) * offL + w * offR);
    }
    r.ok = true;
    return r;
}

Eigen::Matrix3Xd donorPositions(const TrackReader& reader, const std::vector<uint32_t>& donors, int frame)
{
    Eigen::Matrix3Xd p(3, Eigen::Index(donors.size()));
    for (size_t i = 0; i < donors.size(); ++i)
        p.col(Eigen::Index(i)) = reader.position(donors[i], frame);
    return p;
}

// The target carried from an edge frame to frame f by the donors' best rigid motion.
Eigen::Vector3d carried(const TrackReader& reader, const Gap& gap, const std::vector<uint32_t>& donors, int edge,
                        const Eigen::Matrix3Xd& atEdge, int f)
{
    const Eigen::Matrix4d motion = Eigen::umeyama(atEdge, donorPositions(reader, donors, f), false);
    return (motion * reader.position(gap.id, edge).homogeneous()).head<3>();
}

FillResult rigid(const TrackReader& reader, const Gap& gap, const std::vector<uint32_t>& donors)
{
    if (int(donors.size()) < RigidMinimumDonors)
        return failed(QStringLiteral("a rigid fill needs %1 donor markers, %2 given")
                          .arg(RigidMinimumDonors)
                          .arg(donors.size()));
    for (uint32_t d : donors) {
        if (d == gap.id)
            return failed(QStringLiteral("a donor is the marker being filled"));
        if (!reader.validThrough(d, gap.first - 1, gap.last + 1))
            return failed(donorMissing(d));
    }
    const int l = gap.first - 1, rt = gap.last + 1;
    const Eigen::Matrix3Xd atL = donorPositions(reader, donors, l), atR = donorPositions(reader, donors, rt);
    FillResult r;
    for (int f = gap.first; f <= gap.last; ++f) {
        const double w = weightAt(gap, f);
        r.positions.push_back((1 - w) * carried(reader, gap, donors, l, atL, f) +
                              w * carried(reader, gap, donors, rt, atR, f));
    }
    r.ok = true;
    return r;
}

} // namespace

FillResult fillGap(const TrackReader& reader, const Gap& gap, FillMethod method, const std::vector<uint32_t>& donors)
{
    if (gap.first < 1 || gap.last + 1 >= reader.frameCount() || !reader.valid(gap.id, gap.first - 1) ||
        !reader.valid(gap.id, gap.last + 1))
        return failed(QStringLiteral("the gap has no valid sample on one side"));
    switch (method) {
    case FillMethod::Linear:
        return linear(reader, gap);
    case FillMethod::Spline:
        return spline(reader, gap);
    case FillMethod::Pattern:
        return pattern(reader, gap, donors);
    case FillMethod::Rigid:
        return rigid(reader, gap, donors);
    }
    return failed(QStringLiteral("unknown fill method"));
}

SampleChanges filledSamples(const TAV::Frames& take, const Gap& gap, const std::vector<Eigen::Vector3d>& positions)
{
    SampleChanges changes;
    for (int f = gap.first; f <= gap.last && size_t(f - gap.first) < positions.size(); ++f) {
        const TAV::Marker* m = markerAt(take, f, gap.id);
        if (!m)
            continue;
        const Eigen::Vector3d& p = positions[size_t(f - gap.first)];
        TAV::Marker filled = *m;
        filled.x = float(p.x());
        filled.y = float(p.y());
        filled.z = float(p.z());
        filled.cond = C3D::FilledCondition;
        filled.flags |= FilledFlag;
        changes.push_back({f, *m, filled});
    }
    return changes;
}
