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
    "\n"
    "Shows the tracks of a motion-capture take (a C3D file) in the time graph.\n"
    "Without a file it opens a built-in synthetic take.\n"
    "\n"
    "Options:\n"
    "  --snapshot <png>  Render the graph to <png> and exit.\n"
    "  --size <WxH>      Size of the picture in pixels (default 1200x480).\n"
    "  --select <ids>    Tracks to show: marker ids or ranges (0,3,5-7), rigid\n"
    "                    bodies with an r (r0), or labels (LASI,RASI).\n"
    "  --frame <n>       Put the cursor on frame <n> (the take's own numbering).\n"
    "  --module <path>   Load the graph module from <path> instead of beside tavview.\n"
    "  --report          Print the quality report of every file and exit.\n"
    "  --csv             With --report: write CSV.\n"
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
    parser.addOptions({help, module, snapshot, size, select, frame, report, csv});

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
