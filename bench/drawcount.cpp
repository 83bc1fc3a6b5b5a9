// tavbench_glcount: what each paint benchmark of tavbench sends to GL, counted in
// a second run of the same paints against GL entry points that only count (see
// glcount.h). Writes JSON: {"counts": [{"name", "vertices", "blocks", "calls"}]}.
//   tavbench_glcount [OUT.json]     (standard output without a file)
//   TAV_BENCH_FRAMES                take lengths, as for tavbench
#include "bench/glcount.h"
#include "bench/graphview.h"
#include "bench/synthtake.h"

#include <QApplication>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cstdio>
#include <vector>

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen"); // nothing is shown
    QApplication app(argc, argv);

    const QString lengths = qEnvironmentVariable("TAV_BENCH_FRAMES", QStringLiteral("10000,100000,1000000"));
    QJsonArray counts;
    for (const QString& length : lengths.split(',', Qt::SkipEmptyParts)) {
        const int frames = length.toInt();
        if (frames <= 0)
            continue;
        TakeShape shape;
        shape.frames = frames;
        TAV::Frames tracks;
        synthTracks(shape, tracks);
        GraphView g(false);
        g.load(tracks, frames, allTracks(shape));
        for (const PaintCase& c : paintCases()) {
            g.setUp(c);
            // The projection the host's window sets for this view: pixel centres on the
            // data points that Cursor gives for them.
            const GLW& v = g.view();
            const int w = int(v.width()), h = int(v.height());
            const Vector low = v.viewport.Cursor(-0.5f, -0.5f, w, h), high = v.viewport.Cursor(w - 0.5f, h - 0.5f, w, h);
            glcount::setWindow(low.x, high.x, low.y, high.y, 0, 0, w, h);
            glcount::reset();
            g.graph().Draw2D(&g.view());
            const glcount::Counts n = glcount::counts();
            if (n.blocks != n.ends) {
                std::fprintf(stderr, "tavbench_glcount: unbalanced glBegin/glEnd in %s\n", qPrintable(caseName(c)));
                return 1;
            }
            QJsonObject o;
            o["name"] = QStringLiteral("paint/%1/%2").arg(caseName(c)).arg(frames);
            o["vertices"] = double(n.vertices);
            o["blocks"] = double(n.blocks);
            o["calls"] = double(n.calls);
            counts.append(o);
        }
    }
    const QByteArray json = QJsonDocument(QJsonObject{{"counts", counts}}).toJson();
    if (argc > 1) {
        QFile out(QString::fromLocal8Bit(argv[1]));
        if (!out.open(QIODevice::WriteOnly) || out.write(json) != json.size()) {
            std::fprintf(stderr, "tavbench_glcount: cannot write %s\n", argv[1]);
            return 1;
        }
        return 0;
    }
    std::fwrite(json.constData(), 1, size_t(json.size()), stdout);
    return 0;
}
