#pragma once
// A strip beside a GL view that shows the ticks of one of its axes: the time
// axis below the graph, the value axis on its left. It reads the view's camera
// when it paints and is repainted with the view.
#include "host/tavview/axes.h"

#include <QPointer>
#include <QWidget>

class GLW;

class AxisStrip : public QWidget {
    Q_OBJECT
public:
    // Qt::Horizontal: the time axis (ticks on top); Qt::Vertical: the value axis
    // (ticks on the right).
    AxisStrip(Qt::Orientation orientation, GLW* view, QWidget* parent = nullptr);

    void SetTimeScale(const TimeScale& scale);
    const TimeScale& timeScale() const { return scale; }
    // Shown at the end of the axis: "mm", "deg", "frame", "s", ...
    void SetTitle(const QString& title);
    QString title() const { return axisTitle; }
    // Frames first..last marked along the time axis; none when last < first.
    void SetSelection(qint64 first, qint64 last);
    // The ticks as last painted (what a user reads off the axis).
    QVector<Tick> Ticks() const;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    Qt::Orientation orientation;
    QPointer<GLW> view;
    TimeScale scale;
    QString axisTitle;
    qint64 selectedFirst = 0, selectedLast = -1;
};
