#pragma once
// tavview's main window, shown, with the graph module loaded from tavgraph.so
// through its Register handshake, exactly as the application does it.
#include "host/tavview/graphpanel.h"
#include "host/tavview/mainwindow.h"
#include "host/tavview/moduleregistry.h"
#include "host/tavview/trackselection.h"
#include "host/tavview/viewcamera.h"
#include "support/data.h"
#include "tests/support/patience.h"

#include <QAction>
#include <QGuiApplication>
#include <QLabel>
#include <QTest>
#include <gtest/gtest.h>

#include <cmath>
#include <memory>

const TrackSelection markerOne{{1}, {}};

class Viewer : public testing::Test {
protected:
    ModuleRegistry registry;
    std::unique_ptr<MainWindow> window;
    GraphPanel* panel = nullptr;
    GLWindow* gl = nullptr;
    GLW* view = nullptr;
    QObject* graph = nullptr;

    void SetUp() override
    {
        if (QGuiApplication::platformName() == QLatin1String("offscreen"))
            GTEST_SKIP() << "needs a display with OpenGL (run under xvfb-run -a, as test.sh does)";
        QString error;
        ASSERT_TRUE(registry.Load(QStringLiteral(TAVGRAPH_MODULE), error)) << error.toStdString();
        window = std::make_unique<MainWindow>(registry);
        panel = window->panel();
        gl = panel->window();
        view = panel->view();
    }

    void show(const Take& take = defaultTake(), const TrackSelection& selection = markerOne)
    {
        window->ShowTake(take, selection);
        window->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(window.get(), patienceMs));
        window->activateWindow();
        gl->setFocus();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window.get(), patienceMs));
        graph = window->findChild<QObject*>(QStringLiteral("graph"));
        ASSERT_NE(graph, nullptr);
    }

    // Shows the named tracks of the take.
    void select(const QStringList& tracks)
    {
        QString error;
        TrackSelection chosen;
        ASSERT_TRUE(resolveSelection(tracks, panel->take(), chosen, error)) << error.toStdString();
        window->SelectTracks(chosen);
    }

    void toggle(const char* slot, bool on)
    {
        ASSERT_TRUE(QMetaObject::invokeMethod(graph, slot, Qt::DirectConnection, Q_ARG(bool, on)));
    }
    QAction* viewAction(const char* name) const { return view->findChild<QAction*>(QLatin1String(name)); }
    QAction* windowAction(const char* name) const { return window->findChild<QAction*>(QLatin1String(name)); }

    // Shows frame indices first..last edge to edge.
    void zoomTo(double first, double last)
    {
        fitViewportExact(view->viewport, first, last, -1000, 1000, int(view->width()), int(view->height()));
    }
    bool inView(double x) const
    {
        const int w = int(view->width());
        return view->viewport.Left(w) <= x && x <= view->viewport.Right(w);
    }

    // The GL window's widget pixel (y down) that shows graph x at mid height.
    QPoint pixelAt(double x) const
    {
        const int w = int(view->width()), h = int(view->height());
        const Vector left = view->viewport.Cursor(0, 0, w, h);
        const Vector right = view->viewport.Cursor(float(w - 1), 0, w, h);
        const double px = (x - left.x) / (right.x - left.x) * (w - 1);
        return QPoint(int(std::lround(px)), h / 2);
    }
    // Graph x under a widget pixel, as the view maps the mouse.
    double xAt(const QPoint& p) const { return view->Cursor(float(p.x()), float(gl->height() - 1 - p.y())).x; }
    QImage picture()
    {
        gl->updateGL();
        return gl->grabFrameBuffer();
    }
};
