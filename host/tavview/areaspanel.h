#pragma once
// The "Areas of interest" panel: the runs where the graph's next/previous-area
// actions stop, one row each (type, first and last frame, length). A double
// click (or Enter) on a row asks to jump there.
#include "utils/regions.h"

#include <QWidget>

class QLabel;
class QTreeWidget;
class QTreeWidgetItem;

class AreasPanel : public QWidget {
    Q_OBJECT
public:
    explicit AreasPanel(QWidget* parent = nullptr);

    // areas: run bounds are frame indices; firstFrame numbers them as the take does.
    void SetAreas(const Regions& areas, qint64 firstFrame);
    QTreeWidget* list() const { return tree; }

signals:
    // Frame indices of the chosen run, both inclusive.
    void AreaActivated(qint64 first, qint64 last);

private slots:
    void activated(QTreeWidgetItem* item);

private:
    QLabel* caption;
    QTreeWidget* tree;
};
