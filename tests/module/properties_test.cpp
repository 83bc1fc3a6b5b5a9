#include "modules/tavgraph.h"

#include <gtest/gtest.h>

namespace {

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
