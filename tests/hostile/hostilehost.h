#pragma once
// A host that meets the graph only as a plug-in (see tests/plugin/pluginhost.h) and
// owns a real GL window with one view, so paints, actions and menus are real.
#include "GL/glwindow.h"
#include "tests/plugin/pluginhost.h"
#include "tests/support/patience.h"

#include <QMenu>
#include <QSignalSpy>
#include <QTest>

#include <initializer_list>
#include <memory>

class HostileHost : public testing::Test, public PluginHost {
public:
    HostileHost()
    {
        window->resize(400, 300);
        window->show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(window.get(), patienceMs));
        start();
    }
    ~HostileHost() override { delete view.data(); }

    // Loads the module, makes the graph and connects it to a view of its own.
    void start()
    {
        load();
        newView();
    }
    void newView()
    {
        delete view.data();
        view = new GLW();
        view->rect = QRectF(0, 0, 1, 1);
        window->AddView(view);
        QObject::connect(window.get(), SIGNAL(Paint2D(GLW*)), graph, SLOT(Draw2D(GLW*)), Qt::UniqueConnection);
        call("Connected", Q_ARG(GLW*, view.data()));
    }
    void frames(FramesInfo info) { call("SetFramesInfo", Q_ARG(FramesInfo*, &info)); }
    void tracks(TAV::Frames* store) { call("SetTracks", Q_ARG(TAV::Frames*, store)); }
    void select(const QList<int>& ids, const char* kind = "markers")
    {
        call("SetTrackSelection", Q_ARG(QList<int>, ids), Q_ARG(QString, QString::fromLatin1(kind)));
    }
    // Each frame range in turn, painted and navigated.
    void sweep(std::initializer_list<FramesInfo> infos)
    {
        for (const FramesInfo& info : infos) {
            frames(info);
            paint();
            navigate();
        }
    }
    // The usual hand-over: frame range, store, selected marker tracks.
    void feed(FramesInfo info, TAV::Frames* store, const QList<int>& ids)
    {
        frames(info);
        tracks(store);
        select(ids);
    }
    // A real paint of the window, fast and exact; the number of views painted.
    int paint()
    {
        QSignalSpy painted(window.get(), SIGNAL(Paint2D(GLW*)));
        for (bool fast : {false, true}) {
            if (graph)
                graph->setProperty("fastDraw", fast);
            window->updateGL();
        }
        return painted.count();
    }
    // Everything a user reaches by keys, mouse and menu.
    void navigate()
    {
        for (const char* slot : {"NextAOI", "PrevAOI", "SelectRegion", "ExpandSelect", "ContractSelect",
                                 "UpdateTrackOffsets", "ClearTrackOffsets", "DataChange", "Redraw"})
            call(slot);
        QRectF fit;
        for (int mode : {0, 1, 2})
            call("Range2D", Q_ARG(QRectF*, &fit), Q_ARG(int, mode));
        call("Selected", Q_ARG(QRectF, QRectF(2, 0, 5, 0)));
    }
    // The context menu the window builds for the view, as entry names.
    QString menu()
    {
        QMenu menu;
        if (view)
            window->FillContextMenu(&menu, view, graph);
        QStringList names;
        for (const QAction* a : menu.actions())
            names << (a->isSeparator() ? "|" : a->menu() ? a->menu()->title() : a->objectName());
        return names.join(' ');
    }

    std::unique_ptr<GLWindow> window = std::make_unique<GLWindow>();
    QPointer<GLW> view;
};

// n marker tracks with ids 1.., each of length frames; sample i at time i, every
// eleventh one invalid.
inline TAV::Frames markerTracks(int n, int frames)
{
    TAV::Frames store;
    for (int id = 1; id <= n; ++id) {
        TAV::Frame track;
        track.id = uint32_t(id);
        for (int i = 0; i < frames; ++i)
            track.markers.append({uint32_t(id), 0, i, float(i), float(id * 10 + i % 7), float(-i), i % 11 ? 1.0f : 0});
        store.append(track);
    }
    return store;
}
