#pragma once
// The tooltip over a graph: the drawn sample within the graph's "hoverDistance"
// pixels of the mouse, or nothing. Offsets are the graph's own and cannot be read
// back, so the tip takes them the same way when the view's "updateoffsets" and
// "clearoffsets" actions run.
#include "host/tavview/axes.h"
#include "host/tavview/hover.h"

#include <QObject>
#include <QPoint>
#include <QPointer>

class GraphPanel;

class HoverTip : public QObject {
    Q_OBJECT
public:
    explicit HoverTip(GraphPanel* panel);

    void SetTimeScale(const TimeScale& scale) { timeScale = scale; }
    // The tip for the GL window's widget pixel (y down); empty when no drawn sample is that close.
    QString TextAt(const QPoint& widgetPos) const;
    const TrackOffsets& offsets() const { return trackOffsets; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private slots:
    void takeOffsets();
    void clearOffsets();

private:
    void watchActions();

    QPointer<GraphPanel> panel;
    TimeScale timeScale;
    TrackOffsets trackOffsets;
};
