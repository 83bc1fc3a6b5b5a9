#pragma once
// The tooltip over a graph: the drawn sample within the graph's "hoverDistance"
// pixels of the mouse, or nothing. Samples are placed less the panel's mirror of
// the graph's track offsets.
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

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QPointer<GraphPanel> panel;
    TimeScale timeScale;
};
