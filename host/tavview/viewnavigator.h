#pragma once
// Mouse navigation of the graph's view, beside the graph's own mouse actions
// (a plain left click or drag moves the cursor):
//   wheel                 zoom the time axis about the mouse
//   Ctrl + wheel          zoom the value axis about the mouse
//   Shift + wheel         scroll in time
//   middle or Ctrl+left drag   pan
//   Shift + left drag     select a range of frames (rubber band)
#include <QObject>
#include <QPoint>
#include <QPointer>

class GraphPanel;
class QMouseEvent;
class QRubberBand;
class QWheelEvent;

class ViewNavigator : public QObject {
    Q_OBJECT
public:
    explicit ViewNavigator(GraphPanel* panel);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    enum class Drag { None, Pan, Band };

    void wheel(QWheelEvent* e);
    void press(QMouseEvent* e);
    void move(QMouseEvent* e);
    void release(QMouseEvent* e);
    // Widget pixels (y down) to the view's pixels (y up).
    QPointF viewPixel(const QPointF& widgetPos) const;

    QPointer<GraphPanel> panel;
    Drag drag = Drag::None;
    QPoint origin, last;
    QRubberBand* band = nullptr;
};
