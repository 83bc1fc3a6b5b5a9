#include "GL/glw.h"

#include "GL/glwindow.h"
#include "tools/mouse.h"

#include <QKeySequence>
#include <QMetaMethod>
#include <QMetaObject>

#include <algorithm>

namespace {

// The window's size when the view has one that still exists, else 0.
double windowWidth(const GLWindow* w) { return w ? w->width() : 0; }
double windowHeight(const GLWindow* w) { return w ? w->height() : 0; }

// One coordinate of the geometry: fractions of the window size when normal, and a
// negative position anchors the view to the far edge.
double place(double pos, double size, double windowSize, bool normal)
{
    const double p = normal ? pos * windowSize : pos;
    return pos >= 0 ? p : p + windowSize - size;
}

void deleteActionsNamed(QObject* owner, const char* name)
{
    for (QAction* a : owner->findChildren<QAction*>(QString::fromUtf8(name)))
        delete a;
}

} // namespace

GLW::GLW(QObject* parent) : QObject(parent)
{
    qRegisterMetaType<GLW*>("GLW*");
    qRegisterMetaType<Mouse*>("Mouse*");
}

GLW::~GLW() = default;

bool GLW::normal() const { return gl && rect.width() <= 1.0 && rect.height() <= 1.0; }

double GLW::width() const { return normal() ? rect.width() * gl->width() : rect.width(); }

double GLW::height() const { return normal() ? rect.height() * gl->height() : rect.height(); }

double GLW::x() const { return place(rect.x(), width(), windowWidth(gl), normal()); }

double GLW::y() const { return place(rect.y(), height(), windowHeight(gl), normal()); }

QRectF GLW::geometry() const { return QRectF(x(), y(), width(), height()); }

Vector GLW::Cursor() const
{
    if (!gl)
        return Vector(0, 0, -1);
    return Cursor(float(gl->mouse.x), float(gl->mouse.y));
}

Vector GLW::Cursor(float x, float y) const { return viewport.Cursor(x, y, int(width()), int(height())); }

GLW* GLW::hit(int x, int y) { return geometry().contains(QPointF(x, y)) ? this : nullptr; }

QList<QAction*> GLW::actions() { return findChildren<QAction*>(); }

QAction* GLW::NewKeyAction(const QString& key, const char* name, QObject* receiver, const char* slot)
{
    deleteActionsNamed(this, name);
    QAction* a = new QAction(this);
    a->setObjectName(QString::fromUtf8(name));
    if (!key.isEmpty()) {
        a->setShortcut(QKeySequence::fromString(key, QKeySequence::PortableText));
        // Active while the window that shows this view has the focus.
        a->setShortcutContext(Qt::WidgetWithChildrenShortcut);
        if (gl)
            gl->addAction(a);
    }
    // triggered, never toggled: setting a check mark while a menu is built must not run the slot.
    if (receiver && slot)
        connect(a, SIGNAL(triggered(bool)), receiver, slot);
    return a;
}

QAction* GLW::NewMouseAction(quint32 binding, quint32 aux, const char* name, QObject* receiver, const char* slot)
{
    deleteActionsNamed(this, name);
    QAction* a = new QAction(this);
    a->setObjectName(QString::fromUtf8(name));

    MouseBinding b{a, binding, aux, receiver, QByteArray(), false};
    if (receiver && slot && *slot) {
        b.method = QMetaObject::normalizedSignature(slot[0] >= '0' && slot[0] <= '9' ? slot + 1 : slot);
        b.takesMouse = b.method.endsWith("(Mouse*,bool)") &&
                       receiver->metaObject()->indexOfMethod(b.method.constData()) >= 0;
        if (!b.takesMouse)
            connect(a, SIGNAL(triggered(bool)), receiver, slot);
    }
    mouseBindings.erase(std::remove_if(mouseBindings.begin(), mouseBindings.end(),
                                       [](const MouseBinding& m) { return m.action.isNull(); }),
                        mouseBindings.end());
    mouseBindings.append(b);
    return a;
}

bool GLW::DeleteAction(const char* name)
{
    const QList<QAction*> found = findChildren<QAction*>(QString::fromUtf8(name));
    qDeleteAll(found);
    return !found.isEmpty();
}

QRectF GLW::Range2D(int) { return QRectF(0, 0, 0, 0); }

QVector3D GLW::NearestDataPos() { return QVector3D(0, 0, 0); }

int GLW::MouseEvent(quint32 binding, Mouse* mouse, bool state, bool drag)
{
    // A slot may delete this view, the action or its receiver, or add new bindings:
    // walk a copy and stop once the view is gone.
    const QList<MouseBinding> bindings = mouseBindings;
    const QPointer<GLW> self(this);
    int ran = 0;
    for (const MouseBinding& b : bindings) {
        if (!self)
            break;
        if (b.binding != binding || !b.action || !b.action->isEnabled())
            continue;
        if (b.takesMouse) {
            if (!b.receiver)
                continue;
            const QMetaObject* meta = b.receiver->metaObject();
            const QMetaMethod method = meta->method(meta->indexOfMethod(b.method.constData()));
            if (method.invoke(b.receiver.data(), Qt::DirectConnection, Q_ARG(Mouse*, mouse), Q_ARG(bool, state)))
                ++ran;
        } else if (state && !drag) {
            b.action->trigger();
            ++ran;
        }
    }
    return ran;
}
