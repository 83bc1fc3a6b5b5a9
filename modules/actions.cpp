// The graph's key and mouse actions on its view, and its context-menu entries.
// Actions live on the view; the graph finds them again by object name.
#include "modules/tavgraph.h"

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
    {"enable_markers", "", "1EnableMarkers(bool)", "Marker Tracks", "Draw markers in the graph", true},
    {"enable_rigids", "", "1EnableRigids(bool)", "Rigid Tracks", "Draw rigids in the graph", true},
    {"enable_rigid_angles", "", "1ToggleDrawAngles(bool)", "Rigid Rotations",
     "Draw rigid rotations (axis-angle) in the graph", true},
    {"enable_tc", "", "1ToggleDrawTC(bool)", "Timecode Ticks", "", true},
    {"enable_original", "", "1ToggleDrawOriginal(bool)", "Original Tracks", "", true},
    {"nextaoi", "Ctrl+.", "1NextAOI()", "Next area of interest", "Jump frame to next peak or occlusion", true},
    {"prevaoi", "Ctrl+,", "1PrevAOI()", "Previous area of interest", "Jump frame to previous peak or occlusion",
     true},
    {"select_region", "r", "1SelectRegion()", "Select Region", "Select Region under mouse cursor", false},
    {"updateoffsets", "t", "1UpdateTrackOffsets()", "Update track offsets",
     "Offset display of graph tracks to the y-origin under the mouse", false},
    {"clearoffsets", "", "1ClearTrackOffsets()", "Clear track offsets",
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
    {"movecursor", quint32(Qt::LeftButton), "1MoveCursor(Mouse*, bool)", "Move Cursor", "Sets current frame number", false},
    {"expandselect", quint32(Qt::ControlModifier) | quint32(Qt::XButton1), "1ExpandSelect()", "Expand Selection", "", false},
    {"contractselect", quint32(Qt::ControlModifier) | quint32(Qt::XButton2), "1ContractSelect()", "Contract Selection", "", false},
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
        insert_action(view, mt, "applytool", "applytool", priority++, false, true);
        insert_action(view, mt, "delete_data", "delete_data", priority++, false, false);
        insert_action(view, mt, "revert_data", "revert_data", priority++, false, false);
    }
    insert_action(view, mt, "updateoffsets", "updateoffsets", priority++, false, selection);
    // Only marker offsets bring the entry in; rigid offsets alone do not.
    if (!trackOffsets.empty())
        insert_action(view, mt, "clearoffsets", "clearoffsets", priority++, false, false);
    insert_action(view, mt, "nextaoi", "nextaoi", priority++, false, false);
    insert_action(view, mt, "prevaoi", "prevaoi", priority++, false, false);
    insert_action(view, mt, "select_region", "select_region", priority++, false, false);

    mt->Insert(QString("display"), QString("Display"), 10, 0);
    const bool enableRigids = property<bool>("enableRigids");
    insert_action(view, mt, "enable_markers", "display.enable_markers", 0, property<bool>("enableMarkers"), false);
    insert_action(view, mt, "enable_rigids", "display.enable_rigids", 1, enableRigids, false);
    if (enableRigids)
        insert_action(view, mt, "enable_rigid_angles", "display.enable_rigid_angles", 1,
                      property<bool>("drawRBAxisAngle"), false);
    insert_action(view, mt, "enable_original", "display.enable_original", 2, property<bool>("drawOrig"), false);
    insert_action(view, mt, "enable_tc", "display.enable_tc", 11, property<bool>("drawTC"), false);
}
