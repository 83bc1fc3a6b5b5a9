#include "host/tavview/reportcommand.h"

#include "host/c3d/c3dtake.h"
#include "host/report/qualityformat.h"
#include "host/report/takequality.h"
#include "host/tavview/take.h"

#include <QFileInfo>

#include <cstdio>

bool runReport(const QStringList& files, bool csv)
{
    std::vector<TakeQuality> takes;
    bool allRead = true;
    for (const QString& path : files) {
        // One take in memory at a time: only its counts are kept.
        TAV::Frames frames;
        QString error;
        if (!C3D::loadTake(path, frames, &error)) {
            std::fprintf(stderr, "tavview: %s\n", qPrintable(namingFile(path, error)));
            allRead = false;
            continue;
        }
        takes.push_back(takeQuality(frames, QFileInfo(path).fileName().toStdString()));
    }
    if (!takes.empty()) {
        const QString out = csv ? qualityCsv(takes) : qualityText(takes);
        std::fputs(out.toUtf8().constData(), stdout);
    }
    return allRead;
}
