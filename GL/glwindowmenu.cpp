#include "GL/glwindow.h"
#include "Qt/menutree.h"

#include <QContextMenuEvent>
#include <QMenu>
#include <QMetaObject>

QAction* GLWindow::NewAction(const QString& key, const char* name, QObject* receiver, const char* slot)
{
    GLW* view = CurrentView();
    return view ? view->NewKeyAction(key, name, receiver, slot) : nullptr;
}

bool GLWindow::DeleteAction(const char* name)
{
    GLW* view = CurrentView();
    return view && view->DeleteAction(name);
}

void GLWindow::AddContextMenuReceiver(QObject* receiver)
{
    if (receiver && !menuReceivers.contains(receiver))
        menuReceivers.append(receiver);
}

void GLWindow::RemoveContextMenuReceiver(QObject* receiver) { menuReceivers.removeAll(receiver); }

// A fresh tree each time: entries are identified by (priority, name), so a reused
// tree would keep entries that the receiver no longer inserts.
int GLWindow::FillContextMenu(QMenu* menu, GLW* view, QObject* receiver)
{
    if (!menu || !view)
        return 0;
    QList<QPointer<QObject>> receivers;
    if (receiver)
        receivers.append(receiver);
    else
        receivers = menuReceivers;
    MenuTree tree;
    const QPointer<GLW> guard(view);
    for (const QPointer<QObject>& r : receivers) {
        if (!guard)
            return 0;
        if (r)
            QMetaObject::invokeMethod(r.data(), "InitContextMenuTree", Qt::DirectConnection, Q_ARG(GLW*, view),
                                      Q_ARG(MenuTree*, &tree));
    }
    return tree.Build(menu);
}

void GLWindow::ContextMenu(QObject* receiver)
{
    GLW* view = ViewAt(mouse.x, mouse.y);
    if (!view)
        view = CurrentView();
    if (!view)
        return;
    delete contextMenu;
    QMenu* menu = new QMenu(this);
    if (FillContextMenu(menu, view, receiver) == 0) {
        delete menu;
        return;
    }
    connect(menu, &QMenu::aboutToHide, menu, &QObject::deleteLater);
    contextMenu = menu;
    menu->popup(mapToGlobal(QPoint(mouse.x, height() - 1 - mouse.y)));
}

void GLWindow::contextMenuEvent(QContextMenuEvent* e)
{
    if (e->reason() == QContextMenuEvent::Mouse) {
        mouse.x = e->x();
        mouse.y = height() - 1 - e->y();
    }
    GLW* view = ViewAt(mouse.x, mouse.y);
    if (!view)
        return;
    emit ContextMenuRequested(view, e->globalPos());
    ContextMenu(nullptr);
    e->accept();
}
