// The module as a host meets it: a library file, one C entry, a factory received
// through "Register", and an object reached only through its meta-object.
#include "GL/glw.h"
#include "GL/glwindow.h"
#include "Qt/menutree.h"
#include "tav/tavframes.h"
#include "utils/framesinfo.h"

#include <gtest/gtest.h>

#include <QFileInfo>
#include <QLibrary>
#include <QMenu>
#include <QMetaMethod>
#include <QSignalSpy>

#include <memory>
#include <string>
#include <vector>

namespace {

typedef int (*InitFn)(QObject*);
typedef QObject* (*FactoryFn)(QObject*, const char*);

// The host's side of the handshake.
class Registry : public QObject {
    Q_OBJECT
public:
    struct Call {
        std::string kind, className;
        void* factory;
    };
    std::vector<Call> calls;

public slots:
    void Register(const char* kind, const char* className, void* factory)
    {
        calls.push_back({kind, className, factory});
    }
};

class Plugin : public testing::Test {
protected:
    Plugin()
    {
        // Never unloaded: the process keeps meta-types that point into the library.
        library.setFileName(TAVGRAPH_PLUGIN);
        EXPECT_TRUE(library.load()) << library.errorString().toStdString();
        init = reinterpret_cast<InitFn>(library.resolve("init"));
    }
    // A graph made the way the host makes one: through the registered factory.
    QObject* create(QObject* parent, const char* name)
    {
        Registry registry;
        init(&registry);
        return reinterpret_cast<FactoryFn>(registry.calls.at(0).factory)(parent, name);
    }

