#include "modules/tavgraph.h"

#include <gtest/gtest.h>

namespace {

TEST(GraphProperties, ConstructorSetsFifteenDefaultsInOrderWithTheirTypes)
{
    struct Default {
        const char* name;
        QVariant value;
    };
    const Default defaults[] = {
        {"enableMarkers", true},   {"enableRigids", true},       {"enableFill", true},    {"enableRGB", false},
        {"axisMask", 7},           {"modifyRegion", true},       {"pointSize", 2},        {"pointSizeMin", 2},
        {"pointSizeMax", 5},       {"maximumY", 100.0f},         {"minimumY", -100.0f},   {"LOD", true},
        {"linesLODpx", 0.25f},     {"jumpMask", 10},             {"hoverDistance", 8.0f},
    };
    TAVGraph graph;
    const QList<QByteArray> names = graph.dynamicPropertyNames();
    ASSERT_EQ(names.size(), 15);
    for (int i = 0; i < 15; ++i) {
        SCOPED_TRACE(defaults[i].name);
        EXPECT_EQ(names[i], QByteArray(defaults[i].name));
        const QVariant v = graph.QObject::property(defaults[i].name);
        EXPECT_EQ(v.userType(), defaults[i].value.userType());
        EXPECT_EQ(v, defaults[i].value);
    }
    EXPECT_EQ(graph.period, 1.0);
    EXPECT_TRUE(graph.objectName().isEmpty());
}

TEST(GraphProperties, TypedReadsConvertAndWritesKeepTheirType)
{
    TAVGraph graph;
    bool ok = true;
    EXPECT_EQ(graph.property<int>("enableMarkers", &ok), 1);
    EXPECT_TRUE(ok);
    EXPECT_FALSE(graph.property<bool>("drawTC", &ok));
    EXPECT_FALSE(ok);
    EXPECT_EQ(graph.property<float>("never set"), 0.0f);

    graph.QObject::setProperty("pointSize", QString("3"));
    EXPECT_EQ(graph.property<int>("pointSize"), 3);
    graph.QObject::setProperty("pointSize", QString("three"));
    EXPECT_EQ(graph.property<int>("pointSize", &ok), 0);
    EXPECT_FALSE(ok);

    // Writes store the exact variant type; Qt reports false for a dynamic property.
    EXPECT_FALSE(graph.setProperty<float>("linesLODpx", 0.5f));
    EXPECT_EQ(graph.QObject::property("linesLODpx").userType(), int(QMetaType::Float));
    EXPECT_EQ(graph.property<float>("linesLODpx"), 0.5f);
    graph.setProperty<int>("jumpMask", 2);
    EXPECT_EQ(graph.QObject::property("jumpMask").userType(), int(QMetaType::Int));
}

} // namespace
