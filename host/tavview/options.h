#pragma once
// What the user asked for on the command line, and how it is read.
#include <QPair>
#include <QSize>
#include <QString>
#include <QStringList>

#include <optional>

struct ViewOptions {
    QStringList files;           // the take to open, or the takes to report on
    QString modulePath;          // --module: the graph module to load instead of the one found beside tavview
    QString snapshotPath;        // --snapshot: render one picture to this file (its suffix names the format) and exit
    QSize size{1200, 480};       // --size: size of the snapshot
    std::optional<QPair<qint64, qint64>> range; // --range: the take's frames to show in the snapshot
    bool rgb = false;            // --rgb: x, y and z in red, green and blue
    int axisMask = 7;            // --axes: which of x (1), y (2), z (4) to draw
    QStringList select;          // --select: marker ids, ranges, "r"-prefixed rigid ids or labels
    std::optional<qint64> frame; // --frame: the take's frame number to put the cursor on
    bool report = false;         // --report: print the quality report of the files and exit
    bool csv = false;            // --csv: the report as CSV
    // Cleaning without a window: delete spikes, fill gaps, then save and exit.
    QString savePath;                    // --save: write the cleaned take here
    bool overwrite = false;              // --overwrite: --save may name the input file
    std::optional<double> spikeLimit;    // --delete-spikes: acceleration threshold, units per frame²
    QString fillMethod;                  // --fill: linear, spline, pattern, rigid or best
    int maxGap = 0;                      // --max-gap: longest gap --fill fills (0: any)
    bool editing() const { return !savePath.isEmpty(); }
};

enum class ParseResult { Run, Help, Error };

// Reads arguments (the program name first, as QCoreApplication::arguments() gives them).
// Help: message holds the usage text. Error: message holds one line saying what is wrong.
ParseResult parseCommandLine(const QStringList& arguments, ViewOptions& options, QString& message);

QString usageText();

// "1200x480" -> QSize; an invalid QSize when the text is not WxH within 16..16384.
QSize parseSize(const QString& text);
