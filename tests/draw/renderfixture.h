#pragma once
// A graph painting into a real, shown GL window through the window's Paint2D, and
// the picture read back from the framebuffer right after the graph drew it.
#include "GL/glwindow.h"
#include "modules/tavgraph.h"
#include "tests/support/patience.h"

#include <QGuiApplication>
#include <QImage>
#include <QObject>
#include <QTest>
#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <memory>

// Hands the graph a take as a host does: tracks, selections, frame range.
inline void load(TAVGraph& g, TAV::Frames take, const QList<int>& markers, const QList<int>& rigids, FramesInfo info)
{
    g.SetTracks(&take);
    g.SetTrackSelection(markers, "markers");
    g.SetTrackSelection(rigids, "rigids");
    g.SetFramesInfo(&info);
}

class RealRender : public testing::Test {
protected:
    static constexpr int width = 640, height = 360;
    std::unique_ptr<GLWindow> window;
    GLW view;
    TAVGraph graph;
    std::function<void()> beforeGraph; // what the host does in each paint before the graph draws

    void SetUp() override
    {
        if (QGuiApplication::platformName() == "offscreen")
            GTEST_SKIP() << "needs a display with OpenGL (run under xvfb-run, as ./test.sh does)";
        window = std::make_unique<GLWindow>();
        window->resize(width, height);
        view.rect = QRectF(0, 0, 1, 1); // the whole window
        window->AddView(&view);
        QObject::connect(window.get(), &GLWindow::Paint2D, [this](GLW*) {
            if (beforeGraph)
                beforeGraph();
        });
        QObject::connect(window.get(), &GLWindow::Paint2D, &graph, &TAVGraph::Draw2D);
        // Connected after the graph, so it runs once the graph has drawn, before the swap.
        QObject::connect(window.get(), &GLWindow::Paint2D, [this](GLW*) { picture = readBack(); });
        window->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(window.get(), patienceMs)) << "the window was never shown";
        ASSERT_TRUE(window->isValid()) << "no GL context";
        ASSERT_EQ(window->width(), width);
        ASSERT_EQ(window->height(), height);
    }

    // The picture of one paint. A paint asked for while the window system is still
    // settling can be dropped, so ask again until one has arrived.
    QImage render()
    {
        picture = QImage();
        (void)QTest::qWaitFor(
            [this] {
                if (picture.isNull())
                    window->updateGL();
                return !picture.isNull();
            },
            patienceMs);
        return picture;
    }

    // The pixel whose centre shows data point (x, y), with rows counted from the top.
    QPoint pixelOf(double x, double y) const
    {
        const GL::Viewport& v = view.viewport;
        return QPoint(int(std::lround((x - v.pos.x) * v.scale.x)),
                      height - 1 - int(std::lround((y - v.pos.y) * v.scale.y)));
    }

private:
    QImage picture;

    QImage readBack() const
    {
        QImage image(width, height, QImage::Format_RGBA8888);
        glPixelStorei(GL_PACK_ALIGNMENT, 4);
        glReadPixels(0, 0, width, height, GL_RGBA, GL_UNSIGNED_BYTE, image.bits());
        return image.mirrored(); // GL rows run bottom up
    }
};
