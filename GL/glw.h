#pragma once
// One view inside a GL window: its geometry in the window, its 2-D camera, and
// the actions it owns. The graph draws into a view and finds its actions there.
#include "GL/gl.h"
#include "Qt/qproperty.h"
#include "math/vector.h"

#include <QAction>
#include <QByteArray>
#include <QList>
#include <QObject>
#include <QPointer>
#include <QRectF>
#include <QString>
#include <QVector3D>
#include <QVector>

class GLWindow;
struct Mouse;

namespace GL {
// The 3-D camera and lights of a view; kept for hosts that draw in 3-D.
struct Camera {
    Vector eye{0, 0, 10};
    Vector target;
    Vector up{0, 1, 0};
    float fov = 45.f;
};
struct Light {
    Vector position;
    Vector colour{1, 1, 1};
};
typedef QVector<Light> Lights;
} // namespace GL

class GLW : public QObject {
    Q_OBJECT
public:
    int _id = 0;
    QRectF rect;  // geometry: fractions of the window when both sizes are at most 1, else pixels
    QRectF orect; // a second geometry kept by the host
    GL::Viewport viewport;
    GL::Camera camera;
    GL::Lights lights;
    QPointer<GLWindow> gl;

    explicit GLW(QObject* parent = nullptr);
    ~GLW() override;

    bool normal() const;
    double x() const;
    double y() const;
    double width() const;
    double height() const;
    QRectF geometry() const;

    // Mouse position in data coordinates; (0, 0, -1) without a live window.
    Vector Cursor() const;
    // x, y in pixels counted from the view's bottom-left corner; for a view placed
    // at the window's origin these are the window's mouse coordinates.
    Vector Cursor(float x, float y) const;

    using QObject::property;
    template <class T>
    T property(const char* name, bool* ok = nullptr) const
    {
        return qProperty<T>(this, name, ok);
    }

    // Runs the mouse actions bound to binding (a Qt button OR-ed with Qt modifiers):
    // a slot taking (Mouse*, bool) gets the window's mouse and state on the press,
    // every drag step and the release (state false); any other slot is reached
    // through the action's trigger, once per press. Returns how many ran.
    int MouseEvent(quint32 binding, Mouse* mouse, bool state, bool drag = false);

public slots:
    virtual GLW* hit(int x, int y);
    virtual QList<QAction*> actions();
    virtual QAction* NewKeyAction(const QString& key, const char* name, QObject* receiver, const char* slot);
    virtual QAction* NewMouseAction(quint32 binding, quint32 aux, const char* name, QObject* receiver,
                                    const char* slot);
    virtual bool DeleteAction(const char* name);
    virtual QRectF Range2D(int mode);
    virtual QVector3D NearestDataPos();

private:
    struct MouseBinding {
        QPointer<QAction> action;
        quint32 binding;
        quint32 aux; // the host's own value; unused here
        QPointer<QObject> receiver;
        QByteArray method; // normalized signature without the "1" code
        bool takesMouse;   // (Mouse*, bool): invoked directly instead of through triggered
    };
    QList<MouseBinding> mouseBindings;
};

Q_DECLARE_METATYPE(GLW*)
