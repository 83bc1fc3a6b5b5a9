#pragma once
// The graph object in a GL window, wired as a client wires it: made through the
// module's factory and reached only through its meta-object (slots and signals by
// name, dynamic properties). The panel keeps the take, the frame range and cursor
// it reports to the graph, and the store of tracks the graph shares.
#include "GL/glw.h"
#include "GL/glwindow.h"
#include "host/tavview/take.h"
#include "host/tavview/trackselection.h"
#include "utils/framesinfo.h"

#include <QObject>
#include <QPointer>
#include <QRectF>
#include <QSize>

class ModuleRegistry;

class GraphPanel : public QObject {
    Q_OBJECT
public:
    // Makes the graph through the registry and a GL window (child of windowParent)
    // with one view that fills it. graph() is null when no module registered TAVGraph.
    GraphPanel(const ModuleRegistry& registry, QWidget* windowParent = nullptr, QObject* parent = nullptr);
    ~GraphPanel() override;

    GLWindow* window() const { return glWindow; }
    GLW* view() const { return glView; }
    QObject* graph() const { return graphObject; }

    void SetTake(const Take& take);
    const Take& take() const { return currentTake; }
    void SetTrackSelection(const TrackSelection& selection);
    const TrackSelection& trackSelection() const { return selection; }
    const TAV::Frames& tracks() const { return trackStore; }

    const FramesInfo& framesInfo() const { return info; }
    qint64 current() const { return info.current; }
    // The frame range last reported by the graph's SelectionChanged; -1, -1 before any.
    qint64 selectionFirst() const { return selFirst; }
    qint64 selectionLast() const { return selLast; }
    int jumpMask() const;

    // The data rectangle the graph asks for (its Range2D) in the given mode; with
    // no sample to fit, its values span the graph's "minimumY" to "maximumY".
    QRectF DataRange(int mode) const;

public slots:
    void SeekFrame(qint64 index);
    // Moves the cursor by n frames inside the working range, wrapping (playback).
    void StepFrames(qint64 n);
    // Fits the view to the graph's data rectangle: mode 1 all frames, mode 2 the
    // selection (the working range without one). Before the window has a size the
    // fit waits for it.
    void Fit(int mode);
    // Hands the graph a rubber band from x = first to x = last (graph units), as
    // its Selected slot takes one; whole frames select exactly those frames.
    void SelectFrames(double first, double last);
    void ShowFrames(qint64 first, qint64 last);
    void Repaint();

signals:
    void CursorMoved(qint64 index);
    void SelectionChanged(qint64 first, qint64 last);
    void RegionChanged(qint64 first, qint64 last);
    // New tracks or a new choice of tracks: the graph's runs were rebuilt.
    void RunsChanged();
    void TakeChanged();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private slots:
    void onSeek(qint64 frame, int offset);
    void onSelectionChanged(qint64 first, qint64 last);
    void onRegionChanged(qint64 first, qint64 last);
    void onUpdateSelect(qint64 first, qint64 last);

private:
    void sendFramesInfo();
    void fitNow(int mode);
    void keepRangeOnResize(const QSize& oldSize, const QSize& newSize);

    QPointer<GLWindow> glWindow;
    QPointer<GLW> glView;
    QPointer<QObject> graphObject;

    Take currentTake;
    TrackSelection selection;
    TAV::Frames trackStore;
    FramesInfo info;
    qint64 selFirst = -1, selLast = -1;
    qint64 honouredFirst = -1, honouredLast = -1;
    int pendingFit = 0;
};
