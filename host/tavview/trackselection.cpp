#include "host/tavview/trackselection.h"

#include "modules/core/sampleflags.h"
#include "utils/regions.h"

#include <QRegularExpression>

#include <algorithm>

namespace {

const int defaultMarkers = 3;

QString fromStd(const std::string& s) { return QString::fromStdString(s); }

// How much a track has to show: 3 gaps, 2 poor samples, 1 fair or filled ones, 0
// nothing but good samples; -1 no valid sample at all, so nothing to draw.
template <class T>
int interest(const TAV::Frames& frames, int id, QVector<T> TAV::Frame::*samples)
{
    int best = 0;
    bool anyValid = false;
    for (const TAV::Frame& frame : frames) {
        const QVector<T>& v = frame.*samples;
        const int i = TAV::indexOfId(v, uint32_t(id));
        if (i < 0)
            continue;
        const T& sample = v.at(i);
        const int type = condition_type(sample.cond);
        anyValid = anyValid || type != RegionMissing;
        if (anyValid && best == 3)
            return 3;
        switch (type) {
        case RegionMissing:
            best = 3;
            break;
        case RegionPoor:
            best = std::max(best, 2);
            break;
        case RegionFair:
            best = std::max(best, 1);
            break;
        default:
            if (isFilled(sample))
                best = std::max(best, 1);
        }
    }
    return anyValid ? best : -1;
}

// The ids of the count most interesting tracks, in id order; among equals the lower ids.
template <class T>
QList<int> mostInteresting(const Take& take, const QList<int>& ids, QVector<T> TAV::Frame::*samples, int count)
{
    QVector<QPair<int, int>> ranked; // (-interest, id)
    for (int id : ids) {
        const int i = interest(take.frames, id, samples);
        if (i >= 0)
            ranked.append({-i, id});
    }
    std::sort(ranked.begin(), ranked.end());
    QList<int> chosen;
    for (int i = 0; i < ranked.size() && i < count; ++i)
        chosen.append(ranked[i].second);
    std::sort(chosen.begin(), chosen.end());
    return chosen;
}

void appendOnce(QList<int>& list, int id)
{
    if (!list.contains(id))
        list.append(id);
}

} // namespace

int markerCount(const Take& take)
{
    const int fromFrames = take.frames.isEmpty() ? 0 : take.frames.constFirst().markers.size();
    return std::max(fromFrames, int(take.frames.markerInfo.size()));
}

int rigidCount(const Take& take) { return take.frames.isEmpty() ? 0 : take.frames.constFirst().rigids.size(); }

QString markerLabel(const Take& take, int id)
{
    for (const TAV::MarkerInfo& info : take.frames.markerInfo)
        if (int(info.id) == id && !info.name.empty())
            return fromStd(info.name);
    return QStringLiteral("Marker %1").arg(id);
}

QString rigidLabel(const Take& take, int id)
{
    for (const TAV::TrackerInfo& info : take.frames.trackerInfo)
        if (int(info.id) == id && !info.name.empty())
            return fromStd(info.name);
    return QStringLiteral("Rigid %1").arg(id);
}

namespace {

// The value of "key=" in a point's options; empty when absent.
QString pointOption(const Take& take, int id, const QString& key)
{
    const QRegularExpression pattern(QStringLiteral("(?:^|;)\\s*%1=([^;]*)").arg(key));
    for (const TAV::MarkerInfo& info : take.frames.markerInfo)
        if (int(info.id) == id) {
            const QRegularExpressionMatch m = pattern.match(fromStd(info.options));
            if (m.hasMatch())
                return m.captured(1).trimmed();
        }
    return QString();
}

} // namespace

QString markerKind(const Take& take, int id)
{
    const QString kind = pointOption(take, id, QStringLiteral("kind"));
    return kind.isEmpty() ? QStringLiteral("marker") : kind;
}

QString markerUnits(const Take& take, int id)
{
    const QString units = pointOption(take, id, QStringLiteral("units"));
    return units.isEmpty() ? take.units : units;
}

QString selectionUnits(const Take& take, const TrackSelection& selection)
{
    QStringList units;
    for (int id : selection.markers)
        if (!units.contains(markerUnits(take, id)))
            units << markerUnits(take, id);
    if (units.isEmpty() || (!selection.rigids.isEmpty() && !units.contains(take.units)))
        units << take.units;
    units.removeAll(QString());
    return units.join(QStringLiteral(", "));
}

TrackSelection defaultSelection(const Take& take)
{
    QList<int> realMarkers, rigidIds;
    for (int id = 0; id < markerCount(take); ++id)
        if (markerKind(take, id) == QLatin1String("marker"))
            realMarkers.append(id);
    for (int id = 0; id < rigidCount(take); ++id)
        rigidIds.append(id);
    TrackSelection s;
    s.markers = mostInteresting(take, realMarkers, &TAV::Frame::markers, defaultMarkers);
    s.rigids = mostInteresting(take, rigidIds, &TAV::Frame::rigids, 1);
    return s;
}

bool resolveSelection(const QStringList& tokens, const Take& take, TrackSelection& selection, QString& error)
{
    static const QRegularExpression number(QStringLiteral("^\\d+$"));
    static const QRegularExpression range(QStringLiteral("^(\\d+)-(\\d+)$"));
    static const QRegularExpression rigid(QStringLiteral("^[rR](\\d+)$"));
    const int markers = markerCount(take), rigids = rigidCount(take);
    TrackSelection s;

    auto addMarker = [&](qint64 id) {
        if (id < 0 || id >= markers) {
            error = QStringLiteral("--select: there is no marker %1 (the take has %2, ids 0 to %3)")
                        .arg(id)
                        .arg(markers)
                        .arg(markers - 1);
            return false;
        }
        appendOnce(s.markers, int(id));
        return true;
    };

    for (const QString& token : tokens) {
        QRegularExpressionMatch m;
        if (number.match(token).hasMatch()) {
            if (!addMarker(token.toLongLong()))
                return false;
        } else if ((m = range.match(token)).hasMatch()) {
            const qint64 a = m.captured(1).toLongLong(), b = m.captured(2).toLongLong();
            if (a > b) {
                error = QStringLiteral("--select: the range %1 runs backwards").arg(token);
                return false;
            }
            for (qint64 id = a; id <= b; ++id)
                if (!addMarker(id))
                    return false;
        } else if ((m = rigid.match(token)).hasMatch()) {
            const qint64 id = m.captured(1).toLongLong();
            if (id >= rigids) {
                error = QStringLiteral("--select: there is no rigid body %1 (the take has %2)").arg(id).arg(rigids);
                return false;
            }
            appendOnce(s.rigids, int(id));
        } else {
            int found = -1;
            bool isRigid = false;
            for (Qt::CaseSensitivity cs : {Qt::CaseSensitive, Qt::CaseInsensitive}) {
                for (int id = 0; id < markers && found < 0; ++id)
                    if (markerLabel(take, id).compare(token, cs) == 0)
                        found = id;
                for (int id = 0; id < rigids && found < 0; ++id)
                    if (rigidLabel(take, id).compare(token, cs) == 0)
                        found = id, isRigid = true;
                if (found >= 0)
                    break;
            }
            if (found < 0) {
                error = QStringLiteral("--select: no marker or rigid body is called \"%1\"").arg(token);
                return false;
            }
            appendOnce(isRigid ? s.rigids : s.markers, found);
        }
    }
    selection = s;
    return true;
}
