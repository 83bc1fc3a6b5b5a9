#include "host/tavview/take.h"

#include "host/c3d/c3dtake.h"

#include <QFileInfo>

namespace {
const double maximumRate = 1e6;
} // namespace

QString namingFile(const QString& path, const QString& problem)
{
    return problem.contains(QFileInfo(path).fileName()) ? problem : QStringLiteral("%1: %2").arg(path, problem);
}

bool loadTake(const QString& path, Take& take, QString& error)
{
    Take t;
    QString problem;
    if (!C3D::loadTake(path, t.frames, &problem)) {
        error = namingFile(path, problem);
        return false;
    }
    t.rate = t.frames.property<double>(TAV::StoreProperty::frequency);
    t.firstFrame = t.frames.property<qint64>(TAV::StoreProperty::firstFrame);
    t.units = t.frames.property<QString>("units");
    t.name = QFileInfo(path).fileName();
    if (t.frameCount() == 0) {
        error = QStringLiteral("%1: the file holds no frames").arg(path);
        return false;
    }
    if (!(t.rate > 0)) {
        error = QStringLiteral("%1: the file gives no frame rate").arg(path);
        return false;
    }
    // Frame times are kept in whole microseconds: faster rates are no capture.
    if (t.rate > maximumRate) {
        error = QStringLiteral("%1: the frame rate %2 Hz is beyond any capture (at most %3 Hz)")
                    .arg(path)
                    .arg(t.rate, 0, 'g', 6)
                    .arg(maximumRate, 0, 'g', 6);
        return false;
    }
    // Assigned, not copy-constructed: a copied store would forget its "frequency".
    take = t;
    return true;
}
