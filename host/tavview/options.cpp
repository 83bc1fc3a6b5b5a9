#include "host/tavview/options.h"

#include <QCommandLineOption>
#include <QCommandLineParser>
#include <QRegularExpression>

QSize parseSize(const QString& text)
{
    static const QRegularExpression pattern(QStringLiteral("^(\\d{1,5})[xX](\\d{1,5})$"));
    const QRegularExpressionMatch m = pattern.match(text.trimmed());
    if (!m.hasMatch())
        return QSize();
    const int w = m.captured(1).toInt(), h = m.captured(2).toInt();
    if (w < 16 || h < 16 || w > 16384 || h > 16384)
        return QSize();
    return QSize(w, h);
}

namespace {

const char* const usage =
    "Usage: tavview [options] [file]\n"
    "       tavview --report [--csv] file...\n"
    "       tavview file [--delete-spikes T] [--fill METHOD --max-gap N] --save out.c3d\n"
    "\n"
    "Shows the tracks of a motion-capture take (a C3D file) in the time graph.\n"
    "Without a file it opens a built-in synthetic take.\n"
    "\n"
    "Options:\n"
    "  --snapshot <file> Render the graph with its axes, legend and title to\n"
    "                    <file> and exit; the suffix names the format (.png, .jpg).\n"
    "  --size <WxH>      Size of the picture in pixels (default 1200x480).\n"
    "  --range <a-b>     Show frames a to b in the picture (the take's numbering).\n"
    "  --rgb             Draw x, y and z in red, green and blue.\n"
    "  --axes <xyz>      The coordinates to draw, e.g. xz (default xyz).\n"
    "  --select <ids>    Tracks to show: marker ids or ranges (0,3,5-7), rigid\n"
    "                    bodies with an r (r0), or labels (LASI,RASI).\n"
    "  --frame <n>       Put the cursor on frame <n> (the take's own numbering).\n"
    "  --module <path>   Load the graph module from <path> instead of beside tavview.\n"
    "  --report          Print the quality report of every file and exit.\n"
    "  --csv             With --report: write CSV.\n"
    "  --delete-spikes <T>  Delete samples whose acceleration exceeds T (the take's\n"
    "                    units per frame squared).\n"
    "  --fill <method>   Fill every gap: linear, spline, pattern, rigid or best\n"
    "                    (the method with the lowest estimated error per gap).\n"
    "  --max-gap <n>     With --fill: fill gaps of at most n frames (default: any).\n"
    "  --save <c3d>      Write the cleaned take to <c3d> and exit.\n"
    "  --overwrite       Let --save replace the input file.\n"
    "  -h, --help        Show this help.\n";

} // namespace

QString usageText() { return QString::fromLatin1(usage); }

