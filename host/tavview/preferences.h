#pragma once
// What tavview remembers between runs: the window's layout, the graph's toggles,
// the time axis unit and the files opened last. Read and written through a
// QSettings the caller chooses, so tests keep theirs apart.
#include <QByteArray>
#include <QSettings>
#include <QStringList>
#include <QVariantMap>

struct Preferences {
    QByteArray geometry;    // QMainWindow::saveGeometry
    QByteArray windowState; // QMainWindow::saveState: docks and their sizes
    QVariantMap graph;      // the graph's dynamic properties, by name
    bool secondsAxis = false;
    QStringList recentFiles; // newest first
};

// The graph's properties that a user switches and expects to find again.
QStringList rememberedGraphProperties();
// The newest files first, without repeats, at most max.
QStringList withRecentFile(const QStringList& files, const QString& path, int max = 8);

Preferences readPreferences(QSettings& settings);
void writePreferences(QSettings& settings, const Preferences& preferences);
