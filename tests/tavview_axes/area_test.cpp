#include "host/tavview/axisstrip.h"
#include "host/tavview/grapharea.h"
#include "host/tavview/hovertip.h"
#include "host/tavview/legend.h"
#include "host/tavview/viewcamera.h"
#include "tests/tavview/viewer.h"
#include "tests/support/patience.h"

#include <QEventLoop>
#include <QMenu>
#include <QPainter>
#include <QRegularExpression>
#include <QStatusBar>
#include <QTemporaryDir>
#include <QTimer>

namespace {

const TrackSelection markerAndRigid{{1}, {0}};

void invoke(QObject* graph, const char* slot, bool on)
{
    ASSERT_TRUE(QMetaObject::invokeMethod(graph, slot, Qt::DirectConnection, Q_ARG(bool, on)));
}

// The GL window's picture, read back inside its next paint.
QImage glPicture(GLWindow* w)
{
    QImage image;
    QEventLoop loop;
    const auto c = QObject::connect(w, &GLWindow::Paint2D, &loop, [&](GLW* v) {
        if (v != w->views().last())
            return;
        image = w->grabFrameBuffer();
        loop.quit();
    });
    QTimer::singleShot(patienceMs, &loop, &QEventLoop::quit);
    ++w->update;
    loop.exec();
    QObject::disconnect(c);
    return image;
}

// The area as a user sees it: its widgets, with each GL window's own pixels on top.
QImage areaPicture(GraphArea* area)
{
    QImage image = area->grab().toImage();
    QPainter p(&image);
    for (GLWindow* w : area->findChildren<GLWindow*>())
        p.drawImage(w->mapTo(area, QPoint(0, 0)), glPicture(w));
    return image;
}

class Area : public Viewer {
protected:
    GraphArea* area = nullptr;

