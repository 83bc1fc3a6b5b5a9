#include "host/tavview/areaspanel.h"

#include "host/tavview/areas.h"

#include <QHeaderView>
#include <QLabel>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace {
enum Column { TypeColumn, FirstColumn, LastColumn, LengthColumn };
// Where an item keeps its run's frame indices.
const int firstRole = Qt::UserRole, lastRole = Qt::UserRole + 1, sortRole = Qt::UserRole + 2;

// Numbers sort as numbers.
class AreaItem : public QTreeWidgetItem {
public:
    using QTreeWidgetItem::QTreeWidgetItem;
    bool operator<(const QTreeWidgetItem& other) const override
    {
        const int c = treeWidget() ? treeWidget()->sortColumn() : 0;
        if (c == TypeColumn)
            return QTreeWidgetItem::operator<(other);
        return data(c, sortRole).toLongLong() < other.data(c, sortRole).toLongLong();
    }
};
} // namespace

AreasPanel::AreasPanel(QWidget* parent) : QWidget(parent)
{
    caption = new QLabel(tr("Where Ctrl+. and Ctrl+, stop: runs of the selected tracks, combined frame "
                            "by frame as the graph shades them (not fused)."),
                         this);
    caption->setWordWrap(true);
    tree = new QTreeWidget(this);
    tree->setObjectName(QStringLiteral("areas"));
    tree->setColumnCount(4);
    tree->setHeaderLabels({tr("Type"), tr("First"), tr("Last"), tr("Frames")});
    tree->setRootIsDecorated(false);
    tree->setUniformRowHeights(true);
    tree->setSortingEnabled(true);
    tree->sortByColumn(FirstColumn, Qt::AscendingOrder);
    tree->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(2, 2, 2, 2);
    layout->addWidget(caption);
    layout->addWidget(tree);
    connect(tree, &QTreeWidget::itemActivated, this, &AreasPanel::activated);
}

void AreasPanel::SetAreas(const Regions& areas, qint64 firstFrame)
{
    tree->setSortingEnabled(false);
    tree->clear();
    QList<QTreeWidgetItem*> items;
    for (const Pair& run : areas) {
        auto* item = new AreaItem();
        const qint64 values[] = {0, firstFrame + run.begin(), firstFrame + run.end(), run.size()};
        item->setText(TypeColumn, runTypeName(run.type));
        item->setToolTip(TypeColumn, QStringLiteral("type 0x%1").arg(run.type, 0, 16));
        for (int c = FirstColumn; c <= LengthColumn; ++c) {
            item->setText(c, QString::number(values[c]));
            item->setData(c, sortRole, values[c]);
            item->setTextAlignment(c, Qt::AlignRight | Qt::AlignVCenter);
        }
        item->setData(TypeColumn, firstRole, qint64(run.begin()));
        item->setData(TypeColumn, lastRole, qint64(run.end()));
        items.append(item);
    }
    tree->addTopLevelItems(items);
    tree->setSortingEnabled(true);
}

void AreasPanel::activated(QTreeWidgetItem* item)
{
    if (item)
        emit AreaActivated(item->data(TypeColumn, firstRole).toLongLong(),
                           item->data(TypeColumn, lastRole).toLongLong());
}
