// The graph's key and mouse actions on its view, and its context-menu entries.
// Actions live on the view; the graph finds them again by object name.
#include "modules/tavgraph.h"

#include "modules/core/contract.h"

namespace {

struct KeyAction {
    const char* name;
    const char* key;
    const char* slot;
    const char* text;
    const char* tip;
    bool checkable;
};

// "nextaoi" and "prevaoi" are checkable although their slots take no argument.
const KeyAction keyActions[] = {
    {GraphAction::enableMarkers, "", "1EnableMarkers(bool)", "Marker Tracks", "Draw markers in the graph", true},
    {GraphAction::enableRigids, "", "1EnableRigids(bool)", "Rigid Tracks", "Draw rigids in the graph", true},
    {GraphAction::enableRigidAngles, "", "1ToggleDrawAngles(bool)", "Rigid Rotations",
     "Draw rigid rotations (axis-angle) in the graph", true},
    {GraphAction::enableTC, "", "1ToggleDrawTC(bool)", "Timecode Ticks", "", true},
    {GraphAction::enableOriginal, "", "1ToggleDrawOriginal(bool)", "Original Tracks", "", true},
    {GraphAction::nextAOI, "Ctrl+.", "1NextAOI()", "Next area of interest", "Jump frame to next peak or occlusion", true},
    {GraphAction::prevAOI, "Ctrl+,", "1PrevAOI()", "Previous area of interest", "Jump frame to previous peak or occlusion",
     true},
    {GraphAction::selectRegion, "r", "1SelectRegion()", "Select Region", "Select Region under mouse cursor", false},
    {GraphAction::updateOffsets, "t", "1UpdateTrackOffsets()", "Update track offsets",
     "Offset display of graph tracks to the y-origin under the mouse", false},
    {GraphAction::clearOffsets, "", "1ClearTrackOffsets()", "Clear track offsets",
     "Display graph tracks at their unmodified positions", false},
};

struct MouseAction {
    const char* name;
    quint32 binding; // a Qt button OR-ed with Qt modifiers
    const char* slot;
    const char* text;
    const char* tip;
    bool checkable;
};

const MouseAction mouseActions[] = {
    {GraphAction::moveCursor, quint32(Qt::LeftButton), "1MoveCursor(Mouse*, bool)", "Move Cursor", "Sets current frame number", false},
    {GraphAction::expandSelect, quint32(Qt::ControlModifier) | quint32(Qt::XButton1), "1ExpandSelect()", "Expand Selection", "", false},
    {GraphAction::contractSelect, quint32(Qt::ControlModifier) | quint32(Qt::XButton2), "1ContractSelect()", "Contract Selection", "", false},
};

} // namespace

QAction* TAVGraph::init_action(const char* text, const char* tip, QAction* a, bool checkable, bool)
{
    if (!a)
        return a;
    a->setText(QString(text));
    a->setToolTip(QString(tip));
    a->setCheckable(checkable);
    return a;
}

QAction* TAVGraph::insert_action(QObject* o, MenuTree* mt, const QString& action, const QString& path, int order,
                                 bool checked, bool sep)
{
    if (!mt || !o)
        return nullptr;
    QAction* a = o->findChild<QAction*>(action);
    if (!a)
        return nullptr;
    mt->Insert(path, a, order, sep ? SeparatorBefore : 0);
    a->setChecked(checked);
    return a;
}

void TAVGraph::Connected(GLW* view)
{
    if (!view)
        return;
    glw = view;
    // The view and its window are looked up again for every action: the host's
    // action operations are free to do anything, including dropping the view.
    for (const KeyAction& k : keyActions) {
        GLWindow* window = liveWindow();
        if (!window)
            break;
        init_action(k.text, k.tip, window->NewAction(QString(k.key), k.name, this, k.slot), k.checkable);
    }
    for (const MouseAction& m : mouseActions) {
        GLW* live = liveView();
        if (!live)
            break;
        init_action(m.text, m.tip, live->NewMouseAction(m.binding, 0, m.name, this, m.slot), m.checkable);
    }
}

void TAVGraph::InitContextMenuTree(GLW* view, MenuTree* mt)
{
    if (!mt || !view)
        return;
    const bool selection = isValidRange(int(selectStart), int(selectEnd));
    int priority = 3;
    if (selection) {
        insert_action(view, mt, GraphAction::applyTool, "applytool", priority++, false, true);
        insert_action(view, mt, GraphAction::deleteData, "delete_data", priority++, false, false);
        insert_action(view, mt, GraphAction::revertData, "revert_data", priority++, false, false);
    }
    insert_action(view, mt, GraphAction::updateOffsets, "updateoffsets", priority++, false, selection);
    // Only marker offsets bring the entry in; rigid offsets alone do not.
    if (!trackOffsets.empty())
        insert_action(view, mt, GraphAction::clearOffsets, "clearoffsets", priority++, false, false);
    insert_action(view, mt, GraphAction::nextAOI, "nextaoi", priority++, false, false);
    insert_action(view, mt, GraphAction::prevAOI, "prevaoi", priority++, false, false);
    insert_action(view, mt, GraphAction::selectRegion, "select_region", priority++, false, false);

    mt->Insert(QString("display"), QString("Display"), 10, 0);
    const bool enableRigids = property<bool>(GraphProperty::enableRigids);
    insert_action(view, mt, GraphAction::enableMarkers, "display.enable_markers", 0,
                  property<bool>(GraphProperty::enableMarkers), false);
    insert_action(view, mt, GraphAction::enableRigids, "display.enable_rigids", 1, enableRigids, false);
    if (enableRigids)
        insert_action(view, mt, GraphAction::enableRigidAngles, "display.enable_rigid_angles", 1,
                      property<bool>(GraphProperty::drawRBAxisAngle), false);
    insert_action(view, mt, GraphAction::enableOriginal, "display.enable_original", 2,
                  property<bool>(GraphProperty::drawOrig), false);
    insert_action(view, mt, GraphAction::enableTC, "display.enable_tc", 11,
                  property<bool>(GraphProperty::drawTC), false);
}
