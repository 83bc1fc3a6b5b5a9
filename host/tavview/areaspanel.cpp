#include "host/tavview/areaspanel.h"

#include <QCheckBox>
#include <QHeaderView>
#include <QLabel>
#include <QMenu>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace {
// The length comes early, so it shows in a narrow dock without scrolling.
enum Column { TrackColumn, TypeColumn, LengthColumn, FirstColumn, LastColumn };
// Where an item keeps its run's frame indices.
const int firstRole = Qt::UserRole, lastRole = Qt::UserRole + 1, sortRole = Qt::UserRole + 2;

// Numbers sort as numbers.
class AreaItem : public QTreeWidgetItem {
public:
    using QTreeWidgetItem::QTreeWidgetItem;
    bool operator<(const QTreeWidgetItem& other) const override
    {
        const int c = treeWidget() ? treeWidget()->sortColumn() : 0;
        if (c == TrackColumn || c == TypeColumn)
            return QTreeWidgetItem::operator<(other);
        return data(c, sortRole).toLongLong() < other.data(c, sortRole).toLongLong();
    }
};
} // namespace

AreasPanel::AreasPanel(QWidget* parent) : QWidget(parent)
{
    caption = new QLabel(tr("By track: each track's own gaps, poor, fair and filled stretches. Merged: where "
                            "Ctrl+. and Ctrl+, stop, the selected tracks combined frame by frame as the graph "
                            "shades them."),
                         this);
    caption->setWordWrap(true);
    byTrackBox = new QCheckBox(tr("By track"), this);
    byTrackBox->setObjectName(QStringLiteral("byTrack"));
    byTrackBox->setChecked(true);
    connect(byTrackBox, &QCheckBox::toggled, this, &AreasPanel::fill);
    tree = new QTreeWidget(this);
    tree->setObjectName(QStringLiteral("areas"));
    tree->setColumnCount(5);
    tree->setHeaderLabels({tr("Track"), tr("Type"), tr("Frames"), tr("First"), tr("Last")});
    tree->setRootIsDecorated(false);
    tree->setUniformRowHeights(true);
    tree->setSortingEnabled(true);
    tree->sortByColumn(FirstColumn, Qt::AscendingOrder);
    tree->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(2, 2, 2, 2);
    layout->addWidget(caption);
    layout->addWidget(byTrackBox);
    layout->addWidget(tree);
    connect(tree, &QTreeWidget::itemActivated, this, &AreasPanel::activated);
    tree->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(tree, &QTreeWidget::customContextMenuRequested, this, &AreasPanel::rowMenu);
}

void AreasPanel::rowMenu(const QPoint& pos)
{
    QTreeWidgetItem* item = tree->itemAt(pos);
    if (!item)
        return;
    const qint64 first = item->data(TypeColumn, firstRole).toLongLong();
    const qint64 last = item->data(TypeColumn, lastRole).toLongLong();
    QMenu menu(this);
    menu.addAction(tr("Jump"), this, [=] { emit AreaActivated(first, last); });
    menu.addAction(tr("Delete"), this, [=] { emit DeleteRequested(first, last); });
    menu.addAction(tr("Fill"), this, [=] { emit FillRequested(first, last); });
    menu.addAction(tr("Delete and Fill"), this, [=] { emit DeleteAndFillRequested(first, last); });
    menu.exec(tree->viewport()->mapToGlobal(pos));
}

void AreasPanel::SetAreas(const Regions& merged, const QVector<TrackArea>& byTrack, qint64 first)
{
    mergedAreas = merged;
    trackAreaList = byTrack;
    firstFrame = first;
    fill();
}

void AreasPanel::fill()
{
    QVector<TrackArea> rows = trackAreaList;
    if (!byTrackBox->isChecked()) {
        rows.clear();
        for (const Pair& run : mergedAreas)
            rows.append({tr("all"), run.type, run.begin(), run.end()});
    }
    tree->setSortingEnabled(false);
    tree->clear();
    QList<QTreeWidgetItem*> items;
    for (const TrackArea& row : rows) {
        auto* item = new AreaItem();
        const qint64 values[] = {0, 0, qint64(row.last) - row.first + 1, firstFrame + row.first, firstFrame + row.last};
        item->setText(TrackColumn, row.track);
        item->setText(TypeColumn, runTypeName(row.type));
        item->setToolTip(TypeColumn, QStringLiteral("type 0x%1").arg(row.type, 0, 16));
        for (int c = LengthColumn; c <= LastColumn; ++c) {
            item->setText(c, QString::number(values[c]));
            item->setData(c, sortRole, values[c]);
            item->setTextAlignment(c, Qt::AlignRight | Qt::AlignVCenter);
        }
        item->setData(TypeColumn, firstRole, qint64(row.first));
        item->setData(TypeColumn, lastRole, qint64(row.last));
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
