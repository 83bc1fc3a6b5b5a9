// tavview: opens a take (a C3D file, or the built-in one) and shows it in the time
// graph loaded from tavgraph.so; or renders one picture of it; or reports the
// quality of many takes.
#include "modules/core/contract.h"
#include "host/tavview/editcommand.h"
#include "host/tavview/graphpanel.h"
#include "host/tavview/mainwindow.h"
#include "host/tavview/moduleregistry.h"
#include "host/tavview/options.h"
#include "host/tavview/reportcommand.h"
#include "host/tavview/snapshot.h"
#include "host/tavview/take.h"
#include "host/tavview/trackselection.h"
#include "utils/saturate.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QSettings>

#include <cstdio>

namespace {

enum ExitCode { Ok = 0, Failed = 1, BadUsage = 2 };

int fail(const QString& message, int code = Failed)
{
    std::fprintf(stderr, "tavview: %s\n", qPrintable(message));
    return code;
}

bool haveDisplay()
{
    return !qEnvironmentVariableIsEmpty("DISPLAY") || !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") ||
           !qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM");
}

// The folder of the executable, from argv[0] before any QApplication exists.
QString executableDir(const char* argv0)
{
    QFileInfo exe(QString::fromLocal8Bit(argv0));
    if (!exe.exists())
        exe = QFileInfo(QStringLiteral("/proc/self/exe")).symLinkTarget();
    return exe.absolutePath();
}

} // namespace

int main(int argc, char** argv)
{
    QStringList arguments;
    for (int i = 0; i < argc; ++i)
        arguments << QString::fromLocal8Bit(argv[i]);
    ViewOptions options;
    QString message;
    switch (parseCommandLine(arguments, options, message)) {
    case ParseResult::Help:
        std::fputs(qPrintable(message), stdout);
        return Ok;
    case ParseResult::Error:
        return fail(message + QStringLiteral(" (see tavview --help)"), BadUsage);
    case ParseResult::Run:
        break;
    }

    if (options.report)
        return runReport(options.files, options.csv) ? Ok : Failed;
    if (options.editing())
        return runEditCommand(options, message) ? Ok : fail(message);

    // The take first: a file that cannot be used is the likeliest mistake, and
    // reading it needs no display.
    Take take;
    if (options.files.isEmpty())
        take = defaultTake();
    else if (!loadTake(options.files.first(), take, message))
        return fail(message);

    TrackSelection selection = defaultSelection(take);
    if (!options.select.isEmpty() && !resolveSelection(options.select, take, selection, message))
        return fail(message, BadUsage);
    qint64 cursor = 0;
    if (options.frame) {
        cursor = sub64(*options.frame, take.firstFrame);
        if (cursor < 0 || cursor >= take.frameCount())
            return fail(QStringLiteral("--frame %1 is outside the take (frames %2 to %3)")
                            .arg(*options.frame)
                            .arg(take.firstFrame)
                            .arg(take.firstFrame + take.frameCount() - 1),
                        BadUsage);
    }

    if (options.range) {
        const qint64 first = take.firstFrame, last = take.firstFrame + take.frameCount() - 1;
        if (options.range->first > last || options.range->second < first)
            return fail(QStringLiteral("--range %1-%2 is outside the take (frames %3 to %4)")
                            .arg(options.range->first)
                            .arg(options.range->second)
                            .arg(first)
                            .arg(last),
                        BadUsage);
    }

    const QString exeDir = executableDir(argv[0]);
    const QString modulePath = options.modulePath.isEmpty() ? findModule(exeDir) : options.modulePath;
    if (modulePath.isEmpty())
        return fail(QStringLiteral("cannot find the graph module tavgraph.so (looked in %1); name it with --module")
                        .arg(moduleCandidates(exeDir).join(QStringLiteral(", "))));
    // Loading the module needs no application object yet, so a wrong module is
    // reported before a missing display is.
    ModuleRegistry registry;
    if (!registry.Load(modulePath, message))
        return fail(message);
    if (!haveDisplay())
        return fail(QStringLiteral("no display to show the graph on; run it under xvfb-run -a, or use run.sh, "
                                   "which starts a virtual display itself"));

    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("tavview"));
    QApplication::setOrganizationName(QStringLiteral("tavgraph"));

    if (!options.snapshotPath.isEmpty() && !canWritePicture(options.snapshotPath, message))
        return fail(message, BadUsage);
    if (!options.snapshotPath.isEmpty()) {
        GraphPanel panel(registry);
        panel.SetTake(take);
        panel.SetTrackSelection(selection);
        panel.SeekFrame(cursor);
        if (QObject* graph = panel.graph()) {
            graph->setProperty(GraphProperty::enableRGB, options.rgb);
            graph->setProperty(GraphProperty::axisMask, options.axisMask);
        }
        if (options.range)
            panel.FitFrames(options.range->first - take.firstFrame, options.range->second - take.firstFrame);
        else
            panel.Fit(2);
        QRect graph;
        if (!saveSnapshot(registry, panel, options.size, options.snapshotPath, message, &graph))
            return fail(message);
        std::printf("tavview: wrote %s (%dx%d, graph %dx%d at %d,%d)\n",
                    qPrintable(QDir::toNativeSeparators(options.snapshotPath)), options.size.width(),
                    options.size.height(), graph.width(), graph.height(), graph.x(), graph.y());
        return Ok;
    }

    // Preferences live in the user's settings; the command line still says what to show.
    QSettings settings;
    MainWindow window(registry);
    window.ApplyPreferences(readPreferences(settings));
    window.ShowTake(take, selection, options.files.value(0));
    if (!options.files.isEmpty())
        window.RememberFile(options.files.first());
    window.panel()->SeekFrame(cursor);
    window.show();
    QObject::connect(&app, &QCoreApplication::aboutToQuit, [&] {
        writePreferences(settings, window.CurrentPreferences());
    });
    return app.exec();
}
