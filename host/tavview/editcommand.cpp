#include "host/tavview/editcommand.h"

#include "host/c3d/c3dsave.h"
#include "host/edit/takeeditor.h"
#include "host/tavview/editing.h"
#include "host/tavview/take.h"

#include <QFileInfo>

#include <cstdio>

namespace {

QList<int> allMarkers(const Take& take)
{
    QList<int> ids;
    if (take.frameCount() > 0)
        for (const TAV::Marker& m : take.frames.at(0).markers)
            ids.append(int(m.id));
    return ids;
}

void say(const QString& line) { std::printf("tavview: %s\n", qPrintable(line)); }

} // namespace

bool runEditCommand(const ViewOptions& options, QString& error)
{
    const QString in = options.files.value(0), out = options.savePath;
    if (!options.overwrite && QFileInfo(out).exists() &&
        QFileInfo(out).canonicalFilePath() == QFileInfo(in).canonicalFilePath()) {
        error = QStringLiteral("--save names the input file %1; add --overwrite to replace it").arg(in);
        return false;
    }
    Take take;
    if (!loadTake(in, take, error))
        return false;
    TakeEditor editor;
    editor.Attach(&take.frames);
    const QList<int> ids = allMarkers(take);
    const FrameSpan all{0, take.frameCount() - 1};
    const QString units = take.units.isEmpty() ? QStringLiteral("units") : take.units;

    if (options.spikeLimit)
        say(QStringLiteral("deleted %1 spike samples above %2 %3/frame²")
                .arg(editor.DeleteSpikes(ids, *options.spikeLimit, nullptr))
                .arg(*options.spikeLimit)
                .arg(units));
    if (!options.fillMethod.isEmpty()) {
        FillChoice choice;
        choice.best = options.fillMethod.compare(QLatin1String("best"), Qt::CaseInsensitive) == 0;
        if (!choice.best && !fillMethodFromName(options.fillMethod, choice.method)) {
            error = QStringLiteral("--fill wants linear, spline, pattern, rigid or best, not \"%1\"")
                        .arg(options.fillMethod);
            return false;
        }
        const FillReport r = editor.Fill(ids, all, choice, options.maxGap);
        FillError worst;
        for (const FilledGap& g : r.filled)
            if (g.error.known() && (!worst.known() || g.error.rms > worst.rms))
                worst = g.error;
        say(QStringLiteral("filled %1 gaps (%2 samples) by %3; %4 could not be filled; worst estimated error %5")
                .arg(r.filled.size())
                .arg(r.samples)
                .arg(choice.best ? QStringLiteral("the best method per gap") : fillMethodName(choice.method))
                .arg(r.problems.size())
                .arg(fillErrorText(worst, units)));
    }
    if (!C3D::saveEditedTake(in, editor.original(), take.frames, out, &error))
        return false;
    say(QStringLiteral("wrote %1").arg(out));
    return true;
}
