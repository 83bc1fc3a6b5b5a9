#pragma once
// The "Edits" panel: the undo history, and the gaps of the last fill with the
// method used and the estimated error. A double click on a gap jumps there.
#include "host/edit/takeeditor.h"

#include <QWidget>

class QTreeWidget;
class QTreeWidgetItem;
class QUndoStack;

class EditDock : public QWidget {
    Q_OBJECT
public:
    EditDock(QUndoStack* stack, QWidget* parent = nullptr);

    QTreeWidget* fills() const { return list; }

public slots:
    // firstFrame numbers the frames as the take does; units are the take's.
    void ShowFills(const FillReport& report, qint64 firstFrame, const QString& units);

signals:
    void GapActivated(qint64 first, qint64 last);

private slots:
    void activated(QTreeWidgetItem* item);

private:
    QTreeWidget* list;
};