    void showDefault(const TrackSelection& s = markerAndRigid)
    {
        show(defaultTake(), s);
        area = window->graphArea();
        ASSERT_NE(area, nullptr);
    }
};

TEST_F(Area, RotationsGraphComesAndGoesWithTheToggleAndSharesCursorAndTime)
{
    showDefault();
    QAction* toggle = view->findChild<QAction*>(QStringLiteral("enable_rigid_angles"));
    ASSERT_NE(toggle, nullptr);
    EXPECT_EQ(area->rotations(), nullptr);

    toggle->trigger();
    GraphPanel* rot = area->rotations();
    ASSERT_NE(rot, nullptr);
    ASSERT_TRUE(QTest::qWaitForWindowExposed(rot->window(), patienceMs));
    EXPECT_EQ(rot->trackSelection().rigids, QList<int>{0});
    EXPECT_TRUE(rot->trackSelection().markers.isEmpty());
    EXPECT_EQ(rot->take().units, QStringLiteral("deg"));
    EXPECT_EQ(rot->window()->width(), gl->width());

    panel->SeekFrame(40);
    EXPECT_EQ(rot->current(), 40);
    rot->SeekFrame(12);
    EXPECT_EQ(panel->current(), 12);
    QTRY_COMPARE_WITH_TIMEOUT(rot->view()->viewport.scale.x, view->viewport.scale.x, patienceMs);
    EXPECT_EQ(rot->view()->viewport.pos.x, view->viewport.pos.x);

    toggle->trigger();
    EXPECT_EQ(area->rotations(), nullptr);
    EXPECT_EQ(area->findChildren<GLWindow*>().size(), 1);
    EXPECT_EQ(area->rotationAxis(), nullptr);
}

TEST_F(Area, TimeAxisShowsFramesSecondsOrTimecode)
{
    showDefault();
    const Take& take = panel->take();
    AxisStrip* axis = area->timeAxis();
    QTRY_VERIFY_WITH_TIMEOUT(!axis->Ticks().isEmpty(), patienceMs);
    // The take's own numbering, not the index.
    const Tick first = axis->Ticks().first();
    EXPECT_EQ(first.text.toLongLong(), take.firstFrame + qint64(first.pos));
    EXPECT_EQ(axis->title(), QStringLiteral("frame"));

    window->findChild<QAction*>(QStringLiteral("seconds"))->setChecked(true);
    EXPECT_EQ(axis->timeScale().labels, TimeLabels::Seconds);
    EXPECT_EQ(axis->title(), QStringLiteral("s"));

    invoke(graph, "ToggleDrawTC", true);
    EXPECT_EQ(axis->timeScale().labels, TimeLabels::Timecode);
    const QRegularExpression tc(QStringLiteral("^\\d\\d:\\d\\d:\\d\\d:\\d\\d+$"));
    for (const Tick& t : axis->Ticks())
        EXPECT_TRUE(tc.match(t.text).hasMatch()) << t.text.toStdString();

    invoke(graph, "ToggleDrawTC", false);
    EXPECT_EQ(axis->timeScale().labels, TimeLabels::Seconds);
}

TEST_F(Area, LegendOriginalTracksAndValueRangeFollowTheGraphsProperties)
{
    showDefault();
    EXPECT_FALSE(area->legend()->rgb());
    graph->setProperty("enableRGB", true);
    EXPECT_TRUE(area->legend()->rgb());

    invoke(graph, "ToggleDrawOriginal", true);
    EXPECT_TRUE(window->statusBar()->currentMessage().startsWith(QStringLiteral("Original Tracks")));

    EXPECT_EQ(area->valueAxis()->title(), panel->take().units);
    graph->setProperty("maximumY", 50.f);
    graph->setProperty("minimumY", -20.f);
    window->SelectTracks(TrackSelection());
    const QRectF r = panel->DataRange(1);
    EXPECT_DOUBLE_EQ(r.top(), 50);
    EXPECT_DOUBLE_EQ(r.bottom(), -20);
}

TEST_F(Area, HoverNamesTheDrawnSampleWithinTheHoverDistance)
{
    showDefault(TrackSelection{{1}, {}});
    graph->setProperty("axisMask", 2); // y only
    const TAV::Markers& samples = panel->tracks().at(0).markers;
    int i = 100;
    while (i < samples.size() && samples.at(i).cond <= 0)
        ++i;
    ASSERT_LT(i, samples.size());
    const TAV::Marker& m = samples.at(i);
    const int w = int(view->width()), h = int(view->height());
    // Two frames across the view, so no neighbour is near.
    fitViewportExact(view->viewport, i - 2, i + 2, m.y - 100, m.y + 100, w, h);
    const QPointF at = pixelMap(view->viewport, w, h).toPixel(i, m.y);
    const QPoint widget(int(std::lround(at.x())), h - 1 - int(std::lround(at.y())));

    const QString tip = area->hoverTip()->TextAt(widget);
    EXPECT_TRUE(tip.startsWith(markerLabel(panel->take(), 1) + QStringLiteral(" (marker 1)\ny = "))) << tip.toStdString();
    EXPECT_TRUE(tip.contains(QStringLiteral("frame %1").arg(panel->take().firstFrame + i))) << tip.toStdString();
    const int d = int(graph->property("hoverDistance").toFloat());
    EXPECT_FALSE(area->hoverTip()->TextAt(widget + QPoint(0, d - 1)).isEmpty());
    EXPECT_TRUE(area->hoverTip()->TextAt(widget + QPoint(0, d + 2)).isEmpty());

    // After "t" the graph draws the tracks offset; the tip places samples by the same offsets.
    QTest::mouseMove(gl, widget);
    QTRY_COMPARE_WITH_TIMEOUT(int(view->Cursor().x + 0.5), i, patienceMs);
    const QRectF plain = panel->DataRange(1);
    view->findChild<QAction*>(QStringLiteral("updateoffsets"))->trigger();
    Vector offset;
    ASSERT_TRUE(panel->trackOffsets().markers.find(1, offset));
    EXPECT_FLOAT_EQ(offset.y, m.y);
    ASSERT_NE(panel->DataRange(1), plain);

    // A new take: the graph draws it without the old offsets, and so does the tip.
    window->ShowTake(panel->take(), TrackSelection{{1}, {}});
    EXPECT_EQ(panel->DataRange(1), plain);
    EXPECT_TRUE(panel->trackOffsets().markers.empty());

    view->findChild<QAction*>(QStringLiteral("updateoffsets"))->trigger();
    view->findChild<QAction*>(QStringLiteral("clearoffsets"))->trigger();
    EXPECT_EQ(panel->DataRange(1), plain);
    EXPECT_TRUE(panel->trackOffsets().markers.empty());
}

TEST_F(Area, PreferencesCarryToTheNextWindow)
{
    showDefault();
    window->findChild<QAction*>(QStringLiteral("seconds"))->setChecked(true);
    invoke(graph, "ToggleDrawTC", true);
    invoke(graph, "EnableMarkers", false);
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

// The window's picture, rotations graph included, has labelled axes.
TEST_F(Area, PictureWithAxesLegendAndRotations)
{
    showDefault();
    graph->setProperty("enableRGB", true);
    view->findChild<QAction*>(QStringLiteral("enable_rigid_angles"))->trigger();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(area->rotations()->window(), patienceMs));
    invoke(graph, "ToggleDrawTC", true);
    panel->SeekFrame(150);
    QTest::qWait(100);
    const QImage image = areaPicture(area);
    ASSERT_FALSE(image.isNull());
    // Labels were drawn on the time axis: it is not one flat colour.
    const QRect strip(area->timeAxis()->mapTo(area, QPoint(0, 0)), area->timeAxis()->size());
    const QRgb background = image.pixel(strip.topLeft() + QPoint(1, strip.height() - 2));
    bool ink = false;
    for (int x = strip.left(); x <= strip.right() && !ink; ++x)
        for (int y = strip.top(); y <= strip.bottom() && !ink; ++y)
            ink = image.pixel(x, y) != background;
    EXPECT_TRUE(ink);

    // Each value tick stands on its value's row of the graph.
    AxisStrip* axis = area->valueAxis();
    const QImage values = axis->grab().toImage();
    const PixelMap m = pixelMap(view->viewport, int(view->width()), int(view->height()));
    const int edge = values.width() - 1, h = int(view->height());
    for (const Tick& t : axis->Ticks()) {
        const int y = h - 1 - int(std::lround(m.toPixel(0, t.pos).y()));
        if (y >= 2 && y + 2 < values.height()) {
            EXPECT_NE(values.pixel(edge, y), values.pixel(edge, y - 2)) << t.text.toStdString();
            EXPECT_NE(values.pixel(edge, y), values.pixel(edge, y + 2)) << t.text.toStdString();
        }
    }
}

} // namespace
