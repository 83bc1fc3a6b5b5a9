#pragma once
// Everything around the graph's GL window that makes it readable: a legend above,
// the value axis on the left, the time axis below, tooltips over the samples, and,
// with the graph's "Rigid Rotations" on, a second graph of the rigid bodies'
// rotations below the first, sharing its time axis and cursor.
#include "host/tavview/axes.h"

#include <QPointer>
#include <QWidget>

class AxisStrip;
class GLW;
class GraphPanel;
class HoverTip;
class Legend;
class ModuleRegistry;
class QGridLayout;

class GraphArea : public QWidget {
    Q_OBJECT
public:
    GraphArea(const ModuleRegistry& registry, GraphPanel* panel, QWidget* parent = nullptr);
    ~GraphArea() override;

    GraphPanel* panel() const { return mainPanel; }
    // The rotations graph; null while "Rigid Rotations" is off.
    GraphPanel* rotations() const { return rotationPanel; }
    AxisStrip* timeAxis() const { return timeStrip; }
    AxisStrip* valueAxis() const { return valueStrip; }
    AxisStrip* rotationAxis() const { return rotationStrip; }
    Legend* legend() const { return legendBar; }
    HoverTip* hoverTip() const { return mainTip; }

    // Seconds instead of frame numbers along the time axis (timecode wins when the
    // graph's "Timecode Ticks" is on).
    void SetSecondsAxis(bool on);
    bool secondsAxis() const { return seconds; }
    TimeScale timeScale() const;

signals:
    // A line for the status bar.
    void Message(const QString& text);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private slots:
    void takeChanged();
    void tracksChanged();
    void originalToggled(bool on);
    void syncRotationX();

private:
    void graphPropertyChanged(const QByteArray& name);
    void showRotations(bool on);
    void fitRotations();
    void updateScale();

    const ModuleRegistry& registry;
    QPointer<GraphPanel> mainPanel;
    QPointer<GraphPanel> rotationPanel;
    QGridLayout* grid;
    Legend* legendBar;
    AxisStrip* valueStrip;
    AxisStrip* timeStrip;
    AxisStrip* rotationStrip = nullptr;
    HoverTip* mainTip;
    HoverTip* rotationTip = nullptr;
    bool seconds = false;
};
