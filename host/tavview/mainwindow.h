#pragma once
// tavview's main window: the graph in the middle, the track lists on the left,
// the areas of interest on the right, frame, time and selection in the status bar.
// The graph sits in a GraphArea, with its axes, legend and rotations graph.
#include "host/tavview/preferences.h"
#include "host/tavview/take.h"
#include "host/tavview/trackselection.h"

#include <QMainWindow>

class AreasPanel;
class EditDock;
class Editing;
class GraphArea;
class GraphPanel;
class ModuleRegistry;
class Playback;
class QLabel;
class QLineEdit;
class QListWidget;
class QMenu;

class MainWindow : public QMainWindow {
    Q_OBJECT
public:
    explicit MainWindow(const ModuleRegistry& registry, QWidget* parent = nullptr);

    GraphPanel* panel() const { return graphPanel; }
    GraphArea* graphArea() const { return area; }
    Playback* playback() const { return player; }
    AreasPanel* areas() const { return areasPanel; }
    Editing* editing() const { return edits; }
    EditDock* editDock() const { return editPanel; }
    QListWidget* markerList() const { return markers; }
    QListWidget* rigidList() const { return rigids; }
    QListWidget* outputList() const { return outputs; }
    QLineEdit* trackFilter() const { return filter; }
    QLabel* cursorLabel() const { return cursorText; }
    QLabel* selectionLabel() const { return selectionText; }
    QLabel* selectionTimeLabel() const { return selectionTime; }

    // The layout, the graph's toggles, the axis unit and the recent files, to keep
    // and to restore in a later run.
    Preferences CurrentPreferences() const;
    void ApplyPreferences(const Preferences& preferences);
    const QStringList& recentFiles() const { return recent; }
    // Puts path first in File > Open Recent.
    void RememberFile(const QString& path);

    // Shows a take with these tracks selected; source is the file it came from
    // (empty for the built-in take), where saving reads what the take leaves out.
    void ShowTake(const Take& take, const TrackSelection& selection, const QString& source = QString());
    // Selects tracks in the lists (and so in the graph).
    void SelectTracks(const TrackSelection& selection);

public slots:
    // Reads a capture file and shows it; a file that cannot be read is reported
    // in a message box and the current take stays. Returns whether it was shown.
    bool OpenPath(const QString& path);

private slots:
    void openFile();
    void showHelp();
    void trackListChanged();
    void filterTracks();
    void showCursor();
    void showSelection(qint64 first, qint64 last);
    void showRegion(qint64 first, qint64 last);
    void updateAreas();
    void jumpToArea(qint64 first, qint64 last);

private:
    void buildMenus();
    void setGraphProperty(const char* name, const QVariant& value);
    void syncViewSwitches();
    // Moves the cursor (kept inside the take) and brings it into view.
    void seekAndShow(qint64 index);
    qint64 visibleFrames() const;
    void zoomTime(double factor);
    void fillRecentMenu();
    void fillTrackLists();
    QString frameText(qint64 index) const;
    double secondsAt(qint64 index) const;

    GraphPanel* graphPanel;
    GraphArea* area;
    Playback* player;
    AreasPanel* areasPanel;
    Editing* edits;
    EditDock* editPanel;
    QListWidget* markers;
    QListWidget* rigids;
    QListWidget* outputs;
    QLabel* outputsLabel;
    QLineEdit* filter;
    QLabel* cursorText;
    QLabel* selectionText;
    QLabel* selectionTime;
    QMenu* recentMenu = nullptr;
    QAction* secondsAction = nullptr;
    QAction* rgbAction = nullptr;
    QList<QAction*> axisActions;
    QStringList recent;
    QList<qint64> frameTimes;
};
