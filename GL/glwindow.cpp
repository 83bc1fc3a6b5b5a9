#include "GL/glwindow.h"

#include "GL/editactions.h"

#include <QTimer>

#include <cmath>

namespace {
// How often the repaint-request counter is looked at.
constexpr int updatePollMs = 10;
} // namespace

GLWindow::GLWindow(QWidget* parent) : QGLWidget(parent)
{
    qRegisterMetaType<GLW*>("GLW*");
    qRegisterMetaType<Mouse*>("Mouse*");
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    updateTimer = new QTimer(this);
    updateTimer->setInterval(updatePollMs);
    connect(updateTimer, &QTimer::timeout, this, &GLWindow::pollUpdate);
    updateTimer->start();
}

GLWindow::~GLWindow() = default;

void GLWindow::AddView(GLW* view)
{
    if (!view || viewList.contains(view))
        return;
    if (view->gl && view->gl != this)
        view->gl->RemoveView(view);
    viewList.append(view);
    view->gl = this;
    current = view;
    if (!view->property("visible").isValid())
        view->setProperty("visible", true);
    addEditActions(view);
    for (QAction* a : view->actions())
        if (!a->shortcut().isEmpty())
            addAction(a);
    ++update;
}

void GLWindow::RemoveView(GLW* view)
{
    if (!view || !viewList.contains(view))
        return;
    viewList.removeAll(view);
    if (view->gl == this)
        view->gl = nullptr;
    for (QAction* a : view->actions())
        removeAction(a);
    if (current == view)
        current = nullptr;
    ++update;
}

QList<GLW*> GLWindow::views() const
{
    QList<GLW*> live;
    for (const QPointer<GLW>& v : viewList)
        if (v)
            live.append(v);
    return live;
}

void GLWindow::SetCurrentView(GLW* view)
{
    if (view && viewList.contains(view))
        current = view;
}

GLW* GLWindow::CurrentView() const
{
    if (current)
        return current;
    const QList<GLW*> live = views();
    return live.isEmpty() ? nullptr : live.last();
}

GLW* GLWindow::ViewAt(int x, int y) const { return viewAtWidgetPos(QPoint(x, height() - 1 - y)); }

// Later views are painted over earlier ones, so they are hit first.
GLW* GLWindow::viewAtWidgetPos(const QPoint& p) const
{
    const QList<GLW*> live = views();
    for (auto it = live.crbegin(); it != live.crend(); ++it)
        if (GLW* v = (*it)->hit(p.x(), p.y()))
            return v;
    return nullptr;
}

void GLWindow::pollUpdate()
{
    if (update == 0)
        return;
    update = 0;
    QWidget::update();
}

void GLWindow::initializeGL() { glClearColor(0.15f, 0.15f, 0.15f, 1.f); }

void GLWindow::resizeGL(int, int) {}

void GLWindow::paintGL()
{
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    // A receiver may remove or delete views while painting.
    const QList<QPointer<GLW>> list = viewList;
    for (const QPointer<GLW>& v : list)
        if (v)
            paintView(v);
}

// The projection puts the centre of each pixel on the data point that Cursor gives
// for it, so what is drawn under the mouse is what the mouse maps to.
void GLWindow::paintView(GLW* view)
{
    const int w = int(view->width()), h = int(view->height());
    if (w <= 0 || h <= 0)
        return;
    const QRectF g = view->geometry();
    const int x = int(std::lround(g.x()));
    const int y = height() - int(std::lround(g.y())) - h; // GL counts rows from the bottom
    GLint* vp = view->viewport.viewport;
    vp[0] = x;
    vp[1] = y;
    vp[2] = w;
    vp[3] = h;

    const Vector low = view->viewport.Cursor(-0.5f, -0.5f, w, h);
    const Vector high = view->viewport.Cursor(w - 0.5f, h - 0.5f, w, h);
    if (!std::isfinite(low.x) || !std::isfinite(low.y) || !std::isfinite(high.x) || !std::isfinite(high.y) ||
        low.x == high.x || low.y == high.y)
        return;

    const qreal dpr = devicePixelRatioF();
    const GLint dx = GLint(x * dpr), dy = GLint(y * dpr);
    const GLsizei dw = GLsizei(w * dpr), dh = GLsizei(h * dpr);
    glViewport(dx, dy, dw, dh);
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    glOrtho(low.x, high.x, low.y, high.y, -10, 10);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    glEnable(GL_SCISSOR_TEST);
    glScissor(dx, dy, dw, dh);
    glClear(GL_DEPTH_BUFFER_BIT);
    glDisable(GL_SCISSOR_TEST);
    emit Paint2D(view);
}
