#include "modules/core/contract.h"

QVariant PropertyDefault::variant() const
{
    switch (type) {
    case QMetaType::Bool:
        return QVariant(value != 0);
    case QMetaType::Int:
        return QVariant(int(value));
    default:
        return QVariant::fromValue<float>(float(value));
    }
}

namespace P = GraphProperty;

const std::array<PropertyDefault, 15> graphPropertyDefaults = {{
    {P::enableMarkers, QMetaType::Bool, 1},
    {P::enableRigids, QMetaType::Bool, 1},
    {P::enableFill, QMetaType::Bool, 1},
    {P::enableRGB, QMetaType::Bool, 0},
    {P::axisMask, QMetaType::Int, 7},
    {P::modifyRegion, QMetaType::Bool, 1},
    {P::pointSize, QMetaType::Int, 2},
    {P::pointSizeMin, QMetaType::Int, 2},
    {P::pointSizeMax, QMetaType::Int, 5},
    {P::maximumY, QMetaType::Float, 100.0},
    {P::minimumY, QMetaType::Float, -100.0},
    {P::LOD, QMetaType::Bool, 1},
    {P::linesLODpx, QMetaType::Float, 0.25},
    {P::jumpMask, QMetaType::Int, 10},
    {P::hoverDistance, QMetaType::Float, 8.0},
}};

const std::array<GraphMethod, 39> graphMethods = {{
    {"SelectionChanged(qlonglong,qlonglong)", ",", true, "void"},
    {"RegionChanged(qlonglong,qlonglong)", ",", true, "void"},
    {"SelectType(int)", "", true, "void"},
    {"Seek(qlonglong,int)", ",", true, "void"},
    {"Select(QRectF)", "", true, "void"},
    {"ClearSelect(GLW*,bool)", "glw,state", true, "void"},
    {"UpdateSelect(qlonglong,qlonglong)", ",", true, "void"},
    {"Delete()", "", true, "void"},
    {"Revert()", "", true, "void"},
    {"EnableOriginal(bool)", "", true, "void"},
    {"ApplyTool()", "", true, "void"},
    {"SetFramesInfo(FramesInfo*)", "info", false, "void"},
    {"SetTracks(TAV::Frames*)", "f", false, "void"},
    {"SetTrackSelection(QList<int>,QString)", "selected,name", false, "void"},
    {"Connected(GLW*)", "glw", false, "void"},
    {"Init()", "", false, "void"},
    {"Pick2D(GLW*)", "glw", false, "void"},
    {"Draw2D(GLW*)", "glw", false, "void"},
    {"Range2D(QRectF*,int)", "rect,mode", false, "void"},
    {"InitContextMenuTree(GLW*,MenuTree*)", "glw,mt", false, "void"},
    {"ModifyRegion(bool)", "state", false, "void"},
    {"DataChange()", "", false, "void"},
    {"ClearTrackOffsets()", "", false, "void"},
    {"UpdateTrackOffsets()", "", false, "void"},
    {"Selected(QRectF)", "r", false, "void"},
    {"MoveCursor(Mouse*,bool)", "mouse,state", false, "int"},
    {"GLWUpdate(FramesInfo*)", "s", false, "void"},
    {"Redraw(bool)", "flag", false, "void"},
    {"Redraw()", "", false, "void"},
    {"NextAOI()", "", false, "void"},
    {"PrevAOI()", "", false, "void"},
    {"ToggleDrawOriginal(bool)", "b", false, "void"},
    {"ToggleDrawTC(bool)", "b", false, "void"},
    {"EnableMarkers(bool)", "b", false, "void"},
    {"EnableRigids(bool)", "b", false, "void"},
    {"ToggleDrawAngles(bool)", "b", false, "void"},
    {"SelectRegion()", "", false, "void"},
    {"ExpandSelect()", "", false, "void"},
    {"ContractSelect()", "", false, "void"},
}};
