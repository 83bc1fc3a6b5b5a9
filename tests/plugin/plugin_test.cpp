// The module as a host meets it: a library file, one C entry, a factory received
// through "Register", and an object reached only through its meta-object.
#include "GL/glw.h"
#include "GL/glwindow.h"
#include "Qt/menutree.h"
#include "modules/core/contract.h"
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

namespace {

typedef int (*InitFn)(QObject*);
typedef QObject* (*FactoryFn)(QObject*, const char*);

// The host's side of the handshake.
class Registry : public QObject {
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
    QObject* create(QObject* parent = nullptr, const char* name = nullptr)
    {
        Registry registry;
        init(&registry);
        return reinterpret_cast<FactoryFn>(registry.factory)(parent, name);
    }

    QLibrary library;
    InitFn init = nullptr;
};

TEST_F(Plugin, InitRegistersANamingFactoryAndAlwaysReturnsOne)
{
    EXPECT_EQ(QFileInfo(TAVGRAPH_PLUGIN).fileName(), "tavgraph.so");
    ASSERT_NE(init, nullptr);
    Registry registry;
    EXPECT_EQ(init(&registry), 1);
    EXPECT_EQ(registry.calls, "qobject TAVGraph;");
    EXPECT_EQ(init(nullptr), 1);
    QObject withoutRegister;
    EXPECT_EQ(init(&withoutRegister), 1);

    QObject parent;
    QObject* unnamed = create(&parent);
    QObject* named = create(&parent, "g1");
    EXPECT_EQ(unnamed->parent(), &parent);
    EXPECT_TRUE(unnamed->objectName().isEmpty());
    EXPECT_EQ(named->objectName(), "g1");
    EXPECT_EQ(named->qt_metacast("TAVGraph"), named);
    EXPECT_STREQ(named->metaObject()->superClass()->className(), "QObject");
}

// The contract's methods and properties are the ones the loaded graph has.
TEST_F(Plugin, MetaObjectAndDefaultsAreTheContracts)
{
    std::unique_ptr<QObject> graph(create());
    const QMetaObject* meta = graph->metaObject();
    const int offset = meta->methodOffset();
    ASSERT_EQ(size_t(meta->methodCount() - offset), graphMethods.size());
    EXPECT_EQ(meta->propertyCount(), meta->propertyOffset());
    for (size_t i = 0; i < graphMethods.size(); ++i) {
        const GraphMethod& expected = graphMethods[i];
        SCOPED_TRACE(expected.signature);
        const QMetaMethod m = meta->method(offset + int(i));
        EXPECT_EQ(m.methodSignature(), expected.signature);
        EXPECT_EQ(m.parameterNames().join(','), expected.parameters);
        EXPECT_EQ(m.methodType(), expected.signal ? QMetaMethod::Signal : QMetaMethod::Slot);
        EXPECT_EQ(m.access(), QMetaMethod::Public);
        EXPECT_STREQ(m.typeName(), expected.returns);
        EXPECT_EQ(meta->indexOfMethod(expected.signature), offset + int(i));
    }
    EXPECT_EQ(meta->method(meta->indexOfMethod("Redraw()")).attributes(), int(QMetaMethod::Cloned));

    const QList<QByteArray> names = graph->dynamicPropertyNames();
    ASSERT_EQ(size_t(names.size()), graphPropertyDefaults.size());
    for (size_t i = 0; i < graphPropertyDefaults.size(); ++i) {
        const PropertyDefault& p = graphPropertyDefaults[i];
        SCOPED_TRACE(p.name);
        EXPECT_EQ(names[int(i)], p.name);
        const QVariant v = graph->property(p.name);
        EXPECT_EQ(v.userType(), int(p.type));
        EXPECT_EQ(v, p.variant());
    }
}

// Pointer arguments that a queued call needs registered: GLW*, MenuTree*, QList<int>
// and Mouse* are; FramesInfo*, TAV::Frames* and QRectF* are not.
TEST_F(Plugin, ArgumentsRegisterAsMetaTypes)
{
    struct Row {
        int method, argument;
        const char* registeredAs; // null: not registered
    };
    const Row rows[] = {{5, 0, "GLW*"},        {14, 0, "GLW*"},  {19, 1, "MenuTree*"}, {13, 0, "QList<int>"},
                        {25, 0, "Mouse*"},     {11, 0, nullptr}, {12, 0, nullptr},     {18, 0, nullptr}};
    std::unique_ptr<QObject> graph(create());
    const QMetaObject* meta = graph->metaObject();
    for (Row row : rows) {
        SCOPED_TRACE(graphMethods[size_t(row.method)].signature);
        const int index = meta->methodOffset() + row.method;
        int type = -2;
        void* args[] = {&type, &row.argument};
        QMetaObject::metacall(graph.get(), QMetaObject::RegisterMethodArgumentMetaType, index, args);
        if (!row.registeredAs) {
            EXPECT_EQ(type, -1);
        } else {
            EXPECT_STREQ(QMetaType::typeName(type), row.registeredAs);
            EXPECT_EQ(meta->method(index).parameterType(row.argument), type);
        }
    }
}

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
    ASSERT_TRUE(QMetaObject::invokeMethod(graph.get(), "EnableRigids", Qt::DirectConnection, Q_ARG(bool, false)));
    EXPECT_EQ(graph->property("enableRigids"), QVariant(false));
}

// The host's own path: attach to a view by name, then let its window fill a context
// menu through InitContextMenuTree.
TEST_F(Plugin, ConnectedGraphFillsTheHostsContextMenu)
{
    std::unique_ptr<QObject> graph(create());
    GLWindow window;
    GLW view;
    view.rect = QRectF(0, 0, 1, 1);
    window.AddView(&view);
    window.update = 0;
    const int hostActions = view.findChildren<QAction*>().size(); // the window's editing actions
    ASSERT_TRUE(QMetaObject::invokeMethod(graph.get(), "Connected", Qt::DirectConnection, Q_ARG(GLW*, &view)));
    EXPECT_EQ(view.findChildren<QAction*>().size() - hostActions, 13);

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
