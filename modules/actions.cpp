// The graph's key and mouse actions on its view, and its context-menu entries.
// Actions live on the view; the graph finds them again by object name.
#include "modules/tavgraph.h"

#include "modules/core/contract.h"

namespace {

// The menu path of an entry under "Display".
QString displayPath(const char* name) { return QStringLiteral("display.") + QLatin1String(name); }

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
        insert_action(view, mt, GraphAction::applyTool, GraphAction::applyTool, priority++, false, true);
        insert_action(view, mt, GraphAction::deleteData, GraphAction::deleteData, priority++, false, false);
        insert_action(view, mt, GraphAction::revertData, GraphAction::revertData, priority++, false, false);
    }
    insert_action(view, mt, GraphAction::updateOffsets, GraphAction::updateOffsets, priority++, false, selection);
    // Only marker offsets bring the entry in; rigid offsets alone do not.
    if (!trackOffsets.empty())
        insert_action(view, mt, GraphAction::clearOffsets, GraphAction::clearOffsets, priority++, false, false);
    insert_action(view, mt, GraphAction::nextAOI, GraphAction::nextAOI, priority++, false, false);
    insert_action(view, mt, GraphAction::prevAOI, GraphAction::prevAOI, priority++, false, false);
    insert_action(view, mt, GraphAction::selectRegion, GraphAction::selectRegion, priority++, false, false);

    mt->Insert(QStringLiteral("display"), QStringLiteral("Display"), 10, 0);
    const bool enableRigids = property<bool>(GraphProperty::enableRigids);
    insert_action(view, mt, GraphAction::enableMarkers, displayPath(GraphAction::enableMarkers), 0,
                  property<bool>(GraphProperty::enableMarkers), false);
    insert_action(view, mt, GraphAction::enableRigids, displayPath(GraphAction::enableRigids), 1, enableRigids, false);
    if (enableRigids)
        insert_action(view, mt, GraphAction::enableRigidAngles, displayPath(GraphAction::enableRigidAngles), 1,
                      property<bool>(GraphProperty::drawRBAxisAngle), false);
    insert_action(view, mt, GraphAction::enableOriginal, displayPath(GraphAction::enableOriginal), 2,
                  property<bool>(GraphProperty::drawOrig), false);
    insert_action(view, mt, GraphAction::enableTC, displayPath(GraphAction::enableTC), 11,
                  property<bool>(GraphProperty::drawTC), false);
}
