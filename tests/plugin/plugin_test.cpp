// The handshake and the meta-object a host relies on. Hosts driving the loaded
// graph by name, mistakes and all, are in tests/hostile.
#include "modules/core/contract.h"
#include "tests/plugin/pluginhost.h"

#include <QFileInfo>
#include <QMetaMethod>

namespace {

using Plugin = PluginHost;

TEST_F(Plugin, InitRegistersANamingFactoryAndAlwaysReturnsOne)
{
    EXPECT_EQ(QFileInfo(TAVGRAPH_PLUGIN).fileName(), "tavgraph.so");
    Registrar registrar;
    EXPECT_EQ(init(&registrar), 1);
    EXPECT_EQ(registrar.calls, "qobject TAVGraph;");
    EXPECT_EQ(init(nullptr), 1);
    QObject withoutRegister;
    EXPECT_EQ(init(&withoutRegister), 1);

    QObject parent;
    const QObject* unnamed = create(&parent, nullptr);
    EXPECT_EQ(unnamed->parent(), &parent);
    EXPECT_TRUE(unnamed->objectName().isEmpty());
    EXPECT_EQ(graph->objectName(), "graph");
    EXPECT_EQ(graph->qt_metacast("TAVGraph"), graph);
    EXPECT_STREQ(graph->metaObject()->superClass()->className(), "QObject");
}

// The contract's methods and properties are the ones the loaded graph has.
TEST_F(Plugin, MetaObjectAndDefaultsAreTheContracts)
{
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
        EXPECT_EQ(graph->property(p.name).userType(), int(p.type));
        EXPECT_EQ(graph->property(p.name), p.variant());
    }
}

} // namespace
