#include "host/tavview/editdock.h"

#include "host/tavview/editing.h"

#include <QHeaderView>
#include <QLabel>
#include <QTreeWidget>
#include <QUndoView>
#include <QVBoxLayout>

namespace {
enum Column { MarkerColumn, FirstColumn, LastColumn, MethodColumn, ErrorColumn };
const int firstRole = Qt::UserRole, lastRole = Qt::UserRole + 1;
} // namespace

EditDock::EditDock(QUndoStack* stack, QWidget* parent) : QWidget(parent)
{
    auto* history = new QUndoView(stack, this);
    history->setObjectName(QStringLiteral("history"));
    history->setEmptyLabel(tr("<as loaded>"));
    list = new QTreeWidget(this);
    list->setObjectName(QStringLiteral("fills"));
    list->setHeaderLabels({tr("Marker"), tr("First"), tr("Last"), tr("Method"), tr("Estimated error")});
    list->setRootIsDecorated(false);
    list->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(2, 2, 2, 2);
    layout->addWidget(new QLabel(tr("History"), this));
    layout->addWidget(history, 1);
    layout->addWidget(new QLabel(tr("Last fill"), this));
    layout->addWidget(list, 1);
    connect(list, &QTreeWidget::itemActivated, this, &EditDock::activated);
}

void EditDock::ShowFills(const FillReport& report, qint64 firstFrame, const QString& units)
{
    list->clear();
    for (const FilledGap& g : report.filled) {
        auto* item = new QTreeWidgetItem(list);
        item->setText(MarkerColumn, QString::number(g.gap.id));
        item->setText(FirstColumn, QString::number(firstFrame + g.gap.first));
        item->setText(LastColumn, QString::number(firstFrame + g.gap.last));
        item->setText(MethodColumn, fillMethodName(g.method));
        item->setText(ErrorColumn, fillErrorText(g.error, units));
        item->setData(MarkerColumn, firstRole, qint64(g.gap.first));
        item->setData(MarkerColumn, lastRole, qint64(g.gap.last));
    }
}

void EditDock::activated(QTreeWidgetItem* item)
{
    if (item)
        emit GapActivated(item->data(MarkerColumn, firstRole).toLongLong(),
                          item->data(MarkerColumn, lastRole).toLongLong());
}