    QLibrary library;
    InitFn init = nullptr;
};

TEST_F(Plugin, IsTavgraphSoExportingInit)
{
    EXPECT_EQ(QFileInfo(TAVGRAPH_PLUGIN).fileName(), "tavgraph.so");
    ASSERT_NE(init, nullptr);
}

TEST_F(Plugin, InitRegistersTheFactoryAndAlwaysReturnsOne)
{
    Registry registry;
    EXPECT_EQ(init(&registry), 1);
    EXPECT_EQ(init(&registry), 1);
    ASSERT_EQ(registry.calls.size(), 2u);
    EXPECT_EQ(registry.calls[0].kind, "qobject");
    EXPECT_EQ(registry.calls[0].className, "TAVGraph");
    EXPECT_NE(registry.calls[0].factory, nullptr);
    EXPECT_EQ(registry.calls[1].factory, registry.calls[0].factory);

    EXPECT_EQ(init(nullptr), 1);
    QObject withoutRegister;
    EXPECT_EQ(init(&withoutRegister), 1);
}

TEST_F(Plugin, FactoryParentsAndNamesTheGraph)
{
    QObject parent;
    QObject* unnamed = create(&parent, nullptr);
    QObject* named = create(&parent, "g1");
    EXPECT_EQ(unnamed->parent(), &parent);
    EXPECT_TRUE(unnamed->objectName().isEmpty());
    EXPECT_EQ(named->objectName(), "g1");
    EXPECT_STREQ(named->metaObject()->className(), "TAVGraph");
    EXPECT_STREQ(named->metaObject()->superClass()->className(), "QObject");
    EXPECT_EQ(named->qt_metacast("TAVGraph"), named);
    EXPECT_EQ(named->qt_metacast(nullptr), nullptr);
}

struct MethodRow {
    int index;
    QMetaMethod::MethodType type;
    const char* signature;
    const char* parameterNames; // comma separated
};

const QMetaMethod::MethodType S = QMetaMethod::Signal, L = QMetaMethod::Slot;

// As the meta-object stores them: moc records the 64-bit frame numbers as qlonglong.
const MethodRow methods[] = {
    {0, S, "SelectionChanged(qlonglong,qlonglong)", ","},
    {1, S, "RegionChanged(qlonglong,qlonglong)", ","},
    {2, S, "SelectType(int)", ""},
    {3, S, "Seek(qlonglong,int)", ","},
    {4, S, "Select(QRectF)", ""},
    {5, S, "ClearSelect(GLW*,bool)", "glw,state"},
    {6, S, "UpdateSelect(qlonglong,qlonglong)", ","},
    {7, S, "Delete()", ""},
    {8, S, "Revert()", ""},
    {9, S, "EnableOriginal(bool)", ""},
    {10, S, "ApplyTool()", ""},
    {11, L, "SetFramesInfo(FramesInfo*)", "info"},
    {12, L, "SetTracks(TAV::Frames*)", "f"},
    {13, L, "SetTrackSelection(QList<int>,QString)", "selected,name"},
    {14, L, "Connected(GLW*)", "glw"},
    {15, L, "Init()", ""},
    {16, L, "Pick2D(GLW*)", "glw"},
    {17, L, "Draw2D(GLW*)", "glw"},
    {18, L, "Range2D(QRectF*,int)", "rect,mode"},
    {19, L, "InitContextMenuTree(GLW*,MenuTree*)", "glw,mt"},
    {20, L, "ModifyRegion(bool)", "state"},
    {21, L, "DataChange()", ""},
    {22, L, "ClearTrackOffsets()", ""},
    {23, L, "UpdateTrackOffsets()", ""},
    {24, L, "Selected(QRectF)", "r"},
    {25, L, "MoveCursor(Mouse*,bool)", "mouse,state"},
    {26, L, "GLWUpdate(FramesInfo*)", "s"},
    {27, L, "Redraw(bool)", "flag"},
    {28, L, "Redraw()", ""},
    {29, L, "NextAOI()", ""},
    {30, L, "PrevAOI()", ""},
    {31, L, "ToggleDrawOriginal(bool)", "b"},
    {32, L, "ToggleDrawTC(bool)", "b"},
    {33, L, "EnableMarkers(bool)", "b"},
    {34, L, "EnableRigids(bool)", "b"},
    {35, L, "ToggleDrawAngles(bool)", "b"},
    {36, L, "SelectRegion()", ""},
    {37, L, "ExpandSelect()", ""},
    {38, L, "ContractSelect()", ""},
};

TEST_F(Plugin, MetaObjectHasTheThirtyNineMethodsInOrder)
{
    std::unique_ptr<QObject> graph(create(nullptr, nullptr));
    const QMetaObject* meta = graph->metaObject();
    const int offset = meta->methodOffset();
    ASSERT_EQ(meta->methodCount() - offset, 39);
    EXPECT_EQ(meta->propertyCount(), meta->propertyOffset());
    EXPECT_EQ(meta->enumeratorCount(), meta->enumeratorOffset());
    EXPECT_EQ(meta->classInfoCount(), meta->classInfoOffset());
    for (const MethodRow& row : methods) {
        SCOPED_TRACE(row.signature);
        const QMetaMethod m = meta->method(offset + row.index);
        EXPECT_EQ(m.methodSignature().toStdString(), row.signature);
        EXPECT_EQ(m.methodType(), row.type);
        EXPECT_EQ(m.access(), QMetaMethod::Public);
        EXPECT_STREQ(m.typeName(), row.index == 25 ? "int" : "void");
        EXPECT_EQ(m.parameterNames().join(',').toStdString(), row.parameterNames);
        EXPECT_EQ(meta->indexOfMethod(row.signature), offset + row.index);
    }
    EXPECT_EQ(meta->method(offset + 28).attributes(), int(QMetaMethod::Cloned));
}

struct ArgumentRow {
    int method, argument;
    const char* registeredAs; // null: not registered
};

void PrintTo(const ArgumentRow& row, std::ostream* os) { *os << row.method << "_" << row.argument; }

class PluginArguments : public Plugin, public testing::WithParamInterface<ArgumentRow> {};

TEST_P(PluginArguments, RegisterAsMetaTypesForQueuedCalls)
{
    std::unique_ptr<QObject> graph(create(nullptr, nullptr));
    const QMetaObject* meta = graph->metaObject();
    const int index = meta->methodOffset() + GetParam().method;
    int type = -2;
    int argument = GetParam().argument;
    void* args[] = {&type, &argument};
    QMetaObject::metacall(graph.get(), QMetaObject::RegisterMethodArgumentMetaType, index, args);
    if (!GetParam().registeredAs) {
        EXPECT_EQ(type, -1);
        return;
    }
    EXPECT_NE(type, -1);
    EXPECT_STREQ(QMetaType::typeName(type), GetParam().registeredAs);
    EXPECT_EQ(meta->method(index).parameterType(argument), type);
}

INSTANTIATE_TEST_SUITE_P(Rows, PluginArguments,
                         testing::Values(ArgumentRow{5, 0, "GLW*"}, ArgumentRow{14, 0, "GLW*"},
                                         ArgumentRow{16, 0, "GLW*"}, ArgumentRow{17, 0, "GLW*"},
                                         ArgumentRow{19, 0, "GLW*"}, ArgumentRow{19, 1, "MenuTree*"},
                                         ArgumentRow{13, 0, "QList<int>"}, ArgumentRow{25, 0, "Mouse*"},
                                         ArgumentRow{11, 0, nullptr}, ArgumentRow{12, 0, nullptr},
                                         ArgumentRow{18, 0, nullptr}, ArgumentRow{26, 0, nullptr}),
                         [](const testing::TestParamInfo<ArgumentRow>& i) {
                             return "Method" + std::to_string(i.param.method) + "Arg" +
                                    std::to_string(i.param.argument);
                         });

// Everything by name or by index, pointers over direct connections, as the host does.
TEST_F(Plugin, HostDrivesTheGraphByNameAndIndex)
{
    std::unique_ptr<QObject> graph(create(nullptr, "g"));
    QSignalSpy updateSelect(graph.get(), SIGNAL(UpdateSelect(qint64, qint64)));
    QSignalSpy region(graph.get(), SIGNAL(RegionChanged(qint64, qint64)));

    FramesInfo info(100, 104, 100, 101, 100, 120.0f);
    ASSERT_TRUE(QMetaObject::invokeMethod(graph.get(), "SetFramesInfo", Qt::DirectConnection,
                                          Q_ARG(FramesInfo*, &info)));
    ASSERT_EQ(updateSelect.count(), 1);
    EXPECT_EQ(updateSelect.at(0), QList<QVariant>({qint64(0), qint64(1)}));

    TAV::Frame track;
    track.id = 3;
    for (int i = 0; i < 4; ++i)
        track.markers.append(TAV::Marker{3, 0, 100 + i, float(i), 1, -2, 1.5f});
    TAV::Frames tracks;
    tracks.append(track);
    ASSERT_TRUE(QMetaObject::invokeMethod(graph.get(), "SetTracks", Qt::DirectConnection,
                                          Q_ARG(TAV::Frames*, &tracks)));
    ASSERT_TRUE(QMetaObject::invokeMethod(graph.get(), "SetTrackSelection", Qt::DirectConnection,
                                          Q_ARG(QList<int>, QList<int>{3}), Q_ARG(QString, "markers")));

    QRectF rect;
    ASSERT_TRUE(QMetaObject::invokeMethod(graph.get(), "Range2D", Qt::DirectConnection, Q_ARG(QRectF*, &rect),
                                          Q_ARG(int, 1)));
    EXPECT_EQ(rect, QRectF(0, 15, 4, -25)); // y from -2 to 3, scaled five-fold

    const QMetaObject* meta = graph->metaObject();
    ASSERT_TRUE(meta->method(meta->methodOffset() + 24).invoke(graph.get(), Qt::DirectConnection,
                                                              Q_ARG(QRectF, QRectF(1, 0, 2, 0))));
    ASSERT_EQ(region.count(), 1);
    EXPECT_EQ(region.at(0), QList<QVariant>({qint64(101), qint64(103)}));

    int seeked = -1;
    ASSERT_TRUE(QMetaObject::invokeMethod(graph.get(), "MoveCursor", Qt::DirectConnection, Q_RETURN_ARG(int, seeked),
                                          Q_ARG(Mouse*, nullptr), Q_ARG(bool, true)));
    EXPECT_EQ(seeked, 0); // not connected to a view
    ASSERT_TRUE(QMetaObject::invokeMethod(graph.get(), "Redraw", Qt::DirectConnection));
    ASSERT_TRUE(QMetaObject::invokeMethod(graph.get(), "EnableRigids", Qt::DirectConnection, Q_ARG(bool, false)));
    EXPECT_EQ(graph->property("enableRigids"), QVariant(false));
    EXPECT_EQ(graph->property("hoverDistance"), QVariant(8.0f));
}

// The host's own path: attach to a view by name, then let its window fill a context
// menu through InitContextMenuTree.
TEST_F(Plugin, ConnectedGraphFillsTheHostsContextMenu)
{
    std::unique_ptr<QObject> graph(create(nullptr, nullptr));
    GLWindow window;
    GLW view;
    view.rect = QRectF(0, 0, 1, 1);
    window.AddView(&view);
    window.update = 0;
    ASSERT_TRUE(QMetaObject::invokeMethod(graph.get(), "Connected", Qt::DirectConnection, Q_ARG(GLW*, &view)));
    EXPECT_EQ(view.findChildren<QAction*>().size(), 13);

    QMenu menu;
    EXPECT_GT(window.FillContextMenu(&menu, &view, graph.get()), 0);
    QStringList names;
    for (const QAction* a : menu.actions())
        names << (a->menu() ? a->menu()->title() : a->objectName());
    EXPECT_EQ(names.join(' '), "updateoffsets nextaoi prevaoi select_region Display");

    ASSERT_TRUE(QMetaObject::invokeMethod(graph.get(), "Redraw", Qt::DirectConnection, Q_ARG(bool, false)));
    EXPECT_EQ(window.update, 1);
}

} // namespace

#include "plugin_test.moc"
