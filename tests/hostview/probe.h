#pragma once
// A receiver with the slot shapes the graph uses, recording every call, and filling
// context menus from the actions it finds under the view, as the graph does.
#include "GL/glw.h"
#include "Qt/menutree.h"
#include "tools/mouse.h"

#include <QAction>
#include <QObject>
#include <QStringList>

class Probe : public QObject {
    Q_OBJECT
public:
    QStringList calls;
    Mouse* lastMouse = nullptr;
    Mouse seen;           // a copy of the mouse state at the last MoveCursor call
    QStringList menuPaths; // what InitContextMenuTree inserts, by action name

public slots:
    void NextAOI() { calls << "NextAOI"; }
    void SelectRegion() { calls << "SelectRegion"; }
    void EnableMarkers(bool on) { calls << (on ? "EnableMarkers(true)" : "EnableMarkers(false)"); }
    void ExpandSelect() { calls << "ExpandSelect"; }
    int MoveCursor(Mouse* mouse, bool state)
    {
        calls << (state ? "MoveCursor(true)" : "MoveCursor(false)");
        lastMouse = mouse;
        if (mouse)
            seen = *mouse;
        return 1;
    }
    void InitContextMenuTree(GLW* glw, MenuTree* mt)
    {
        calls << "InitContextMenuTree";
        for (const QString& name : qAsConst(menuPaths))
            if (QAction* a = glw->findChild<QAction*>(name))
                mt->Insert(name, a, menuPaths.indexOf(name));
    }
};
