#pragma once
// A host that meets the graph only as a plug-in: the library by file name, init,
// the factory received through "Register", and slots called by name. It owns a
// real GL window with one view, so paints, actions and menus are real.
#include "GL/glw.h"
#include "GL/glwindow.h"
#include "Qt/menutree.h"
#include "tav/tavframes.h"
#include "utils/framesinfo.h"
#include "tests/support/patience.h"

#include <gtest/gtest.h>

#include <QLibrary>
#include <QMenu>
#include <QPointer>
#include <QSignalSpy>
#include <QTest>

#include <memory>

class Registrar : public QObject {
    Q_OBJECT
public:
    void* factory = nullptr;
public slots:
    void Register(const char*, const char*, void* f) { factory = f; }
};

class HostileHost : public testing::Test {
public:
    typedef int (*InitFn)(QObject*);
    typedef QObject* (*FactoryFn)(QObject*, const char*);

    HostileHost()
    {
        window->resize(400, 300);
        view->rect = QRectF(0, 0, 1, 1);
        view->setProperty("visible", true);
        window->AddView(view);
        window->show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(window.get(), patienceMs));
        load();
    }
    ~HostileHost() override
    {
        delete graph.data();
        delete view.data();
    }

    void load()
    {
        library.setFileName(TAVGRAPH_PLUGIN);
        ASSERT_TRUE(library.load()) << library.errorString().toStdString();
        const auto init = reinterpret_cast<InitFn>(library.resolve("init"));
        ASSERT_NE(init, nullptr);
        Registrar registrar;
        init(&registrar);
        ASSERT_NE(registrar.factory, nullptr);
        graph = reinterpret_cast<FactoryFn>(registrar.factory)(nullptr, "graph");
        QObject::connect(window.get(), SIGNAL(Paint2D(GLW*)), graph, SLOT(Draw2D(GLW*)));
        connected();
    }
    void connected() { call("Connected", Q_ARG(GLW*, view.data())); }

    // A slot by name, as a host calls it; false when the graph has no such slot.
    template <class... Args>
    bool call(const char* slot, Args... args)
    {
        return graph && QMetaObject::invokeMethod(graph, slot, Qt::DirectConnection, args...);
    }
    void frames(FramesInfo info) { call("SetFramesInfo", Q_ARG(FramesInfo*, &info)); }
    void tracks(TAV::Frames* store) { call("SetTracks", Q_ARG(TAV::Frames*, store)); }
    void select(const QList<int>& ids, const char* kind = "markers")
    {
        call("SetTrackSelection", Q_ARG(QList<int>, ids), Q_ARG(QString, QString::fromLatin1(kind)));
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
    int buildMenu()
    {
        MenuTree tree;
        call("InitContextMenuTree", Q_ARG(GLW*, view.data()), Q_ARG(MenuTree*, &tree));
        QMenu menu;
        return tree.Build(&menu);
    }

    QLibrary library;
    std::unique_ptr<GLWindow> window = std::make_unique<GLWindow>();
    QPointer<GLW> view = new GLW();
    QPointer<QObject> graph;
};

// n marker tracks with ids 1.., each of length frames; sample i at time i.
inline TAV::Frames markerTracks(int n, int frames, float cond = 1.0f)
{
    TAV::Frames store;
    for (int id = 1; id <= n; ++id) {
        TAV::Frame track;
        track.id = uint32_t(id);
        for (int i = 0; i < frames; ++i)
            track.markers.append({uint32_t(id), 0, i, float(i), float(id * 10 + i % 7), float(-i), i % 11 ? cond : 0.0f});
        store.append(track);
    }
    return store;
}
