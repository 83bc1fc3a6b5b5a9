#pragma once
// The graph object in a GL window, wired as a client wires it: made through the
// module's factory and reached only through its meta-object (slots and signals by
// name, dynamic properties). The panel keeps the take, the frame range and cursor
// it reports to the graph, and the store of tracks the graph shares.
#include "GL/glw.h"
#include "GL/glwindow.h"
#include "modules/core/trackoffsets.h"
#include "host/tavview/take.h"
#include "host/tavview/trackselection.h"
#include "utils/framesinfo.h"
#include "utils/regions.h"

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
    // The take's samples, for the edits to change in place; TakeEdited then hands
    // the graph the changed tracks.
    Take& editableTake() { return currentTake; }
    void TakeEdited();
    // Shows these samples instead of the take's (the unedited take), or the take's
    // own again when null. The frames must stay alive while shown.
    void ShowSamples(const TAV::Frames* frames);

    // The graph's track offsets, taken by the same rule at the same moments: when its
    // "updateoffsets" or "clearoffsets" action runs, and cleared with a new take.
    const TrackOffsets& trackOffsets() const { return offsets; }

    const FramesInfo& framesInfo() const { return info; }
    qint64 current() const { return info.current; }
    // The frame range last reported by the graph's SelectionChanged; -1, -1 before any.
    qint64 selectionFirst() const { return selFirst; }
    qint64 selectionLast() const { return selLast; }
    int jumpMask() const;
    // Whether the selection is worth marking: made, and less than the whole take
    // (the whole take is what loading selects).
    bool selectionShown() const;

    // The data rectangle the graph asks for (its Range2D) in the given mode, mode 1
    // at the data's own height; with no sample to fit, its values span the graph's
    // "minimumY" to "maximumY".
    QRectF DataRange(int mode) const;

public slots:
    void SeekFrame(qint64 index);
    // Moves the cursor by n frames inside the working range, wrapping (playback).
    void StepFrames(qint64 n);
    // Fits the view to the graph's data rectangle: mode 1 all frames, mode 2 the
    // selection (the working range without one). Before the window has a size the
    // fit waits for it.
    void Fit(int mode);
    // Fits the view to frame indices first..last at the data's height over all frames.
    void FitFrames(qint64 first, qint64 last);
    // Hands the graph a rubber band from x = first to x = last (graph units), as
    // its Selected slot takes one; whole frames select exactly those frames.
    void SelectFrames(double first, double last);
    // Pans when [first, last] is not wholly in view.
    void ShowFrames(qint64 first, qint64 last);
    // Next (or previous) area of interest from the cursor: the graph steps from
    // its view's reference point, so that point is put on the cursor first; the
    // cursor then lands on the area the graph proposed, and the view follows.
    void StepArea(bool forward);
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
    void onProposal(const QRectF& run);
    void drawOverlay(GLW* view);
    void takeOffsets();
    void clearOffsets();

private:
    void sendFramesInfo();
    void watchOffsetActions();
    void fitNow(int mode);
    void keepRangeOnResize(const QSize& newSize);
    void takeOverAreaActions();

    QPointer<GLWindow> glWindow;
    QPointer<GLW> glView;
    QPointer<QObject> graphObject;

    Take currentTake;
    TrackSelection selection;
    TAV::Frames trackStore;
    const TAV::Frames* shownSamples = nullptr;
    FramesInfo info;
    TrackOffsets offsets;
    qint64 selFirst = -1, selLast = -1;
    Regions filled; // frames where a shown track holds a filled sample
    qint64 honouredFirst = -1, honouredLast = -1;
    int pendingFit = 0;
    // The window size the viewport was last fitted or stretched for. A window can
    // be resized without a valid old size (a native window made afresh comes up at
    // a default size first), so stretching starts from this instead.
    QSize laidOutFor;
    qint64 fitFirst = 0, fitLast = 0;
    QRectF proposal;
};
