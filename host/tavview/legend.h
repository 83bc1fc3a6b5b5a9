#pragma once
// What the graph's colours mean: its axis colours (grey, or red, green and blue
// with "enableRGB") and the shading of its runs.
#include <QColor>
#include <QString>
#include <QStringList>
#include <QVector>
#include <QWidget>

struct LegendEntry {
    QString name;
    QColor colour;
};

// The tracks' colours: x, y, z, and the rigid bodies' points when they have their own.
QVector<LegendEntry> axisLegend(bool rgb);
// The shading of good, missing, fair, poor and mixed runs, and of the other
// mixes a merged run can have (good and missing, say).
QVector<LegendEntry> runLegend();

class Legend : public QWidget {
    Q_OBJECT
public:
    explicit Legend(QWidget* parent = nullptr);

    void SetRgb(bool rgb);
    bool rgb() const { return rgbAxes; }
    // The names of the tracks shown, listed before the colours.
    void SetTracks(const QStringList& names);
    const QStringList& tracks() const { return trackNames; }
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    bool rgbAxes = false;
    QStringList trackNames;
};
