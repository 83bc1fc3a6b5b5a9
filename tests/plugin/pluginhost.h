#pragma once
// The module as a host meets it: a library file, one C entry, a factory received
// through "Register", and an object reached only through its meta-object. The host
// owns a real GL window with one view, so paints, actions and menus are real.
#include "GL/glwindow.h"
#include "Qt/menutree.h"
#include "tav/tavframes.h"
#include "tests/menutree/menutext.h"
#include "tests/support/patience.h"
#include "utils/framesinfo.h"

#include <gtest/gtest.h>

#include <QLibrary>
#include <QMenu>
#include <QPointer>
#include <QSignalSpy>
#include <QTest>

#include <initializer_list>
#include <memory>
#include <string>

// The host's side of the handshake.
class Registrar : public QObject {
    Q_OBJECT
public:
    std::string calls; // "kind class;" per call
    void* factory = nullptr;

public slots:
    void Register(const char* kind, const char* className, void* f)
    {
        calls += std::string(kind) + " " + className + ";";
        factory = f;
    }
};

class PluginHost : public testing::Test {
public:
    typedef int (*InitFn)(QObject*);
    typedef QObject* (*FactoryFn)(QObject*, const char*);

    PluginHost()
    {
        window->resize(400, 300);
        window->show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(window.get(), patienceMs));
        start();
    }
    ~PluginHost() override
    {
        delete view.data();
        delete graph.data();
    }

    // Loads the library (left loaded: the process keeps meta-types that point into
    // it), makes "graph" through the factory that init registers and connects it to
    // a view of its own.
    void start()
    {
        library.setFileName(TAVGRAPH_PLUGIN);
        ASSERT_TRUE(library.load()) << library.errorString().toStdString();
        init = reinterpret_cast<InitFn>(library.resolve("init"));
        ASSERT_NE(init, nullptr);
        graph = create(nullptr, "graph");
        newView();
    }
    QObject* create(QObject* parent, const char* name)
    {
        Registrar registrar;
        init(&registrar);
        return reinterpret_cast<FactoryFn>(registrar.factory)(parent, name);
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
    // The context menu the window builds for the view.
    std::string menu()
    {
        QMenu menu;
        if (view)
            window->FillContextMenu(&menu, view, graph);
        return menuText(&menu);
    }

    std::unique_ptr<GLWindow> window = std::make_unique<GLWindow>();
    QPointer<GLW> view;
    QLibrary library;
    InitFn init = nullptr;
    QPointer<QObject> graph;
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
