#pragma once
// The host's GL widget: it shows one or more views, repaints when its request
// counter is non-zero, follows the mouse, and owns key and mouse bindings.
#include "GL/glw.h"
#include "tools/mouse.h"

#include <QGLWidget>
#include <QList>
#include <QPointer>
#include <QString>

class MenuTree;
class QAction;
class QMenu;
class QTimer;

class GLWindow : public QGLWidget {
    Q_OBJECT
public:
    // Repaint requests: anyone adds 1; the window repaints soon after and resets it.
    // (This field hides QWidget::update(); the window's own repaints are qualified.)
    int update = 0;
    Mouse mouse;

    explicit GLWindow(QWidget* parent = nullptr);
    ~GLWindow() override;

    // Views shown by this window, painted in order. The window does not own them.
    // Adding a view without a "visible" property sets it to true.
    void AddView(GLW* view);
    void RemoveView(GLW* view);
    QList<GLW*> views() const;
    // The view that NewAction serves: the last one added, unless set otherwise.
    void SetCurrentView(GLW* view);
    GLW* CurrentView() const;
    GLW* ViewAt(int x, int y) const; // x, y in GL window pixels (y up)

    // Key actions of the current view (see GLW::NewKeyAction).
    virtual QAction* NewAction(const QString& key, const char* name, QObject* receiver, const char* slot);
    virtual bool DeleteAction(const char* name);
    // Pops up, at the mouse cursor, the menu that receiver (every registered receiver
    // when null) fills through its slot InitContextMenuTree(GLW*, MenuTree*) for the
    // view under the mouse. A right click does this for the registered receivers.
    virtual void ContextMenu(QObject* receiver);

    void AddContextMenuReceiver(QObject* receiver);
    void RemoveContextMenuReceiver(QObject* receiver);
    // Fills menu from a fresh tree for view; returns the number of entries built.
    int FillContextMenu(QMenu* menu, GLW* view, QObject* receiver);

signals:
    // Emitted for each view while painting, with the view's GL viewport and a 2-D
    // projection of its data rectangle set up and the depth buffer cleared.
    void Paint2D(GLW* view);
    // Emitted when a context menu is asked for over a view.
    void ContextMenuRequested(GLW* view, const QPoint& globalPos);

protected:
    void initializeGL() override;
    void resizeGL(int w, int h) override;
    void paintGL() override;
    void mousePressEvent(QMouseEvent* e) override;
    void mouseMoveEvent(QMouseEvent* e) override;
    void mouseReleaseEvent(QMouseEvent* e) override;
    void mouseDoubleClickEvent(QMouseEvent* e) override;
    void contextMenuEvent(QContextMenuEvent* e) override;

private:
    void pollUpdate();
    void trackMouse(QMouseEvent* e);
    void paintView(GLW* view);
    GLW* viewAtWidgetPos(const QPoint& p) const;

    QList<QPointer<GLW>> viewList;
    QPointer<GLW> current;
    QTimer* updateTimer = nullptr;
    QList<QPointer<QObject>> menuReceivers;
    QPointer<QMenu> contextMenu;
    // The press that started the current drag: its view, button and binding.
    QPointer<GLW> pressView;
    int pressButton = 0;
    quint32 pressBinding = 0;
};
