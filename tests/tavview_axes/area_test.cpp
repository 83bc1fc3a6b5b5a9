// What surrounds and marks the graph in tavview's main window: axes, legend,
// hover tips, the rotations graph, filled marks, colours and preferences.
#include "host/tavview/axisstrip.h"
#include "host/tavview/filledmarks.h"
#include "host/tavview/grapharea.h"
#include "host/tavview/hover.h"
#include "host/tavview/hovertip.h"
#include "host/tavview/legend.h"
#include "host/tavview/preferences.h"
#include "modules/core/sampleflags.h"
#include "tests/support/pixels.h"
#include "tests/tavview/viewer.h"

#include <QMenu>
#include <QSettings>
#include <QStatusBar>
#include <QTemporaryDir>

namespace {

const TrackSelection markerAndRigid{{1}, {0}};

// Shown with rigid body 0, the rotations graph comes with the toggle and
// shares cursor and time with the main graph. A take without rigid bodies has
// none, and the switch is kept for the next take.
TEST_F(Viewer, RotationsGraphComesWithTheToggleAndSharesCursorAndTime)
{
    show(defaultTake(), markerAndRigid);
    GraphArea* area = window->graphArea();
    QAction* toggle = viewAction("enable_rigid_angles");
    EXPECT_EQ(area->rotations(), nullptr);
    toggle->trigger();
    GraphPanel* rot = area->rotations();
    ASSERT_NE(rot, nullptr);
    ASSERT_TRUE(QTest::qWaitForWindowExposed(rot->window(), patienceMs));
    EXPECT_EQ(rot->trackSelection().rigids, QList<int>{0});
    EXPECT_EQ(rot->take().units, QStringLiteral("deg"));

    panel->SeekFrame(40);
    EXPECT_EQ(rot->current(), 40);
    rot->SeekFrame(12);
    EXPECT_EQ(panel->current(), 12);
    QTRY_COMPARE_WITH_TIMEOUT(rot->view()->viewport.scale.x, view->viewport.scale.x, patienceMs);
    EXPECT_EQ(rot->view()->viewport.pos.x, view->viewport.pos.x);

    Take still = defaultTake();
    for (TAV::Frame& f : still.frames)
        f.rigids.clear();
    window->ShowTake(still, markerOne);
    EXPECT_EQ(area->rotations(), nullptr);
    EXPECT_FALSE(toggle->isEnabled());
    window->ShowTake(defaultTake(), markerAndRigid);
    ASSERT_NE(area->rotations(), nullptr);
    toggle->trigger();
    EXPECT_EQ(area->rotations(), nullptr);
    EXPECT_EQ(area->findChildren<GLWindow*>().size(), 1);
}

// The legend, the View menu and the status bar follow the graph's properties; with
// no sample to fit, the values span the graph's minimum to maximum.
TEST_F(Viewer, LegendViewMenuAndValueRangeFollowTheGraphsProperties)
{
    show();
    windowAction("rgb")->trigger();
    EXPECT_TRUE(window->graphArea()->legend()->rgb());
    EXPECT_GT(strongRedPixels(picture()), 100);
    windowAction("axis_x")->trigger(); // shown, so hidden now
    EXPECT_EQ(strongRedPixels(picture()), 0);
    toggle("ToggleDrawOriginal", true);
    EXPECT_TRUE(window->statusBar()->currentMessage().startsWith(QStringLiteral("Original Tracks")));
    graph->setProperty("maximumY", 50.f);
    graph->setProperty("minimumY", -20.f);
    window->SelectTracks(TrackSelection());
    const QRectF r = panel->DataRange(1);
    EXPECT_DOUBLE_EQ(r.top(), 50);
    EXPECT_DOUBLE_EQ(r.bottom(), -20);
}

// Filled samples are shaded fair by the graph; a strip of their own colour along
// the bottom tells them from a fair stretch. Marker 3 is filled at 150..179.
TEST_F(Viewer, FilledStretchesAreMarkedInTheirOwnColour)
{
    show(defaultTake(), {{3}, {}});
    ASSERT_TRUE(isFilled(panel->tracks().first().markers.at(165)));
    panel->ShowFrames(0, panel->take().frameCount() - 1);
    const QImage image = picture();
    const QColor teal = QColor::fromRgbF(filledMarkColour[0], filledMarkColour[1], filledMarkColour[2]);
    const int bottom = image.height() - 2;
    EXPECT_EQ(image.pixelColor(pixelAt(165).x(), bottom), teal);
    EXPECT_NE(image.pixelColor(pixelAt(250).x(), bottom), teal);
    EXPECT_NE(image.pixelColor(pixelAt(165).x(), bottom - filledMarkHeight - 2), teal) << "a strip, not a band";
}

TEST_F(Viewer, HoverNamesTheDrawnSampleWithinTheHoverDistance)
{
    show();
    HoverTip* tip = window->graphArea()->hoverTip();
    graph->setProperty("axisMask", 2); // y only
    const int i = 150;
    const TAV::Marker m = panel->tracks().at(0).markers.at(i);
    ASSERT_GT(m.cond, 0);
    const int w = int(view->width()), h = int(view->height());
    // Two frames across the view, so no neighbour is near.
    fitViewportExact(view->viewport, i - 2, i + 2, m.y - 100, m.y + 100, w, h);
    const QPointF at = pixelMap(view->viewport, w, h).toPixel(i, m.y);
    const QPoint widget(int(std::lround(at.x())), h - 1 - int(std::lround(at.y())));
    const QString text = tip->TextAt(widget);
    EXPECT_TRUE(text.startsWith(markerLabel(panel->take(), 1) + QStringLiteral(" (marker 1)\ny = "))) << text.toStdString();
    EXPECT_TRUE(text.contains(QStringLiteral("frame %1").arg(panel->take().firstFrame + i))) << text.toStdString();
    EXPECT_TRUE(tip->TextAt(widget + QPoint(0, int(graph->property("hoverDistance").toFloat()) + 2)).isEmpty());

    // "updateoffsets" takes the samples under the mouse as the offsets the graph
    // draws by; a new take and "clearoffsets" drop them.
    QTest::mouseMove(gl, widget);
    QTRY_COMPARE_WITH_TIMEOUT(int(view->Cursor().x + 0.5), i, patienceMs);
    const QRectF plain = panel->DataRange(1);
    viewAction("updateoffsets")->trigger();
    Vector offset;
    ASSERT_TRUE(panel->trackOffsets().markers.find(1, offset));
    EXPECT_FLOAT_EQ(offset.y, m.y);
    ASSERT_NE(panel->DataRange(1), plain);
    window->ShowTake(panel->take(), markerOne);
    EXPECT_TRUE(panel->trackOffsets().markers.empty());
    viewAction("updateoffsets")->trigger();
    viewAction("clearoffsets")->trigger();
    EXPECT_EQ(panel->DataRange(1), plain);
    EXPECT_TRUE(panel->trackOffsets().markers.empty());
}

// Each value tick is drawn on its value's row of the graph; the time axis labels
// frames in the take's own numbering, seconds or timecode; the choice and the
// other preferences carry to the next window.
TEST_F(Viewer, AxesLabelsAndPreferencesCarryToTheNextWindow)
{
    show();
    AxisStrip* values = window->graphArea()->valueAxis();
    QTRY_VERIFY_WITH_TIMEOUT(!values->Ticks().isEmpty(), patienceMs);
    const QImage strip = values->grab().toImage();
    const PixelMap m = pixelMap(view->viewport, int(view->width()), int(view->height()));
    const int edge = strip.width() - 1, h = int(view->height());
    int checked = 0;
    for (const Tick& t : values->Ticks()) {
        const int y = h - 1 - int(std::lround(m.toPixel(0, t.pos).y()));
        if (y >= 2 && y + 2 < strip.height()) {
            EXPECT_NE(strip.pixel(edge, y), strip.pixel(edge, y + 2)) << t.text.toStdString();
            ++checked;
        }
    }
    EXPECT_GT(checked, 1);

    AxisStrip* axis = window->graphArea()->timeAxis();
    QTRY_VERIFY_WITH_TIMEOUT(!axis->Ticks().isEmpty(), patienceMs);
    const Tick first = axis->Ticks().first();
    EXPECT_EQ(first.text.toLongLong(), panel->take().firstFrame + qint64(first.pos));
    EXPECT_EQ(axis->title(), QStringLiteral("frame"));
    windowAction("seconds")->setChecked(true);
    EXPECT_EQ(axis->timeScale().labels, TimeLabels::Seconds);
    EXPECT_EQ(axis->title(), QStringLiteral("s"));
    toggle("ToggleDrawTC", true);
    EXPECT_EQ(axis->timeScale().labels, TimeLabels::Timecode);
    toggle("ToggleDrawTC", false);
    EXPECT_EQ(axis->timeScale().labels, TimeLabels::Seconds);
    toggle("ToggleDrawTC", true);
    toggle("EnableMarkers", false);
    window->RememberFile(QStringLiteral("/takes/walk.c3d"));
    QTemporaryDir dir;
    const QString ini = dir.filePath(QStringLiteral("tavview.ini"));
    {
        QSettings s(ini, QSettings::IniFormat);
        writePreferences(s, window->CurrentPreferences());
    }
    window.reset();

    MainWindow next(registry);
    QSettings s(ini, QSettings::IniFormat);
    next.ApplyPreferences(readPreferences(s));
    QObject* g = next.panel()->graph();
    EXPECT_EQ(g->property("drawTC"), QVariant(true)); // a bool again, not the file's text
    EXPECT_EQ(g->property("enableMarkers"), QVariant(false));
    EXPECT_EQ(g->property("axisMask"), QVariant(7));
    EXPECT_TRUE(next.graphArea()->secondsAxis());
    EXPECT_EQ(next.graphArea()->timeAxis()->timeScale().labels, TimeLabels::Frames); // no take yet
    EXPECT_EQ(next.recentFiles(), QStringList{QStringLiteral("/takes/walk.c3d")});
    EXPECT_EQ(next.findChild<QMenu*>(QStringLiteral("recent"))->actions().size(), 1);
}

} // namespace
