#include "modules/tavgraph.h"

#include <gtest/gtest.h>

namespace {

TEST(GraphProperties, ConstructorSetsFifteenDefaultsInOrderWithTheirTypes)
{
    const std::pair<const char*, QVariant> defaults[] = {
        {"enableMarkers", true},   {"enableRigids", true},       {"enableFill", true},    {"enableRGB", false},
        {"axisMask", 7},           {"modifyRegion", true},       {"pointSize", 2},        {"pointSizeMin", 2},
        {"pointSizeMax", 5},       {"maximumY", 100.0f},         {"minimumY", -100.0f},   {"LOD", true},
        {"linesLODpx", 0.25f},     {"jumpMask", 10},             {"hoverDistance", 8.0f},
    };
    TAVGraph graph;
    const QList<QByteArray> names = graph.dynamicPropertyNames();
    ASSERT_EQ(names.size(), 15);
    for (int i = 0; i < 15; ++i) {
        SCOPED_TRACE(defaults[i].first);
        EXPECT_EQ(names[i], QByteArray(defaults[i].first));
        const QVariant v = graph.QObject::property(defaults[i].first);
        EXPECT_EQ(v.userType(), defaults[i].second.userType());
        EXPECT_EQ(v, defaults[i].second);
    }
}

// The typed accessors hide QObject's; they must reach Qt's, not themselves.
TEST(GraphProperties, TypedReadsConvertAndWritesKeepTheirType)
{
    TAVGraph graph;
    bool ok = true;
    EXPECT_EQ(graph.property<int>("enableMarkers", &ok), 1);
    EXPECT_TRUE(ok);
    EXPECT_FALSE(graph.property<bool>("drawTC", &ok));
    EXPECT_FALSE(ok);
    graph.QObject::setProperty("pointSize", QString("three"));
    EXPECT_EQ(graph.property<int>("pointSize", &ok), 0);
    EXPECT_FALSE(ok);

    // Qt reports false for a dynamic property.
    EXPECT_FALSE(graph.setProperty<float>("linesLODpx", 0.5f));
    EXPECT_EQ(graph.QObject::property("linesLODpx").userType(), int(QMetaType::Float));
    EXPECT_EQ(graph.property<float>("linesLODpx"), 0.5f);
}

} // namespace
