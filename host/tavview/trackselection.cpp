#include "host/tavview/trackselection.h"

#include "utils/regions.h"

#include <QRegularExpression>

#include <algorithm>

namespace {

const int defaultMarkers = 3;

QString fromStd(const std::string& s) { return QString::fromStdString(s); }

// A sample the graph shades as something other than plainly good.
template <class T>
bool notPlain(const T& sample)
{
    return condition_type(sample.cond) != RegionGood || (sample.flags & 0x10);
}

template <class T>
bool hasSomethingToShade(const TAV::Frames& frames, int id, QVector<T> TAV::Frame::*samples)
{
    for (const TAV::Frame& frame : frames) {
        const QVector<T>& v = frame.*samples;
        const int i = TAV::indexOfId(v, uint32_t(id));
        if (i >= 0 && notPlain(v.at(i)))
            return true;
    }
    return false;
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

QString markerKind(const Take& take, int id)
{
    static const QRegularExpression kind(QStringLiteral("(?:^|;)\\s*kind=([^;]*)"));
    for (const TAV::MarkerInfo& info : take.frames.markerInfo)
        if (int(info.id) == id) {
            const QRegularExpressionMatch m = kind.match(fromStd(info.options));
            if (m.hasMatch() && !m.captured(1).trimmed().isEmpty())
                return m.captured(1).trimmed();
        }
    return QStringLiteral("marker");
}

TrackSelection defaultSelection(const Take& take)
{
    TrackSelection s;
    QList<int> plain;
    for (int id = 0; id < markerCount(take) && s.markers.size() < defaultMarkers; ++id) {
        if (markerKind(take, id) != QLatin1String("marker"))
            continue;
        if (hasSomethingToShade(take.frames, id, &TAV::Frame::markers))
            s.markers.append(id);
        else if (plain.size() < defaultMarkers)
            plain.append(id);
    }
    for (int i = 0; i < plain.size() && s.markers.size() < defaultMarkers; ++i)
        s.markers.append(plain[i]);
    std::sort(s.markers.begin(), s.markers.end());

    for (int id = 0; id < rigidCount(take); ++id)
        if (hasSomethingToShade(take.frames, id, &TAV::Frame::rigids)) {
            s.rigids.append(id);
            break;
        }
    if (s.isEmpty() && rigidCount(take) > 0)
        s.rigids.append(0);
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
