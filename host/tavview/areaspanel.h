#pragma once
// The "Areas of interest" panel: one row per stretch (track, type, length, first
// and last frame), sortable by any column. By track it lists each track's own gaps,
// poor, fair and filled stretches; merged, the runs where the graph's
// next/previous-area actions stop. A double click (or Enter) asks to jump there.
#include "host/tavview/areas.h"
#include "utils/regions.h"

#include <QWidget>

class QCheckBox;
class QLabel;
class QTreeWidget;
class QTreeWidgetItem;

class AreasPanel : public QWidget {
    Q_OBJECT
public:
    explicit AreasPanel(QWidget* parent = nullptr);

    // Run bounds are frame indices; firstFrame numbers them as the take does.
    void SetAreas(const Regions& merged, const QVector<TrackArea>& byTrack, qint64 firstFrame);
    QTreeWidget* list() const { return tree; }
    QCheckBox* byTrackSwitch() const { return byTrackBox; }

signals:
    // Frame indices of the chosen run, both inclusive.
    void AreaActivated(qint64 first, qint64 last);
    // From a row's menu: delete, fill, or delete and fill the selected tracks there.
    void DeleteRequested(qint64 first, qint64 last);
    void FillRequested(qint64 first, qint64 last);
    void DeleteAndFillRequested(qint64 first, qint64 last);

private slots:
    void activated(QTreeWidgetItem* item);
    void rowMenu(const QPoint& pos);

private:
    void fill();

    QLabel* caption;
    QCheckBox* byTrackBox;
    QTreeWidget* tree;
    Regions mergedAreas;
    QVector<TrackArea> trackAreaList;
    qint64 firstFrame = 0;
};
