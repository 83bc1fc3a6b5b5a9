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
const int firstRole = Qt::UserRole, lastRole = Qt::UserRole + 1;

// A row that keeps its run and answers for its cells when asked: a long take has
// hundreds of thousands of stretches, and items holding a variant per cell and
// role, compared through variants, make filling and sorting the list take seconds.
class AreaItem : public QTreeWidgetItem {
public:
    AreaItem(const TrackArea& row, qint64 firstFrame)
        : row(row), numbers{0, 0, qint64(row.last) - row.first + 1, firstFrame + row.first, firstFrame + row.last}
    {
    }

    QVariant data(int column, int role) const override
    {
        if (role == firstRole)
            return qint64(row.first);
        if (role == lastRole)
            return qint64(row.last);
        const bool number = column >= LengthColumn && column <= LastColumn;
        if (role == Qt::DisplayRole)
            return column == TrackColumn  ? QVariant(row.track)
                   : column == TypeColumn ? QVariant(runTypeName(row.type))
                   : number               ? QVariant(QString::number(numbers[column]))
                                          : QVariant();
        if (role == Qt::TextAlignmentRole && number)
            return int(Qt::AlignRight | Qt::AlignVCenter);
        if (role == Qt::ToolTipRole && column == TypeColumn)
            return QStringLiteral("type 0x%1").arg(row.type, 0, 16);
        return QTreeWidgetItem::data(column, role);
    }

    // Numbers sort as numbers.
    bool operator<(const QTreeWidgetItem& other) const override
    {
        const int c = treeWidget() ? treeWidget()->sortColumn() : 0;
        const auto& o = static_cast<const AreaItem&>(other);
        if (c == TrackColumn)
            return row.track < o.row.track;
        if (c == TypeColumn)
            return runTypeName(row.type) < runTypeName(o.row.type);
        return numbers[c] < o.numbers[c];
    }

private:
    TrackArea row;
    qint64 numbers[5];
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
    items.reserve(rows.size());
    for (const TrackArea& row : rows)
        items.append(new AreaItem(row, firstFrame));
    tree->addTopLevelItems(items);
    tree->setSortingEnabled(true);
}

void AreasPanel::activated(QTreeWidgetItem* item)
{
    if (item)
        emit AreaActivated(item->data(TypeColumn, firstRole).toLongLong(),
                           item->data(TypeColumn, lastRole).toLongLong());
}
