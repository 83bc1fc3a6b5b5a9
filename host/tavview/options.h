#pragma once
// What the user asked for on the command line, and how it is read.
#include <QSize>
#include <QString>
#include <QStringList>

#include <optional>

struct ViewOptions {
    QStringList files;           // the take to open, or the takes to report on
    QString modulePath;          // --module: the graph module to load instead of the one found beside tavview
    QString snapshotPath;        // --snapshot: render one picture to this PNG and exit
    QSize size{1200, 480};       // --size: size of the graph in the snapshot (and of a new window's graph)
    QStringList select;          // --select: marker ids, ranges, "r"-prefixed rigid ids or labels
    std::optional<qint64> frame; // --frame: the take's frame number to put the cursor on
    bool report = false;         // --report: print the quality report of the files and exit
    bool csv = false;            // --csv: the report as CSV
};

enum class ParseResult { Run, Help, Error };

// Reads arguments (the program name first, as QCoreApplication::arguments() gives them).
// Help: message holds the usage text. Error: message holds one line saying what is wrong.
ParseResult parseCommandLine(const QStringList& arguments, ViewOptions& options, QString& message);

QString usageText();

// "1200x480" -> QSize; an invalid QSize when the text is not WxH within 16..16384.
QSize parseSize(const QString& text);