ParseResult parseCommandLine(const QStringList& arguments, ViewOptions& options, QString& message)
{
    // The usage text is written out above: QCommandLineParser's own needs an
    // application object, and the arguments are read before one exists.
    QCommandLineParser parser;
    const QCommandLineOption help(QStringList{QStringLiteral("h"), QStringLiteral("help")});
    const QCommandLineOption module(QStringLiteral("module"), QString(), QStringLiteral("path"));
    const QCommandLineOption snapshot(QStringLiteral("snapshot"), QString(), QStringLiteral("png"));
    const QCommandLineOption size(QStringLiteral("size"), QString(), QStringLiteral("WxH"));
    const QCommandLineOption select(QStringLiteral("select"), QString(), QStringLiteral("ids"));
    const QCommandLineOption frame(QStringLiteral("frame"), QString(), QStringLiteral("n"));
    const QCommandLineOption report(QStringLiteral("report"));
    const QCommandLineOption csv(QStringLiteral("csv"));
    const QCommandLineOption range(QStringLiteral("range"), QString(), QStringLiteral("a-b"));
    const QCommandLineOption rgb(QStringLiteral("rgb"));
    const QCommandLineOption axes(QStringLiteral("axes"), QString(), QStringLiteral("xyz"));
    const QCommandLineOption save(QStringLiteral("save"), QString(), QStringLiteral("c3d"));
    const QCommandLineOption overwrite(QStringLiteral("overwrite"));
    const QCommandLineOption spikes(QStringLiteral("delete-spikes"), QString(), QStringLiteral("T"));
    const QCommandLineOption fill(QStringLiteral("fill"), QString(), QStringLiteral("method"));
    const QCommandLineOption maxGap(QStringLiteral("max-gap"), QString(), QStringLiteral("n"));
    parser.addOptions({help, module, snapshot, size, select, frame, report, csv, range, rgb, axes, save, overwrite,
                       spikes, fill, maxGap});

    if (!parser.parse(arguments)) {
        message = parser.errorText();
        return ParseResult::Error;
    }
    if (parser.isSet(help)) {
        message = usageText();
        return ParseResult::Help;
    }

    options.files = parser.positionalArguments();
    options.modulePath = parser.value(module);
    options.snapshotPath = parser.value(snapshot);
    options.report = parser.isSet(report);
    options.csv = parser.isSet(csv);
    options.rgb = parser.isSet(rgb);

    if (parser.isSet(size)) {
        const QSize s = parseSize(parser.value(size));
        if (!s.isValid()) {
            message = QStringLiteral("--size wants WxH with both between 16 and 16384, not \"%1\"")
                          .arg(parser.value(size));
            return ParseResult::Error;
        }
        options.size = s;
    }
    for (const QString& value : parser.values(select))
        for (const QString& token : value.split(QLatin1Char(','), Qt::SkipEmptyParts))
            options.select << token.trimmed();
    if (parser.isSet(frame)) {
        bool ok = false;
        const qint64 n = parser.value(frame).toLongLong(&ok);
        if (!ok) {
            message = QStringLiteral("--frame wants a whole number, not \"%1\"").arg(parser.value(frame));
            return ParseResult::Error;
        }
        options.frame = n;
    }

    if (parser.isSet(range)) {
        static const QRegularExpression pattern(QStringLiteral("^(-?\\d{1,18})-(-?\\d{1,18})$"));
        const QRegularExpressionMatch m = pattern.match(parser.value(range).trimmed());
        if (!m.hasMatch() || m.captured(1).toLongLong() > m.captured(2).toLongLong()) {
            message = QStringLiteral("--range wants FIRST-LAST with FIRST <= LAST, not \"%1\"").arg(parser.value(range));
            return ParseResult::Error;
        }
        options.range = qMakePair(m.captured(1).toLongLong(), m.captured(2).toLongLong());
    }
    if (parser.isSet(axes)) {
        static const QRegularExpression pattern(QStringLiteral("^[xyzXYZ]{1,3}$"));
        const QString value = parser.value(axes).trimmed().toLower();
        if (!pattern.match(value).hasMatch()) {
            message = QStringLiteral("--axes wants some of x, y and z, not \"%1\"").arg(parser.value(axes));
            return ParseResult::Error;
        }
        options.axisMask = (value.contains(QLatin1Char('x')) ? 1 : 0) | (value.contains(QLatin1Char('y')) ? 2 : 0) |
                           (value.contains(QLatin1Char('z')) ? 4 : 0);
    }
    if (options.snapshotPath.isEmpty() && (options.range || options.rgb || parser.isSet(axes))) {
        message = QStringLiteral("--range, --rgb and --axes apply to --snapshot");
        return ParseResult::Error;
    }
    options.savePath = parser.value(save);
    options.overwrite = parser.isSet(overwrite);
    options.fillMethod = parser.value(fill);
    if (parser.isSet(spikes)) {
        bool ok = false;
        const double t = parser.value(spikes).toDouble(&ok);
        if (!ok || !(t > 0)) {
            message = QStringLiteral("--delete-spikes wants a positive threshold, not \"%1\"").arg(parser.value(spikes));
            return ParseResult::Error;
        }
        options.spikeLimit = t;
    }
    if (parser.isSet(maxGap)) {
        bool ok = false;
        options.maxGap = parser.value(maxGap).toInt(&ok);
        if (!ok || options.maxGap < 1) {
            message = QStringLiteral("--max-gap wants a number of frames from 1, not \"%1\"").arg(parser.value(maxGap));
            return ParseResult::Error;
        }
    }
    const bool cleans = options.spikeLimit || parser.isSet(fill) || parser.isSet(maxGap) || options.overwrite;
    if (cleans && !options.editing()) {
        message = QStringLiteral("--delete-spikes, --fill, --max-gap and --overwrite need --save");
        return ParseResult::Error;
    }
    if (parser.isSet(maxGap) && !parser.isSet(fill)) {
        message = QStringLiteral("--max-gap only applies to --fill");
        return ParseResult::Error;
    }
    if (options.editing() && (options.files.size() != 1 || options.report || !options.snapshotPath.isEmpty())) {
        message = QStringLiteral("--save needs exactly one input file and no --report or --snapshot");
        return ParseResult::Error;
    }

    if (options.csv && !options.report) {
        message = QStringLiteral("--csv only applies to --report");
        return ParseResult::Error;
    }
    if (options.report) {
        if (options.files.isEmpty()) {
            message = QStringLiteral("--report needs at least one file");
            return ParseResult::Error;
        }
        if (!options.snapshotPath.isEmpty()) {
            message = QStringLiteral("--report and --snapshot cannot be combined");
            return ParseResult::Error;
        }
    } else if (options.files.size() > 1) {
        message = QStringLiteral("tavview opens one take at a time (got %1 files); use --report for many")
                      .arg(options.files.size());
        return ParseResult::Error;
    }
    return ParseResult::Run;
}
